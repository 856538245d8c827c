#include "EditorPaneFixture.h"

#include <Editor/FormatBar.h>
#include <Editor/InformationPanel.h>
#include <Editor/NoteStatistics.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Text/NSAttributeName.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QTest>
#include <QToolButton>
#include <QWheelEvent>

#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

using EditorCommands = EditorPaneFixture;

TEST_F(EditorCommands, EachCommandHasATextANameAndAShortcutOfItsOwn)
{
    QSet<QString> names;
    QSet<QString> shortcuts;
    for (const QAction *command : pane->actions()) {
        EXPECT_FALSE(command->text().isEmpty());
        EXPECT_FALSE(names.contains(command->objectName())) << command->objectName().toStdString();
        names.insert(command->objectName());
        const QString keys = command->shortcut().toString();
        EXPECT_FALSE(!keys.isEmpty() && shortcuts.contains(keys)) << keys.toStdString();
        shortcuts.insert(keys);
        EXPECT_EQ(pane->action(command->objectName()), command);
    }
    EXPECT_GE(names.size(), 30);
    EXPECT_EQ(pane->action(u"no such command"_s), nullptr);
}

TEST_F(EditorCommands, CommandsOfFormattingEditTheMarkup)
{
    struct Case
    {
        const char *command;
        QString text;
        NSRange selection;
        QString expected;
    };
    const std::vector<Case> cases = {
        {"bold", u"a word"_s, {2, 4}, u"a *word*"_s},      {"todo", u"milk"_s, {0, 0}, u"- milk"_s},
        {"bullet-list", u"a\nb"_s, {0, 3}, u"* a\n* b"_s}, {"heading-2", u"title"_s, {0, 0}, u"## title"_s},
        {"quote", u"said"_s, {0, 0}, u"> said"_s},         {"link", u"site"_s, {0, 4}, u"[site]()"_s},
        {"note-link", u"Home"_s, {0, 4}, u"[[Home]]"_s},   {"move-down", u"a\nb"_s, {0, 0}, u"b\na"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.command);
        const auto note = show(testCase.text);
        view().setSelectedRange(testCase.selection);
        pane->action(QString::fromLatin1(testCase.command))->trigger();
        EXPECT_EQ(shown(), testCase.expected);
        clock.advance(4.1);
        EXPECT_EQ(stored(note), testCase.expected);
        view().undo();
        EXPECT_EQ(shown(), testCase.text);
    }
}

TEST_F(EditorCommands, AShortcutAndAButtonDoTheSame)
{
    show(u"word"_s);
    view().setSelectedRange({0, 4});
    press(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(shown(), u"*word*"_s);
    auto *button = pane->formatBar().findChild<QToolButton *>(u"format-bold"_s);
    ASSERT_NE(button, nullptr);
    EXPECT_FALSE(button->icon().isNull());
    button->click();
    EXPECT_EQ(shown(), u"word"_s);
}

TEST_F(EditorCommands, ToDosOfASelectionAreCompletedTogether)
{
    const auto note = show(u"- a\n+ b\n- c"_s);
    view().selectAll();
    pane->action(u"toggle-todo"_s)->trigger();
    EXPECT_EQ(shown(), u"+ a\n+ b\n+ c"_s);
    pane->action(u"toggle-todo"_s)->trigger();
    clock.advance(4.1);
    EXPECT_EQ(stored(note), u"- a\n- b\n- c"_s);
}

TEST_F(EditorCommands, FoldedToDosStayInTheNote)
{
    const auto note = show(u"- open\n+ done\n+ too"_s);
    pane->action(u"fold-completed"_s)->trigger();
    EXPECT_FALSE(buffer().contains(u"done"_s));
    EXPECT_EQ(shown(), u"- open\n+ done\n+ too"_s);
    clock.advance(4.1);
    EXPECT_EQ(stored(note), u"- open\n+ done\n+ too"_s);
    pane->action(u"unfold-completed"_s)->trigger();
    EXPECT_TRUE(buffer().contains(u"done"_s));
    EXPECT_EQ(shown(), u"- open\n+ done\n+ too"_s);
}

TEST_F(EditorCommands, NothingIsFormattedWhereNothingCanBeChanged)
{
    EXPECT_FALSE(pane->action(u"bold"_s)->isEnabled());
    const auto note = makeNote(u"old"_s);
    note->archive();
    save();
    pane->setNote(note);
    EXPECT_FALSE(pane->action(u"bold"_s)->isEnabled());
    EXPECT_TRUE(pane->action(u"find"_s)->isEnabled());
    show(u"new"_s);
    EXPECT_TRUE(pane->action(u"bold"_s)->isEnabled());
}

TEST_F(EditorCommands, ZoomChangesTheTextAndNotTheNote)
{
    const auto note = show(u"text"_s);
    const auto &theme = *view().textKitStack().themeManager();
    const double size = theme.baseFontSize();
    pane->zoomIn();
    EXPECT_EQ(theme.baseFontSize(), size + 1);
    pane->resetZoom();
    EXPECT_EQ(theme.baseFontSize(), size);
    EXPECT_FALSE(pane->hasUnsavedText());
}

TEST_F(EditorCommands, ASizeThatIsSetEndsEveryZoom)
{
    show(u"text"_s);
    const auto sizeIn = [](QBNoteEditorViewController &inPane) {
        return inPane.textView().textKitStack().themeManager()->baseFontSize();
    };
    const double size = sizeIn(*pane);
    const auto other = std::make_unique<QBNoteEditorViewController>();
    for (const std::optional<double> set : {std::optional(24.0), std::optional<double>()}) {
        SCOPED_TRACE(set.value_or(0));
        pane->zoomIn();
        other->zoomOut();
        preferences->setEditorFontSize(set);
        EXPECT_EQ(sizeIn(*pane), set.value_or(size));
        EXPECT_EQ(sizeIn(*other), set.value_or(size));
        EXPECT_EQ(sizeIn(*std::make_unique<QBNoteEditorViewController>()), set.value_or(size))
            << "a zoom that is over does not come back";
    }
}

TEST_F(EditorCommands, AZoomOutlastsWhatElseIsSet)
{
    show(u"text"_s);
    const auto &theme = *view().textKitStack().themeManager();
    const auto other = std::make_unique<QBNoteEditorViewController>();
    const auto &otherTheme = *other->textView().textKitStack().themeManager();
    const double size = theme.baseFontSize();
    preferences->setEditorFontSize(size + 4);
    pane->zoomIn();
    preferences->setFontThemeName(u"Georgia"_s);
    preferences->setCurrentAppThemeName(u"Dracula"_s);
    preferences->setEditorLineHeightMultiplier(2);
    preferences->setEditorLineWidthMultiplier(30);
    preferences->setEditorParagraphSpacingMultiplier(1);
    EXPECT_EQ(theme.baseFontSize(), size + 5);
    EXPECT_EQ(theme.lineHeightMultiplier(), 2);
    EXPECT_EQ(otherTheme.baseFontSize(), size + 4) << "each pane has its own zoom";
    pane->resetZoom();
    EXPECT_EQ(theme.baseFontSize(), size + 4);
}

TEST_F(EditorCommands, ZoomAndWidthAreKept)
{
    show(u"text"_s);
    const auto theme = [this] { return view().textKitStack().themeManager(); };
    const double size = theme()->baseFontSize();
    const double width = theme()->lineWidthMultiplier();
    press(Qt::Key_Plus, Qt::ControlModifier);
    press(Qt::Key_Equal, Qt::ControlModifier);
    press(Qt::Key_Minus, Qt::ControlModifier);
    QWheelEvent wheel(QPointF(50, 50), view().mapToGlobal(QPointF(50, 50)), {}, {0, 240}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view().viewport(), &wheel);
    EXPECT_EQ(theme()->baseFontSize(), size + 3);
    pane->action(u"narrower-lines"_s)->trigger();
    EXPECT_LT(theme()->lineWidthMultiplier(), width);
    pane->action(u"typewriter"_s)->setChecked(true);
    const auto note = pane->note();
    pane = std::make_unique<QBNoteEditorViewController>();
    pane->setNote(note);
    EXPECT_EQ(theme()->baseFontSize(), size + 3);
    EXPECT_LT(theme()->lineWidthMultiplier(), width);
    EXPECT_TRUE(pane->action(u"typewriter"_s)->isChecked());
    pane->resetZoom();
    for (int i = 0; i < 100; ++i) {
        pane->action(u"narrower-lines"_s)->trigger();
        pane->zoomOut();
    }
    EXPECT_GE(theme()->baseFontSize(), 8);
    EXPECT_GE(theme()->lineWidthMultiplier(), 20);
    pane->resetZoom();
    EXPECT_EQ(theme()->baseFontSize(), size);
}

TEST_F(EditorCommands, AHeadingTypedBehindTheMarkerOfOneTakesItsPlace)
{
    struct Case
    {
        const char *what;
        QString text;
        QString typed;
        QString result;
    };
    const Case cases[] = {
        {"the marker is typed again", u"# "_s, u"# Title"_s, u"# Title|"_s},
        {"another level", u"# "_s, u"## Title"_s, u"## Title|"_s},
        {"a lower level", u"### "_s, u"# Title"_s, u"# Title|"_s},
        {"no level", u"# "_s, u"####### Title"_s, u"# ####### Title|"_s},
        {"a tag", u"# "_s, u"#tag"_s, u"# #tag|"_s},
        {"behind a title", u"# C"_s, u"# "_s, u"# C# |"_s},
        {"no heading", u"text "_s, u"# "_s, u"text # |"_s},
        {"below a heading", u"# one\n"_s, u"# two"_s, u"# one\n# two|"_s},
    };
    for (const int syntax : {0, 1}) {
        preferences->setMarkdownCompatibilityMode(syntax == 1);
        for (const Case &each : cases) {
            show(each.text);
            type(each.typed);
            EXPECT_EQ(marked(), each.result) << each.what << ", syntax " << syntax;
        }
    }
    // In front of a title the level changes; a step back gives it again.
    show(u"# Title"_s);
    view().setSelectedRange({buffer().indexOf(u'T'), 0});
    type(u"## "_s);
    EXPECT_EQ(marked(), u"## |Title"_s);
    view().undo();
    EXPECT_EQ(shown(), u"# Title"_s);
}

TEST_F(EditorCommands, APastedHeadingTakesThePlaceOfAnEmptyOne)
{
    const auto paste = [this](const QString &text) {
        auto *data = new QMimeData;
        data->setText(text);
        QGuiApplication::clipboard()->setMimeData(data);
        view().pasteAsPlainText();
    };
    show(u"# "_s);
    paste(u"## Title\nwords"_s);
    EXPECT_EQ(marked(), u"## Title\nwords|"_s);
    show(u"# "_s);
    paste(u"Title\n# words"_s);
    EXPECT_EQ(marked(), u"# Title\n# words|"_s);
    show(u"# a"_s);
    paste(u"# b"_s);
    EXPECT_EQ(marked(), u"# a# b|"_s);
}

TEST_F(EditorCommands, EachCommandNamesItsKeys)
{
    show(u"text"_s);
    for (const QAction *command : pane->actions()) {
        const QString keys = command->shortcut().toString(QKeySequence::NativeText);
        EXPECT_FALSE(keys.isEmpty()) << command->objectName().toStdString();
        EXPECT_TRUE(command->toolTip().contains(keys)) << command->toolTip().toStdString();
    }
    pane->setNote({}); // what commands can do changes, what they are called does not
    for (const auto *button : pane->formatBar().findChildren<QToolButton *>()) {
        EXPECT_TRUE(button->toolTip().contains(u"Ctrl"_s) || button->objectName() == u"format-more")
            << button->objectName().toStdString();
    }
}

TEST_F(EditorCommands, TheInformationPanelTellsOfTheNote)
{
    const auto home = show(u"# Home\nSome plain words here\n## Garden\n"_s);
    const auto linking = makeNote(u"Trip\nback to [[home]]"_s);
    const auto other = makeNote(u"Other\n[[Homework]]"_s);
    const auto trashed = makeNote(u"Gone\n[[Home]]"_s);
    trashed->trash();
    save();
    pane->action(u"info"_s)->setChecked(true);
    auto &panel = pane->informationPanel();
    ASSERT_TRUE(panel.isVisible());
    panel.update();
    EXPECT_EQ(panel.findChild<QLabel *>(u"words"_s)->text(), u"6"_s);
    EXPECT_EQ(panel.findChild<QLabel *>(u"readingTime"_s)->text(), u"1 min"_s);
    auto *headers = panel.findChild<QListWidget *>(u"headers"_s);
    ASSERT_EQ(headers->count(), 2);
    EXPECT_EQ(headers->item(1)->text().trimmed(), u"Garden"_s);
    Q_EMIT headers->itemActivated(headers->item(1));
    EXPECT_EQ(marked().indexOf(u'|'), shown().indexOf(u"## Garden"_s));
    auto *links = panel.findChild<QListWidget *>(u"links"_s);
    ASSERT_EQ(links->count(), 1);
    QString chosen;
    QObject::connect(pane.get(), &QBNoteEditorViewController::noteWasChosen,
                     [&chosen](const QString &identifier) { chosen = identifier; });
    Q_EMIT links->itemActivated(links->item(0));
    EXPECT_EQ(chosen, linking->uniqueIdentifier());
}

TEST_F(EditorCommands, TheInformationCountsTheTextAsItIsSaved)
{
    struct Case
    {
        const char *text;
        int words, characters, paragraphs;
    };
    // What is folded, what an attachment stands for, and no character for the attachment.
    const Case cases[] = {{"a bc", 2, 4, 1},
                          {"- open\n+ done with it\n+ too", 5, 25, 3},
                          {"# Head", 1, 6, 1},
                          {"#tag x", 2, 6, 1},
                          {"[t](http://a.example/x)", 5, 23, 1}};
    pane->action(u"info"_s)->setChecked(true);
    auto &panel = pane->informationPanel();
    for (const Case &testCase : cases) {
        show(QString::fromUtf8(testCase.text));
        pane->action(u"fold-completed"_s)->trigger();
        panel.update();
        const auto count = [&panel](const QString &name) { return panel.findChild<QLabel *>(name)->text().toInt(); };
        EXPECT_EQ(count(u"words"_s), testCase.words) << testCase.text;
        EXPECT_EQ(count(u"characters"_s), testCase.characters) << testCase.text;
        EXPECT_EQ(count(u"paragraphs"_s), testCase.paragraphs) << testCase.text;
    }
}

TEST_F(EditorCommands, ALinkAsksForWhatIsMissing)
{
    show(u"see fox"_s);
    view().setSelectedRange({4, 3});
    press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(marked(), u"see [fox](|)"_s);
    type(u"http://a.example/"_s);
    EXPECT_EQ(shown(), u"see [fox](http://a.example/)"_s);
    show(u"see "_s);
    press(Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(marked(), u"see [|]()"_s);
}

TEST_F(EditorCommands, TheInformationLeavesRoomForTheText)
{
    QString text = u"# Title\n"_s;
    for (int i = 0; i < 30; ++i) {
        text += u"## Heading %1\nwords\n"_s.arg(i);
    }
    show(text);
    pane->action(u"info"_s)->setChecked(true);
    auto &panel = pane->informationPanel();
    for (const QSize size : {QSize(1200, 800), QSize(474, 628), QSize(474, 300), QSize(300, 240), QSize(620, 240)}) {
        SCOPED_TRACE(u"%1 x %2"_s.arg(size.width()).arg(size.height()).toStdString());
        pane->resize(size);
        processEvents();
        EXPECT_GE(view().width() * 10, size.width() * 5);
        EXPECT_GE(view().height() * 10, size.height() * 3);
        EXPECT_FALSE(panel.geometry().intersects(view().geometry()));
        EXPECT_LE(panel.geometry().right(), size.width());
        EXPECT_LE(panel.geometry().bottom(), size.height());
        // What does not fit is reached by scrolling; no list is squeezed to nothing.
        const auto *scrolling = panel.findChild<QScrollArea *>();
        const auto *links = panel.findChild<QLabel *>(u"linksEmpty"_s);
        EXPECT_LE(links->mapTo(scrolling->widget(), QPoint(0, links->height())).y(), scrolling->widget()->height());
        EXPECT_GE(panel.findChild<QListWidget *>(u"headers"_s)->height(), 60);
        EXPECT_TRUE(scrolling->widget()->height() <= scrolling->viewport()->height() ||
                    scrolling->verticalScrollBar()->maximum() > 0);
    }
}

TEST_F(EditorCommands, APastedPictureIsAnAttachmentOnDisk)
{
    const auto note = show(u"before"_s);
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    auto *data = new QMimeData;
    data->setImageData(image);
    QGuiApplication::clipboard()->setMimeData(data);
    view().paste();
    clock.advance(4.1);
    ASSERT_EQ(note->orderedImages().size(), 1);
    const auto file = note->orderedImages().first();
    ASSERT_TRUE(file->fileURL());
    const QString path = file->fileURL()->toLocalFile();
    EXPECT_TRUE(path.startsWith(folder.path()));
    EXPECT_EQ(QImage(path).size(), image.size());
    EXPECT_EQ(stored(note), u"before\n"_s + file->textRepresentation() + u'\n');
    EXPECT_EQ(QSet<QString>({file->uniqueIdentifier()}).size(), 1);
}

TEST_F(EditorCommands, APictureGrowsWithTheColumnAndKeepsItsPixels)
{
    const auto note = show({});
    QImage image(1200, 300, QImage::Format_RGB32);
    image.fill(Qt::green);
    ASSERT_TRUE(image.save(folder.path() + u"/wide.png"_s));
    pane->attachFiles({QUrl::fromLocalFile(folder.path() + u"/wide.png"_s)});
    pane->saveNote(/*forceSave=*/true);
    pane->setNote(nullptr);
    pane->resize(300, 400);
    processEvents();
    pane->setNote(note);
    const auto picture = [this] {
        const NSAttributedString &text = view().textStorage().attributedString();
        return text.attribute(NSAttachmentAttributeName, buffer().indexOf(QChar::ObjectReplacementCharacter))
            .sharedAs<QBImageTextAttachment>();
    };
    const auto widthInText = [this] {
        const auto paragraph = view().layoutManager().paragraphOfLocation(0);
        return paragraph.layout->attachments().front().rect.width();
    };
    const auto waitForPixels = [&](double width) {
        return QTest::qWaitFor([&] { return picture()->attachmentImage().pixelSize().width() >= width; });
    };
    ASSERT_TRUE(picture());
    ASSERT_TRUE(waitForPixels(100));
    const double narrow = widthInText();
    EXPECT_LT(narrow, 300);
    const int fewPixels = picture()->attachmentImage().pixelSize().width();

    pane->resize(800, 400);
    processEvents();
    EXPECT_GT(widthInText(), narrow * 1.5) << "at once, with the pixels that there are";
    EXPECT_EQ(picture()->attachmentImage().pixelSize().width(), fewPixels);
    clock.advance(0.5);
    EXPECT_TRUE(waitForPixels(widthInText() - 1));

    // Narrow again, it fits, and what was loaded stays.
    const int manyPixels = picture()->attachmentImage().pixelSize().width();
    pane->resize(300, 400);
    processEvents();
    clock.advance(0.5);
    EXPECT_NEAR(widthInText(), narrow, 1);
    EXPECT_EQ(picture()->attachmentImage().pixelSize().width(), manyPixels);
}

TEST_F(EditorCommands, FilesBecomeAttachmentsAndStayWhereTheyAre)
{
    const auto note = show({});
    const QUrl text = userFile(u"letter [1].txt"_s, "Dear");
    pane->attachFiles({text, QUrl::fromLocalFile(folder.path() + u"/missing.txt"_s)});
    clock.advance(4.1);
    ASSERT_EQ(note->orderedFiles().size(), 1);
    const auto file = note->orderedFiles().first();
    EXPECT_EQ(stored(note).trimmed(), file->textRepresentation());
    EXPECT_TRUE(QFile::exists(text.toLocalFile()));
    EXPECT_TRUE(QFile::exists(file->fileURL()->toLocalFile()));
}

TEST_F(EditorCommands, ACopyOffersTextMarkupAndPictures)
{
    show(u"- *bold*"_s);
    view().selectAll();
    view().copy();
    const QMimeData *copied = QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), u"- *bold*"_s);
    EXPECT_EQ(copied->data(u"application/x-quib-markup"_s), "- *bold*");
    const auto note = show({});
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::blue);
    ASSERT_TRUE(image.save(folder.path() + u"/blue.png"_s));
    pane->attachFiles({QUrl::fromLocalFile(folder.path() + u"/blue.png"_s)});
    view().selectAll();
    view().copy();
    EXPECT_EQ(qvariant_cast<QImage>(QGuiApplication::clipboard()->mimeData()->imageData()).size(), image.size());
    pane->saveNote(/*forceSave=*/true);
    // Pasted into another note, the picture is that note's own.
    const auto other = show({});
    view().paste();
    clock.advance(4.1);
    ASSERT_EQ(other->orderedImages().size(), 1);
    ASSERT_EQ(note->orderedImages().size(), 1);
    EXPECT_NE(other->orderedImages().first()->uniqueIdentifier(), note->orderedImages().first()->uniqueIdentifier());
}

TEST(NoteStatistics, CountsWhatAReaderCounts)
{
    struct Case
    {
        const char *name;
        QString text;
        NoteStatistics expected;
    };
    const std::vector<Case> cases = {
        {"nothing", u""_s, {0, 0, 0}},
        {"words", u"One, two... three"_s, {3, 17, 1}},
        {"apostrophes and hyphens", u"don't re-read"_s, {2, 13, 1}},
        {"paragraphs", u"a\n\n \nb"_s, {2, 3, 2}},
        {"accents made of two", u"e\u0301te\u0301"_s, {1, 3, 1}},
        {"emoji", u"\U0001F468\u200D\U0001F469\u200D\U0001F467 ok"_s, {1, 4, 1}},
        {"no blanks", u"日本語"_s, {3, 3, 1}},
        {"attachments", u"\uFFFC a"_s, {1, 2, 1}},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        const auto counted = NoteStatistics::ofText(testCase.text);
        EXPECT_EQ(counted.words, testCase.expected.words);
        EXPECT_EQ(counted.characters, testCase.expected.characters);
        EXPECT_EQ(counted.paragraphs, testCase.expected.paragraphs);
    }
    EXPECT_EQ(NoteStatistics({.words = 231}).readingTime(), 2);
}

} // namespace quib::tests

#include "EditorPaneFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QTimer>

#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

class EditorContextMenu : public EditorPaneFixture
{
protected:
    EditorContextMenu()
    {
        QObject::connect(pane.get(), &QBNoteEditorViewController::urlWasOpened,
                         [this](const QUrl &url) { opened.append(url.toString()); });
        QObject::connect(pane.get(), &QBNoteEditorViewController::noteWasChosen,
                         [this](const QString &identifier) { chosen = identifier; });
    }
    /// Opens the menu by its key at a place, has the entry of that text run, and gives all entries.
    QStringList menuAt(qint64 location, const QString &entry = {})
    {
        if (view().selectedRange().length == 0) {
            view().setSelectedRange({location, 0});
        }
        QStringList texts;
        QTimer::singleShot(0, [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            QAction *wanted = nullptr;
            for (QAction *action : menu->actions()) {
                texts.append(action->text());
                wanted = action->text() == entry ? action : wanted;
            }
            ASSERT_TRUE(entry.isEmpty() || wanted != nullptr) << texts.join(u", ").toStdString();
            menu->close();
            if (wanted != nullptr) {
                wanted->trigger();
            }
        });
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QApplication::sendEvent(view().viewport(), &event);
        return texts;
    }
    [[nodiscard]] static QString copied() { return QGuiApplication::clipboard()->text(); }

    QStringList opened;
    QString chosen;
};

TEST_F(EditorContextMenu, LinksAreOpenedCopiedAndEdited)
{
    struct Case
    {
        const char *name;
        QString text;
        QString open;
        QString url;
        QString link;
        QString edited;
    };
    const std::vector<Case> cases = {
        {"an address", u"https://example.org/a?b=c#d"_s, u"Open Link"_s, u"https://example.org/a?b=c#d"_s,
         u"https://example.org/a?b=c#d"_s, u"[https://example.org/a?b=c#d]"_s},
        {"an address with a title", u"[title](https://example.org)"_s, u"Open Link"_s, u"https://example.org"_s,
         u"https://example.org"_s, u"[title]([https://example.org])"_s},
        {"an address to escape", u"[title](https://example.org/a b)"_s, u"Open Link"_s, u"https://example.org/a b"_s,
         u"https://example.org/a%20b"_s, u"[title]([https://example.org/a b])"_s},
        {"a note with an arrow", u"[[a -> b]]"_s, u"Open Note"_s, {}, u"[[a -> b]]"_s, u"[[[a -> b]]]"_s},
        {"a note", u"[[Garden plan]]"_s, u"Open Note"_s, {}, u"[[Garden plan]]"_s, u"[[[Garden plan]]]"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        show(testCase.text + u" and more"_s);
        opened.clear();
        EXPECT_TRUE(menuAt(3, testCase.open).contains(u"Copy Link"_s));
        ASSERT_EQ(opened.size(), 1);
        EXPECT_TRUE(testCase.url.isEmpty() ? opened.first().startsWith(u"quib://") : opened.first() == testCase.url)
            << opened.first().toStdString();
        menuAt(3, u"Copy Link"_s);
        EXPECT_EQ(copied(), testCase.link);
        menuAt(3, u"Edit Link"_s);
        EXPECT_EQ(marked(), testCase.edited + u" and more"_s);
    }
    show(u"plain text"_s);
    EXPECT_FALSE(menuAt(3).contains(u"Open Link"_s));
}

TEST_F(EditorContextMenu, TheLinkAtTheCaretIsOpenedByAKey)
{
    show(u"see https://example.org"_s);
    view().setSelectedRange({2, 0});
    press(Qt::Key_O, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_TRUE(opened.isEmpty());
    view().setSelectedRange({view().textStorage().length(), 0});
    press(Qt::Key_O, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ(opened, QStringList{u"https://example.org"_s});
    EXPECT_EQ(shown(), u"see https://example.org"_s);
}

TEST_F(EditorContextMenu, ATagLeadsToItsNotes)
{
    show(u"#work/plans\nrest"_s);
    const QStringList texts = menuAt(4, u"Show Notes with #work/plans"_s);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_TRUE(opened.first().contains(u"open-tag?name=work"_s)) << opened.first().toStdString();
    EXPECT_FALSE(texts.contains(u"Edit Link"_s));
}

TEST_F(EditorContextMenu, AnAttachmentIsOpenedAndSavedElsewhere)
{
    show({});
    pane->attachFiles({userFile(u"letter.txt"_s, "Dear")});
    processEvents();
    const auto file = pane->note()->orderedFiles().first();
    const QStringList texts = menuAt(0, u"Open"_s);
    EXPECT_TRUE(texts.contains(u"Save As…"_s));
    EXPECT_TRUE(texts.contains(u"Show in Folder"_s));
    EXPECT_EQ(opened, QStringList{file->fileURL()->toString()});
    const QString copy = folder.write(u"copy.txt"_s, "in the way");
    EXPECT_TRUE(pane->copyFileTo(*file->fileURL(), copy));
    EXPECT_EQ(folder.read(u"copy.txt"_s), "Dear");
    EXPECT_TRUE(QFile::exists(file->fileURL()->toLocalFile()));
    EXPECT_TRUE(pane->copyFileTo(*file->fileURL(), file->fileURL()->toLocalFile())) << "onto itself";
    EXPECT_TRUE(QFile::exists(file->fileURL()->toLocalFile()));
    QString failed;
    QObject::connect(pane.get(), &QBNoteEditorViewController::savingFailed,
                     [&failed](const QString &name) { failed = name; });
    EXPECT_FALSE(pane->copyFileTo(*file->fileURL(), folder.path(u"no/such/folder.txt"_s)));
    EXPECT_EQ(failed, u"folder.txt"_s);
}

TEST_F(EditorContextMenu, AnAttachmentIsInTheStoreBeforeTheNextKey)
{
    const auto note = show(u"text "_s);
    pane->attachFiles({userFile(u"letter.txt"_s, "Dear")});
    processEvents();
    ASSERT_EQ(note->orderedFiles().size(), 1);
    EXPECT_EQ(stored(note), u"text "_s + note->orderedFiles().first()->textRepresentation());
}

TEST_F(EditorContextMenu, ANoteIsMadeOfASelection)
{
    const auto note = show(u"before\n# Picnic\n- bread\n"_s);
    pane->attachFiles({userFile(u"letter.txt"_s, "Dear")});
    processEvents();
    const QString before = shown();
    EXPECT_FALSE(menuAt(0).contains(u"Note From Selection"_s));
    view().setSelectedRange({7, view().textStorage().length() - 7});
    menuAt(0, u"Note From Selection"_s);
    EXPECT_EQ(shown(), before) << "the selection stays where it is";
    const auto made = QBNote::noteWithUniqueIdentifier(chosen, moc());
    ASSERT_TRUE(made);
    EXPECT_EQ(made->title(), u"Picnic"_s);
    ASSERT_EQ(made->orderedFiles().size(), 1);
    ASSERT_EQ(note->orderedFiles().size(), 1);
    EXPECT_EQ(stored(made), u"# Picnic\n- bread\n"_s + made->orderedFiles().first()->textRepresentation());
    EXPECT_NE(made->orderedFiles().first()->uniqueIdentifier(), note->orderedFiles().first()->uniqueIdentifier());
}

TEST_F(EditorContextMenu, AFoldIsOpened)
{
    show(u"+ done\nrest"_s);
    pane->action(u"fold-completed"_s)->trigger();
    ASSERT_FALSE(buffer().contains(u"done"_s));
    menuAt(0, u"Unfold"_s);
    EXPECT_TRUE(buffer().contains(u"done"_s));
    EXPECT_TRUE(menuAt(2).contains(u"Complete To-do"_s));
}

TEST_F(EditorContextMenu, ANoteThatCannotBeChangedOffersNoChange)
{
    const auto note = makeNote(u"[[Garden]] and + done"_s);
    note->trash();
    save();
    pane->setNote(note);
    const QStringList texts = menuAt(3);
    EXPECT_TRUE(texts.contains(u"Open Note"_s));
    EXPECT_FALSE(texts.contains(u"Edit Link"_s));
    EXPECT_FALSE(pane->action(u"paste-code"_s)->isEnabled());
    EXPECT_TRUE(pane->action(u"copy-as-text"_s)->isEnabled());
}

class EditorPasting : public EditorPaneFixture
{
protected:
    void copy(const QString &text, NSRange range)
    {
        show(text);
        view().setSelectedRange(range);
        view().copy();
    }
};

TEST_F(EditorPasting, CopiedWordsKeepApartFromOthers)
{
    struct Case
    {
        const char *name;
        NSRange copied; ///< of "one two three."
        QString text;
        NSRange place;
        QString expected;
    };
    const std::vector<Case> cases = {
        {"between words", {4, 3}, u"a b"_s, {1, 0}, u"a two b"_s},
        {"behind a word", {4, 3}, u"a"_s, {1, 0}, u"a two"_s},
        {"before a word", {4, 3}, u"a"_s, {0, 0}, u"two a"_s},
        {"in a word", {4, 3}, u"ab"_s, {1, 0}, u"a two b"_s},
        {"several words", {0, 7}, u"ab"_s, {2, 0}, u"ab one two"_s},
        {"a part of a word", {4, 2}, u"ab"_s, {1, 0}, u"atwb"_s},
        {"with a blank of its own", {3, 4}, u"ab"_s, {2, 0}, u"ab two"_s},
        {"with a full stop", {8, 6}, u"ab"_s, {2, 0}, u"abthree."_s},
        {"in code", {4, 3}, u"`ab`"_s, {2, 0}, u"`atwob`"_s},
        {"at the start of a line", {4, 3}, u"a\nb"_s, {2, 0}, u"a\ntwo b"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        copy(u"one two three."_s, testCase.copied);
        show(testCase.text);
        view().setSelectedRange(testCase.place);
        view().paste();
        EXPECT_EQ(shown(), testCase.expected);
        view().undo();
        EXPECT_EQ(shown(), testCase.text);
    }
}

TEST_F(EditorPasting, WhatComesFromElsewhereIsTakenAsItIs)
{
    QGuiApplication::clipboard()->setText(u"word"_s);
    show(u"a"_s);
    view().paste();
    EXPECT_EQ(shown(), u"aword"_s);
    copy(u"one two"_s, {0, 3});
    show(u"a"_s);
    pane->action(u"paste-plain"_s)->trigger();
    EXPECT_EQ(shown(), u"aone"_s);
}

TEST_F(EditorPasting, CodeGetsFencesOnLinesOfTheirOwn)
{
    struct Case
    {
        const char *name;
        QString text;
        NSRange place;
        QString expected;
    };
    const std::vector<Case> cases = {
        {"in an empty note", u""_s, {0, 0}, u"```\nplain words\n```"_s},
        {"in a line", u"ab"_s, {1, 0}, u"a\n```\nplain words\n```\nb"_s},
        {"on an empty line", u"a\n\nb"_s, {2, 0}, u"a\n```\nplain words\n```\nb"_s},
        {"over a selection", u"abc"_s, {0, 3}, u"```\nplain words\n```"_s},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        QGuiApplication::clipboard()->setText(u"plain words\r\n"_s);
        show(testCase.text);
        view().setSelectedRange(testCase.place);
        pane->action(u"paste-code"_s)->trigger();
        EXPECT_EQ(shown(), testCase.expected);
        view().undo();
        EXPECT_EQ(shown(), testCase.text);
    }
    QGuiApplication::clipboard()->setText(u"#include <stdio.h>\nint main(void) {\n\tprintf(\"hello\");\n}\n"_s);
    show({});
    pane->action(u"paste-code"_s)->trigger();
    EXPECT_TRUE(shown().startsWith(u"```c\n#include"_s)) << shown().toStdString();
    QGuiApplication::clipboard()->clear();
    show(u"a"_s);
    pane->action(u"paste-code"_s)->trigger();
    EXPECT_EQ(shown(), u"a"_s);
}

TEST_F(EditorPasting, TextIsCopiedWithAndWithoutTags)
{
    show(u"Plan #work\n- milk #shop/food now"_s);
    pane->action(u"copy-as-text"_s)->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Plan #work\n- milk #shop/food now"_s);
    pane->action(u"copy-as-text-without-tags"_s)->trigger();
    EXPECT_FALSE(QGuiApplication::clipboard()->text().contains(u"#work"_s));
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(u"- milk now"_s))
        << QGuiApplication::clipboard()->text().toStdString();
    view().setSelectedRange({0, 4});
    pane->action(u"copy-as-text"_s)->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Plan"_s);
}

} // namespace quib::tests

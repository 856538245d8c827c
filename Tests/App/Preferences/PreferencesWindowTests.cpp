// The window of preferences: its controls and the preferences behind them, by mouse, by keyboard and by ear.

#include "PreferencesFixture.h"

#include <Preferences/InlineQuestion.h>
#include <Preferences/InterfaceLanguage.h>
#include <Preferences/ShortcutsPage.h>
#include <Preferences/SpellingLanguages.h>
#include <Preferences/Switch.h>
#include <URL/QBXurlTokenController.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QButtonGroup>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QSlider>
#include <QSpinBox>
#include <QTextBoundaryFinder>
#include <QTextBrowser>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

using Page = PreferencesWindow::Page;

class Preferences : public PreferencesFixture
{
protected:
    QList<QWidget *> focusableWidgets(Page page)
    {
        QList<QWidget *> found;
        for (QWidget *widget : show(page).findChildren<QWidget *>()) {
            if (widget->isVisible() && widget->isEnabled() && widget->focusPolicy() != Qt::NoFocus) {
                found.append(widget);
            }
        }
        return found;
    }
};

TEST_F(Preferences, AreOneWindowThatShowsThePageAskedFor)
{
    PreferencesWindow &first = show(Page::Themes);
    EXPECT_EQ(first.page(), Page::Themes);
    EXPECT_TRUE(first.pageWidget(Page::Themes)->isVisible());
    PreferencesWindow &second = show(Page::About);
    EXPECT_EQ(&first, &second);
    EXPECT_FALSE(first.pageWidget(Page::Themes)->isVisible());
    EXPECT_FALSE(first.isModal());
    QTest::keyClick(&first, Qt::Key_Escape);
    EXPECT_FALSE(first.isVisible());
    EXPECT_EQ(&show(Page::General), &first);
}

TEST_F(Preferences, ThePagesAreChosenByTheArrowKeys)
{
    PreferencesWindow &window = show(Page::General);
    auto *list = window.findChild<QListWidget *>();
    list->setFocus();
    for (int page = 1; page < PreferencesWindow::kPages; ++page) {
        QTest::keyClick(list, Qt::Key_Down);
        EXPECT_EQ(int(window.page()), page);
        EXPECT_TRUE(window.pageWidget(Page(page))->isVisible());
    }
}

TEST_F(Preferences, EverythingThatTakesTheKeyboardHasAName)
{
    static_cast<void>(QBXurlTokenController().generateToken());
    for (int page = 0; page < PreferencesWindow::kPages; ++page) {
        for (QWidget *widget : focusableWidgets(Page(page))) {
            const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(spoken, nullptr);
            EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty())
                << page << ' ' << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
        }
    }
}

TEST_F(Preferences, EveryControlHasALabel)
{
    for (const Page page : {Page::General, Page::Editor}) {
        QWidget *shown = show(page).pageWidget(page);
        QSet<const QWidget *> labelled;
        for (const QLabel *label : shown->findChildren<QLabel *>()) {
            labelled.insert(label->buddy());
        }
        int controls = 0;
        for (const QWidget *widget : focusableWidgets(page)) {
            const bool isControl = qobject_cast<const QComboBox *>(widget) ||
                                   qobject_cast<const QAbstractSlider *>(widget) ||
                                   qobject_cast<const QSpinBox *>(widget) || qobject_cast<const Switch *>(widget);
            if (isControl && shown->isAncestorOf(widget)) {
                ++controls;
                EXPECT_TRUE(labelled.contains(widget)) << widget->accessibleName().toStdString();
            }
        }
        EXPECT_GE(controls, 6);
    }
}

TEST_F(Preferences, TabReachesEveryControlOfAPage)
{
    static_cast<void>(QBXurlTokenController().generateToken());
    for (int page = 0; page < PreferencesWindow::kPages; ++page) {
        QSet<QWidget *> missing;
        for (QWidget *widget : focusableWidgets(Page(page))) {
            // Of buttons that exclude each other Tab reaches the one that is pressed, and the arrow keys the others.
            const auto *button = qobject_cast<const QAbstractButton *>(widget);
            const bool isOther = button != nullptr && button->group() != nullptr && !button->isChecked();
            if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr && !isOther) {
                missing.insert(widget);
            }
        }
        PreferencesWindow &window = show(Page(page));
        window.findChild<QListWidget *>()->setFocus();
        for (int i = 0; i < 60 && !missing.isEmpty(); ++i) {
            missing.remove(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        for (const QWidget *widget : std::as_const(missing)) {
            ADD_FAILURE() << page << ' ' << widget->metaObject()->className() << ' '
                          << widget->accessibleName().toStdString();
        }
    }
}

TEST_F(Preferences, HaveRoomForTheirTextsInEveryLanguage)
{
    static_cast<void>(QBXurlTokenController().generateToken());
    preferences->setAppThemeName(u"Solarized Light"_s); // none has a longer name
    preferences->setAppDarkThemeName(u"Solarized Light"_s);
    for (const QString &name : InterfaceLanguage::availableNames()) {
        const InterfaceLanguage language({name});
        owner = std::make_unique<QMainWindow>();
        for (int page = 0; page < PreferencesWindow::kPages; ++page) {
            PreferencesWindow &window = show(Page(page));
            window.resize(window.minimumSize());
            QCoreApplication::processEvents();
            const auto *area = qobject_cast<QScrollArea *>(window.pageWidget(Page(page)));
            if (area != nullptr) {
                EXPECT_LE(area->widget()->width(), area->viewport()->width()) << name.toStdString() << ' ' << page;
            }
            for (const QWidget *widget : window.pageWidget(Page(page))->findChildren<QWidget *>()) {
                const auto *label = qobject_cast<const QLabel *>(widget);
                const bool hasText = qobject_cast<const QPushButton *>(widget) != nullptr ||
                                     qobject_cast<const QComboBox *>(widget) != nullptr || label != nullptr;
                if (!hasText || !widget->isVisible()) {
                    continue;
                }
                const bool isHigh = label != nullptr && label->wordWrap();
                int width = widget->minimumSizeHint().width();
                if (isHigh) {
                    width = 0;
                    QTextBoundaryFinder places(QTextBoundaryFinder::Line, label->text());
                    for (qsizetype from = 0, to = 0; (to = places.toNextBoundary()) >= 0; from = to) {
                        const QString piece = label->text().sliced(from, to - from).trimmed();
                        width = std::max(width, label->fontMetrics().horizontalAdvance(piece));
                    }
                }
                EXPECT_GE(widget->width(), width)
                    << name.toStdString() << ' ' << page << ' ' << widget->accessibleName().toStdString();
                EXPECT_GE(widget->height(), isHigh ? label->heightForWidth(widget->width()) : 10)
                    << name.toStdString() << ' ' << page << ' '
                    << (label != nullptr ? label->text().toStdString() : "");
            }
        }
        owner.reset();
    }
    owner = std::make_unique<QMainWindow>();
}

TEST_F(Preferences, SwitchesChangeThemAtOnceAndFollowThem)
{
    struct Case
    {
        Page page;
        QString name;
        std::function<bool()> get;
        std::function<void(bool)> set;
    };
    QBNotesPreferenceManager &p = *preferences;
    const Case cases[] = {
        {Page::General, u"Symbols for tags"_s, [&] { return p.tagsListUsesCustomTagsIcons(); },
         [&](bool isOn) { p.setTagsListUsesCustomTagsIcons(isOn); }},
        {Page::General, u"Look up the titles of copied links"_s, [&] { return p.autograbURLTitles(); },
         [&](bool isOn) { p.setAutograbURLTitles(isOn); }},
        {Page::Editor, u"Complete tags, links and languages"_s, [&] { return p.autocompleteEnabled(); },
         [&](bool isOn) { p.setAutocompleteEnabled(isOn); }},
        {Page::Editor, u"Fold completed to-dos"_s, [&] { return p.foldCompletedTodo(); },
         [&](bool isOn) { p.setFoldCompletedTodo(isOn); }},
        {Page::Editor, u"Typewriter scrolling"_s, [&] { return p.editorTypewriterScrolling(); },
         [&](bool isOn) { p.setEditorTypewriterScrolling(isOn); }},
        {Page::Editor, u"Focus on the paragraph"_s, [&] { return p.editorFocusMode(); },
         [&](bool isOn) { p.setEditorFocusMode(isOn); }},
        {Page::Editor, u"Show the format bar"_s, [&] { return p.editorFormatBar(); },
         [&](bool isOn) { p.setEditorFormatBar(isOn); }},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(each.name.toStdString());
        auto *control = this->control<Switch>(each.page, each.name);
        ASSERT_NE(control, nullptr);
        const bool before = each.get();
        EXPECT_EQ(control->isChecked(), before);
        control->setFocus();
        QTest::keyClick(control, Qt::Key_Space);
        EXPECT_EQ(each.get(), !before);
        QTest::keyClick(control, Qt::Key_Return);
        EXPECT_EQ(each.get(), before);
        QTest::mouseClick(control->parentWidget(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 10));
        EXPECT_EQ(each.get(), !before) << "the text of a row presses its switch";
        each.set(before);
        EXPECT_EQ(control->isChecked(), before);
        const QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(control);
        EXPECT_EQ(spoken->role(), QAccessible::CheckBox);
        EXPECT_EQ(bool(spoken->state().checked), before);
    }
}

TEST_F(Preferences, ChoicesChangeThemAtOnceAndFollowThem)
{
    auto *notes = control<QComboBox>(Page::General, u"Sort notes by"_s);
    EXPECT_EQ(notes->currentText(), u"Date Changed"_s);
    notes->setFocus();
    QTest::keyClick(notes, Qt::Key_Down);
    EXPECT_EQ(preferences->notesListSortBy(), u"creationDate"_s);
    preferences->setNotesListSortBy(u"title"_s);
    EXPECT_EQ(notes->currentText(), u"Title"_s);
    preferences->setNotesListSortBy(u"what another program wrote"_s);
    EXPECT_EQ(notes->currentIndex(), -1);
    auto *tags = control<QComboBox>(Page::General, u"Sort tags by"_s);
    tags->setCurrentIndex(1);
    EXPECT_EQ(preferences->tagsListSortBy(), u"notes"_s);
    auto *order = control<QComboBox>(Page::General, u"Order of notes"_s);
    order->setCurrentIndex(1);
    EXPECT_TRUE(preferences->notesListSortAscending());
    auto *markup = control<QComboBox>(Page::Editor, u"Notes are written in"_s);
    markup->setCurrentIndex(1);
    EXPECT_EQ(preferences->currentSyntax(), 1);
    preferences->setMarkdownCompatibilityMode(false);
    EXPECT_EQ(markup->currentIndex(), 0);
    auto *font = control<QComboBox>(Page::Editor, u"Font"_s);
    font->setCurrentText(u"Georgia"_s);
    EXPECT_EQ(preferences->fontThemeName(), u"Georgia"_s);
}

TEST_F(Preferences, TheLanguagesOfTheSpellingAreThoseOfTheDictionaries)
{
    for (const auto &name : {u"de_CH"_s, u"it_IT"_s}) {
        folder.write(QString(u"dictionaries/"_s % name % u".aff"_s), "SET UTF-8\n");
        folder.write(QString(u"dictionaries/"_s % name % u".dic"_s), "1\nx\n");
    }
    qputenv("DICPATH", folder.path(u"dictionaries"_s).toUtf8());
    auto *button = control<QPushButton>(Page::Editor, u"Languages of the spelling"_s);
    qunsetenv("DICPATH");
    ASSERT_NE(button, nullptr);
    const auto choose = [button](const QString &title) {
        for (QAction *choice : button->menu()->actions()) {
            if (choice->text() == title) {
                choice->trigger();
                return;
            }
        }
        ADD_FAILURE() << "there is no " << title.toStdString();
    };
    EXPECT_EQ(button->text(), u"As the Desktop"_s);
    choose(u"Schweizer Hochdeutsch"_s);
    EXPECT_EQ(chosenSpellingLanguages(*preferences), QStringList{u"de_CH"_s});
    EXPECT_EQ(button->text(), u"Schweizer Hochdeutsch"_s);
    choose(u"Italiano (Italia)"_s);
    EXPECT_EQ(chosenSpellingLanguages(*preferences), (QStringList{u"de_CH"_s, u"it_IT"_s}));
    choose(u"Schweizer Hochdeutsch"_s);
    EXPECT_EQ(chosenSpellingLanguages(*preferences), QStringList{u"it_IT"_s});
    choose(u"As the Desktop"_s);
    EXPECT_EQ(chosenSpellingLanguages(*preferences), QStringList());
    EXPECT_EQ(button->text(), u"As the Desktop"_s);
}

TEST_F(Preferences, SizesAreTheFontsOwnUntilTheyAreSet)
{
    auto *size = control<QSpinBox>(Page::Editor, u"Font size"_s);
    auto *height = control<QSlider>(Page::Editor, u"Line height"_s);
    auto *width = control<QSlider>(Page::Editor, u"Line width"_s);
    auto *reset = control<QPushButton>(Page::Editor, u"Sizes and spaces"_s);
    EXPECT_EQ(size->value(), 16);
    EXPECT_EQ(width->value(), 420);
    EXPECT_FALSE(reset->isEnabled());
    EXPECT_FALSE(preferences->editorFontSize()) << "what is only shown is not set";
    preferences->setFontThemeName(u"Menlo"_s);
    EXPECT_EQ(size->value(), 14);
    EXPECT_EQ(width->value(), 480);
    EXPECT_EQ(height->value(), 160);
    EXPECT_FALSE(preferences->editorLineWidthMultiplier());
    size->setFocus();
    QTest::keyClick(size, Qt::Key_Up);
    EXPECT_EQ(preferences->editorFontSize(), 15);
    width->setFocus();
    QTest::keyClick(width, Qt::Key_Home);
    EXPECT_EQ(preferences->editorLineWidthMultiplier(), width->minimum() / 10.0);
    EXPECT_TRUE(reset->isEnabled());
    QTest::keyClick(reset, Qt::Key_Space);
    EXPECT_FALSE(preferences->editorFontSize());
    EXPECT_FALSE(preferences->editorLineWidthMultiplier());
    EXPECT_EQ(size->value(), 14);
    EXPECT_EQ(width->value(), 480);
}

TEST_F(Preferences, AreResetOnceTheQuestionIsAnswered)
{
    preferences->setAppThemeName(u"Dracula"_s);
    preferences->setFoldCompletedTodo(true);
    preferences->setSyncDisabledByUser(true);
    auto *question = control<InlineQuestion>(Page::General, u"Reset all preferences"_s);
    const auto answer = [question](const QString &text) -> QPushButton * {
        for (auto *button : question->findChildren<QPushButton *>()) {
            if (button->isVisible() && button->text() == text) {
                return button;
            }
        }
        return nullptr;
    };
    question->button().setFocus();
    QTest::keyClick(&question->button(), Qt::Key_Space);
    EXPECT_TRUE(question->isAsking());
    ASSERT_EQ(QApplication::focusWidget(), answer(u"Cancel"_s)) << "a second key press must change nothing";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(question->isAsking());
    EXPECT_TRUE(question->isVisible()) << "Escape answers and does not close";
    EXPECT_EQ(preferences->appThemeName(), u"Dracula"_s);
    EXPECT_EQ(QApplication::focusWidget(), &question->button());
    int told = 0;
    const auto token =
        preferences->addObserver(u"currentAppThemeName"_s, [&told](const QString & /*keyPath*/) { ++told; });
    question->button().click();
    answer(u"Reset"_s)->click();
    EXPECT_EQ(preferences->appThemeName(), QString());
    EXPECT_FALSE(preferences->foldCompletedTodo());
    EXPECT_TRUE(preferences->syncDisabledByUser());
    EXPECT_GT(told, 0) << "who draws with the theme must know";
}

TEST_F(Preferences, TheTokenIsMadeHiddenCopiedAndRenewed)
{
    const auto visible = [this](const QString &name) -> QPushButton * {
        for (auto *button : show(Page::Automation).findChildren<QPushButton *>()) {
            if (button->isVisible() && (button->accessibleName() == name || button->text() == name)) {
                return button;
            }
        }
        return nullptr;
    };
    EXPECT_EQ(visible(u"Copy the token"_s), nullptr);
    EXPECT_FALSE(QBXurlTokenController().token()) << "looking at the page makes none";
    visible(u"Make a Token"_s)->click();
    const auto made = QBXurlTokenController().token();
    ASSERT_TRUE(made);
    EXPECT_EQ(visible(u"Make a Token"_s), nullptr);
    auto *field = control<QLineEdit>(Page::Automation, u"Token"_s);
    EXPECT_EQ(field->text(), *made);
    EXPECT_FALSE(field->displayText().contains(*made)) << "nobody reads it over a shoulder";
    EXPECT_TRUE(field->isReadOnly());
    visible(u"Copy the token"_s)->click();
    EXPECT_EQ(QApplication::clipboard()->text(), *made);
    visible(u"Show the token"_s)->click();
    EXPECT_EQ(field->displayText(), *made);
    visible(u"Hide the token"_s)->click();
    EXPECT_NE(field->displayText(), *made);
    visible(u"Renew…"_s)->click();
    visible(u"Renew"_s)->click();
    const auto renewed = QBXurlTokenController().token();
    ASSERT_TRUE(renewed);
    EXPECT_NE(*renewed, *made);
    EXPECT_EQ(field->text(), *renewed);
}

TEST_F(Preferences, TheActionsAreDescribedInPlace)
{
    PreferencesWindow &window = show(Page::Automation);
    control<QPushButton>(Page::Automation, u"All actions with examples"_s)->click();
    auto *text = window.findChild<QTextBrowser *>();
    ASSERT_NE(text, nullptr);
    EXPECT_TRUE(text->isVisible());
    EXPECT_TRUE(text->toPlainText().contains(u"quib://x-callback-url/create?title=Hello"_s));
}

TEST_F(Preferences, TheShortcutsAreFoundByTextAndByKeys)
{
    QAction open(u"&Open Quickly…"_s);
    open.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    QAction redo(u"Redo"_s);
    redo.setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    QAction silent(u"Merge"_s);
    commands = {&open, &redo, &silent};
    auto *page = static_cast<ShortcutsPage *>(show(Page::Shortcuts).pageWidget(Page::Shortcuts));
    const QString openRow = u"Open Quickly…: Ctrl+O"_s;
    const QString redoRow = u"Redo: Ctrl+Shift+Z or Ctrl+Y"_s;
    const std::pair<QString, QStringList> cases[] = {
        {u""_s, {openRow, redoRow}}, {u"quick"_s, {openRow}}, {u"ctrl+y"_s, {redoRow}},
        {u"ctrl re"_s, {redoRow}},   {u"merge"_s, {}},        {u"  OPEN  "_s, {openRow}},
    };
    for (const auto &[typed, shown] : cases) {
        page->field().setText(typed);
        EXPECT_EQ(page->shownShortcuts(), shown) << typed.toStdString();
    }
    QTest::keyClick(&page->field(), Qt::Key_Escape);
    EXPECT_TRUE(page->field().text().isEmpty());
    EXPECT_TRUE(page->isVisible()) << "the first Escape ends the search, not the window";
    commands = {&redo};
    show(Page::General);
    show(Page::Shortcuts);
    EXPECT_EQ(page->shownShortcuts(), QStringList{redoRow}) << "commands come and go with the windows";
}

} // namespace

} // namespace quib::tests

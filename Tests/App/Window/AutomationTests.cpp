#include "WindowFixture.h"

#include <Delegate/QBAppDelegate.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Support/QtPrinters.h>
#include <URL/QBURLPasteboard.h>
#include <Window/DesktopPasteboard.h>
#include <Window/EditorPane.h>
#include <Window/SearchField.h>

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// URLs, and what the desktop hands over, while somebody works in the window.
class Automation : public WindowFixture
{
protected:
    void open(const QString &actionAndQuery) const
    {
        EXPECT_TRUE(process().delegate().handleGetURLEvent(QUrl(u"quib://x-callback-url/"_s + actionAndQuery)));
        settle();
    }
    [[nodiscard]] QString shownText() const
    {
        return window().editor().textView().textStorage().stringWithExpandedTextAttachments();
    }
    void openAtEnd(const QString &title) const
    {
        selectRow(title);
        window().editor().focusEditor();
        window().editor().moveToEnd();
    }
};

TEST_F(Automation, WritesBehindWhatIsBeingTyped)
{
    launch({u"# Log"_s, u"# Other"_s});
    openAtEnd(u"Log"_s);
    type(u"\ntyped"_s);
    open(u"add-text?title=Log&text=added&open_note=no&show_window=no"_s);
    EXPECT_EQ(noteTitled(u"Log"_s)->text(), u"# Log\ntyped\nadded"_s);
    EXPECT_EQ(shownText(), u"# Log\ntyped\nadded"_s);
    EXPECT_EQ(notes().size(), 2) << "no copy in conflict";
    type(u"!"_s);
    window().saveNote(/*forceSave=*/false);
    EXPECT_TRUE(noteTitled(u"Log"_s)->text().contains(u'!'));
}

TEST_F(Automation, ANoteIsShownWithTheKeyboardWhereItWas)
{
    launch({u"# Soup"_s, u"# Bread"_s});
    window().editor().focusEditor();
    open(u"open-note?title=Soup"_s);
    EXPECT_EQ(window().editor().note()->title(), u"Soup"_s);
    EXPECT_FALSE(window().searchField().hasFocus());
    // Out of a search that does not find it, and out of another list.
    window().setCurrentSearch(u"soup"_s);
    settle();
    open(u"open-note?title=Bread"_s);
    EXPECT_EQ(window().editor().note()->title(), u"Bread"_s);
    EXPECT_TRUE(window().searchField().text().isEmpty());
    openList(u"QBNotesTrashSidebarItem"_s);
    open(u"open-note?title=Soup&edit=yes"_s);
    EXPECT_EQ(selectedRows(), QStringList{u"Soup"_s});
    EXPECT_TRUE(window().editor().textView().hasFocus());
}

TEST_F(Automation, ATagOutOfTheSidebarIsLookedForInAllNotes)
{
    launch({u"# Soup\n#garden"_s, u"# Bread"_s});
    noteTitled(u"Soup"_s)->setArchived(true);
    EXPECT_TRUE(moc().save());
    settle();
    openList(u"QBNotesTrashSidebarItem"_s);
    EXPECT_TRUE(rows().isEmpty());
    open(u"search?term=bread&tag=garden"_s);
    EXPECT_EQ(rows(), QStringList{u"Bread"_s});
}

TEST_F(Automation, ACopiedLinkIsPastedWithTheTitleOfItsPage)
{
    launch({u"# Links\n"_s});
    const QString link = u"https://example.com/a_(b)"_s;
    const auto copy = [](const QString &text) {
        auto *data = new QMimeData;
        data->setText(text);
        data->setData(u"application/x-other"_s, "kept");
        QGuiApplication::clipboard()->setMimeData(data);
        settle();
    };
    const auto pasted = [this] {
        openAtEnd(u"Links"_s);
        window().editor().textView().paste();
        const QString text = shownText().section(u'\n', 1);
        window().editor().textView().undo();
        return text;
    };
    copy(link);
    EXPECT_EQ(pasted(), link) << "nothing is known of it";
    QBURLPasteboard pasteboard(DesktopPasteboard::general());
    pasteboard.setTitle(u"A page\n[of] ours"_s, link);
    pasteboard.setURLAlreadyParsed(link);
    EXPECT_TRUE(pasteboard.urlAlreadyParsedForString(link));
    EXPECT_EQ(pasted(), u"[A page of ours](https://example.com/a_%28b%29)"_s);
    EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->data(u"application/x-other"_s), "kept")
        << "the clipboard is its owner's";
    type(u"("_s);
    window().editor().textView().paste();
    EXPECT_TRUE(shownText().contains(u"("_s + link)) << "within markup it stays what it is";
    copy(link);
    EXPECT_FALSE(pasteboard.urlAlreadyParsedForString(link)) << "another copy is looked up anew";
}

} // namespace

} // namespace quib::tests

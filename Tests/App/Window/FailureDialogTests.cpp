// What is told where there is no window yet: what is wrong, what to do, and where.

#include "WindowFixture.h"

#include <Support/QtPrinters.h>
#include <Window/FailureDialog.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// The dialog that is shown now.
FailureDialog *shownDialog()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *dialog = qobject_cast<FailureDialog *>(widget); dialog != nullptr && dialog->isVisible()) {
            return dialog;
        }
    }
    return nullptr;
}

/// As it is read: without what only keeps a path together.
QString plain(QString text)
{
    for (const char16_t mark : {u'\u2060', u'\u2066', u'\u2069'}) {
        text.remove(mark);
    }
    return text;
}

QStringList buttons(const FailureDialog &dialog)
{
    QStringList texts;
    for (const QAbstractButton *button : dialog.buttons()) {
        texts.append(button->text());
    }
    texts.sort();
    return texts;
}

TEST(FailureDialog, APathIsNotTornApartAndNothingInItIsMarkup)
{
    const FailureDialog dialog(u"Wrong <b>now</b>"_s, u"Do this."_s, u"/home/me/<i>a</i>/b"_s, {u"Quit"_s, u"Show"_s});
    EXPECT_EQ(dialog.icon(), QMessageBox::Warning);
    EXPECT_EQ(dialog.textFormat(), Qt::PlainText);
    EXPECT_EQ(dialog.text(), u"Wrong <b>now</b>"_s);
    EXPECT_EQ(plain(dialog.informativeText()), u"Do this.\n\n/home/me/<i>a</i>/b"_s);
    for (qsizetype slash = -1; (slash = dialog.informativeText().indexOf(u'/', slash + 1)) >= 0;) {
        EXPECT_EQ(dialog.informativeText().at(slash + 1), QChar(0x2060)) << "a line could end after it";
    }
}

TEST(FailureDialog, ToCloseItIsToPressTheFirstButton)
{
    FailureDialog dialog(u"Wrong"_s, u"Do this."_s, QString(), {u"Quit"_s, u"Show"_s});
    dialog.open();
    EXPECT_EQ(plain(dialog.informativeText()), u"Do this."_s);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.pressedButton(), 0);
    dialog.open();
    dialog.buttons().constLast()->click();
    EXPECT_EQ(dialog.pressedButton(), dialog.buttons().constLast()->text() == u"Show"_s ? 1 : 0);
}

TEST(FailureDialog, NotesThatCannotBeHadAreToldWithTheReason)
{
    struct Case
    {
        const char *name;
        NSError error;
        QString headline;
        QString advice;
    };
    const auto cocoa = [](NSCocoaErrorCode code, qint64 cause) {
        return NSError(kNSCocoaErrorDomain.toString(), static_cast<qint64>(code), u"cannot open it"_s, cause);
    };
    const Case cases[] = {
        {"read-only", cocoa(NSCocoaErrorCode::FileWriteVolumeReadOnly, EROFS), u"Your notes cannot be written to"_s,
         u"(Read-only file system)"_s},
        {"full", cocoa(NSCocoaErrorCode::FileWriteOutOfSpace, ENOSPC), u"Your notes cannot be written to"_s,
         u"(No space left on device)"_s},
        {"of no known cause", NSError(u"X"_s, 1, u"cannot open it"_s), u"Your notes cannot be written to"_s,
         u"(cannot open it)"_s},
        {"in use", cocoa(NSCocoaErrorCode::FileLocking, 4711), u"Your notes are in use"_s, u"Another Quib"_s},
    };
    for (const Case &one : cases) {
        SCOPED_TRACE(one.name);
        bool isSeen = false;
        QTimer::singleShot(0, qApp, [&] {
            FailureDialog *dialog = shownDialog();
            ASSERT_NE(dialog, nullptr);
            isSeen = true;
            EXPECT_EQ(dialog->text(), one.headline);
            EXPECT_TRUE(dialog->informativeText().contains(one.advice)) << dialog->informativeText().toStdString();
            EXPECT_TRUE(plain(dialog->informativeText()).endsWith(u"/the/folder"));
            EXPECT_EQ(buttons(*dialog), (QStringList{u"Quit"_s, u"Show Folder"_s}));
            dialog->reject();
        });
        WindowFrontEnd frontEnd;
        frontEnd.profileCannotBeHad(one.error, u"/the/folder"_s);
        EXPECT_TRUE(isSeen);
    }
}

class UnreadableStore : public WindowFixture
{
};

TEST_F(UnreadableStore, IsToldInsteadOfAWindow)
{
    const QString path = folder.write(u"profile/QBTEAM0000.net.quibworks.quib/Application Data/database.sqlite"_s,
                                      QByteArray(8192, 'x'));
    WindowInterface *interface = nullptr;
    {
        auto made = std::make_unique<WindowInterface>();
        interface = made.get();
        QuibProcess process(std::move(made), [](const QUrl &) { return true; });
        ASSERT_EQ(process.stack().persistentStoreURL(), path) << "the file stands where the store would";
        process.launch();
        settle();
        EXPECT_FALSE(interface->window()->isVisible());
        FailureDialog *dialog = shownDialog();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->icon(), QMessageBox::Warning);
        EXPECT_EQ(dialog->text(), u"Your notes could not be opened"_s);
        EXPECT_TRUE(plain(dialog->informativeText()).endsWith(path)) << dialog->informativeText().toStdString();
        EXPECT_EQ(buttons(*dialog), (QStringList{u"Quit"_s, u"Show Folder"_s}));
        dialog->reject();
        settle();
        EXPECT_EQ(shownDialog(), nullptr);
    }
    EXPECT_EQ(folder.read(u"profile/QBTEAM0000.net.quibworks.quib/Application Data/database.sqlite"_s),
              QByteArray(8192, 'x'));
}

} // namespace

} // namespace quib::tests

// What the window tells and does while the notes cannot be saved.

#include "WindowFixture.h"

#include <Platform/Store/FullDisk.h>
#include <Platform/Store/StoreDamage.h>
#include <Store/NSManagedObjectContext.h>
#include <Support/FakeClock.h>
#include <Support/QtPrinters.h>
#include <Window/DetachedWindow.h>
#include <Window/EditorPane.h>
#include <Window/MessageBar.h>
#include <Window/QuickNoteWindow.h>
#include <Window/SavingMessage.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

constexpr auto kDiskIsFull = "Your notes cannot be saved: the disk is full."_L1;

/// The application on a disk that can be filled up, with a clock that stands still.
class Saving : public WindowFixture
{
protected:
    Saving() { storeOptions.vfsName = FullDisk::name(); }
    ~Saving() override
    {
        freeDisk();
        quit();
    }

    void fillDisk() { FullDisk::setFull(true); }
    void freeDisk() { FullDisk::setFull(false); }
    /// Writes behind the end of a note that is selected, and saves as the pause after typing does.
    void write(const QString &title, const QString &text)
    {
        selectRow(title);
        window().editor().focusEditor();
        window().editor().moveToEnd();
        type(text);
        m_clock.advance(2);
        settle();
    }
    [[nodiscard]] MessageBar &bar() const { return window().saving().bar(); }
    /// Whether some label of the window says this.
    [[nodiscard]] bool says(const QString &text) const
    {
        const auto labels = window().findChildren<QLabel *>();
        return std::ranges::any_of(
            labels, [&text](const QLabel *label) { return label->isVisible() && label->text().contains(text); });
    }
    /// What another program would find on the disk: the texts of a second start.
    [[nodiscard]] QStringList textsAfterRestart()
    {
        quit();
        launch();
        QStringList texts;
        for (const auto &note : notes()) {
            texts.append(note->text());
        }
        texts.sort();
        return texts;
    }
    void advance(double seconds)
    {
        m_clock.advance(seconds);
        settle();
    }

private:
    FakeClock m_clock;
};

TEST_F(Saving, AFullDiskIsToldWhileItLastsAndTypingGoesOn)
{
    launch({u"# One"_s});
    EXPECT_EQ(bar().text(), QString());
    fillDisk();
    write(u"One"_s, u" more"_s);
    EXPECT_TRUE(bar().text().startsWith(kDiskIsFull)) << bar().text().toStdString();
    EXPECT_TRUE(window().editor().textView().hasFocus()) << "the message takes the keyboard from nobody";
    EXPECT_TRUE(says(u"Not saved yet"_s));
    EXPECT_FALSE(says(u"Edited "_s));
    press(Qt::Key_Escape);
    EXPECT_FALSE(bar().text().isEmpty()) << "it cannot be sent away";
    window().messages().say(u"something else"_s);
    EXPECT_FALSE(bar().text().isEmpty()) << "nor pushed aside";
    bar().press(0);
    EXPECT_TRUE(bar().text().startsWith(kDiskIsFull)) << "another try that failed";

    freeDisk();
    bar().press(0);
    settle();
    EXPECT_EQ(bar().text(), QString());
    EXPECT_FALSE(says(u"Not saved yet"_s));
    EXPECT_TRUE(says(u"Edited "_s));
    EXPECT_EQ(textsAfterRestart(), QStringList{u"# One more"_s});
}

TEST_F(Saving, ItIsTriedAgainWithoutBeingAsked)
{
    launch({u"# One"_s});
    fillDisk();
    write(u"One"_s, u" more"_s);
    advance(2);
    EXPECT_FALSE(bar().text().isEmpty());
    freeDisk();
    advance(QBCoreDataStack::kLastRetry);
    EXPECT_EQ(bar().text(), QString());
    EXPECT_FALSE(moc().hasChanges());
    EXPECT_EQ(textsAfterRestart(), QStringList{u"# One more"_s});
}

TEST_F(Saving, WhatACommandOfTheListCouldNotSaveIsTold)
{
    launch({u"# One"_s, u"# Two"_s});
    selectRow(u"One"_s);
    fillDisk();
    trigger(u"trash"_s);
    advance(0);
    EXPECT_TRUE(bar().text().startsWith(kDiskIsFull)) << bar().text().toStdString();
    freeDisk();
    bar().press(0);
    EXPECT_EQ(bar().text(), QString());
    EXPECT_EQ(textsAfterRestart().size(), 2);
    EXPECT_EQ(rows(), QStringList{u"Two"_s});
}

TEST_F(Saving, AnEndThatWouldLoseWhatWasTypedIsAskedFor)
{
    launch({u"# One"_s});
    int ends = 0;
    window().setTerminate([&ends] { ++ends; });
    fillDisk();
    selectRow(u"One"_s);
    window().editor().focusEditor();
    window().editor().moveToEnd();
    type(u" more"_s); // not saved yet when the window is closed
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(ends, 0);
    EXPECT_TRUE(bar().isAsking());
    EXPECT_TRUE(bar().text().startsWith(kDiskIsFull)) << bar().text().toStdString();
    EXPECT_TRUE(bar().text().contains(u"if you quit now"));
    // Return takes the harmless answer, and a try that fails asks again.
    press(Qt::Key_Return);
    EXPECT_TRUE(bar().isAsking());
    EXPECT_EQ(ends, 0);
    // Who stays is still told.
    press(Qt::Key_Escape);
    EXPECT_FALSE(bar().isAsking());
    EXPECT_TRUE(bar().text().startsWith(kDiskIsFull));
    EXPECT_EQ(ends, 0);
    // Asked twice, and room was made meanwhile: the end that was wished for comes.
    EXPECT_FALSE(window().close());
    EXPECT_FALSE(window().close());
    EXPECT_TRUE(bar().isAsking());
    freeDisk();
    bar().press(0);
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(bar().text(), QString());
    EXPECT_EQ(textsAfterRestart(), QStringList{u"# One more"_s});
}

TEST_F(Saving, TheEndIsNotForcedOnAnybodyWhoWaitedForTheDisk)
{
    launch({u"# One"_s});
    int ends = 0;
    window().setTerminate([&ends] { ++ends; });
    fillDisk();
    write(u"One"_s, u" more"_s);
    EXPECT_FALSE(window().close());
    freeDisk();
    advance(QBCoreDataStack::kLastRetry);
    EXPECT_EQ(bar().text(), QString());
    EXPECT_EQ(ends, 0);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(Saving, WhoWantsToQuitWithoutSavingDoes)
{
    launch({u"# One"_s});
    int ends = 0;
    window().setTerminate([&ends] { ++ends; });
    fillDisk();
    write(u"One"_s, u" more"_s);
    EXPECT_FALSE(window().close());
    bar().press(1);
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(window().close()) << "the end closes all windows, and is not stopped any more";
}

TEST_F(Saving, TheSystemEndsTheProcessWithoutAQuestion)
{
    launch({u"# One"_s});
    fillDisk();
    write(u"One"_s, u" more"_s);
    process().interface().terminate();
    EXPECT_TRUE(bar().isAsking());
    bar().press(2);
    process().interface().terminateWithoutAsking();
    EXPECT_FALSE(bar().isAsking());
    EXPECT_TRUE(window().close());
}

TEST_F(Saving, EveryWindowThatIsWrittenInTellsIt)
{
    launch({u"# One"_s, u"# Two"_s});
    selectRow(u"One"_s);
    trigger(u"open-in-window"_s);
    trigger(u"quick-note"_s);
    const auto saysIn = [](const QWidget &widget) {
        const auto labels = widget.findChildren<QLabel *>();
        return std::ranges::any_of(labels, [](const QLabel *label) {
            return !label->isHidden() && label->parentWidget()->isVisible() && label->text().startsWith(kDiskIsFull);
        });
    };
    const auto detached = [] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *found = qobject_cast<DetachedWindow *>(widget); found != nullptr) {
                return found;
            }
        }
        return static_cast<DetachedWindow *>(nullptr);
    }();
    ASSERT_NE(detached, nullptr);
    fillDisk();
    detached->editor().focusEditor();
    detached->editor().moveToEnd();
    QTest::keyClicks(&detached->editor().textView(), u" more"_s);
    detached->editor().saveNote(/*forceSave=*/false);
    settle();
    EXPECT_TRUE(saysIn(*detached));
    EXPECT_TRUE(saysIn(*window().quickNote()));
    EXPECT_TRUE(saysIn(window()));
    freeDisk();
    advance(2);
    EXPECT_FALSE(saysIn(*detached));
    EXPECT_FALSE(saysIn(*window().quickNote()));
    EXPECT_FALSE(saysIn(window()));
}

/// The application on a file whose rows cannot be read.
class Damaged : public WindowFixture
{
protected:
    void damageFile()
    {
        launch({u"# One"_s, u"# Two"_s});
        m_path = process().stack().persistentStoreURL();
        quit();
        damageRows(m_path);
    }
    [[nodiscard]] QByteArray bytes() const
    {
        QFile file(m_path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

private:
    QString m_path;
};

TEST_F(Damaged, ItIsToldThatTheStoreCouldNotBeReadAndNothingIsWritten)
{
    damageFile();
    const QByteArray before = bytes();
    launch();
    EXPECT_TRUE(window().saving().bar().text().contains(u"quibctl check"))
        << window().saving().bar().text().toStdString();
    EXPECT_TRUE(rows().isEmpty());
    QStringList labels;
    for (const QLabel *label : window().findChildren<QLabel *>()) {
        labels.append(label->isVisible() ? label->text() : QString());
    }
    EXPECT_TRUE(labels.contains(u"Your notes could not be read"_s));
    EXPECT_FALSE(labels.contains(u"Write your first note"_s)) << "this is no empty store";
    for (const QString &name : {u"new-note"_s, u"new-note-in-window"_s, u"quick-note"_s}) {
        EXPECT_FALSE(window().action(name)->isEnabled()) << name.toStdString();
    }
    window().addNewNote();
    window().addNewNoteInNewWindow();
    EXPECT_FALSE(window().showQuickNote());
    EXPECT_FALSE(moc().hasChanges());
    quit();
    EXPECT_EQ(bytes(), before);
}

} // namespace

} // namespace quib::tests

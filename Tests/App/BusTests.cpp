// The program in a user's session: started by the bus, found by a second one, without a bus, and its end.

#include "BusFixture.h"

#include <QUrl>
#include <QUrlQuery>

#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

class Bus : public BusFixture
{
protected:
    static constexpr auto kOpen = "org.freedesktop.Application.Open"_L1;

    [[nodiscard]] static QString create(const QString &title, const QString &text)
    {
        return u"quib://x-callback-url/create?title=%1&text=%2&x-success=app://ok"_s.arg(
            title, QString::fromLatin1(QUrl::toPercentEncoding(text)));
    }
    /// What a callback's URL tells.
    [[nodiscard]] QString nextCallback(const QString &key) const
    {
        return QUrlQuery(QUrl(nextLine(u"callbacks"_s)).query()).queryItemValue(key, QUrl::FullyDecoded);
    }
};

TEST_F(Bus, TheBusStartsQuibForAURLAndItsAnswerIsOpened)
{
    startBus();
    const auto opened = call(kOpen, {u"['%1']"_s.arg(create(u"Plan"_s, u"Call #work"_s)), u"{}"_s});
    ASSERT_EQ(opened.exitStatus, 0) << opened.messages.toStdString();
    const QString identifier = nextCallback(u"identifier"_s);
    EXPECT_EQ(quibctl({u"show"_s, identifier}), u"# Plan\nCall #work"_s);

    // A second program hands over to the one that runs.
    EXPECT_EQ(quib({create(u"Second"_s, u"more"_s)}).exitStatus, 0);
    EXPECT_EQ(nextCallback(u"title"_s), u"Second"_s);
    EXPECT_EQ(texts(), (QStringList{u"# Plan\nCall #work"_s, u"# Second\nmore"_s}));

    // And so does the desktop.
    EXPECT_EQ(run(u"xdg-open"_s, {create(u"Third"_s, u"from the desktop"_s)}).exitStatus, 0);
    const QString third = nextCallback(u"identifier"_s);
    EXPECT_EQ(quibctl({u"show"_s, third}), u"# Third\nfrom the desktop"_s);

    // Asked to quit, it ends well, and everything is there.
    EXPECT_EQ(call(u"org.freedesktop.Application.ActivateAction"_s, {u"quit"_s, u"[]"_s, u"{}"_s}).exitStatus, 0);
    EXPECT_EQ(nextLine(u"ended"_s), u"ended 0"_s);
    EXPECT_EQ(texts().size(), 3);
    EXPECT_EQ(run(quibctlProgram(), {u"check"_s}).exitStatus, 0);
}

TEST_F(Bus, ItEndsInOrderWithTheSession)
{
    startBus();
    ASSERT_EQ(call(kOpen, {u"['%1']"_s.arg(create(u"Kept"_s, u"text"_s)), u"{}"_s}).exitStatus, 0);
    EXPECT_EQ(nextCallback(u"title"_s), u"Kept"_s);
    endBus();
    EXPECT_EQ(nextLine(u"ended"_s), u"ended 0"_s);
    EXPECT_EQ(texts(), QStringList{u"# Kept\ntext"_s});
}

TEST_F(Bus, ASignalEndsItInOrder)
{
    startBus();
    const auto running = startQuib();
    EXPECT_EQ(quib({u"--send"_s}, "text on the way").exitStatus, 0);
    EXPECT_EQ(terminate(*running), 0);
    EXPECT_EQ(texts(), QStringList{u"text on the way"_s});
}

TEST_F(Bus, WhatIsSentBecomesANoteWithAndWithoutARunningOne)
{
    startBus();
    const QString file = folder.write(u"a file.txt"_s, "bytes");
    const auto sendAll = [&] {
        EXPECT_EQ(quib({u"--send"_s, u"-"_s}, "standard #input\n").exitStatus, 0);
        EXPECT_EQ(quib({u"--send"_s, u"https://example.com/a?b=c"_s, u"https://example.com/d"_s}).exitStatus, 0);
        EXPECT_EQ(quib({u"--send"_s, file}).exitStatus, 0);
    };
    sendAll();
    EXPECT_EQ(texts().size(), 3);
    const auto running = startQuib();
    sendAll();
    EXPECT_EQ(call(u"net.quibworks.Quib.SendText"_s, {u"'over the bus'"_s}).exitStatus, 0);
    EXPECT_EQ(terminate(*running), 0);
    const QStringList all = texts();
    EXPECT_EQ(all.size(), 7);
    EXPECT_EQ(all.count(u"standard #input\n"_s), 2);
    EXPECT_EQ(all.count(u"https://example.com/a?b=c\nhttps://example.com/d"_s), 2);
    EXPECT_EQ(all.count(u"over the bus"_s), 1);
    EXPECT_EQ(all.filter(u"/a file.txt]"_s).size(), 2);
    EXPECT_EQ(run(quibctlProgram(), {u"check"_s}).exitStatus, 0);
}

TEST_F(Bus, ATextOfAnyContentArrives)
{
    startBus();
    const auto running = startQuib();
    const QByteArray text = QByteArray("a\0b", 3) + u"\uFEFF\uFFFC😀"_s.toUtf8();
    EXPECT_EQ(quib({u"--send"_s}, text).exitStatus, 0);
    const QByteArray large(8 * 1024 * 1024, 'x');
    EXPECT_EQ(quib({u"--send"_s}, large).exitStatus, 0);
    EXPECT_EQ(terminate(*running), 0);
    EXPECT_EQ(texts(), (QStringList{QString::fromUtf8(text), QString::fromLatin1(large)}));
}

TEST_F(Bus, ManyAtOnceLoseNothing)
{
    startBus();
    std::vector<std::unique_ptr<QProcess>> senders;
    for (int i = 0; i < 8; ++i) {
        auto &sender = senders.emplace_back(std::make_unique<QProcess>());
        sender->setProcessEnvironment(environment);
        sender->start(quibProgram(), {u"--send"_s});
        sender->write("note " + QByteArray::number(i));
        sender->closeWriteChannel();
    }
    QStringList expected;
    for (int i = 0; i < 8; ++i) {
        auto &sender = *senders[static_cast<size_t>(i)];
        EXPECT_TRUE(sender.waitForFinished(120'000));
        EXPECT_EQ(sender.exitCode(), 0) << sender.readAllStandardError().toStdString();
        expected.append(u"note %1"_s.arg(i));
    }
    EXPECT_EQ(texts(), expected);
}

TEST_F(Bus, EachProfileHasAnInstanceOfItsOwn)
{
    startBus();
    const QString other = folder.path(u"other"_s);
    const auto first = startQuib();
    const auto second = startQuib({u"--profile"_s, other});
    EXPECT_EQ(quib({u"--profile"_s, other, u"--send"_s}, "theirs").exitStatus, 0);
    EXPECT_EQ(quib({u"--send"_s}, "ours").exitStatus, 0);
    EXPECT_EQ(terminate(*first), 0);
    EXPECT_EQ(terminate(*second), 0);
    EXPECT_EQ(texts(), QStringList{u"ours"_s});
    EXPECT_TRUE(quibctl({u"--profile"_s, other, u"list"_s}).contains(u"theirs"_s));
}

TEST_F(Bus, WithoutABusTheProfileIsGuarded)
{
    const auto running = startQuib();
    const auto refused = quib({u"--send"_s}, "text");
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_TRUE(refused.messages.contains("there is no session bus to reach the other one over"))
        << refused.messages.toStdString();
    EXPECT_EQ(quib({u"--service"_s}).exitStatus, 1);
    EXPECT_EQ(terminate(*running), 0);
    EXPECT_EQ(quib({u"--send"_s}, "text").exitStatus, 0);
    EXPECT_EQ(texts(), QStringList{u"text"_s});
}

TEST_F(Bus, ADisplayThatDoesNotAnswerIsNone)
{
    environment.remove(u"QT_QPA_PLATFORM"_s);
    environment.insert(u"DISPLAY"_s, u":54321"_s);
    environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
    startBus();
    const auto running = startQuib(); // which waits until it says that it has no window
    EXPECT_EQ(terminate(*running), 0);
    EXPECT_EQ(quib({u"--new-note"_s}).exitStatus, 1);
}

TEST_F(Bus, WhatNeedsAWindowIsRefusedWhereThereIsNone)
{
    startBus();
    EXPECT_EQ(quib({u"--new-note"_s}).exitStatus, 1);
    const auto running = startQuib();
    const auto refused = quib({u"--search"_s, u"two"_s, u"words"_s});
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_TRUE(refused.messages.contains("without a window")) << refused.messages.toStdString();
    EXPECT_EQ(terminate(*running), 0);
}

TEST_F(Bus, CallsThatDoNotFitAreAnsweredWithAnError)
{
    startBus();
    const auto running = startQuib();
    EXPECT_NE(call(kOpen, {u"'no list'"_s, u"{}"_s}).exitStatus, 0);
    EXPECT_NE(call(u"org.freedesktop.Application.NoSuch"_s, {}).exitStatus, 0);
    EXPECT_NE(call(u"org.freedesktop.Application.ActivateAction"_s, {u"nosuch"_s, u"[]"_s, u"{}"_s}).exitStatus, 0);
    EXPECT_NE(call(u"net.quibworks.Quib.SendURIs"_s, {u"@as []"_s}).exitStatus, 0);
    EXPECT_EQ(call(u"net.quibworks.Quib.CurrentNoteTitle"_s, {}).output, "('',)\n");
    EXPECT_EQ(call(u"net.quibworks.Quib.ContinueActivity"_s, {u"{'isTrash': <true>}"_s}).output, "(false,)\n");
    EXPECT_EQ(call(kOpen, {u"['http://example.com', 'quib://x-callback-url/nosuch', '']"_s, u"{}"_s}).exitStatus, 0)
        << "taken, and found to be nothing";
    EXPECT_EQ(terminate(*running), 0);
    EXPECT_TRUE(texts().isEmpty());
}

} // namespace quib::tests

#include <Foundation/NSError.h>
#include <Store/ProfileLock.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>

#include <atomic>
#include <csignal>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// Another process, made by fork, that runs one function and tells by a byte when it is ready.
class OtherProcess
{
public:
    template <typename Function> explicit OtherProcess(Function function)
    {
        int ends[2];
        EXPECT_EQ(::pipe(ends), 0);
        m_process = ::fork();
        if (m_process == 0) {
            const char answer = function() ? 'y' : 'n';
            static_cast<void>(!::write(ends[1], &answer, 1));
            for (;;) {
                ::pause();
            }
        }
        EXPECT_EQ(::read(ends[0], &m_answer, 1), 1);
        ::close(ends[0]);
        ::close(ends[1]);
    }
    ~OtherProcess() { kill(); }

    [[nodiscard]] bool answer() const { return m_answer == 'y'; }
    void kill()
    {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            ::waitpid(m_process, nullptr, 0);
            m_process = 0;
        }
    }

private:
    pid_t m_process = 0;
    char m_answer = 0;
};

} // namespace

class ProfileLockTests : public testing::Test
{
protected:
    [[nodiscard]] QString path() const { return folder.path(); }
    [[nodiscard]] std::optional<ProfileLock> acquire() { return ProfileLock::acquire(path(), &error); }
    [[nodiscard]] qint64 code() const { return error.code(); }

    TemporaryFolder folder;
    NSError error;
};

TEST_F(ProfileLockTests, OnlyOneHolderAtATime)
{
    EXPECT_FALSE(ProfileLock::isHeld(path()));
    auto first = acquire();
    ASSERT_TRUE(first);
    EXPECT_TRUE(ProfileLock::isHeld(path()));
    EXPECT_EQ(ProfileLock::holder(path()), ::getpid());

    EXPECT_FALSE(acquire());
    EXPECT_EQ(code(), static_cast<qint64>(NSCocoaErrorCode::FileLocking));
    EXPECT_EQ(error.causeCode(), ::getpid());
    EXPECT_TRUE(error.localizedDescription().contains(QString::number(::getpid())));

    first.reset();
    EXPECT_FALSE(ProfileLock::isHeld(path()));
    EXPECT_TRUE(acquire());
}

TEST_F(ProfileLockTests, AskingMakesAndKeepsNothing)
{
    EXPECT_FALSE(ProfileLock::isHeld(path()));
    EXPECT_FALSE(QFileInfo::exists(path() + u"/application.lock"_s));
    const auto held = acquire();
    ASSERT_TRUE(held);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(ProfileLock::isHeld(path()));
    }
    EXPECT_FALSE(acquire());
}

TEST_F(ProfileLockTests, IsLetGoWhenTheHolderIsKilled)
{
    OtherProcess other([this] {
        static auto held = acquire();
        return held.has_value();
    });
    ASSERT_TRUE(other.answer());
    EXPECT_TRUE(ProfileLock::isHeld(path()));
    EXPECT_FALSE(acquire());
    other.kill();
    EXPECT_FALSE(ProfileLock::isHeld(path()));
    EXPECT_TRUE(acquire());
}

TEST_F(ProfileLockTests, TheFileIsTheUsersAlone)
{
    const auto held = acquire();
    ASSERT_TRUE(held);
    EXPECT_EQ(QFile::permissions(path() + u"/application.lock"_s) &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
}

TEST_F(ProfileLockTests, AnythingThatIsNoFileIsRefusedAndNotFollowed)
{
    folder.write(u"elsewhere"_s, "kept");
    ASSERT_TRUE(QFile::link(path() + u"/elsewhere"_s, path() + u"/application.lock"_s));
    EXPECT_FALSE(acquire());
    EXPECT_TRUE(error.isSet());
    EXPECT_FALSE(ProfileLock::isHeld(path()));
    QFile kept(path() + u"/elsewhere"_s);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "kept");
}

TEST_F(ProfileLockTests, ACompanionKnowsWhetherAnApplicationIsThere)
{
    {
        const auto turn = CompanionTurn::begin(path(), &error);
        ASSERT_TRUE(turn);
        EXPECT_FALSE(turn->isApplicationPresent());
        const auto other = CompanionTurn::begin(path(), &error);
        ASSERT_TRUE(other) << "companions exclude each other";
        EXPECT_FALSE(other->isApplicationPresent());
    }
    const auto held = acquire();
    ASSERT_TRUE(held);
    const auto turn = CompanionTurn::begin(path(), &error);
    ASSERT_TRUE(turn);
    EXPECT_TRUE(turn->isApplicationPresent());
}

TEST_F(ProfileLockTests, AnApplicationWaitsForTurnsThatBeganBeforeIt)
{
    auto turn = CompanionTurn::begin(path(), &error);
    ASSERT_TRUE(turn);
    std::atomic<bool> isTurnOver = false;
    std::atomic<bool> wasTurnOver = false;
    std::thread application([&] {
        NSError failure;
        const auto held = ProfileLock::acquire(path(), &failure);
        wasTurnOver = isTurnOver.load();
        EXPECT_TRUE(held) << failure.localizedDescription().toStdString();
    });
    while (!ProfileLock::isHeld(path())) {
        std::this_thread::yield();
    }
    // It has the profile and waits; companions that come now do not hold it up, and know of it.
    const auto late = CompanionTurn::begin(path(), &error);
    ASSERT_TRUE(late);
    EXPECT_TRUE(late->isApplicationPresent());
    isTurnOver = true;
    turn.reset();
    application.join();
    EXPECT_TRUE(wasTurnOver);
}

TEST_F(ProfileLockTests, ATurnEndsWithItsProcess)
{
    OtherProcess other([this] {
        static auto turn = CompanionTurn::begin(path(), &error);
        return turn.has_value() && !turn->isApplicationPresent();
    });
    ASSERT_TRUE(other.answer());
    other.kill();
    EXPECT_TRUE(acquire());
}

} // namespace quib::tests

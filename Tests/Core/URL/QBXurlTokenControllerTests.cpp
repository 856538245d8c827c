#include <Files/Profile.h>
#include <Support/FakeClock.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>
#include <URL/QBXurlTokenController.h>

#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

class QBXurlTokenControllerTest : public testing::Test
{
protected:
    QBXurlTokenControllerTest() { Profile::setRoot(folder.path()); }
    ~QBXurlTokenControllerTest() override { Profile::setRoot({}); }

    [[nodiscard]] static QString file(const QBXurlTokenController &controller)
    {
        return controller.baseURL().toLocalFile() + u"/url.token"_s;
    }

    TemporaryFolder folder;
    FakeClock clock;
};

TEST_F(QBXurlTokenControllerTest, HasNoneUntilOneIsMade)
{
    const QBXurlTokenController controller;
    EXPECT_EQ(controller.token(), std::nullopt);
    EXPECT_FALSE(controller.isTokenValid({}));
    EXPECT_FALSE(controller.isTokenValid(u"000000-000000-000000"_s));
    EXPECT_TRUE(QFileInfo(controller.baseURL().toLocalFile()).isDir());
}

TEST_F(QBXurlTokenControllerTest, MakesOneAndNeverReplacesIt)
{
    QBXurlTokenController controller;
    const QString token = controller.generateToken();
    EXPECT_TRUE(QRegularExpression(u"\\A[0-9A-F]{6}-[0-9A-F]{6}-[0-9A-F]{6}\\z"_s).match(token).hasMatch())
        << token.toStdString();
    clock.advance(86400);
    EXPECT_EQ(controller.generateToken(), token);
    EXPECT_EQ(QBXurlTokenController().generateToken(), token);
    EXPECT_EQ(controller.token(), token);
    EXPECT_TRUE(controller.isTokenValid(token));
    EXPECT_FALSE(controller.isTokenValid(token.toLower()));
}

TEST_F(QBXurlTokenControllerTest, DerivesTheDigitsFromTheDate)
{
    // From "Jul 14, 2017, 4:40 AM"; the blank before "AM" is a narrow one in newer releases of ICU.
    QBXurlTokenController controller;
    const QString token = controller.generateToken();
    EXPECT_TRUE(token == u"28E5DF-02F064-8E161D"_s || token == u"4F756E-DCFD48-63BEE1"_s) << token.toStdString();
}

TEST_F(QBXurlTokenControllerTest, IsForItsUserAlone)
{
    QBXurlTokenController controller;
    static_cast<void>(controller.generateToken());
    struct stat found = {};
    ASSERT_EQ(::stat(QFile::encodeName(file(controller)).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0600U);
    // However it came to be open to others, asking for it closes it.
    ASSERT_EQ(::chmod(QFile::encodeName(file(controller)).constData(), 0644), 0);
    static_cast<void>(controller.generateToken());
    ASSERT_EQ(::stat(QFile::encodeName(file(controller)).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0600U);
    ASSERT_EQ(::stat(QFile::encodeName(controller.baseURL().toLocalFile()).constData(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0700U);
}

TEST_F(QBXurlTokenControllerTest, LosesItWithItsFile)
{
    QBXurlTokenController controller;
    const QString first = controller.generateToken();
    ASSERT_TRUE(QFile::remove(file(controller)));
    EXPECT_FALSE(controller.isTokenValid(first));
    clock.advance(3600);
    const QString second = controller.generateToken();
    EXPECT_NE(second, first);
    EXPECT_FALSE(controller.isTokenValid(first));
    EXPECT_TRUE(controller.isTokenValid(second));
}

TEST_F(QBXurlTokenControllerTest, RenewsItWithinTheSameMinute)
{
    QBXurlTokenController controller;
    QStringList tokens{controller.generateToken()};
    for (int i = 0; i < 3; ++i) {
        const QString token = controller.renewToken();
        EXPECT_TRUE(QRegularExpression(u"\\A[0-9A-F]{6}-[0-9A-F]{6}-[0-9A-F]{6}\\z"_s).match(token).hasMatch())
            << token.toStdString();
        EXPECT_TRUE(controller.isTokenValid(token));
        EXPECT_EQ(controller.generateToken(), token);
        for (const QString &old : std::as_const(tokens)) {
            EXPECT_FALSE(controller.isTokenValid(old));
        }
        tokens.append(token);
    }
    EXPECT_FALSE(QFile::permissions(file(controller)) & (QFile::ReadGroup | QFile::ReadOther));
}

TEST_F(QBXurlTokenControllerTest, TakesAnEmptyFileForNone)
{
    QBXurlTokenController controller;
    QFile empty(file(controller));
    ASSERT_TRUE(empty.open(QFile::WriteOnly));
    empty.close();
    EXPECT_FALSE(controller.isTokenValid({}));
    const QString made = controller.generateToken();
    EXPECT_TRUE(controller.isTokenValid(made));
    EXPECT_FALSE(QFile::permissions(file(controller)) & (QFile::ReadGroup | QFile::ReadOther));
}

TEST_F(QBXurlTokenControllerTest, ComparesEveryUnit)
{
    const QString token = u"0123AB-4567CD-89EF01"_s;
    EXPECT_TRUE(QBXurlTokenController::areEqualInConstantTime(token, token));
    for (qsizetype i = 0; i < token.size(); ++i) {
        QString other = token;
        other[i] = QChar(static_cast<char16_t>(other[i].unicode() ^ 0x100));
        EXPECT_FALSE(QBXurlTokenController::areEqualInConstantTime(token, other)) << i;
        EXPECT_FALSE(QBXurlTokenController::areEqualInConstantTime(token, token.first(i))) << i;
    }
}

} // namespace
} // namespace quib::tests

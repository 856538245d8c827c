// What is logged where, when, and in which order.

#include <Files/NSUserDefaults.h>
#include <Files/Profile.h>
#include <Logging/LogSinks.h>
#include <Logging/QBDeviceInfoLogger.h>
#include <Logging/QBLogger.h>
#include <Support/FakeClock.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using quib::PropertyValue;
using quib::tests::FakeClock;
using quib::tests::TemporaryFolder;

namespace {

/// Keeps the lines that it is given, each with its bit.
class MemorySink final : public LogSink
{
public:
    explicit MemorySink(QStringList *lines)
        : m_lines(lines)
    {
    }
    void write(int bit, const QString &line) override { m_lines->append(QString::number(bit) % u' ' % line); }

private:
    QStringList *m_lines;
};

class Logging : public testing::Test
{
protected:
    Logging()
    {
        quib::Profile::setRoot(m_folder.path());
        QBLogger::setLogLevel(0);
    }
    ~Logging() override
    {
        QBLogger::setLogLevel(0);
        quib::Profile::setRoot(QString());
    }
    std::unique_ptr<QBLogger> logger()
    {
        std::vector<std::unique_ptr<LogSink>> sinks;
        sinks.push_back(std::make_unique<MemorySink>(&m_lines));
        return std::make_unique<QBLogger>(std::move(sinks));
    }
    static void logAll(QBLogger &logger)
    {
        logger.logVerbose(u"verbose"_s);
        logger.logDebug(u"debug"_s);
        logger.logInfo(u"info"_s);
        logger.logWarn(u"warn"_s);
        logger.logError(u"error"_s);
        logger.flush();
    }
    TemporaryFolder m_folder;
    QStringList m_lines;
};

TEST_F(Logging, WritesNothingUntilItIsTurnedOn)
{
    const auto log = logger();
    logAll(*log);
    EXPECT_TRUE(m_lines.isEmpty());
    EXPECT_TRUE(log->lastLogFilePath().isNull());
}

TEST_F(Logging, WritesTheLevelsOfItsMaskInOrder)
{
    const QStringList all{u"16 verbose"_s, u"8 debug"_s, u"4 info"_s, u"2 warn"_s, u"1 error"_s};
    const auto log = logger();
    for (int mask = 0; mask < 32; ++mask) {
        m_lines.clear();
        QBLogger::setLogLevel(mask);
        logAll(*log);
        QStringList expected;
        for (const QString &line : all) {
            if ((line.section(u' ', 0, 0).toInt() & mask) != 0) {
                expected.append(line);
            }
        }
        EXPECT_EQ(m_lines, expected) << mask;
    }
}

TEST_F(Logging, HasWrittenAnErrorWhenTheCallReturns)
{
    const auto log = logger();
    QBLogger::setLogLevel(15);
    for (int round = 0; round < 50; ++round) {
        log->logDebug(u"before"_s);
        log->logError(u"now"_s);
        ASSERT_EQ(m_lines.size(), 2 * (round + 1));
        ASSERT_EQ(m_lines.last(), u"1 now"_s);
    }
}

TEST_F(Logging, TakesItsLevelFromTheSettings)
{
    const struct
    {
        PropertyValue value;
        int level;
    } rows[] = {{PropertyValue(0), 3}, {PropertyValue(5), 5}, {PropertyValue(u"9"_s), 9}, {PropertyValue(), 3}};
    const auto settings = NSUserDefaults::standardUserDefaults();
    for (const auto &row : rows) {
        QBLogger::setLogLevel(3);
        settings->setObject(row.value, u"QBLogLevel"_s);
        testing::internal::CaptureStderr();
        const auto log = logger();
        const std::string printed = testing::internal::GetCapturedStderr();
        EXPECT_EQ(QBLogger::logLevel(), row.level);
        EXPECT_EQ(printed,
                  row.level == 3 ? std::string() : "Setting custom debug level " + std::to_string(row.level) + "\n");
    }
}

TEST_F(Logging, TurnsTheFileLogOnFromTheSettings)
{
    NSUserDefaults::standardUserDefaults()->setObject(PropertyValue(true), u"QBLogFile"_s);
    EXPECT_EQ(QBLogger::logLevel(), 0);
    const auto log = logger();
    EXPECT_EQ(QBLogger::logLevel(), 15);
}

TEST_F(Logging, ToAFileBringsAllLevelsButVerboseAndItsEndSilencesAll)
{
    const auto log = logger();
    log->setFileLoggerEnabled(true);
    EXPECT_EQ(QBLogger::logLevel(), 15);
    logAll(*log);
    const QString path = log->lastLogFilePath();
    EXPECT_TRUE(path.startsWith(m_folder.path(u"state/Logs/Quib/"_s)));
    const QByteArray content = m_folder.read(path.sliced(m_folder.path().size() + 1));
    EXPECT_EQ(content.count('\n'), 4);
    EXPECT_TRUE(content.endsWith(" error\n")) << content.constData();
    log->setFileLoggerEnabled(false);
    EXPECT_EQ(QBLogger::logLevel(), 0);
    m_lines.clear();
    logAll(*log);
    EXPECT_TRUE(m_lines.isEmpty());
}

TEST_F(Logging, GivesThePlaceBeforeTheMessage)
{
    EXPECT_EQ(QBLogger::format("save", 42, u"done"_s), u"save:42  done"_s);
}

TEST_F(Logging, KeepsControlCharactersFromTerminals)
{
    const auto log = logger();
    QBLogger::setLogLevel(1);
    log->logError(u"a\u001B[31mb\tc\nd\u009Be"_s + QChar(u'\0') + u"f"_s);
    EXPECT_EQ(m_lines, QStringList{u"1 a\uFFFD[31mb\tc\nd\uFFFDe\uFFFDf"_s});
}

TEST_F(Logging, OfTheDeviceIsABlockOfSevenDebugLines)
{
    const auto log = logger();
    QBLogger::setLogLevel(8);
    QBDeviceInfoLogger::logDeviceInfo(*log);
    log->flush();
    const QString patterns[] = {u"-------- Device info: ---------"_s,
                                u"App Version: .* \\(.+\\)"_s,
                                u"\\S.* .*"_s,
                                u".+ \\(.+ .+\\)"_s,
                                u"Disk Space: .+ / .+"_s,
                                u"Retina: NO"_s,
                                u"-------------------------------"_s};
    ASSERT_EQ(m_lines.size(), 7);
    for (qsizetype index = 0; index < 7; ++index) {
        const QRegularExpression expression(u"\\A8 "_s % patterns[index] % u"\\z");
        EXPECT_TRUE(expression.match(m_lines[index]).hasMatch()) << qPrintable(m_lines[index]);
    }
}

TEST_F(Logging, ToFilesBeginsOneADayAndKeepsSeven)
{
    FakeClock clock;
    clock.setNow(NSDate::dateWithTimeIntervalSince1970(1488449472)); // 2017-03-02T10:11:12Z
    const QString folder = m_folder.path(u"logs"_s);
    m_folder.write(u"logs/notes.txt"_s, "not ours");
    {
        RollingFileLogSink sink(folder);
        sink.write(1, u"first"_s);
        clock.advance(86399);
        sink.write(1, u"same day"_s);
    }
    EXPECT_EQ(RollingFileLogSink::logFilePaths(folder), QStringList{folder + u"/Quib-20170302T101112Z.log"_s});
    EXPECT_EQ(m_folder.read(u"logs/Quib-20170302T101112Z.log"_s),
              "2017-03-02T10:11:12Z first\n2017-03-03T10:11:11Z same day\n");
    RollingFileLogSink next(folder);
    for (int day = 0; day < 9; ++day) {
        clock.advance(day == 0 ? 1 : 86400);
        next.write(1, u"day %1"_s.arg(day));
    }
    const QStringList paths = RollingFileLogSink::logFilePaths(folder);
    EXPECT_EQ(paths.size(), 7);
    EXPECT_TRUE(m_folder.read(u"logs/"_s % paths.first().section(u'/', -1)).endsWith("day 2\n"));
    EXPECT_TRUE(m_folder.read(u"logs/"_s % paths.last().section(u'/', -1)).endsWith("day 8\n"));
    EXPECT_TRUE(m_folder.contains(u"logs/notes.txt"_s));
}

} // namespace

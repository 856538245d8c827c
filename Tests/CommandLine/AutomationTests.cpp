// quibctl open and token, and the page about automation: what it shows is what happens.

#include "QuibctlRunner.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

QString url(const QString &rest)
{
    return u"quib://x-callback-url/"_s + rest;
}

QList<QJsonObject> linesOf(const QuibctlResult &result)
{
    QList<QJsonObject> lines;
    for (const QByteArray &line : result.output.split('\n')) {
        if (!line.isEmpty()) {
            lines.append(QJsonDocument::fromJson(line).object());
        }
    }
    return lines;
}

QString parameter(const QJsonObject &line, const QString &name)
{
    return line.value(u"parameters"_s).toObject().value(name).toString();
}

/// One command of the page, with the lines that it shows below it.
struct Example
{
    int lineNumber = 0;
    QString command;
    QStringList shown;
    /// A call of the application: it has no output of its own.
    bool isDesktop = false;
};

QList<Example> examplesOfPage()
{
    QFile page(QStringLiteral(QUIB_SOURCE_DIR) + u"/Docs/automation.md");
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    QList<Example> examples;
    QString block;
    int number = 0;
    for (const QString &line : QString::fromUtf8(page.readAll()).split(u'\n')) {
        ++number;
        if (line.startsWith(u"```")) {
            block = block.isEmpty() ? line.mid(3) : QString();
        } else if (block == u"console" && line.startsWith(u"$ ")) {
            examples.append({number, line.mid(2), {}, false});
        } else if (block == u"console") {
            examples.last().shown.append(line);
        } else if (block == u"sh") {
            examples.append({number, line, {}, true});
        }
    }
    return examples;
}

/// Whether a line is the one that the page shows; "…" there stands for what differs from run to run.
bool isShownAs(const QString &line, const QString &shown)
{
    QStringList parts = shown.split(u'…');
    for (QString &part : parts) {
        part = QRegularExpression::escape(part);
    }
    return QRegularExpression(QRegularExpression::anchoredPattern(parts.join(u"[0-9A-Za-z:-]+"_s)))
        .match(line)
        .hasMatch();
}

TEST(AutomationPage, EveryExampleWorksOnAFreshProfileAndPrintsWhatIsShown)
{
    const QList<Example> examples = examplesOfPage();
    ASSERT_GT(examples.size(), 60);
    // One shell for the page: its examples use what those before them made. What the desktop would hand to the
    // application is run without windows.
    QString script = u"xdg-open() { quibctl open \"$1\" > /dev/null; }\n"_s;
    for (const Example &example : examples) {
        script += example.command % u"\nprintf 'status %d\\036\\n' $?\n"_s;
    }
    const QuibctlRunner runner;
    QProcess shell;
    QStringList environment = runner.environment();
    environment.removeIf([](const QString &variable) { return variable.startsWith(u"PATH="); });
    environment.append(u"PATH="_s + QFileInfo(QuibctlRunner::program()).absolutePath() + u":/usr/bin:/bin");
    environment.append(u"QUIB_PROFILE="_s + runner.profile());
    shell.setEnvironment(environment);
    shell.start(u"/bin/bash"_s, {u"-c"_s, script});
    ASSERT_TRUE(shell.waitForFinished(120'000));
    const QStringList outputs = QString::fromUtf8(shell.readAllStandardOutput()).split(u"\u001e\n"_s);
    ASSERT_EQ(outputs.size(), examples.size() + 1) << shell.readAllStandardError().toStdString();
    for (qsizetype i = 0; i < examples.size(); ++i) {
        const Example &example = examples.at(i);
        QStringList lines = outputs.at(i).split(u'\n');
        const QString status = lines.takeLast();
        SCOPED_TRACE("Docs/automation.md:" + std::to_string(example.lineNumber) + ": " + example.command.toStdString());
        if (example.isDesktop) {
            EXPECT_EQ(status.toStdString(), "status 0");
        }
        ASSERT_EQ(lines.size(), example.shown.size()) << outputs.at(i).toStdString();
        for (qsizetype line = 0; line < lines.size(); ++line) {
            EXPECT_TRUE(isShownAs(lines.at(line), example.shown.at(line))) << lines.at(line).toStdString();
        }
    }
}

TEST(AutomationPage, NamesEveryActionParameterAndMessage)
{
    QFile page(QStringLiteral(QUIB_SOURCE_DIR) + u"/Docs/automation.md");
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll()).replace(u'\n', u' ');
    // What the sources read and tell, beside what they are made of.
    QSet<QString> words;
    const QRegularExpression parameters(u"parameters\\.(?:value|contains|constFind)\\(u\"([^\"]+)\"_s"_s);
    const QRegularExpression messages(u"(?:reportFailure\\(failure, [^,]+, |fail\\([^,]+, )\"([^\"]+)\"_L1"_s);
    const QRegularExpression shared(u"inline constexpr QLatin1StringView k\\w+\\{\"([^\"]+)\"\\}"_s);
    const QRegularExpression actions(u"add\\(u\"([^\"]+)\"_s"_s);
    const QRegularExpression flags(u"(?:isYes|isNot|value)\\(parameters, u?\"([^\"]+)\""_s);
    QDirIterator sources(QStringLiteral(QUIB_SOURCE_DIR) + u"/Core/URL",
                         {u"QBXurl*.cpp"_s, u"XurlReports.h"_s, u"XURLParameters.cpp"_s}, QDir::Files);
    while (sources.hasNext()) {
        QFile source(sources.next());
        ASSERT_TRUE(source.open(QIODevice::ReadOnly));
        const QString code = QString::fromUtf8(source.readAll()).simplified();
        for (const QRegularExpression &expression : {parameters, messages, shared, actions, flags}) {
            for (auto matches = expression.globalMatch(code); matches.hasNext();) {
                words.insert(matches.next().captured(1));
            }
        }
    }
    EXPECT_GT(words.size(), 50);
    for (const QString &word : std::as_const(words)) {
        EXPECT_TRUE(text.contains(word)) << "the page does not tell of " << word.toStdString();
    }
}

struct OutcomeCase
{
    QString url;
    int exitStatus;
    QStringList callbacks;
};

TEST(QuibctlOpen, EndsWithTheOutcome)
{
    const QuibctlRunner runner;
    runner.done({u"new"_s, u"--title"_s, u"Plan"_s});
    const OutcomeCase cases[] = {
        {url(u"open-note?title=plan"_s), 0, {u"x-success"_s}},
        {url(u"open-themes"_s), 0, {}},
        {url(u"add-text?title=plan"_s), 2, {u"x-error"_s}},
        {url(u"open-note?title=x"_s), 3, {u"x-error"_s}},
        {url(u"tags"_s), 1, {u"x-error"_s}},
        {url(u"create"_s), 1, {u"x-error"_s}},
        {url(u"open-note?title=plan&header=x"_s), 2, {u"x-error"_s, u"x-success"_s}},
        {url(u"add-text?title=plan&text=x&mode=x"_s), 2, {u"x-error"_s, u"x-error"_s}},
        {url(u"grab-url?url=https://example.org"_s), 3, {}},
        {url(u"nosuch?x-error=app://e"_s), 3, {u"x-error"_s}},
        {url({}), 3, {}},
        {u"quib://elsewhere/create?text=x"_s, 2, {}},
        {u"https://x-callback-url/create?text=x"_s, 2, {}},
        {u"create?text=x"_s, 2, {}},
        {u"--"_s, 2, {}},
    };
    for (const OutcomeCase &given : cases) {
        const auto result = runner.run({u"open"_s, given.url});
        EXPECT_EQ(result.exitStatus, given.exitStatus) << given.url.toStdString();
        QStringList callbacks;
        for (const QJsonObject &line : linesOf(result)) {
            callbacks.append(line.value(u"callback"_s).toString());
        }
        EXPECT_EQ(callbacks, given.callbacks) << given.url.toStdString();
        if (given.exitStatus != 0 && callbacks.isEmpty()) {
            EXPECT_FALSE(result.messages.isEmpty()) << given.url.toStdString();
        }
    }
}

TEST(QuibctlOpen, TellsTheURLThatWouldBeOpenedAndNeverALocalOne)
{
    const QuibctlRunner runner;
    const auto given = [&runner](const QString &callback) {
        const auto lines = linesOf(runner.run({u"open"_s, url(u"create?title=A%26B&x-success="_s + callback)}));
        EXPECT_EQ(lines.size(), 1);
        EXPECT_EQ(parameter(lines.constFirst(), u"title"_s), u"A&B"_s);
        return lines.constFirst().value(u"url"_s);
    };
    const QString opened = given(u"myapp%3A%2F%2Fdone%3Fa%3Db"_s).toString();
    EXPECT_TRUE(opened.startsWith(u"myapp://done?a=b&identifier=")) << opened.toStdString();
    EXPECT_TRUE(opened.endsWith(u"&title=A&B&")) << opened.toStdString();
    for (const QString &local :
         {u"file:///etc/passwd"_s, u"javascript:alert()"_s, u"data:text/html,x"_s, u"/bin/sh"_s}) {
        EXPECT_TRUE(given(local).isNull()) << local.toStdString();
    }
}

TEST(QuibctlOpen, TakesURLsOfTenMegabytesFromStandardInput)
{
    const QuibctlRunner runner;
    constexpr qsizetype kLargest = 10 * 1024 * 1024;
    const QByteArray head = url(u"create?text="_s).toUtf8();
    const auto made = runner.run({u"open"_s, u"-"_s}, head + QByteArray(kLargest, 'x') + '\n');
    ASSERT_EQ(made.exitStatus, 0) << made.messages.constData();
    const auto lines = linesOf(made);
    ASSERT_EQ(lines.size(), 1);
    const QString text = runner.done({u"show"_s, parameter(lines.constFirst(), u"identifier"_s)});
    EXPECT_EQ(text.size(), kLargest);
    EXPECT_EQ(text.count(u'x'), kLargest);

    const auto refused = runner.run({u"open"_s, u"-"_s}, head + QByteArray(kLargest + 1, 'x'));
    EXPECT_EQ(refused.exitStatus, 1);
    EXPECT_TRUE(refused.messages.contains("10 MB"));
    EXPECT_EQ(runner.run({u"list"_s}).output.count('\n'), 1);
}

TEST(QuibctlOpen, NothingOfTheNotesIsToldWithoutTheToken)
{
    const QuibctlRunner runner;
    const QString token = runner.done({u"token"_s, u"--generate"_s});
    runner.done({u"new"_s, u"-"_s}, "# Secretword\n- open #secrettag");
    const QString wrong = QString(token).replace(0, 1, token.startsWith(u'0') ? u"1"_s : u"0"_s);
    for (const QString &action :
         {u"untagged"_s, u"today"_s, u"todo"_s, u"trash"_s, u"archive"_s, u"search"_s, u"tags"_s}) {
        for (const QString &query : {u""_s, u"?search=secretword&term=secretword"_s, QString(u"?token=" + wrong),
                                     QString(u"?token=" + token.toLower()), QString(u"?token=" + token.chopped(1))}) {
            const auto result = runner.run({u"open"_s, url(action + query)});
            EXPECT_FALSE(result.output.toLower().contains("secret")) << result.output.constData();
        }
    }
    const auto told = runner.run({u"open"_s, url(u"todo?token="_s + token)});
    EXPECT_TRUE(told.output.contains("Secretword"));
}

TEST(QuibctlToken, IsMadeOnceAndIsReadableByItsUserOnly)
{
    const QuibctlRunner runner;
    EXPECT_EQ(runner.run({u"token"_s}).exitStatus, 3);
    const QString token = runner.done({u"token"_s, u"--generate"_s});
    EXPECT_TRUE(QRegularExpression(u"^[0-9A-F]{6}-[0-9A-F]{6}-[0-9A-F]{6}$"_s).match(token).hasMatch());
    EXPECT_EQ(runner.done({u"token"_s, u"--generate"_s}), token);
    EXPECT_EQ(runner.done({u"token"_s}), token);
    QDirIterator files(runner.profile(), {u"url.token"_s}, QDir::Files, QDirIterator::Subdirectories);
    ASSERT_TRUE(files.hasNext());
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(files.next()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);
}

} // namespace

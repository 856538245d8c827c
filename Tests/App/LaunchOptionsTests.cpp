// The command line of quib, and the names of instances.

#include <Process/InstanceName.h>
#include <Process/LaunchOptions.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

using Kind = InstanceRequest::Kind;

/// What words ask for, as short text: "open URI URI; text BYTES; action NAME ARGUMENT", or "error".
QString asked(const QStringList &words, const QByteArray &input = {})
{
    QString message;
    const auto options = LaunchOptions::parse(words, &message);
    if (!options) {
        return message.isEmpty() ? u"error without a word"_s : u"wrong"_s;
    }
    QBuffer device;
    device.setData(input);
    EXPECT_TRUE(device.open(QIODevice::ReadOnly));
    const auto requests = options->requests(device, &message);
    if (!requests) {
        return message.isEmpty() ? u"error without a word"_s : u"failed"_s;
    }
    QStringList found;
    for (const InstanceRequest &request : *requests) {
        switch (request.kind) {
        case Kind::Activate:
            found.append(u"activate"_s);
            break;
        case Kind::Open:
            found.append(u"open "_s + request.uris.join(u' '));
            break;
        case Kind::Action:
            found.append(QString(u"action "_s % request.action % u' ' % request.argument).trimmed());
            break;
        case Kind::SendURIs:
            found.append(u"send "_s + request.uris.join(u' '));
            break;
        case Kind::SendText:
            found.append(u"text "_s + QString::fromUtf8(request.text));
            break;
        }
    }
    return found.join(u"; "_s);
}

} // namespace

TEST(LaunchOptions, WordsAskFor)
{
    const TemporaryFolder folder;
    const QString file = folder.write(u"a b.png"_s, "x");
    const QString uri = QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded);
    struct Case
    {
        QStringList words;
        QString asked;
    };
    const Case cases[] = {
        {{}, u"activate"_s},
        {{u"--service"_s}, u""_s},
        {{file}, u"open "_s + uri},
        {{uri}, u"open "_s + uri},
        {{u"quib://x-callback-url/trash"_s, file}, u"open quib://x-callback-url/trash "_s + uri},
        {{u"QUIB:thing"_s}, u"open QUIB:thing"_s},
        {{u"https://example.com"_s}, u"failed"_s},
        {{u"/no/such/file"_s}, u"failed"_s},
        {{file + u".missing"_s}, u"failed"_s},
        {{u"--send"_s, u"https://example.com"_s, file}, u"send https://example.com "_s + uri},
        {{u"--send"_s, u"-"_s}, u"text input"_s},
        {{u"--send"_s}, u"text input"_s},
        {{u"--send"_s, file, u"-"_s}, u"text input; send "_s + uri},
        {{u"--new-note"_s}, u"action new-note"_s},
        {{u"--new-note"_s, file}, u"wrong"_s},
        {{u"--search"_s}, u"action search"_s},
        {{u"--search"_s, u"two"_s, u"words"_s}, u"action search two words"_s},
        {{u"--search"_s, u"--send"_s}, u"wrong"_s},
        {{u"--nosuch"_s}, u"wrong"_s},
        {{u"--profile"_s}, u"wrong"_s},
        {{u"--profile="_s}, u"wrong"_s},
        {{u"--profile"_s, folder.path(), u"--"_s, file}, u"open "_s + uri},
    };
    for (const Case &one : cases) {
        SCOPED_TRACE(one.words.join(u' ').toStdString());
        EXPECT_EQ(asked(one.words, "input"), one.asked);
    }
    EXPECT_EQ(asked({u"--send"_s}), u"failed"_s) << "nothing on standard input";
    EXPECT_EQ(asked({u"--send"_s}, QByteArray(LaunchOptions::kLargestText + 1, 'x')), u"failed"_s);
}

TEST(InstanceName, IsPlainForTheUsersOwnProfileAndOneForEachOtherFolder)
{
    EXPECT_EQ(InstanceName::forProfile({}), (InstanceName{u"net.quibworks.Quib"_s, u"/net/quibworks/Quib"_s}));
    const TemporaryFolder folder;
    ASSERT_TRUE(QDir().mkpath(folder.path(u"one"_s)));
    ASSERT_TRUE(QFile::link(folder.path(u"one"_s), folder.path(u"link"_s)));
    const InstanceName one = InstanceName::forProfile(folder.path(u"one"_s));
    EXPECT_EQ(InstanceName::forProfile(folder.path(u"link"_s)), one);
    EXPECT_EQ(InstanceName::forProfile(folder.path(u"one/../one/"_s)), one);
    EXPECT_NE(InstanceName::forProfile(folder.path(u"two"_s)), one);
    EXPECT_TRUE(one.busName.startsWith(u"net.quibworks.Quib.Profile_"_s));
    EXPECT_EQ(one.objectPath, u'/' + QString(one.busName).replace(u'.', u'/'));
}

} // namespace quib::tests

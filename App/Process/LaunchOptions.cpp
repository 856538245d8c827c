#include "LaunchOptions.h"

#include <Files/PlainTextFile.h>

#include <QCommandLineParser>
#include <QFileInfo>
#include <QIODevice>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr auto kScheme = "quib"_L1;
constexpr auto kStandardInput = "-"_L1;

/// A URL begins with a scheme of two letters at least, and "//" behind it unless it is one of ours.
bool isURL(const QString &word)
{
    const auto colon = word.indexOf(u':');
    if (colon < 2 || !word.front().isLetter()) {
        return false;
    }
    for (const QChar c : QStringView(word).left(colon)) {
        if (c.unicode() >= 0x80 || !(c.isLetterOrNumber() || c == u'+' || c == u'-' || c == u'.')) {
            return false;
        }
    }
    return word.left(colon).compare(kScheme, Qt::CaseInsensitive) == 0 ||
           QStringView(word).mid(colon + 1).startsWith(u"//");
}

QCommandLineOption profileOption()
{
    return {u"profile"_s, u"Works on the profile in DIR instead of the user's own."_s, u"DIR"_s};
}

/// The URI of a file that is there.
QString uriOfFile(const QString &path, QString *message)
{
    const QFileInfo file(path);
    if (!file.exists()) {
        *message = u"there is no file \"%1\""_s.arg(path);
        return {};
    }
    return QUrl::fromLocalFile(file.absoluteFilePath()).toString(QUrl::FullyEncoded);
}

} // namespace

std::optional<LaunchOptions> LaunchOptions::parse(const QStringList &words, QString *message)
{
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
    parser.addOption(profileOption());
    for (const auto &name :
         {u"send"_s, u"new-note"_s, u"quick-note"_s, u"search"_s, u"service"_s, u"help"_s, u"version"_s}) {
        parser.addOption(QCommandLineOption(name));
    }
    if (!parser.parse(QStringList{u"quib"_s} + words)) {
        *message = parser.errorText();
        return std::nullopt;
    }
    LaunchOptions options;
    options.words = parser.positionalArguments();
    options.send = parser.isSet(u"send"_s);
    options.newNote = parser.isSet(u"new-note"_s);
    options.quickNote = parser.isSet(u"quick-note"_s);
    options.isService = parser.isSet(u"service"_s);
    options.showsHelp = parser.isSet(u"help"_s);
    options.showsVersion = parser.isSet(u"version"_s);
    if (parser.isSet(u"profile"_s)) {
        options.profile = parser.value(u"profile"_s);
        if (options.profile.isEmpty()) {
            *message = u"--profile needs a folder"_s;
            return std::nullopt;
        }
    }
    if (parser.isSet(u"search"_s)) {
        options.search = options.words.join(u' ');
        options.words.clear();
    }
    const int modes = int(options.send) + int(options.newNote) + int(options.quickNote) +
                      int(options.search.has_value()) + int(options.isService);
    if (modes > 1) {
        *message = u"--send, --new-note, --quick-note, --search and --service do not go together"_s;
        return std::nullopt;
    }
    if ((options.newNote || options.quickNote || options.isService) && !options.words.isEmpty()) {
        *message = u"--new-note, --quick-note and --service take no files"_s;
        return std::nullopt;
    }
    return options;
}

std::optional<std::vector<InstanceRequest>> LaunchOptions::requests(QIODevice &input, QString *message) const
{
    using Kind = InstanceRequest::Kind;
    if (isService) {
        return std::vector<InstanceRequest>();
    }
    if (newNote) {
        return std::vector{InstanceRequest{.kind = Kind::Action, .action = kActionNewNote}};
    }
    if (quickNote) {
        return std::vector{InstanceRequest{.kind = Kind::Action, .action = kActionQuickNote}};
    }
    if (search) {
        return std::vector{InstanceRequest{.kind = Kind::Action, .action = kActionSearch, .argument = *search}};
    }
    if (words.isEmpty() && !send) {
        return std::vector{InstanceRequest{.kind = Kind::Activate}};
    }
    std::vector<InstanceRequest> requests;
    InstanceRequest uris{.kind = send ? Kind::SendURIs : Kind::Open};
    for (const QString &word : words.isEmpty() ? QStringList{kStandardInput} : words) {
        if (send && word == kStandardInput) {
            InstanceRequest text{.kind = Kind::SendText, .text = readToEnd(input, kLargestText + 1)};
            if (text.text.size() > kLargestText) {
                *message = u"the text is larger than %1 MB"_s.arg(kLargestText / (1024 * 1024));
                return std::nullopt;
            }
            NSError error;
            const auto decoded = decodePlainText(text.text, u"standard input"_s, &error);
            if (!decoded) {
                *message = error.localizedDescription();
                return std::nullopt;
            }
            if (decoded->isEmpty()) {
                *message = u"there is no text to send"_s;
                return std::nullopt;
            }
            requests.push_back(std::move(text));
            continue;
        }
        const QUrl url(word, QUrl::TolerantMode);
        QString uri = word;
        if (!isURL(word)) {
            uri = uriOfFile(word, message);
        } else if (url.isLocalFile()) {
            uri = uriOfFile(url.toLocalFile(), message);
        } else if (!send && url.scheme() != kScheme) {
            *message = u"quib opens files and URLs that begin with \"quib:\"; hand others over with --send"_s;
            return std::nullopt;
        }
        if (uri.isEmpty()) {
            return std::nullopt;
        }
        uris.uris.append(uri);
    }
    if (!uris.uris.isEmpty()) {
        requests.push_back(std::move(uris));
    }
    return requests;
}

QString LaunchOptions::helpText()
{
    return u"Usage: quib [--profile DIR] [FILE|URL]...\n"
           "       quib [--profile DIR] --send [FILE|URL|-]...\n"
           "       quib [--profile DIR] --new-note | --quick-note | --search [WORDS]...\n"
           "\n"
           "Starts Quib, or hands over to the one that runs on the profile.\n"
           "\n"
           "  FILE              opens a file; pictures become a note\n"
           "  URL               runs a quib: URL\n"
           "  --send            makes a note of files, URLs or a text; \"-\", or nothing, is standard input\n"
           "  --new-note        begins a new note\n"
           "  --quick-note      begins a note in a small window over the others\n"
           "  --search          goes to the search field\n"
           "  --profile DIR     works on the profile in DIR instead of the user's own\n"
           "  --service         waits for requests over the session bus\n"
           "  --help, --version\n"
           "\n"
           "Exit status: 0 done, 1 failed, 2 wrong usage.\n"_s;
}

} // namespace quib

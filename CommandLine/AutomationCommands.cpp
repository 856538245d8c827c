#include "Commands.h"
#include "InspectInput.h"
#include "Output.h"
#include "Session.h"

#include <Store/QBCoreDataStack.h>
#include <URL/IACManager.h>
#include <URL/QBXurlActions.h>
#include <URL/QBXurlCoreController.h>
#include <URL/QBXurlTokenController.h>
#include <URL/URLParameters.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

constexpr QLatin1StringView kHost{"x-callback-url"};

/// Prints every callback of one URL, whether the URL named somebody to be called or not, and remembers how it went. A
/// callback's URL is told and never opened.
class Callbacks
{
public:
    /// The dispatcher's opener.
    bool open(const QUrl &url)
    {
        m_opened = url;
        return true;
    }
    void print(QLatin1StringView callback, const IACParameters &parameters)
    {
        QJsonObject values;
        for (auto it = parameters.cbegin(); it != parameters.cend(); ++it) {
            values.insert(it.key(), it.value());
        }
        const QUrl opened = std::exchange(m_opened, QUrl());
        const QJsonObject line{
            {u"callback"_s, callback},
            {u"url"_s, opened.isEmpty() ? QJsonValue() : QJsonValue(opened.toString(QUrl::FullyEncoded))},
            {u"parameters"_s, values}};
        printLine(QString::fromUtf8(QJsonDocument(line).toJson(QJsonDocument::Compact)));
        m_count += 1;
    }
    void printError(const NSError &error)
    {
        print("x-error"_L1, {{u"error-Code"_s, QString::number(error.code())},
                             {u"errorMessage"_s, error.domain()},
                             {u"errorDomain"_s, error.domain()}});
        using Code = QBXurlCoreController::ErrorCode;
        if (m_status != ExitStatus::Done) {
            return; // the first one tells
        }
        m_status = error.code() == static_cast<qint64>(Code::Parameter)  ? ExitStatus::WrongUsage
                   : error.code() == static_cast<qint64>(Code::NotFound) ? ExitStatus::NotFound
                                                                         : ExitStatus::Failed;
    }
    /// What the dispatcher itself answered: no action was run.
    void printRefusal()
    {
        IACParameters parameters = parseURLParams(m_opened.query(QUrl::FullyEncoded));
        parameters.removeIf([](const auto &parameter) {
            return parameter.key() != "error-Code"_L1 && !parameter.key().startsWith("error"_L1);
        });
        print("x-error"_L1, parameters);
    }
    /// The action's block, with every report printed behind the one to the caller.
    [[nodiscard]] IACActionBlock observed(const IACActionBlock &block)
    {
        return [this, block](const IACParameters &parameters, const IACSuccessBlock &success,
                             const IACFailureBlock &failure) {
            block(
                parameters,
                [this, success](const std::optional<IACParameters> &result, bool cancelled) {
                    success(result, cancelled);
                    print(cancelled ? "x-cancel"_L1 : "x-success"_L1, result.value_or(IACParameters()));
                },
                [this, failure](const NSError &error) {
                    failure(error);
                    printError(error);
                });
        };
    }
    [[nodiscard]] bool hasOpened() const { return !m_opened.isEmpty(); }
    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] ExitStatus status() const { return m_status; }

private:
    QUrl m_opened;
    int m_count = 0;
    ExitStatus m_status = ExitStatus::Done;
};

/// The URL of the arguments or of standard input, which takes longer ones than a command line.
/// Errors: nullopt after the reason was told.
std::optional<QUrl> urlOfArguments(const QCommandLineParser &parser, ExitStatus *status)
{
    QString text = parser.positionalArguments().constFirst();
    if (text == u"-") {
        const auto input = textOfInput(parser, status);
        if (!input) {
            return std::nullopt;
        }
        text = input->trimmed();
    }
    const QUrl url = urlFromText(text);
    if (url.scheme() != QBXurlActions::kScheme || url.host() != kHost) {
        complain(u"a URL of Quib begins with quib://x-callback-url/"_s);
        *status = ExitStatus::WrongUsage;
        return std::nullopt;
    }
    return url;
}

} // namespace

ExitStatus runOpen(Session &session, const QCommandLineParser &parser)
{
    ExitStatus status = ExitStatus::Done;
    const auto url = urlOfArguments(parser, &status);
    if (!url) {
        return status;
    }
    QBCoreDataStack *stack = session.stack();
    if (stack == nullptr) {
        return ExitStatus::Failed;
    }
    Callbacks callbacks;
    const auto manager = std::make_shared<IACManager>();
    manager->setOpener([&callbacks](const QUrl &opened) { return callbacks.open(opened); });
    QBXurlActions actions(*stack, /*interface=*/nullptr);
    manager->setCallbackURLScheme(QBXurlActions::kScheme);
    for (const auto &[name, block] : actions.actions()) {
        manager->handleAction(name, callbacks.observed(block));
    }
    const bool isHandled = manager->handleOpenURL(*url);
    while (actions.controller().hasPendingActions()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    // What an action left pending when it failed is the user's all the same.
    if (stack->managedObjectContext()->hasChanges() && !session.save()) {
        return ExitStatus::Failed;
    }
    if (isHandled && (callbacks.count() > 0 || !callbacks.hasOpened())) {
        return callbacks.status();
    }
    const QString action = url->path().mid(1);
    const bool isKnown = std::any_of(actions.actions().cbegin(), actions.actions().cend(),
                                     [&action](const auto &known) { return known.first == action; });
    if (isHandled) {
        callbacks.printRefusal();
    }
    complain(isKnown ? u"the URL is too long, or one of its parameters is larger than 10 MB"_s
                     : u"\"%1\" is no action of Quib"_s.arg(singleLine(action.left(200))));
    return isKnown ? ExitStatus::Failed : ExitStatus::NotFound;
}

ExitStatus runToken(Session & /*session*/, const QCommandLineParser &parser)
{
    QBXurlTokenController controller;
    if (parser.isSet(u"generate"_s)) {
        static_cast<void>(controller.generateToken());
    }
    if (const auto token = controller.token()) {
        printLine(*token);
        return ExitStatus::Done;
    }
    if (parser.isSet(u"generate"_s)) {
        complain(u"the token could not be stored below %1"_s.arg(controller.baseURL().toLocalFile()));
        return ExitStatus::Failed;
    }
    complain(u"there is no token; quibctl token --generate makes one"_s);
    return ExitStatus::NotFound;
}

} // namespace quib::cli

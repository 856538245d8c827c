// URLs of actions from any text: what a query is read as, and written to again, must be read as the same. The first
// byte chooses between a query and a whole URL for the dispatcher, which must open nothing of this machine.

#include <Text/Folding.h>
#include <URL/IACManager.h>

#include <cstdint>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

void expect(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

void readQuery(const QString &query)
{
    const IACParameters parameters = quib::parseURLParams(query);
    for (auto it = parameters.cbegin(); it != parameters.cend(); ++it) {
        // What takes a query apart stays as it is in a value, and keys are never escaped.
        const bool isPlain = !it.value().contains(u'&') && !it.value().contains(u'=');
        const QString url = quib::stringByAppendingURLParams(u"app://x"_s, {{it.key(), it.value()}});
        expect(!isPlain || it.key().contains(u'?') ||
               quib::parseURLParams(QStringView(url).sliced(8)).value(it.key()) == it.value());
    }
    static_cast<void>(quib::leadingInteger(query));
}

void handleURL(const QString &text)
{
    const auto manager = std::make_shared<IACManager>();
    manager->setCallbackURLScheme(u"quib"_s);
    manager->setOpener([](const QUrl &url) {
        expect(url.isValid() && url.scheme().size() > 1 && !url.isLocalFile() && url.scheme() != "javascript"_L1);
        return true;
    });
    manager->handleAction(
        u"a"_s, [](const IACParameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure) {
            for (auto it = parameters.cbegin(); it != parameters.cend(); ++it) {
                expect(it.key() == "x-source"_L1 || (!it.key().startsWith("x-"_L1) && !it.key().startsWith("IAC"_L1)));
            }
            success(parameters, false);
            success(std::nullopt, true);
            failure(NSError(u"words"_s, 1, {}));
        });
    static_cast<void>(manager->handleOpenURL(QUrl(text)));
    static_cast<void>(manager->handleOpenURL(QUrl(u"quib://x-callback-url/a?"_s % text)));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    const QString text =
        quib::fromUtf8Lossless(reinterpret_cast<const char *>(data + 1), static_cast<qsizetype>(size - 1));
    if (data[0] % 2 == 0) {
        readQuery(text);
    } else {
        handleURL(text);
    }
    return 0;
}

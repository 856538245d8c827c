// Theme files of anybody: whatever is read can be asked for every value, changed, resolved anew and laid over itself.

#include <Themes/QBTheme.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const std::shared_ptr<QBTheme> theme = QBTheme::initWithData(bytes, nullptr);
    if (theme == nullptr) {
        return 0;
    }
    const qsizetype count = theme->themeItems().size();
    const QList<std::shared_ptr<QBThemeItem>> items = theme->themeItems();
    for (const std::shared_ptr<QBThemeItem> &item : items) {
        const std::optional<double> number = theme->numberForKey(item->key());
        const bool isColor = theme->colorForKey(item->key()).has_value();
        if (theme->themeItemForKey(item->key()) != item || (number && !std::isfinite(*number)) ||
            isColor != item->proxyValue().asString().has_value()) {
            std::abort();
        }
        theme->updateThemeItem(item);
    }
    theme->addThemeItemsFromTheme(*theme);
    if (theme->themeItems() != items || theme->mappingDictionary().size() != count) {
        std::abort();
    }
    return 0;
}

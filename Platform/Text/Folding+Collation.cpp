#include "Folding.h"

#include "UserLocale.h"

#include <memory>

#include <unicode/ucol.h>

namespace quib {

namespace {

struct CollatorCloser
{
    void operator()(UCollator *collator) const { ucol_close(collator); }
};

/// The collator of the user's language. Comparing and making keys don't change it, so all threads share this one.
[[nodiscard]] const UCollator *collator()
{
    static const std::unique_ptr<UCollator, CollatorCloser> s_collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<UCollator, CollatorCloser> opened(ucol_open(userLocale(), &status));
        if (U_SUCCESS(status)) {
            ucol_setAttribute(opened.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
            ucol_setAttribute(opened.get(), UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
        }
        return U_SUCCESS(status) ? std::move(opened) : nullptr;
    }();
    return s_collator.get();
}

[[nodiscard]] const UChar *icuUnits(QStringView text)
{
    static constexpr UChar kNothing = 0;
    return text.isEmpty() ? &kNothing : reinterpret_cast<const UChar *>(text.utf16());
}

} // namespace

int localizedStandardCompare(QStringView a, QStringView b)
{
    if (const UCollator *shared = collator()) {
        const UCollationResult order = ucol_strcoll(shared, icuUnits(a), static_cast<int32_t>(a.size()), icuUnits(b),
                                                    static_cast<int32_t>(b.size()));
        if (order != UCOL_EQUAL) {
            return order;
        }
    }
    return a.compare(b);
}

QByteArray localizedStandardSortKey(QStringView text)
{
    QByteArray key;
    if (const UCollator *shared = collator()) {
        const auto size = static_cast<int32_t>(text.size());
        key.resize(qMax<qsizetype>(32, 2 * text.size() + 16));
        int32_t length = ucol_getSortKey(shared, icuUnits(text), size, reinterpret_cast<uint8_t *>(key.data()),
                                         static_cast<int32_t>(key.size()));
        if (length > key.size()) {
            key.resize(length);
            length = ucol_getSortKey(shared, icuUnits(text), size, reinterpret_cast<uint8_t *>(key.data()),
                                     static_cast<int32_t>(key.size()));
        }
        key.truncate(length);
    }
    // The collation key ends in its only zero byte, so no key is the beginning of another; the units that follow break
    // the ties.
    key.reserve(key.size() + 2 * text.size());
    for (const QChar character : text) {
        key.append(static_cast<char>(character.unicode() >> 8));
        key.append(static_cast<char>(character.unicode() & 0xFF));
    }
    return key;
}

} // namespace quib

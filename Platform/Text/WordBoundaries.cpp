#include "WordBoundaries.h"

#include <algorithm>
#include <limits>
#include <memory>

#include <unicode/ubrk.h>

namespace quib {

namespace {

constexpr qint64 kWindow = 1024;
/// The longest text that the iterator is given.
constexpr qint64 kWidestWindow = std::numeric_limits<int32_t>::max();

struct BreakCloser
{
    void operator()(UBreakIterator *iterator) const { ubrk_close(iterator); }
};

/// The thread's iterator over words. Null when ICU has no data.
UBreakIterator *wordIterator()
{
    thread_local const std::unique_ptr<UBreakIterator, BreakCloser> s_iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<UBreakIterator, BreakCloser>(ubrk_open(UBRK_WORD, "", nullptr, 0, &status));
    }();
    return s_iterator.get();
}

std::optional<qint64> lastWordOfWindow(UBreakIterator *iterator, QStringView window)
{
    UErrorCode status = U_ZERO_ERROR;
    ubrk_setText(iterator, reinterpret_cast<const UChar *>(window.utf16()), static_cast<int32_t>(window.size()),
                 &status);
    std::optional<qint64> found;
    if (U_SUCCESS(status)) {
        // What stands behind a boundary is told by the one that ends it.
        int32_t end = ubrk_last(iterator);
        while (end != UBRK_DONE && end > 0) {
            const bool isWord = ubrk_getRuleStatus(iterator) >= UBRK_WORD_NONE_LIMIT;
            const int32_t start = ubrk_previous(iterator);
            if (isWord && start != UBRK_DONE) {
                found = start;
                break;
            }
            end = start;
        }
        static constexpr UChar kNothing = 0;
        ubrk_setText(iterator, &kNothing, 0, &status);
    }
    return found;
}

} // namespace

std::optional<qint64> locationOfLastWord(QStringView text)
{
    UBreakIterator *const iterator = wordIterator();
    if (iterator == nullptr) {
        return std::nullopt;
    }
    // Mostly the word is near. Where the window holds none, or begins within one, a wider one is looked through.
    for (qint64 width = kWindow;; width *= 8) {
        qint64 start = std::max<qint64>(0, text.size() - std::min(width, kWidestWindow));
        if (start > 0 && text[start].isLowSurrogate() && text[start - 1].isHighSurrogate()) {
            ++start;
        }
        const std::optional<qint64> found = lastWordOfWindow(iterator, text.sliced(start));
        const bool isWhole = start == 0 || width >= kWidestWindow;
        if (found && (*found > 0 || isWhole)) {
            return start + *found;
        }
        if (isWhole) {
            return std::nullopt;
        }
    }
}

} // namespace quib

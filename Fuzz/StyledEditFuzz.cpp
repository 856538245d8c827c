// Loads any UTF-16 text into the engine, edits it and styles it again: whatever is done, the text that comes out is the
// text that went in, edited the same way. The first byte chooses the syntax; 0xFF ends the text and begins an edit,
// whose first two bytes are its place and the length that it replaces. Without a theme: what is found does not depend
// on it.

#include <Markup/QBNotesTextStorage.h>
#include <Markup/StyledEdit.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>

namespace {

constexpr std::uint8_t kEnd = 0xFF;

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

/// One byte a unit keeps the markup frequent; the upper half stands for wider units, surrogates and U+FFFC among them.
QString textOf(std::span<const std::uint8_t> bytes)
{
    QString text(QLatin1StringView(""));
    for (const std::uint8_t byte : bytes) {
        const int unit = byte == 0xFE ? 0xFFFC : byte < 0x80 ? byte : 0xD700 + byte * 5;
        text.append(QChar(static_cast<char16_t>(unit)));
    }
    return text;
}

std::span<const std::uint8_t> takePart(std::span<const std::uint8_t> *bytes)
{
    const auto end = std::find(bytes->begin(), bytes->end(), kEnd);
    const auto part = bytes->first(static_cast<size_t>(end - bytes->begin()));
    *bytes = end == bytes->end() ? std::span<const std::uint8_t>() : bytes->subspan(part.size() + 1);
    return part;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    if (size < 1) {
        return 0;
    }
    std::span<const std::uint8_t> bytes(data + 1, size - 1);
    QBNotesTextStorage storage;
    storage.noteStylersManager()->setSyntax(data[0] & 1);
    const QString text = textOf(takePart(&bytes));
    storage.loadString(text);
    require(storage.stringWithExpandedTextAttachments() == text);
    while (!bytes.empty()) {
        const auto edit = takePart(&bytes);
        if (edit.size() < 2) {
            continue;
        }
        const qint64 location = edit[0] * storage.length() / 0xFF;
        const qint64 length = std::min<qint64>(edit[1] % 16, storage.length() - location);
        const QString string = textOf(edit.subspan(2));
        const QString before = storage.stringWithExpandedTextAttachmentsWithRange({0, location});
        const QString after = storage.stringWithExpandedTextAttachmentsWithRange(
            {location + length, storage.length() - location - length});
        static_cast<void>(quib::StyledEdit::replaceCharactersInRange(storage, {location, length}, string,
                                                                     {location + string.size(), 0}));
        require(storage.stringWithExpandedTextAttachments() == before + string + after);
    }
    return 0;
}

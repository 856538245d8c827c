// The binary format: eight bytes "bplist00", the objects, a table of their offsets, and a trailer of 32 bytes that
// says how wide offsets and references are and which object is the top. All numbers are big-endian. It is read and
// written here, and not by a library, because settings and clocks must keep negative numbers, dates to the microsecond
// and every UTF-16 unit, and because a few hundred bytes of references can stand for billions of values.

#include "PropertyList_p.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cmath>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr qint64 kTrailerSize = 32;
/// What one file may unfold to, in values plus bytes of their content: shared values count once for each place.
constexpr quint64 kLeastUnfoldedLimit = 16 * 1024 * 1024;
constexpr quint64 kUnfoldedPerByte = 16;

class BinaryReader
{
public:
    explicit BinaryReader(const QByteArray &bytes)
        : m_bytes(bytes)
        , m_unfoldedLimit(kLeastUnfoldedLimit + kUnfoldedPerByte * static_cast<quint64>(bytes.size()))
    {
    }

    [[nodiscard]] std::optional<PropertyValue> read()
    {
        if (!readTrailer()) {
            return std::nullopt;
        }
        const Parsed *top = object(m_top, 1);
        return top != nullptr ? std::optional(top->value) : std::nullopt;
    }
    [[nodiscard]] const QString &complaint() const { return m_complaint; }

private:
    /// An object once read; the values that it shares with other places are shared in memory too.
    struct Parsed
    {
        PropertyValue value;
        quint64 unfolded = 1; ///< values in it, itself among them, plus bytes of content
        int height = 1;       ///< 1 for a scalar
    };
    static constexpr quint32 kUnread = 0;
    static constexpr quint32 kBeingRead = 1;
    static constexpr quint32 kFirstParsed = 2;

    std::nullptr_t complain(const QString &complaint)
    {
        if (m_complaint.isEmpty()) {
            m_complaint = complaint;
        }
        return nullptr;
    }

    /// Requires: the bytes lie in the file, 1 to 8 of them.
    [[nodiscard]] quint64 number(quint64 offset, quint64 width) const
    {
        quint64 value = 0;
        for (quint64 index = 0; index < width; ++index) {
            value = (value << 8) | static_cast<quint8>(m_bytes[static_cast<qsizetype>(offset + index)]);
        }
        return value;
    }

    bool readTrailer()
    {
        const auto size = static_cast<quint64>(m_bytes.size());
        if (m_bytes.size() < 8 + kTrailerSize + 2 || !m_bytes.startsWith("bplist0")) {
            complain(u"it is cut off or of an unknown version"_s);
            return false;
        }
        const quint64 trailer = size - static_cast<quint64>(kTrailerSize);
        m_offsetWidth = number(trailer + 6, 1);
        m_referenceWidth = number(trailer + 7, 1);
        m_count = number(trailer + 8, 8);
        m_top = number(trailer + 16, 8);
        m_table = number(trailer + 24, 8);
        // Every object takes at least one byte before the table, which bounds the count by the file's size.
        if (m_offsetWidth < 1 || m_offsetWidth > 8 || m_referenceWidth < 1 || m_referenceWidth > 8 || m_table < 9 ||
            m_table > trailer || m_count < 1 || m_count > m_table - 8 ||
            m_count > (trailer - m_table) / m_offsetWidth || m_top >= m_count) {
            complain(u"its trailer makes no sense"_s);
            return false;
        }
        m_states.assign(static_cast<size_t>(m_count), kUnread);
        return true;
    }

    const Parsed *object(quint64 index, int depth)
    {
        if (index >= m_count) {
            return complain(u"a reference points to object %1 of %2"_s.arg(index).arg(m_count));
        }
        quint32 &state = m_states[static_cast<size_t>(index)];
        if (state == kBeingRead) {
            return complain(u"object %1 contains itself"_s.arg(index));
        }
        if (state >= kFirstParsed) {
            const Parsed &known = m_parsed[state - kFirstParsed];
            if (depth + known.height - 1 > kPropertyListMaximumDepth) {
                return tooDeep();
            }
            return &known;
        }
        if (depth > kPropertyListMaximumDepth) {
            return tooDeep();
        }
        const quint64 offset = number(m_table + index * m_offsetWidth, m_offsetWidth);
        if (offset < 8 || offset >= m_table) {
            return complain(u"object %1 lies outside of the file"_s.arg(index));
        }
        state = kBeingRead;
        Parsed parsed;
        if (!readObject(offset, depth, parsed)) {
            return nullptr;
        }
        if (parsed.unfolded > m_unfoldedLimit) {
            return complain(u"it stands for too many values"_s);
        }
        state = kFirstParsed + static_cast<quint32>(m_parsed.size());
        m_parsed.push_back(std::move(parsed));
        return &m_parsed.back();
    }

    std::nullptr_t tooDeep()
    {
        return complain(u"values are nested more than %1 deep"_s.arg(kPropertyListMaximumDepth));
    }

    /// True when that many bytes lie between the offset and the table.
    bool holds(quint64 offset, quint64 length)
    {
        if (offset > m_table || length > m_table - offset) {
            complain(u"the object at byte %1 is cut off"_s.arg(offset));
            return false;
        }
        return true;
    }

    /// The count of an object, which stands in its marker or in an integer after it; moves the offset behind it.
    bool readCount(quint64 &offset, quint64 &count)
    {
        count = number(offset, 1) & 0x0F;
        ++offset;
        if (count != 0x0F) {
            return true;
        }
        if (!holds(offset, 1)) {
            return false;
        }
        const quint64 marker = number(offset, 1);
        const quint64 width = quint64(1) << (marker & 0x0F);
        if ((marker & 0xF0) != 0x10 || width > 8) {
            complain(u"the object at byte %1 has no valid length"_s.arg(offset));
            return false;
        }
        ++offset;
        if (!holds(offset, width)) {
            return false;
        }
        count = number(offset, width);
        offset += width;
        return true;
    }

    bool readObject(quint64 offset, int depth, Parsed &parsed)
    {
        const quint64 marker = number(offset, 1);
        switch (marker >> 4) {
        case 0x0:
            if (marker == 0x08 || marker == 0x09) {
                parsed.value = PropertyValue(marker == 0x09);
                return true;
            }
            break;
        case 0x1:
            return readInteger(offset, parsed);
        case 0x2:
        case 0x3:
            if (marker == 0x22 || marker == 0x23 || marker == 0x33) {
                return readReal(offset, marker, parsed);
            }
            break;
        case 0x4:
        case 0x5:
        case 0x6:
            return readBytes(offset, marker, parsed);
        case 0x8: {
            const quint64 width = (marker & 0x0F) + 1;
            if (width > 8 || !holds(offset + 1, width)) {
                break;
            }
            parsed.value =
                PropertyValue(PropertyValue::Dictionary{{u"CF$UID"_s, PropertyValue(number(offset + 1, width))}});
            parsed.unfolded = 2;
            parsed.height = 2;
            return true;
        }
        case 0xA:
        case 0xC:
            return readArray(offset, depth, parsed);
        case 0xD:
            return readDictionary(offset, depth, parsed);
        default:
            break;
        }
        complain(u"the object at byte %1 has an unknown type"_s.arg(offset));
        return false;
    }

    bool readInteger(quint64 offset, Parsed &parsed)
    {
        const quint64 width = quint64(1) << (number(offset, 1) & 0x0F);
        if (width > 16 || !holds(offset + 1, width)) {
            complain(u"the integer at byte %1 is too wide"_s.arg(offset));
            return false;
        }
        if (width == 16) {
            const quint64 high = number(offset + 1, 8);
            const quint64 low = number(offset + 9, 8);
            const bool isNegative = high == ~quint64(0) && (low >> 63) == 1;
            if (high != 0 && !isNegative) {
                complain(u"the integer at byte %1 is too large"_s.arg(offset));
                return false;
            }
            parsed.value = isNegative ? PropertyValue(static_cast<qint64>(low)) : PropertyValue(low);
            return true;
        }
        // Narrow integers have no sign, those of 8 bytes have one.
        parsed.value = PropertyValue(static_cast<qint64>(number(offset + 1, width)));
        return true;
    }

    bool readReal(quint64 offset, quint64 marker, Parsed &parsed)
    {
        const quint64 width = marker == 0x22 ? 4 : 8;
        if (!holds(offset + 1, width)) {
            return false;
        }
        const quint64 bits = number(offset + 1, width);
        const double real = width == 4 ? static_cast<double>(std::bit_cast<float>(static_cast<quint32>(bits)))
                                       : std::bit_cast<double>(bits);
        if (marker != 0x33) {
            parsed.value = PropertyValue(real);
            return true;
        }
        if (!std::isfinite(real)) {
            complain(u"the date at byte %1 is not a number"_s.arg(offset));
            return false;
        }
        parsed.value = PropertyValue(NSDate::dateWithTimeIntervalSince1970(real + kSecondsTo2001));
        return true;
    }

    bool readBytes(quint64 offset, quint64 marker, Parsed &parsed)
    {
        const quint64 kind = marker >> 4;
        quint64 count = 0;
        if (!readCount(offset, count)) {
            return false;
        }
        const quint64 unitWidth = kind == 0x6 ? 2 : 1;
        if (count > m_table || !holds(offset, count * unitWidth)) {
            complain(u"the object at byte %1 is cut off"_s.arg(offset));
            return false;
        }
        const char *start = m_bytes.constData() + offset;
        const auto length = static_cast<qsizetype>(count);
        parsed.unfolded = 1 + count * unitWidth;
        if (kind == 0x4) {
            parsed.value = PropertyValue(QByteArray(start, length));
        } else if (kind == 0x5) {
            parsed.value = PropertyValue(QString::fromLatin1(start, length));
        } else {
            QString text(length, Qt::Uninitialized);
            qFromBigEndian<char16_t>(start, length, text.data());
            parsed.value = PropertyValue(std::move(text));
        }
        return true;
    }

    /// Where the references of a container lie; nothing when they do not fit.
    std::optional<quint64> references(quint64 &offset, quint64 perItem, quint64 &count)
    {
        if (!readCount(offset, count)) {
            return std::nullopt;
        }
        if (count > m_table || !holds(offset, count * perItem * m_referenceWidth)) {
            complain(u"the collection at byte %1 is cut off"_s.arg(offset));
            return std::nullopt;
        }
        return offset;
    }

    const Parsed *referenced(quint64 start, quint64 position, int depth, Parsed &container)
    {
        const Parsed *item = object(number(start + position * m_referenceWidth, m_referenceWidth), depth + 1);
        if (item != nullptr) {
            container.unfolded += item->unfolded;
            container.height = std::max(container.height, item->height + 1);
            if (container.unfolded > m_unfoldedLimit) {
                return complain(u"it stands for too many values"_s);
            }
        }
        return item;
    }

    bool readArray(quint64 offset, int depth, Parsed &parsed)
    {
        quint64 count = 0;
        const auto start = references(offset, 1, count);
        if (!start) {
            return false;
        }
        PropertyValue::Array items;
        for (quint64 position = 0; position < count; ++position) {
            const Parsed *item = referenced(*start, position, depth, parsed);
            if (item == nullptr) {
                return false;
            }
            items.append(item->value);
        }
        parsed.value = PropertyValue(std::move(items));
        return true;
    }

    bool readDictionary(quint64 offset, int depth, Parsed &parsed)
    {
        quint64 count = 0;
        const auto start = references(offset, 2, count);
        if (!start) {
            return false;
        }
        PropertyValue::Dictionary items;
        for (quint64 position = 0; position < count; ++position) {
            const Parsed *keyItem = referenced(*start, position, depth, parsed);
            if (keyItem == nullptr) {
                return false;
            }
            const auto key = keyItem->value.asString(); // copied: reading the value may move what was read
            if (!key) {
                complain(u"a dictionary at byte %1 has a key that is no string"_s.arg(offset));
                return false;
            }
            const Parsed *item = referenced(*start, count + position, depth, parsed);
            if (item == nullptr) {
                return false;
            }
            items.insert(*key, item->value);
        }
        parsed.value = PropertyValue(std::move(items));
        return true;
    }

    const QByteArray &m_bytes;
    quint64 m_unfoldedLimit;
    quint64 m_offsetWidth = 0;
    quint64 m_referenceWidth = 0;
    quint64 m_count = 0;
    quint64 m_top = 0;
    quint64 m_table = 0;
    std::vector<quint32> m_states; ///< kUnread, kBeingRead, or kFirstParsed plus an index into m_parsed
    std::vector<Parsed> m_parsed;
    QString m_complaint;
};

class BinaryWriter
{
public:
    [[nodiscard]] QByteArray write(const PropertyValue &value)
    {
        add(value);
        m_referenceWidth = widthFor(m_objects.size() - 1);
        QByteArray bytes(kBinaryMagic);
        std::vector<quint64> offsets;
        offsets.reserve(m_objects.size());
        for (const Object &object : m_objects) {
            offsets.push_back(static_cast<quint64>(bytes.size()));
            bytes.append(object.head);
            for (const quint64 reference : object.references) {
                appendNumber(bytes, reference, m_referenceWidth);
            }
        }
        const auto table = static_cast<quint64>(bytes.size());
        const int offsetWidth = widthFor(table);
        for (const quint64 offset : offsets) {
            appendNumber(bytes, offset, offsetWidth);
        }
        bytes.append(6, '\0');
        appendNumber(bytes, static_cast<quint64>(offsetWidth), 1);
        appendNumber(bytes, static_cast<quint64>(m_referenceWidth), 1);
        appendNumber(bytes, m_objects.size(), 8);
        appendNumber(bytes, 0, 8);
        appendNumber(bytes, table, 8);
        return bytes;
    }

private:
    struct Object
    {
        QByteArray head;
        std::vector<quint64> references;
    };

    static int widthFor(quint64 largest)
    {
        if (largest <= 0xFF) {
            return 1;
        }
        if (largest <= 0xFFFF) {
            return 2;
        }
        return largest <= 0xFFFFFFFF ? 4 : 8;
    }

    static void appendNumber(QByteArray &bytes, quint64 value, int width)
    {
        for (int shift = (width - 1) * 8; shift >= 0; shift -= 8) {
            bytes.append(static_cast<char>((value >> shift) & 0xFF));
        }
    }

    static void appendUnsigned(QByteArray &bytes, quint64 value)
    {
        const int width = widthFor(value);
        bytes.append(static_cast<char>(0x10 | std::countr_zero(static_cast<unsigned>(width))));
        appendNumber(bytes, value, width);
    }

    static QByteArray head(int kind, qsizetype count)
    {
        QByteArray bytes;
        bytes.append(static_cast<char>((kind << 4) | static_cast<int>(std::min<qsizetype>(count, 0x0F))));
        if (count >= 0x0F) {
            appendUnsigned(bytes, static_cast<quint64>(count));
        }
        return bytes;
    }

    quint64 append(Object object)
    {
        m_objects.push_back(std::move(object));
        return m_objects.size() - 1;
    }

    /// Equal strings are written once.
    quint64 addString(const QString &text)
    {
        const auto known = m_strings.constFind(text);
        if (known != m_strings.cend()) {
            return *known;
        }
        Object object;
        const bool isAscii = std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; });
        if (isAscii) {
            object.head = head(0x5, text.size()) + text.toLatin1();
        } else {
            object.head = head(0x6, text.size());
            const qsizetype start = object.head.size();
            object.head.resize(start + text.size() * 2);
            qToBigEndian<char16_t>(text.utf16(), text.size(), object.head.data() + start);
        }
        const quint64 index = append(std::move(object));
        m_strings.insert(text, index);
        return index;
    }

    quint64 add(const PropertyValue &value)
    {
        using Type = PropertyValue::Type;
        Object object;
        switch (value.type()) {
        case Type::String:
            return addString(*value.asString());
        case Type::Boolean:
            object.head.append(value.toBool() ? '\x09' : '\x08');
            break;
        case Type::Integer: {
            const qint64 number = value.toInteger();
            if (number >= 0) {
                appendUnsigned(object.head, static_cast<quint64>(number));
            } else {
                object.head.append('\x13');
                appendNumber(object.head, static_cast<quint64>(number), 8);
            }
            break;
        }
        case Type::Unsigned:
            object.head.append('\x14');
            object.head.append(8, '\0');
            appendNumber(object.head, *value.asUnsigned(), 8);
            break;
        case Type::Real:
            object.head.append('\x23');
            appendNumber(object.head, std::bit_cast<quint64>(value.toDouble()), 8);
            break;
        case Type::Date:
            object.head.append('\x33');
            appendNumber(object.head, std::bit_cast<quint64>(value.asDate()->timeIntervalSince1970() - kSecondsTo2001),
                         8);
            break;
        case Type::Data:
            object.head = head(0x4, value.asData()->size()) + *value.asData();
            break;
        case Type::Array:
            return addArray(*value.asArray());
        case Type::Dictionary:
            return addDictionary(*value.asDictionary());
        case Type::Null:
            break; // refused before
        }
        return append(std::move(object));
    }

    quint64 addArray(const PropertyValue::Array &items)
    {
        const quint64 index = append({head(0xA, items.size()), {}});
        std::vector<quint64> references;
        for (const PropertyValue &item : items) {
            references.push_back(add(item));
        }
        m_objects[index].references = std::move(references);
        return index;
    }

    quint64 addDictionary(const PropertyValue::Dictionary &items)
    {
        const quint64 index = append({head(0xD, items.size()), {}});
        std::vector<quint64> references;
        for (auto item = items.cbegin(); item != items.cend(); ++item) {
            references.push_back(addString(item.key()));
        }
        for (const PropertyValue &item : items) {
            references.push_back(add(item));
        }
        m_objects[index].references = std::move(references);
        return index;
    }

    std::vector<Object> m_objects;
    QHash<QString, quint64> m_strings;
    int m_referenceWidth = 1;
};

} // namespace

std::optional<PropertyValue> readBinaryPropertyList(const QByteArray &bytes, NSError *error)
{
    BinaryReader reader(bytes);
    auto value = reader.read();
    if (!value) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PropertyListReadCorrupt),
                      u"the binary property list is corrupt: "_s % reader.complaint());
    }
    return value;
}

QByteArray writeBinaryPropertyList(const PropertyValue &value)
{
    return BinaryWriter().write(value);
}

} // namespace quib

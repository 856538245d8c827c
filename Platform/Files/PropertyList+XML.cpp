// The XML format: a "plist" element around one value. Dates hold whole seconds; integers are decimal.

#include "PropertyList_p.h"

#include <QXmlStreamReader>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

class XMLReader
{
public:
    explicit XMLReader(const QByteArray &bytes)
        : m_xml(bytes)
    {
    }

    [[nodiscard]] std::optional<PropertyValue> read()
    {
        if (!m_xml.readNextStartElement() || m_xml.name() != u"plist") {
            return complain(u"it has no \"plist\" element"_s);
        }
        if (!m_xml.readNextStartElement()) {
            return complain(u"it holds no value"_s);
        }
        auto value = readValue(1);
        if (value && m_xml.readNextStartElement()) {
            return complain(u"it holds more than one value"_s);
        }
        if (m_xml.hasError()) {
            return complain(m_xml.errorString().toLower());
        }
        return value;
    }
    [[nodiscard]] QString complaint() const
    {
        return u"line %1: %2"_s.arg(QString::number(m_xml.lineNumber()), m_complaint);
    }

private:
    std::nullopt_t complain(const QString &complaint)
    {
        if (m_complaint.isEmpty()) {
            m_complaint = complaint;
        }
        return std::nullopt;
    }

    /// The text of the current element, to its end; nothing where it holds elements.
    std::optional<QString> text()
    {
        QString read = m_xml.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
        if (m_xml.hasError()) {
            return complain(m_xml.errorString().toLower());
        }
        return read;
    }

    std::optional<PropertyValue> readValue(int depth)
    {
        if (depth > kPropertyListMaximumDepth) {
            return complain(u"values are nested more than %1 deep"_s.arg(kPropertyListMaximumDepth));
        }
        const QString kind = m_xml.name().toString();
        if (kind == u"dict") {
            return readDictionary(depth);
        }
        if (kind == u"array") {
            return readArray(depth);
        }
        const auto content = text();
        if (!content) {
            return std::nullopt;
        }
        if (kind == u"string") {
            return PropertyValue(*content);
        }
        if (kind == u"true" || kind == u"false") {
            return PropertyValue(kind == u"true");
        }
        return readScalar(kind, content->trimmed());
    }

    std::optional<PropertyValue> readScalar(const QString &kind, const QString &text)
    {
        bool isValid = false;
        if (kind == u"integer") {
            const qint64 value = text.toLongLong(&isValid, 0);
            if (isValid) {
                return PropertyValue(value);
            }
            const quint64 large = text.toULongLong(&isValid, 0);
            if (isValid) {
                return PropertyValue(large);
            }
            return complain(u"an integer cannot be read"_s);
        }
        if (kind == u"real") {
            const QString plain = text.toLower().replace(u"infinity"_s, u"inf"_s);
            const double value = (plain.startsWith(u'+') ? plain.sliced(1) : plain).toDouble(&isValid);
            return isValid ? std::optional(PropertyValue(value)) : complain(u"a real number cannot be read"_s);
        }
        if (kind == u"date") {
            const auto date = NSDate::dateFromISO8601String(text);
            return date ? std::optional(PropertyValue(*date)) : complain(u"a date cannot be read"_s);
        }
        if (kind == u"data") {
            QByteArray encoded = text.toLatin1();
            encoded.removeIf([](char unit) { return unit == ' ' || unit == '\n' || unit == '\t' || unit == '\r'; });
            const auto decoded = QByteArray::fromBase64Encoding(encoded, QByteArray::AbortOnBase64DecodingErrors);
            return decoded ? std::optional(PropertyValue(*decoded)) : complain(u"data is not in base 64"_s);
        }
        return complain(u"\"%1\" is no kind of value"_s.arg(kind.left(40)));
    }

    std::optional<PropertyValue> readArray(int depth)
    {
        PropertyValue::Array items;
        while (m_xml.readNextStartElement()) {
            auto item = readValue(depth + 1);
            if (!item) {
                return std::nullopt;
            }
            items.append(std::move(*item));
        }
        return PropertyValue(std::move(items));
    }

    std::optional<PropertyValue> readDictionary(int depth)
    {
        PropertyValue::Dictionary items;
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() != u"key") {
                return complain(u"a dictionary has a value without a key"_s);
            }
            const auto key = text();
            if (!key) {
                return std::nullopt;
            }
            if (!m_xml.readNextStartElement()) {
                return complain(u"a dictionary has a key without a value"_s);
            }
            auto item = readValue(depth + 1);
            if (!item) {
                return std::nullopt;
            }
            items.insert(*key, *item);
        }
        return PropertyValue(std::move(items));
    }

    QXmlStreamReader m_xml;
    QString m_complaint;
};

/// Text with the characters of markup escaped, and the carriage return too, which readers would turn into a line feed.
/// Nothing for text that XML cannot hold.
std::optional<QString> escaped(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = text[index];
        if (unit.isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate()) {
            result.append(unit);
            result.append(text[++index]);
            continue;
        }
        const char16_t code = unit.unicode();
        if (unit.isSurrogate() || code >= 0xFFFE || (code < 0x20 && code != u'\t' && code != u'\n' && code != u'\r')) {
            return std::nullopt;
        }
        switch (code) {
        case u'&':
            result.append(u"&amp;");
            break;
        case u'<':
            result.append(u"&lt;");
            break;
        case u'>':
            result.append(u"&gt;");
            break;
        case u'\r':
            result.append(u"&#13;");
            break;
        default:
            result.append(unit);
        }
    }
    return result;
}

class XMLWriter
{
public:
    [[nodiscard]] bool add(const PropertyValue &value, int depth)
    {
        using Type = PropertyValue::Type;
        switch (value.type()) {
        case Type::Boolean:
            line(depth, value.toBool() ? u"<true/>" : u"<false/>");
            return true;
        case Type::Integer:
        case Type::Unsigned:
            return element(depth, u"integer", value.toString());
        case Type::Real:
            return element(depth, u"real", value.toString());
        case Type::String:
            return element(depth, u"string", *value.asString());
        case Type::Date:
            return element(depth, u"date", value.asDate()->iso8601String());
        case Type::Data:
            return element(depth, u"data", QString::fromLatin1(value.asData()->toBase64()));
        case Type::Array:
            line(depth, u"<array>");
            for (const PropertyValue &item : *value.asArray()) {
                if (!add(item, depth + 1)) {
                    return false;
                }
            }
            line(depth, u"</array>");
            return true;
        case Type::Dictionary:
            line(depth, u"<dict>");
            for (auto item = value.asDictionary()->cbegin(); item != value.asDictionary()->cend(); ++item) {
                if (!element(depth + 1, u"key", item.key()) || !add(*item, depth + 1)) {
                    return false;
                }
            }
            line(depth, u"</dict>");
            return true;
        case Type::Null:
            break; // refused before
        }
        return false;
    }
    [[nodiscard]] const QString &text() const { return m_text; }

private:
    void line(int depth, QStringView content)
    {
        m_text.append(QString(depth, u'\t'));
        m_text.append(content);
        m_text.append(u'\n');
    }
    bool element(int depth, QStringView name, const QString &content)
    {
        const auto safe = escaped(content);
        if (safe) {
            line(depth, QString(u'<' % name % u'>' % *safe % u"</" % name % u'>'));
        }
        return safe.has_value();
    }

    QString m_text;
};

} // namespace

std::optional<PropertyValue> readXMLPropertyList(const QByteArray &bytes, NSError *error)
{
    XMLReader reader(bytes);
    auto value = reader.read();
    if (!value) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PropertyListReadCorrupt),
                      u"the XML property list is corrupt: "_s % reader.complaint());
    }
    return value;
}

std::optional<QByteArray> writeXMLPropertyList(const PropertyValue &value, NSError *error)
{
    XMLWriter writer;
    if (!writer.add(value, 0)) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PropertyListWriteInvalid),
                      u"a string holds a character that XML cannot hold"_s);
        return std::nullopt;
    }
    const QString head = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n"_s;
    return QString(head % writer.text() % u"</plist>\n").toUtf8();
}

} // namespace quib

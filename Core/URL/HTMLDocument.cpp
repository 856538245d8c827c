#include "HTMLDocument.h"

#include <QChar>

#include <array>
#include <optional>

#include <libxml/HTMLparser.h>

using namespace Qt::StringLiterals;

namespace {

bool isBlank(QChar unit)
{
    return unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\f' || unit == u'\r';
}

bool isASCIILetter(QChar unit)
{
    const char16_t lower = unit.unicode() | 0x20;
    return lower >= u'a' && lower <= u'z';
}

/// Elements whose text holds no tags, up to their end tag.
bool holdsText(QStringView name)
{
    constexpr std::array<QStringView, 7> kNames = {u"script", u"style",   u"textarea", u"xmp",
                                                   u"iframe", u"noembed", u"noframes"};
    for (const QStringView &each : kNames) {
        if (name.compare(each, Qt::CaseInsensitive) == 0) {
            return true;
        }
    }
    return false;
}

/// Walks over a page. Every step goes forward, so that the whole takes one pass.
class TagScanner
{
public:
    explicit TagScanner(QStringView text)
        : m_text(text)
    {
    }

    /// The source between the first title's tags; nothing where there is no title.
    std::optional<QStringView> firstTitle()
    {
        for (qsizetype open = m_text.indexOf(u'<'); open >= 0; open = m_text.indexOf(u'<', m_position)) {
            m_position = open + 1;
            const QChar next = unitAt(m_position);
            if (next == u'!' || next == u'?') {
                skipComment();
            } else if (next == u'/') {
                if (isASCIILetter(unitAt(m_position + 1))) {
                    skipTag(m_position + 1);
                } else {
                    skipPast(u">");
                }
            } else if (isASCIILetter(next)) {
                const QStringView name = skipTag(m_position);
                if (name.compare(u"title", Qt::CaseInsensitive) == 0) {
                    const qsizetype start = m_position;
                    return m_text.sliced(start, endTag(name).value_or(m_text.size()) - start);
                }
                if (name.compare(u"plaintext", Qt::CaseInsensitive) == 0) {
                    return std::nullopt;
                }
                if (holdsText(name)) {
                    m_position = endTag(name).value_or(m_text.size());
                }
            }
        }
        return std::nullopt;
    }

private:
    [[nodiscard]] QChar unitAt(qsizetype index) const { return index < m_text.size() ? m_text[index] : QChar(); }

    void skipPast(QStringView what)
    {
        const qsizetype found = m_text.indexOf(what, m_position);
        m_position = found < 0 ? m_text.size() : found + what.size();
    }
    /// Behind "<", at "!" or "?".
    void skipComment()
    {
        if (m_text.sliced(m_position).startsWith(u"!--")) {
            // "<!-->" is whole.
            ++m_position;
            skipPast(u"-->");
        } else {
            skipPast(u">");
        }
    }
    /// Goes behind a tag, quoted values included; gives its name, which begins at a place. A tag that
    /// the page cuts has none.
    QStringView skipTag(qsizetype name)
    {
        qsizetype at = name;
        while (at < m_text.size() && !isBlank(m_text[at]) && m_text[at] != u'/' && m_text[at] != u'>') {
            ++at;
        }
        const QStringView found = m_text.sliced(name, at - name);
        while (at < m_text.size() && m_text[at] != u'>') {
            at = m_text[at] == u'=' ? valueEnd(at + 1) : at + 1;
        }
        m_position = std::min(at + 1, m_text.size());
        return at < m_text.size() ? found : QStringView();
    }
    [[nodiscard]] qsizetype valueEnd(qsizetype at) const
    {
        while (at < m_text.size() && isBlank(m_text[at])) {
            ++at;
        }
        const QChar quote = unitAt(at);
        if (quote == u'"' || quote == u'\'') {
            const qsizetype end = m_text.indexOf(quote, at + 1);
            return end < 0 ? m_text.size() : end + 1;
        }
        while (at < m_text.size() && !isBlank(m_text[at]) && m_text[at] != u'>') {
            ++at;
        }
        return at;
    }
    /// Where the end tag of an element begins.
    [[nodiscard]] std::optional<qsizetype> endTag(QStringView name) const
    {
        for (qsizetype at = m_text.indexOf(u"</", m_position); at >= 0; at = m_text.indexOf(u"</", at + 2)) {
            const QStringView rest = m_text.sliced(at + 2);
            const QChar behind = unitAt(at + 2 + name.size());
            if (rest.startsWith(name, Qt::CaseInsensitive) && (isBlank(behind) || behind == u'/' || behind == u'>')) {
                return at;
            }
        }
        return std::nullopt;
    }

    QStringView m_text;
    qsizetype m_position = 0;
};

/// What a number in a reference stands for. The numbers that Windows-1252 uses and Unicode does not are its own.
char32_t characterOfNumber(quint32 number)
{
    constexpr std::array<char16_t, 32> kWindows = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    if (number >= 0x80 && number < 0x80 + kWindows.size()) {
        return kWindows.at(number - 0x80);
    }
    const bool isCharacter = number != 0 && number <= 0x10FFFF && !(number >= 0xD800 && number < 0xE000);
    return isCharacter ? char32_t(number) : U'\uFFFD';
}

struct Reference
{
    char32_t character = 0;
    qsizetype length = 0; ///< of the source, "&" included
};

std::optional<Reference> numericReference(QStringView text)
{
    const bool isHexadecimal = text.size() > 2 && (text[2] == u'x' || text[2] == u'X');
    const quint32 base = isHexadecimal ? 16 : 10;
    const qsizetype start = isHexadecimal ? 3 : 2;
    qsizetype at = start;
    quint32 number = 0;
    for (; at < text.size(); ++at) {
        const char16_t unit = text[at].unicode();
        const char16_t lower = unit | 0x20;
        quint32 digit = base;
        if (unit >= u'0' && unit <= u'9') {
            digit = unit - u'0';
        } else if (isHexadecimal && lower >= u'a' && lower <= u'f') {
            digit = lower - u'a' + 10U;
        }
        if (digit >= base) {
            break;
        }
        number = std::min<quint32>(number * base + digit, 0x110000);
    }
    if (at == start) {
        return std::nullopt;
    }
    return Reference{characterOfNumber(number), at < text.size() && text[at] == u';' ? at + 1 : at};
}

std::optional<Reference> namedReference(QStringView text)
{
    constexpr qsizetype kLongestName = 16;
    QByteArray name;
    qsizetype at = 1;
    while (at < text.size() && name.size() < kLongestName &&
           (isASCIILetter(text[at]) || (text[at] >= u'0' && text[at] <= u'9'))) {
        name.append(static_cast<char>(text[at++].unicode()));
    }
    const htmlEntityDesc *const entity = htmlEntityLookup(reinterpret_cast<const xmlChar *>(name.constData()));
    if (entity == nullptr) {
        return std::nullopt;
    }
    const bool isClosed = at < text.size() && text[at] == u';';
    // The oldest names count without the semicolon too.
    if (!isClosed && entity->value > 0xFF) {
        return std::nullopt;
    }
    return Reference{entity->value, isClosed ? at + 1 : at};
}

QString withReferencesResolved(QStringView source)
{
    QString text;
    for (qsizetype at = 0; at < source.size();) {
        if (source[at] == u'&') {
            const QStringView rest = source.sliced(at);
            const auto reference = rest.size() > 1 && rest[1] == u'#' ? numericReference(rest) : namedReference(rest);
            if (reference) {
                text.append(QChar::fromUcs4(reference->character));
                at += reference->length;
                continue;
            }
        }
        text.append(source[at] == QChar() ? QChar(0xFFFD) : source[at]);
        ++at;
    }
    return text;
}

} // namespace

HTMLDocument HTMLDocument::documentWithString(QStringView string)
{
    HTMLDocument document;
    if (auto source = TagScanner(string).firstTitle()) {
        qsizetype length = std::min(source->size(), kLongestTitle);
        if (length < source->size() && (*source)[length - 1].isHighSurrogate()) {
            --length;
        }
        document.m_title = u""_s % withReferencesResolved(source->first(length));
    }
    return document;
}

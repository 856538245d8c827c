#include "AddressScanner.h"

#include "LinkCharacters.h"
#include "NSRegularExpression.h"
#include "NSStringHelpers.h"

#include <QString>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// What an address may hold in front of its postal code and behind it, in units and lines.
constexpr qsizetype kUnitsBefore = 140;
constexpr qsizetype kUnitsBehind = 60;
constexpr int kLinesBefore = 3;

// The parts of the patterns. Blanks are horizontal; SEPARATOR passes from street to town, at most into the next line.

QString withParts(QString pattern)
{
    const std::pair<QLatin1StringView, QLatin1StringView> parts[] = {
        {QLatin1StringView{"SEPARATOR"},
         QLatin1StringView{R"((?:[ \t]*,[ \t]*|[ \t]*,?[ \t]*\r?\n[ \t]*|[ \t]+[-–][ \t]+))"}},
        {QLatin1StringView{"CAPITALISED"},
         QLatin1StringView{R"((?:\p{Lu}[\p{L}\p{M}'’.]*+(?:-\p{L}[\p{L}\p{M}'’.]*+)*+))"}},
        {QLatin1StringView{"TOWN"},
         QLatin1StringView{
             R"((?:(?:St\.|Ste\.|Mt\.|Ft\.)BLANK)?(?!CEDEX|Cedex)\p{Lu}[\p{L}\p{M}'’]*+(?:-\p{L}[\p{L}\p{M}'’]*+)*+)"}},
        {QLatin1StringView{"PARTICLE"},
         QLatin1StringView{
             R"((?:d[aei]l?|de[il]?l?[aeo]?|delle|degli|d[’']|l[’']|la|le|les|los|las|du|des|y|e|i|von|der|dem|den|am|an|im|zu|zur|upon|of|the|sur|sous|en))"}},
        {QLatin1StringView{"BLANK"}, QLatin1StringView{R"([ \t\u00A0])"}},
        {QLatin1StringView{"NUMBER"}, QLatin1StringView{R"([1-9]\d{0,4})"}},
    };
    for (const auto &[name, text] : parts) {
        pattern.replace(name, text);
    }
    return pattern;
}

const NSRegularExpression &americanExpression()
{
    static const NSRegularExpression expression(withParts(QStringLiteral(
        R"((?<![\p{L}\p{N}$€£#.,:/-])\d{1,6}[A-Z]?BLANK(?:(?:N|S|E|W|NE|NW|SE|SW|North|South|East|West)\.?BLANK)?)"
        R"((?:(?:CAPITALISED|\d{1,3}(?:st|nd|rd|th))BLANK){1,4})"
        R"((?:Street|St|Avenue|Ave|Road|Rd|Boulevard|Blvd|Lane|Ln|Drive|Dr|Court|Ct|Place|Pl|Square|Sq|Parkway|Pkwy|Way|Highway|Hwy|Terrace|Ter|Circle|Cir|Trail|Plaza|Pike)\b\.?)"
        R"((?:BLANK(?:N|S|E|W|NE|NW|SE|SW)\b\.?)?)"
        R"((?:SEPARATOR(?:(?:Apt|Apartment|Suite|Ste|Unit|Floor|Fl|Room|Rm)\.?BLANK#?|#)[\p{L}\d-]{1,6})?)"
        R"(SEPARATORTOWN(?:BLANKTOWN){0,3},?BLANK)"
        R"((?:A[KLRZ]|C[AOT]|D[CE]|FL|GA|HI|I[ADLN]|K[SY]|LA|M[ADEINOST]|N[CDEHJMVY]|O[HKR]|PA|RI|S[CD]|T[NX]|UT|V[AT]|W[AIVY])\.?BLANK)"
        R"(\d{5}(?:-\d{4})?(?![\p{L}\p{N}])(?:SEPARATOR(?:USA|U\.S\.A\.|United States(?: of America)?)\b)?)")));
    return expression;
}

const NSRegularExpression &britishExpression()
{
    static const NSRegularExpression expression(withParts(QStringLiteral(
        R"((?<![\p{L}\p{N}$€£#.,:/-])(?:Flat BLANK*\d{1,3}[A-Z]?,BLANK*)?\d{1,4}[A-Za-z]?(?:[-–]\d{1,4})?,?BLANK)"
        R"((?:(?:CAPITALISED|of|the|and)BLANK){1,4})"
        R"((?:Street|St|Avenue|Ave|Road|Rd|Lane|Ln|Drive|Close|Court|Ct|Place|Pl|Square|Sq|Way|Terrace|Gardens|Grove|Hill|Crescent|Mews|Row|Walk|Park|Parade|Yard|Green|Mall|Embankment|Gate|Bridge|Wharf)\b\.?)"
        R"((?:SEPARATORTOWN(?:BLANK(?:TOWN|upon|on|of|the)){0,3}){1,3})"
        R"((?:SEPARATOR|BLANK))"
        R"((?:[A-Z]{1,2}\d[A-Z\d]?)BLANK\d[A-Z]{2}(?![\p{L}\p{N}])(?:SEPARATOR(?:UK|U\.K\.|United Kingdom|England|Scotland|Wales|Great Britain)\b)?)")));
    return expression;
}

const NSRegularExpression &continentalExpression()
{
    // Italian and Spanish, German, French streets; the town with its postal code is written alike.
    static const NSRegularExpression expression(withParts(QStringLiteral(
        R"((?<![\p{L}\p{N}$€£#./-])(?:)"
        R"((?:Via|Viale|Piazza|Piazzale|P\.zza|Corso|C\.so|Largo|Vicolo|Strada|Lungarno|Lungotevere|Contrada|Borgo|Calle|C/|Avenida|Avda\.?|Av\.|Plaza|Pza\.?|Paseo|Carrer|Passeig|Ronda|Camino|Travesía|Rambla|Glorieta))"
        R"(BLANK?(?:(?:CAPITALISED|PARTICLE|[XVI]+|\d{1,2})BLANK?){1,6}?,?BLANK?(?:n[.°º]?BLANK?|n\.º BLANK*)?NUMBER(?:[ \t]?/[ \t]?[\p{L}\d]{1,3}|[ \t]?(?:bis|[A-Za-z])\b)?)"
        R"((?:,BLANK?(?:\d{1,2}[ºª°]|[Ii]nt\.?|[Ss]cala|[Pp]iso)BLANK?[\p{L}\d]{0,4})?)"
        R"(|(?:(?:Am|An der|An den|Auf der|Auf dem|Im|In der|In den|Zum|Zur|Unter den|Unter der|Alte|Alter|Neue|Neuer|Große|Großer|Kleine|Kleiner|Obere|Untere)BLANKCAPITALISED)"
        R"(|(?:CAPITALISEDBLANK){0,2}(?:CAPITALISED-)?\p{Lu}[\p{L}\p{M}-]*?(?:straße|strasse|str\.|weg|platz|allee|gasse|ring|damm|ufer|steig|markt|chaussee|graben)|(?:CAPITALISED(?:BLANK|-)){1,2}(?:Straße|Strasse|Str\.|Weg|Platz|Allee|Gasse|Ring|Damm|Ufer|Markt|Chaussee))BLANKNUMBER(?:BLANK?[a-z]\b)?(?:[-–]\d{1,4})?)"
        R"(|NUMBER(?:BLANK?(?:bis|ter|quater))?,?BLANK(?:[Rr]ue|[Aa]venue|[Bb]oulevard|[Bb]d|[Pp]lace|[Qq]uai|[Cc]hemin|[Aa]llée|[Ii]mpasse|[Cc]ours|[Rr]oute|[Ss]quare|[Pp]assage)BLANK(?:(?:CAPITALISED|PARTICLE|\d{1,2})BLANK?){1,6})"
        R"()SEPARATOR(?:I-|D-|F-|E-|DE-|FR-|ES-|IT-)?\d{5}BLANK)"
        R"(TOWN(?:(?:BLANK|-)(?:TOWN|PARTICLE(?=BLANK\p{Lu}|-))){0,4}(?:BLANK\([\p{L} ]{2,20}\)|BLANK[A-Z]{2}\b|BLANK(?:CEDEX|Cedex)(?:BLANK\d{1,2})?)?)"
        R"((?:SEPARATOR(?:Italia|Italy|Deutschland|Germany|France|España|Spain)\b)?)")));
    return expression;
}

bool isBlank(char16_t unit)
{
    return unit == u' ' || unit == u'\t' || unit == 0x00A0;
}

bool isCapital(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z';
}

/// Whether a separator stands before a postal code, with a country's letters ("D-") between them or not. Keeps the
/// expressions from nearly all numbers.
bool isBehindSeparator(QStringView text, qsizetype digit)
{
    constexpr qsizetype kCountryLetters = 2;
    qsizetype index = digit;
    if (text[index - 1] == u'-') {
        --index;
        while (index > 0 && digit - index <= kCountryLetters && isCapital(text[index - 1].unicode())) {
            --index;
        }
    }
    while (index > 0 && digit - index < kUnitsBefore && isBlank(text[index - 1].unicode())) {
        --index;
    }
    return index > 0 && QStringView(u",-–\r\n").contains(text[index - 1]);
}

} // namespace

AddressScanner::PostalCode AddressScanner::postalCodeAt(qsizetype digit, qsizetype *limit) const
{
    constexpr qsizetype kDigits = 5;
    qsizetype end = digit;
    while (end < m_text.size() && isAsciiDigit(m_text[end].unicode())) {
        ++end;
    }
    *limit = end;
    const bool isAlone = digit == 0 || !isAsciiLetter(m_text[digit - 1].unicode());
    const qsizetype size = end - digit;
    if (size == 1 && digit > 3 && isBlank(m_text[digit - 1].unicode()) && end + 1 < m_text.size() &&
        isCapital(m_text[end].unicode()) && isCapital(m_text[end + 1].unicode())) {
        // "SW1A 2AA": the digit of the second half.
        const char16_t before = m_text[digit - 2].unicode();
        const bool isHalf = isAsciiDigit(before) || (isCapital(before) && isAsciiDigit(m_text[digit - 3].unicode()));
        return isHalf ? PostalCode::British : PostalCode::None;
    }
    if (size != kDigits || !isAlone || digit < 4) {
        return PostalCode::None;
    }
    const bool isBehindState = isBlank(m_text[digit - 1].unicode()) &&
                               (isCapital(m_text[digit - 2].unicode()) || m_text[digit - 2] == u'.') &&
                               isCapital(m_text[digit - 3].unicode());
    if (isBehindState) {
        return PostalCode::American;
    }
    if (!isBehindSeparator(m_text, digit)) {
        return PostalCode::None;
    }
    const bool isBeforeTown = end + 1 < m_text.size() && isBlank(m_text[end].unicode()) && m_text[end + 1].isUpper();
    return isBeforeTown ? PostalCode::Continental : PostalCode::None;
}

std::optional<NSRange> AddressScanner::addressAround(PostalCode code, qsizetype digit)
{
    qsizetype start = digit;
    int lines = 0;
    for (const qsizetype first = std::max(m_free, digit - kUnitsBefore); start > first; --start) {
        lines += m_text[start - 1] == u'\n' ? 1 : 0;
        if (lines > kLinesBefore) {
            break;
        }
    }
    // What the window cuts is no word.
    while (start > m_free && start < digit && !isWhitespaceOrNewline(m_text[start - 1].unicode())) {
        ++start;
    }
    const QStringView window = m_text.sliced(start, std::min(m_text.size(), digit + kUnitsBehind) - start);
    const NSRegularExpression &expression = code == PostalCode::American  ? americanExpression()
                                            : code == PostalCode::British ? britishExpression()
                                                                          : continentalExpression();
    m_work += window.size();
    std::optional<NSRange> found;
    expression.enumerateMatchesInString(window, 0, {0, window.size()},
                                        [&](const NSTextCheckingResult &match, bool *stop) {
                                            const NSRange range{start + match.range().location, match.range().length};
                                            if (range.contains(digit)) {
                                                found = range;
                                                *stop = true;
                                            }
                                        });
    return found;
}

std::optional<NSRange> AddressScanner::next()
{
    while (m_at < m_text.size()) {
        ++m_work;
        if (!isAsciiDigit(m_text[m_at].unicode())) {
            ++m_at;
            continue;
        }
        const qsizetype digit = m_at;
        const PostalCode code = postalCodeAt(digit, &m_at);
        if (code == PostalCode::None) {
            continue;
        }
        if (const auto found = addressAround(code, digit)) {
            m_at = std::max(m_at, static_cast<qsizetype>(found->limit()));
            m_free = m_at;
            return found;
        }
    }
    return std::nullopt;
}

} // namespace quib

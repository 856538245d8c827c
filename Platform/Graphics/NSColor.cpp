#include "NSColor.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

using namespace Qt::StringLiterals;

namespace {

double clamped(double component)
{
    return component > 0 ? std::min(component, 1.0) : 0.0; // what is not a number is 0 too
}

/// A text read from left to right, of which pieces are taken off.
class Pieces
{
public:
    explicit Pieces(QStringView text)
        : m_rest(text)
    {
    }
    void skipToDigit()
    {
        skip([](QChar unit) { return !unit.isDigit(); });
    }
    void skipSeparators()
    {
        skip([](QChar unit) { return unit == u',' || unit.isSpace(); });
    }
    QStringView upToPunctuation()
    {
        const auto end = std::find_if(m_rest.begin(), m_rest.end(), [](QChar unit) { return unit.isPunct(); });
        return take(end - m_rest.begin());
    }
    QStringView upTo(QChar unit)
    {
        const qsizetype end = m_rest.indexOf(unit);
        return take(end < 0 ? m_rest.size() : end);
    }

private:
    template <typename Predicate> void skip(Predicate isSkipped)
    {
        const auto end = std::find_if_not(m_rest.begin(), m_rest.end(), isSkipped);
        take(end - m_rest.begin());
    }
    QStringView take(qsizetype count)
    {
        const QStringView piece = m_rest.first(count);
        m_rest = m_rest.sliced(count);
        return piece;
    }

    QStringView m_rest;
};

/// The number that the text begins with, no larger than a byte's: what is above is clamped by the colour anyway.
double leadingByte(QStringView text)
{
    int value = 0;
    for (const QChar unit : text) {
        if (!unit.isDigit()) {
            break;
        }
        value = std::min(value * 10 + unit.digitValue(), 255);
    }
    return value / 255.0;
}

/// The decimal fraction that the text begins with, whatever the locale of the process.
double leadingFraction(QStringView text)
{
    const std::string bytes = text.toLatin1().toStdString();
    double value = 0;
    const auto result = std::from_chars(bytes.data(), bytes.data() + bytes.size(), value);
    return result.ec == std::errc() && std::isfinite(value) ? value : 0;
}

/// The hexadecimal number that the text begins with, with or without "0x"; one too large is the largest.
quint32 leadingHexNumber(QStringView text)
{
    if (text.startsWith("0x"_L1, Qt::CaseInsensitive)) {
        text = text.sliced(2);
    }
    quint64 value = 0;
    for (const QChar unit : text) {
        const char16_t lower = unit.toLower().unicode();
        quint64 digit = 0;
        if (lower >= u'0' && lower <= u'9') {
            digit = lower - u'0';
        } else if (lower >= u'a' && lower <= u'f') {
            digit = lower - u'a' + 10U;
        } else {
            break;
        }
        value = std::min<quint64>(value * 16 + digit, std::numeric_limits<quint32>::max());
    }
    return static_cast<quint32>(value);
}

/// A component of sRGB as light.
double linear(double component)
{
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

} // namespace

NSColor::NSColor(double red, double green, double blue, double alpha)
    : m_red(clamped(red))
    , m_green(clamped(green))
    , m_blue(clamped(blue))
    , m_alpha(clamped(alpha))
{
}

NSColor NSColor::colorWithRed(double red, double green, double blue, double alpha)
{
    return {red, green, blue, alpha};
}

NSColor NSColor::colorWithWhite(double white, double alpha)
{
    return {white, white, white, alpha};
}

NSColor NSColor::colorFromRgbaString(QStringView string)
{
    Pieces pieces(string);
    double components[3] = {};
    for (double &component : components) {
        pieces.skipToDigit();
        component = leadingByte(pieces.upToPunctuation());
    }
    pieces.skipSeparators();
    return {components[0], components[1], components[2], leadingFraction(pieces.upTo(u')'))};
}

NSColor NSColor::colorWithHexNumber(quint32 number)
{
    return {((number >> 16) & 0xFF) / 255.0, ((number >> 8) & 0xFF) / 255.0, (number & 0xFF) / 255.0, 1.0};
}

NSColor NSColor::colorFromHexString(QStringView string)
{
    while (string.startsWith(u'#')) {
        string = string.sliced(1);
    }
    return colorWithHexNumber(leadingHexNumber(string));
}

NSColor NSColor::colorWithHexColorString(QStringView string)
{
    return colorWithHexNumber(leadingHexNumber(string.trimmed()));
}

QString NSColor::rgbaString() const
{
    const auto byte = [](double component) { return QString::number(static_cast<int>(component * 255)); };
    return u"rgba("_s % byte(m_red) % u", "_s % byte(m_green) % u", "_s % byte(m_blue) % u", "_s %
           QString::number(m_alpha, 'f', 2) % u')';
}

QString NSColor::hexString() const
{
    QString digits;
    for (const double component : {m_red, m_green, m_blue}) {
        digits += u"%1"_s.arg(qRound(component * 255), 2, 16, QChar(u'0'));
    }
    return digits.toUpper();
}

NSColor NSColor::colorWithAlphaComponent(double alpha) const
{
    return {m_red, m_green, m_blue, alpha};
}

NSColor NSColor::blendedColorWithFraction(double fraction, const NSColor &ofColor) const
{
    const double share = clamped(fraction);
    return {std::lerp(m_red, ofColor.m_red, share), std::lerp(m_green, ofColor.m_green, share),
            std::lerp(m_blue, ofColor.m_blue, share), std::lerp(m_alpha, ofColor.m_alpha, share)};
}

NSColor NSColor::colorOverBackground(const NSColor &background) const
{
    return background.colorWithAlphaComponent(1).blendedColorWithFraction(m_alpha, colorWithAlphaComponent(1));
}

double NSColor::relativeLuminance() const
{
    return 0.2126 * linear(m_red) + 0.7152 * linear(m_green) + 0.0722 * linear(m_blue);
}

double NSColor::contrastRatioOnBackground(const NSColor &background) const
{
    const double text = colorOverBackground(background).relativeLuminance();
    const double behind = background.relativeLuminance();
    return (std::max(text, behind) + 0.05) / (std::min(text, behind) + 0.05);
}

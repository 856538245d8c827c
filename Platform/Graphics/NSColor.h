#pragma once

#include <QHashFunctions>
#include <QString>
#include <QStringView>

/// A colour in sRGB with an alpha. An immutable value: components are kept as doubles and lie in 0...1; what is given
/// outside is taken as the nearer end. Any queue.
class NSColor
{
public:
    /// Opaque black.
    NSColor() = default;

    [[nodiscard]] static NSColor colorWithRed(double red, double green, double blue, double alpha = 1.0);
    [[nodiscard]] static NSColor colorWithWhite(double white, double alpha = 1.0);
    [[nodiscard]] static NSColor blackColor() { return {}; }
    [[nodiscard]] static NSColor whiteColor() { return colorWithWhite(1); }
    /// Black that lets all through.
    [[nodiscard]] static NSColor clearColor() { return colorWithWhite(0, 0); }

    // Text forms. None of them fails: a piece that is missing or is no number counts as 0.

    /// Reads a text like "rgba(255, 255, 255, 1.00)": three numbers, each from the next digit up to punctuation, then
    /// the alpha up to ")". So "rgb(1, 2, 3)", whose alpha is missing, is transparent.
    [[nodiscard]] static NSColor colorFromRgbaString(QStringView string);
    /// Reads hexadecimal digits behind any "#"; the low three bytes are red, green and blue. "#fff" is 0x000FFF, a deep
    /// blue-green, not white.
    [[nodiscard]] static NSColor colorFromHexString(QStringView string);
    /// As colorFromHexString, but a "#" is not passed over: a text that begins with one is black. White space is.
    [[nodiscard]] static NSColor colorWithHexColorString(QStringView string);

    /// "rgba(R, G, B, A.AA)", red, green and blue as integers of 0...255. They are truncated: 0.999 is 254.
    [[nodiscard]] QString rgbaString() const;
    /// Six digits without "#", upper case and rounded, which colorWithHexColorString reads back. The alpha is left out.
    [[nodiscard]] QString hexString() const;

    // Components

    [[nodiscard]] double redComponent() const { return m_red; }
    [[nodiscard]] double greenComponent() const { return m_green; }
    [[nodiscard]] double blueComponent() const { return m_blue; }
    [[nodiscard]] double alphaComponent() const { return m_alpha; }
    [[nodiscard]] bool isOpaque() const { return m_alpha >= 1.0; }

    // Made from this one

    [[nodiscard]] NSColor colorWithAlphaComponent(double alpha) const;
    /// The mix of the two, alphas included: 0 is this colour, 1 the other.
    [[nodiscard]] NSColor blendedColorWithFraction(double fraction, const NSColor &ofColor) const;
    /// What is seen when this colour is laid over an opaque background: an opaque colour.
    [[nodiscard]] NSColor colorOverBackground(const NSColor &background) const;

    // Legibility

    /// The WCAG relative luminance, 0 for black to 1 for white. The alpha is left out.
    [[nodiscard]] double relativeLuminance() const;
    /// The WCAG contrast ratio, 1...21, of this colour as text on a background; a transparent text is first laid over
    /// it.
    [[nodiscard]] double contrastRatioOnBackground(const NSColor &background) const;

    friend bool operator==(const NSColor &a, const NSColor &b) = default;
    friend size_t qHash(const NSColor &color, size_t seed = 0)
    {
        return qHashMulti(seed, color.m_red, color.m_green, color.m_blue, color.m_alpha);
    }

private:
    NSColor(double red, double green, double blue, double alpha);
    static NSColor colorWithHexNumber(quint32 number);

    double m_red = 0;
    double m_green = 0;
    double m_blue = 0;
    double m_alpha = 1;
};

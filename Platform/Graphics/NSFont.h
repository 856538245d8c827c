#pragma once

#include <QHashFunctions>
#include <QString>
#include <QStringView>

#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QFont;
QT_END_NAMESPACE

/// What a font has beyond its family and size.
struct NSFontTraits
{
    bool isBold = false;
    bool isItalic = false;
    friend bool operator==(const NSFontTraits &a, const NSFontTraits &b) = default;
};

/// A face of a family at a size. An immutable value, cheap to copy, always of a face that the machine has: what is
/// asked for and missing is looked up among the families that stand in for it. Metrics grow in step with the size; they
/// are not rounded to pixels. Any queue, once quib::GraphicsEnvironment has an application object.
/// Units: points, one to a pixel at scale 1.
class NSFont
{
public:
    /// A font by the name of a family ("Avenir Next") or of a face ("Helvetica-Bold", "Menlo Bold Italic"). Capitals,
    /// spaces and hyphens do not matter. A size that is not positive is 12, and the largest is 4096.
    /// Errors: nullopt when neither the family nor one that stands in for it is there, or it lacks the traits.
    [[nodiscard]] static std::optional<NSFont> fontWithName(QStringView name, double size);
    /// A font of a family with just these traits. Errors: as fontWithName.
    [[nodiscard]] static std::optional<NSFont> fontWithFamily(QStringView family, NSFontTraits traits, double size);
    [[nodiscard]] static NSFont systemFontOfSize(double size);
    [[nodiscard]] static NSFont boldSystemFontOfSize(double size);
    [[nodiscard]] static NSFont monospacedSystemFontOfSize(double size);

    /// The same family with these traits in addition; nullopt when it lacks such a face.
    [[nodiscard]] std::optional<NSFont> fontWithAddedTraits(NSFontTraits traits) const;
    [[nodiscard]] NSFont fontWithSize(double size) const;

    // What it is

    /// The family that is drawn with, which may be one that stands in for what was asked for.
    [[nodiscard]] const QString &familyName() const;
    /// A name that gives this very face from fontWithName: "Lato-BoldItalic".
    [[nodiscard]] const QString &fontName() const;
    [[nodiscard]] NSFontTraits traits() const;
    /// 100 (thin) to 900 (black); 400 is regular, and from 600 on a face counts as bold.
    [[nodiscard]] int weight() const;
    [[nodiscard]] bool isFixedPitch() const;
    [[nodiscard]] double pointSize() const { return m_size; }

    // Metrics

    /// The height above the baseline, a positive number.
    [[nodiscard]] double ascender() const;
    /// The depth below the baseline, a negative number.
    [[nodiscard]] double descender() const;
    /// The gap that the face asks for between lines.
    [[nodiscard]] double leading() const;
    [[nodiscard]] double xHeight() const;
    [[nodiscard]] double capHeight() const;
    /// Ascender, depth and leading together.
    [[nodiscard]] double lineHeight() const;
    /// The width of a text set in one line. Characters that the family lacks are taken from others.
    [[nodiscard]] double advanceOfText(QStringView text) const;

    /// The font for views and painters. The library knows whole pixels only, so the size is rounded: who needs it exact
    /// scales the painter by what is left.
    [[nodiscard]] QFont font(double pixelsPerPoint = 1) const;

    friend bool operator==(const NSFont &a, const NSFont &b);
    friend size_t qHash(const NSFont &font, size_t seed = 0)
    {
        return qHashMulti(seed, font.fontName(), font.pointSize());
    }

private:
    struct Face;
    NSFont(std::shared_ptr<const Face> face, double size);
    static std::shared_ptr<const Face> makeFace(const QString &family, int weight, bool isItalic);
    /// The face of a name, or null; with traits, those in place of what the name says.
    static std::shared_ptr<const Face> faceWithName(QStringView name, std::optional<NSFontTraits> traits);
    static std::shared_ptr<const Face> systemFace(QStringView kind, bool isBold);

    std::shared_ptr<const Face> m_face;
    double m_size;
};

#include "NSFont.h"

#include "FontStandIns_p.h"
#include "GraphicsEnvironment.h"

#include <Foundation/Assert.h>

#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHash>
#include <QMutex>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

using namespace Qt::StringLiterals;
using quib::foldedFontName;

/// One face with its metrics as fractions of the size.
struct NSFont::Face
{
    QString family;
    QString fontName;
    int weight = QFont::Normal;
    bool isItalic = false;
    bool isFixedPitch = false;
    double ascender = 0;
    double descender = 0;
    double leading = 0;
    double xHeight = 0;
    double capHeight = 0;
};

namespace {

constexpr double kDefaultSize = 12;
constexpr double kLargestSize = 4096;
constexpr int kLeastBoldWeight = QFont::DemiBold;
/// Metrics and widths are read at this size and scaled: at others the library rounds to whole pixels.
constexpr int kReferencePixels = 1000;
/// Names that are kept with their faces. They come from theme files, of which there may be any number.
constexpr qsizetype kMostCachedNames = 512;

struct StyleWord
{
    QLatin1StringView word;
    int weight; // 0 for a word that tells nothing of it
    bool isItalic;
};

/// The words that may follow a family's name, folded; one that ends in another stands before it.
constexpr StyleWord kStyleWords[] = {
    {"extralight"_L1, QFont::ExtraLight, false},
    {"ultralight"_L1, QFont::ExtraLight, false},
    {"extrabold"_L1, QFont::ExtraBold, false},
    {"ultrabold"_L1, QFont::ExtraBold, false},
    {"semibold"_L1, QFont::DemiBold, false},
    {"demibold"_L1, QFont::DemiBold, false},
    {"regular"_L1, QFont::Normal, false},
    {"normal"_L1, QFont::Normal, false},
    {"roman"_L1, QFont::Normal, false},
    {"medium"_L1, QFont::Medium, false},
    {"italic"_L1, 0, true},
    {"oblique"_L1, 0, true},
    {"light"_L1, QFont::Light, false},
    {"heavy"_L1, QFont::ExtraBold, false},
    {"black"_L1, QFont::Black, false},
    {"thin"_L1, QFont::Thin, false},
    {"bold"_L1, QFont::Bold, false},
    {"book"_L1, QFont::Normal, false},
};

constexpr std::pair<int, QLatin1StringView> kWeightNames[] = {
    {QFont::Thin, "Thin"_L1}, {QFont::ExtraLight, "ExtraLight"_L1}, {QFont::Light, "Light"_L1},
    {QFont::Normal, ""_L1},   {QFont::Medium, "Medium"_L1},         {QFont::DemiBold, "SemiBold"_L1},
    {QFont::Bold, "Bold"_L1}, {QFont::ExtraBold, "ExtraBold"_L1},   {QFont::Black, "Black"_L1},
};

/// A family as the font library spells it, and what else of a face was told by the name.
struct Wanted
{
    QString family;
    int weight = QFont::Normal;
    bool isItalic = false;
};

/// The families of the machine by folded name. Queue: any; the list is made once.
const QHash<QString, QString> &installedFamilies()
{
    static const QHash<QString, QString> s_families = [] {
        QHash<QString, QString> families;
        for (const QString &family : QFontDatabase::families()) {
            families.insert(foldedFontName(family), family);
        }
        return families;
    }();
    return s_families;
}

/// The family of that folded name, or the first one there is of those that stand in for it; empty without any.
QString familyFor(QStringView folded)
{
    const QHash<QString, QString> &families = installedFamilies();
    const auto own = families.constFind(folded.toString());
    if (own != families.cend()) {
        return *own;
    }
    for (const QLatin1StringView standIn : quib::fontStandIns(folded)) {
        const auto found = families.constFind(foldedFontName(QString(standIn)));
        if (found != families.cend()) {
            return *found;
        }
    }
    return {};
}

/// What a name may mean, the shortest family first: "Lato Medium" is rather a face of Lato than a family of its own.
std::vector<Wanted> meaningsOfName(QStringView name)
{
    std::vector<Wanted> meanings;
    const QString folded = foldedFontName(name);
    QStringView rest = folded;
    Wanted wanted;
    bool hasWeight = false;
    while (!rest.isEmpty()) {
        wanted.family = familyFor(rest);
        if (!wanted.family.isEmpty()) {
            meanings.insert(meanings.begin(), wanted);
        }
        const auto word = std::find_if(std::begin(kStyleWords), std::end(kStyleWords),
                                       [rest](const StyleWord &candidate) { return rest.endsWith(candidate.word); });
        if (word == std::end(kStyleWords)) {
            break;
        }
        wanted.isItalic = wanted.isItalic || word->isItalic;
        if (word->weight != 0 && !hasWeight) {
            wanted.weight = word->weight;
            hasWeight = true;
        }
        rest.chop(word->word.size());
    }
    return meanings;
}

/// The weight of the face that comes nearest, of those as bold or not and as upright or not as wanted; 0 without any.
int nearestWeight(const Wanted &wanted)
{
    std::optional<std::tuple<bool, int, int>> best;
    for (const QString &style : QFontDatabase::styles(wanted.family)) {
        const bool isItalic = QFontDatabase::italic(wanted.family, style) ||
                              style.contains("Italic"_L1, Qt::CaseInsensitive) ||
                              style.contains("Oblique"_L1, Qt::CaseInsensitive);
        const int weight = QFontDatabase::weight(wanted.family, style);
        const bool isAsBold = (weight >= kLeastBoldWeight) == (wanted.weight >= kLeastBoldWeight);
        if (isItalic != wanted.isItalic || !isAsBold) {
            continue;
        }
        const bool isNarrow = style.contains("Condensed"_L1, Qt::CaseInsensitive);
        const std::tuple candidate(isNarrow, std::abs(weight - wanted.weight), weight);
        if (!best || candidate < *best) {
            best = candidate;
        }
    }
    return best ? std::get<2>(*best) : 0;
}

QFont fontOf(const QString &family, int weight, bool isItalic)
{
    QFont font;
    font.setFamilies({family});
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setItalic(isItalic);
    // Without hinting, widths grow in step with the size and pictures look alike on every machine.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// The height of a letter that ends flat, as drawn: many files tell a wrong one, or none.
double heightOf(QChar letter, const QFontMetricsF &metrics, double otherwise)
{
    const double height = metrics.inFont(letter) ? -metrics.tightBoundingRect(letter).top() : 0;
    return height > 0 ? height : otherwise;
}

QString nameOf(const QString &family, int weight, bool isItalic)
{
    const auto nearest = std::min_element(std::begin(kWeightNames), std::end(kWeightNames), [weight](auto a, auto b) {
        return std::abs(a.first - weight) < std::abs(b.first - weight);
    });
    QString style = nearest->second % (isItalic ? "Italic"_L1 : ""_L1);
    if (style.isEmpty()) {
        style = u"Regular"_s;
    }
    return QString(family).remove(u' ') % u'-' % style;
}

} // namespace

std::shared_ptr<const NSFont::Face> NSFont::makeFace(const QString &family, int weight, bool isItalic)
{
    QFont font = fontOf(family, weight, isItalic);
    font.setPixelSize(kReferencePixels);
    const QFontMetricsF metrics(font);
    auto face = std::make_shared<Face>();
    face->family = family;
    face->fontName = nameOf(family, weight, isItalic);
    face->weight = weight;
    face->isItalic = isItalic;
    face->isFixedPitch = QFontDatabase::isFixedPitch(family);
    face->ascender = metrics.ascent() / kReferencePixels;
    face->descender = -metrics.descent() / kReferencePixels;
    face->leading = metrics.leading() / kReferencePixels;
    face->xHeight = heightOf(u'x', metrics, metrics.xHeight()) / kReferencePixels;
    face->capHeight = heightOf(u'H', metrics, metrics.capHeight()) / kReferencePixels;
    return face;
}

std::shared_ptr<const NSFont::Face> NSFont::faceWithName(QStringView name, std::optional<NSFontTraits> traits)
{
    QUIB_REQUIRE(quib::GraphicsEnvironment::ensure());
    static QMutex s_mutex;
    static QHash<QString, std::shared_ptr<const Face>> s_faces; // with a null pointer for a name without a face
    const QString key = traits
                            ? QString(name % u'\n' % QString::number(int{traits->isBold} * 2 + int{traits->isItalic}))
                            : name.toString();
    const QMutexLocker locker(&s_mutex);
    const auto known = s_faces.constFind(key);
    if (known != s_faces.cend()) {
        return *known;
    }
    std::shared_ptr<const Face> face;
    for (Wanted &wanted : meaningsOfName(name)) {
        if (traits) {
            wanted.weight = traits->isBold ? QFont::Bold : QFont::Normal;
            wanted.isItalic = traits->isItalic;
        }
        const int weight = nearestWeight(wanted);
        if (weight != 0) {
            face = makeFace(wanted.family, weight, wanted.isItalic);
            break;
        }
    }
    if (s_faces.size() >= kMostCachedNames) {
        s_faces.clear();
    }
    s_faces.insert(key, face);
    return face;
}

std::shared_ptr<const NSFont::Face> NSFont::systemFace(QStringView kind, bool isBold)
{
    auto face = faceWithName(kind, NSFontTraits{.isBold = isBold});
    if (!face) {
        // A machine without any of the families at hand: what its font library draws with.
        face = makeFace(QFontDatabase::systemFont(QFontDatabase::GeneralFont).family(),
                        isBold ? QFont::Bold : QFont::Normal, /*isItalic=*/false);
    }
    return face;
}

NSFont::NSFont(std::shared_ptr<const Face> face, double size)
    : m_face(std::move(face))
    , m_size(size > 0 ? std::min(size, kLargestSize) : kDefaultSize)
{
}

std::optional<NSFont> NSFont::fontWithName(QStringView name, double size)
{
    auto face = faceWithName(name, std::nullopt);
    return face ? std::optional(NSFont(std::move(face), size)) : std::nullopt;
}

std::optional<NSFont> NSFont::fontWithFamily(QStringView family, NSFontTraits traits, double size)
{
    auto face = faceWithName(family, traits);
    return face ? std::optional(NSFont(std::move(face), size)) : std::nullopt;
}

NSFont NSFont::systemFontOfSize(double size)
{
    return {systemFace(u"System", /*isBold=*/false), size};
}

NSFont NSFont::boldSystemFontOfSize(double size)
{
    return {systemFace(u"System", /*isBold=*/true), size};
}

NSFont NSFont::monospacedSystemFontOfSize(double size)
{
    return {systemFace(u"Monospace", /*isBold=*/false), size};
}

std::optional<NSFont> NSFont::fontWithAddedTraits(NSFontTraits traits) const
{
    const NSFontTraits own = this->traits();
    const NSFontTraits all{.isBold = own.isBold || traits.isBold, .isItalic = own.isItalic || traits.isItalic};
    if (all == own) {
        return *this;
    }
    return fontWithFamily(m_face->family, all, m_size);
}

NSFont NSFont::fontWithSize(double size) const
{
    return {m_face, size};
}

const QString &NSFont::familyName() const
{
    return m_face->family;
}

const QString &NSFont::fontName() const
{
    return m_face->fontName;
}

NSFontTraits NSFont::traits() const
{
    return {.isBold = m_face->weight >= kLeastBoldWeight, .isItalic = m_face->isItalic};
}

int NSFont::weight() const
{
    return m_face->weight;
}

bool NSFont::isFixedPitch() const
{
    return m_face->isFixedPitch;
}

double NSFont::ascender() const
{
    return m_face->ascender * m_size;
}

double NSFont::descender() const
{
    return m_face->descender * m_size;
}

double NSFont::leading() const
{
    return m_face->leading * m_size;
}

double NSFont::xHeight() const
{
    return m_face->xHeight * m_size;
}

double NSFont::capHeight() const
{
    return m_face->capHeight * m_size;
}

double NSFont::lineHeight() const
{
    return ascender() - descender() + leading();
}

double NSFont::advanceOfText(QStringView text) const
{
    QFont font = fontOf(m_face->family, m_face->weight, m_face->isItalic);
    font.setPixelSize(kReferencePixels);
    return QFontMetricsF(font).horizontalAdvance(text.toString()) * m_size / kReferencePixels;
}

QFont NSFont::font(double pixelsPerPoint) const
{
    QFont font = fontOf(m_face->family, m_face->weight, m_face->isItalic);
    font.setPixelSize(std::max(1, qRound(m_size * pixelsPerPoint)));
    return font;
}

bool operator==(const NSFont &a, const NSFont &b)
{
    return a.m_size == b.m_size && (a.m_face == b.m_face || a.m_face->fontName == b.m_face->fontName);
}

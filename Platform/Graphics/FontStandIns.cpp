#include "FontStandIns_p.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Each list ends in a face of DejaVu, which has the widest choice of scripts and is always installed.
constexpr QLatin1StringView kInterface[] = {"Inter"_L1, "DejaVu Sans"_L1};
constexpr QLatin1StringView kHumanist[] = {"Lato"_L1, "DejaVu Sans"_L1};
constexpr QLatin1StringView kGrotesque[] = {"Liberation Sans"_L1, "DejaVu Sans"_L1};
constexpr QLatin1StringView kTextSerif[] = {"Charis SIL"_L1, "DejaVu Serif"_L1};
constexpr QLatin1StringView kTimes[] = {"Liberation Serif"_L1, "DejaVu Serif"_L1};
constexpr QLatin1StringView kCode[] = {"DejaVu Sans Mono"_L1};
constexpr QLatin1StringView kTypewriter[] = {"TeX Gyre Cursor"_L1, "Liberation Mono"_L1, "DejaVu Sans Mono"_L1};
constexpr QLatin1StringView kDyslexia[] = {"OpenDyslexic"_L1, "DejaVu Sans"_L1};

struct StandIn
{
    QLatin1StringView folded;
    std::span<const QLatin1StringView> families;
};

constexpr StandIn kStandIns[] = {
    {"system"_L1, kInterface},
    {"sansserif"_L1, kInterface},
    {"avenir"_L1, kHumanist},
    {"avenirnext"_L1, kHumanist},
    {"gillsans"_L1, kHumanist},
    {"helvetica"_L1, kGrotesque},
    {"helveticaneue"_L1, kGrotesque},
    {"arial"_L1, kGrotesque},
    {"georgia"_L1, kTextSerif},
    {"charter"_L1, kTextSerif},
    {"palatino"_L1, kTextSerif},
    {"serif"_L1, kTextSerif},
    {"times"_L1, kTimes},
    {"timesnewroman"_L1, kTimes},
    {"menlo"_L1, kCode},
    {"monaco"_L1, kCode},
    {"monospace"_L1, kCode},
    {"courier"_L1, kTypewriter},
    {"couriernew"_L1, kTypewriter},
    {"opendyslexic"_L1, kDyslexia},
};

} // namespace

QString foldedFontName(QStringView name)
{
    QString folded;
    folded.reserve(name.size());
    for (const QChar unit : name) {
        if (unit != u' ' && unit != u'-') {
            folded += unit.toLower();
        }
    }
    return folded;
}

std::span<const QLatin1StringView> fontStandIns(QStringView foldedName)
{
    const auto found = std::find_if(std::begin(kStandIns), std::end(kStandIns),
                                    [foldedName](const StandIn &standIn) { return standIn.folded == foldedName; });
    return found == std::end(kStandIns) ? std::span<const QLatin1StringView>() : found->families;
}

} // namespace quib

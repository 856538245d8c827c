#include "TagIcons.h"

#include <Store/QBNoteTag.h>
#include <Text/Folding.h>

#include <QLatin1StringView>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quib {
namespace {

struct Keyword
{
    QLatin1StringView word;
    QLatin1StringView icon;
};

constexpr std::array kKeywords{
    Keyword{"art"_L1, "tag-art"_L1},           Keyword{"bank"_L1, "tag-money"_L1},
    Keyword{"blog"_L1, "tag-writing"_L1},      Keyword{"book"_L1, "tag-book"_L1},
    Keyword{"books"_L1, "tag-book"_L1},        Keyword{"budget"_L1, "tag-money"_L1},
    Keyword{"bug"_L1, "tag-bug"_L1},           Keyword{"bugs"_L1, "tag-bug"_L1},
    Keyword{"calendar"_L1, "tag-calendar"_L1}, Keyword{"car"_L1, "tag-car"_L1},
    Keyword{"cat"_L1, "tag-animal"_L1},        Keyword{"code"_L1, "tag-code"_L1},
    Keyword{"contacts"_L1, "tag-people"_L1},   Keyword{"cooking"_L1, "tag-food"_L1},
    Keyword{"design"_L1, "tag-art"_L1},        Keyword{"diary"_L1, "tag-journal"_L1},
    Keyword{"dog"_L1, "tag-animal"_L1},        Keyword{"family"_L1, "tag-people"_L1},
    Keyword{"film"_L1, "tag-film"_L1},         Keyword{"finance"_L1, "tag-money"_L1},
    Keyword{"fitness"_L1, "tag-sport"_L1},     Keyword{"food"_L1, "tag-food"_L1},
    Keyword{"friends"_L1, "tag-people"_L1},    Keyword{"game"_L1, "tag-game"_L1},
    Keyword{"games"_L1, "tag-game"_L1},        Keyword{"garden"_L1, "tag-plant"_L1},
    Keyword{"gift"_L1, "tag-gift"_L1},         Keyword{"gifts"_L1, "tag-gift"_L1},
    Keyword{"health"_L1, "tag-health"_L1},     Keyword{"home"_L1, "tag-home"_L1},
    Keyword{"house"_L1, "tag-home"_L1},        Keyword{"idea"_L1, "tag-idea"_L1},
    Keyword{"ideas"_L1, "tag-idea"_L1},        Keyword{"job"_L1, "tag-work"_L1},
    Keyword{"journal"_L1, "tag-journal"_L1},   Keyword{"links"_L1, "tag-link"_L1},
    Keyword{"meeting"_L1, "tag-calendar"_L1},  Keyword{"meetings"_L1, "tag-calendar"_L1},
    Keyword{"money"_L1, "tag-money"_L1},       Keyword{"movie"_L1, "tag-film"_L1},
    Keyword{"movies"_L1, "tag-film"_L1},       Keyword{"music"_L1, "tag-music"_L1},
    Keyword{"office"_L1, "tag-work"_L1},       Keyword{"people"_L1, "tag-people"_L1},
    Keyword{"photo"_L1, "tag-photo"_L1},       Keyword{"photos"_L1, "tag-photo"_L1},
    Keyword{"plants"_L1, "tag-plant"_L1},      Keyword{"project"_L1, "tag-project"_L1},
    Keyword{"projects"_L1, "tag-project"_L1},  Keyword{"reading"_L1, "tag-book"_L1},
    Keyword{"recipe"_L1, "tag-food"_L1},       Keyword{"recipes"_L1, "tag-food"_L1},
    Keyword{"research"_L1, "tag-science"_L1},  Keyword{"school"_L1, "tag-school"_L1},
    Keyword{"science"_L1, "tag-science"_L1},   Keyword{"shopping"_L1, "tag-shopping"_L1},
    Keyword{"song"_L1, "tag-music"_L1},        Keyword{"songs"_L1, "tag-music"_L1},
    Keyword{"sport"_L1, "tag-sport"_L1},       Keyword{"study"_L1, "tag-school"_L1},
    Keyword{"todo"_L1, "tag-todo"_L1},         Keyword{"travel"_L1, "tag-travel"_L1},
    Keyword{"trip"_L1, "tag-travel"_L1},       Keyword{"university"_L1, "tag-school"_L1},
    Keyword{"web"_L1, "tag-link"_L1},          Keyword{"work"_L1, "tag-work"_L1},
    Keyword{"writing"_L1, "tag-writing"_L1},
};
// Looked up by halving.
static_assert(std::is_sorted(kKeywords.begin(), kKeywords.end(), [](const Keyword &a, const Keyword &b) {
    return std::lexicographical_compare(a.word.begin(), a.word.end(), b.word.begin(), b.word.end());
}));

} // namespace

QString iconNameForTagTitle(const QString &title)
{
    const QStringList levels = QBNoteTag::tagComponentsFromTagString(title);
    if (!levels.isEmpty()) {
        const QString leaf = foldedString(levels.constLast(), FoldOption::CaseAndDiacritic);
        for (const QString &word : leaf.split(u' ', Qt::SkipEmptyParts)) {
            const auto found =
                std::lower_bound(kKeywords.begin(), kKeywords.end(), word,
                                 [](const Keyword &keyword, const QString &wanted) { return keyword.word < wanted; });
            if (found != kKeywords.end() && found->word == word) {
                return found->icon;
            }
        }
    }
    return u"tag"_s;
}

QStringList tagIconNames()
{
    QStringList names{u"tag"_s};
    for (const Keyword &keyword : kKeywords) {
        names.append(keyword.icon);
    }
    names.sort();
    names.removeDuplicates();
    return names;
}

} // namespace quib

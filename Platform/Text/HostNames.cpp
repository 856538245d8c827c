#include "HostNames.h"

#include "LinkCharacters.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <algorithm>
#include <array>

#include <libpsl.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr qsizetype kLongestLabel = 63;

bool isLabel(QStringView label)
{
    if (label.isEmpty() || label.size() > kLongestLabel || label.startsWith(u'-') || label.endsWith(u'-')) {
        return false;
    }
    for (qsizetype i = 0; i < label.size();) {
        const CodePoint point = codePointAt(label, i);
        if (!isWordCharacter(point.value) && point.value != U'-' && point.value != U'_') {
            return false;
        }
        i += point.size;
    }
    return true;
}

bool isNumber(QStringView label)
{
    return !label.isEmpty() &&
           std::all_of(label.begin(), label.end(), [](QChar unit) { return isAsciiDigit(unit.unicode()); });
}

bool isOctet(QStringView label)
{
    constexpr uint kLargestOctet = 255;
    return isNumber(label) && label.size() <= 3 && label.toUInt() <= kLargestOctet &&
           (label.size() == 1 || label.front() != u'0');
}

QStringView lastLabel(QStringView host)
{
    return host.sliced(host.lastIndexOf(u'.') + 1);
}

QByteArray asciiForm(QStringView host)
{
    return QUrl::toAce(host.toString()).toLower();
}

/// Whether the list has the name as such; a name that only the rule for unknown ones takes is no suffix.
bool isRegisteredSuffix(const QByteArray &name)
{
    const psl_ctx_t *list = psl_builtin();
    return list != nullptr &&
           psl_is_public_suffix2(list, name.constData(), PSL_TYPE_ICANN | PSL_TYPE_NO_STAR_RULE) == 1;
}

template <size_t Size> bool holds(const std::array<QLatin1StringView, Size> &words, QStringView word)
{
    return std::any_of(words.begin(), words.end(),
                       [word](QLatin1StringView entry) { return word.compare(entry, Qt::CaseInsensitive) == 0; });
}

/// The suffixes without national meaning that readers know as such. What came later are dictionary words: "date",
/// "name", "style", "map".
bool isClassicSuffix(QStringView label)
{
    static constexpr std::array<QLatin1StringView, 14> kClassic{{
        QLatin1StringView{"aero"},
        QLatin1StringView{"arpa"},
        QLatin1StringView{"asia"},
        QLatin1StringView{"biz"},
        QLatin1StringView{"com"},
        QLatin1StringView{"coop"},
        QLatin1StringView{"edu"},
        QLatin1StringView{"gov"},
        QLatin1StringView{"mil"},
        QLatin1StringView{"mobi"},
        QLatin1StringView{"museum"},
        QLatin1StringView{"net"},
        QLatin1StringView{"org"},
        QLatin1StringView{"xyz"},
    }};
    return holds(kClassic, label);
}

/// Suffixes that are extensions of files or bundles far more often than ends of names, with a path behind them too
/// ("Notes.app/Contents").
bool isAlwaysAnExtension(QStringView label)
{
    static constexpr std::array<QLatin1StringView, 8> kExtensions{{
        QLatin1StringView{"app"},
        QLatin1StringView{"bar"},
        QLatin1StringView{"cab"},
        QLatin1StringView{"in"},
        QLatin1StringView{"md"},
        QLatin1StringView{"mov"},
        QLatin1StringView{"py"},
        QLatin1StringView{"zip"},
    }};
    return holds(kExtensions, label);
}

/// National suffixes that readers meet every day and that are neither extensions of files nor usual properties in
/// programs. The others ("rs", "sh", "is", "id", "mw") are those just as often, or are rare.
bool isWellKnownNationalSuffix(QStringView label)
{
    static constexpr std::array<QLatin1StringView, 59> kSuffixes{{
        QLatin1StringView{"ae"}, QLatin1StringView{"ai"}, QLatin1StringView{"ar"}, QLatin1StringView{"at"},
        QLatin1StringView{"au"}, QLatin1StringView{"be"}, QLatin1StringView{"bg"}, QLatin1StringView{"br"},
        QLatin1StringView{"ca"}, QLatin1StringView{"ch"}, QLatin1StringView{"cl"}, QLatin1StringView{"cn"},
        QLatin1StringView{"co"}, QLatin1StringView{"cz"}, QLatin1StringView{"de"}, QLatin1StringView{"dk"},
        QLatin1StringView{"ee"}, QLatin1StringView{"es"}, QLatin1StringView{"eu"}, QLatin1StringView{"fi"},
        QLatin1StringView{"fm"}, QLatin1StringView{"fr"}, QLatin1StringView{"gr"}, QLatin1StringView{"hk"},
        QLatin1StringView{"hr"}, QLatin1StringView{"hu"}, QLatin1StringView{"ie"}, QLatin1StringView{"il"},
        QLatin1StringView{"io"}, QLatin1StringView{"ir"}, QLatin1StringView{"it"}, QLatin1StringView{"jp"},
        QLatin1StringView{"kr"}, QLatin1StringView{"lt"}, QLatin1StringView{"lu"}, QLatin1StringView{"lv"},
        QLatin1StringView{"ly"}, QLatin1StringView{"mx"}, QLatin1StringView{"nl"}, QLatin1StringView{"no"},
        QLatin1StringView{"nz"}, QLatin1StringView{"pe"}, QLatin1StringView{"ph"}, QLatin1StringView{"pt"},
        QLatin1StringView{"ro"}, QLatin1StringView{"ru"}, QLatin1StringView{"se"}, QLatin1StringView{"sg"},
        QLatin1StringView{"si"}, QLatin1StringView{"sk"}, QLatin1StringView{"th"}, QLatin1StringView{"tr"},
        QLatin1StringView{"tv"}, QLatin1StringView{"tw"}, QLatin1StringView{"ua"}, QLatin1StringView{"uk"},
        QLatin1StringView{"uy"}, QLatin1StringView{"vn"}, QLatin1StringView{"za"},
    }};
    return holds(kSuffixes, label);
}

/// Names of products and of parts of programs that look like names of machines.
bool isKnownOtherwise(QStringView host)
{
    static constexpr std::array<QLatin1StringView, 6> kNames{{
        QLatin1StringView{"ado.net"},
        QLatin1StringView{"asp.net"},
        QLatin1StringView{"java.io"},
        QLatin1StringView{"java.net"},
        QLatin1StringView{"system.io"},
        QLatin1StringView{"vb.net"},
    }};
    return holds(kNames, host);
}

bool isIPv4Address(QStringView host)
{
    int octets = 0;
    for (const QStringView label : host.tokenize(u'.')) {
        if (++octets > 4 || !isOctet(label)) {
            return false;
        }
    }
    return octets == 4;
}

} // namespace

bool isHostName(QStringView host)
{
    if (host.isEmpty() || host.size() > kLongestHostName) {
        return false;
    }
    if (isNumber(lastLabel(host))) {
        return isIPv4Address(host);
    }
    for (const QStringView label : host.tokenize(u'.')) {
        if (!isLabel(label)) {
            return false;
        }
    }
    return true;
}

bool hasPublicSuffix(QStringView host)
{
    const QByteArray name = asciiForm(host);
    const qsizetype dot = name.lastIndexOf('.');
    return dot > 0 && isRegisteredSuffix(name.sliced(dot + 1)) && !isRegisteredSuffix(name);
}

BareNameTrust trustOfBareName(QStringView host)
{
    const QStringView suffix = lastLabel(host);
    if (isAlwaysAnExtension(suffix)) {
        return BareNameTrust::Never;
    }
    // "end.It goes on": a suffix with a capital belongs to a name written all in capitals, or is none.
    const QString lowered = suffix.toString().toLower();
    if (suffix != lowered && host.toString() != host.toString().toUpper()) {
        return BareNameTrust::Never;
    }
    const QStringView name = host.first(host.size() - suffix.size() - 1);
    const QStringView owner = lastLabel(name);
    const bool isNational = suffix.size() == 2;
    const bool isForeign = std::any_of(suffix.begin(), suffix.end(), [](QChar unit) { return unit.unicode() >= 128; });
    // "example.co.is": below a suffix of two labels nothing is a word any more.
    if (name.contains(u'.') && isNational && isRegisteredSuffix(asciiForm(host.sliced(name.lastIndexOf(u'.') + 1)))) {
        return BareNameTrust::OnItsOwn;
    }
    const bool isPlain = isClassicSuffix(suffix) || isForeign || (isNational && isWellKnownNationalSuffix(suffix));
    if (!isPlain || isKnownOtherwise(host)) {
        return BareNameTrust::WithPath;
    }
    // "t.co", "1.de": too little of a name for a suffix that may be an abbreviation; "do.it", "to.be": words.
    static constexpr std::array<QLatin1StringView, 3> kWords{
        {QLatin1StringView{"at"}, QLatin1StringView{"be"}, QLatin1StringView{"it"}}};
    const qsizetype shortest = holds(kWords, suffix) ? 3 : 2;
    if (isNational && (owner.size() < shortest || (isNumber(owner) && suffix != u"cn"))) {
        return BareNameTrust::WithPath;
    }
    return BareNameTrust::OnItsOwn;
}

} // namespace quib

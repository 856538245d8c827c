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

/// National suffixes that are extensions of files, English words or usual properties in programs.
bool isAmbiguousNationalSuffix(QStringView label)
{
    static constexpr std::array<QLatin1StringView, 35> kAmbiguous{{
        QLatin1StringView{"ac"}, QLatin1StringView{"ad"}, QLatin1StringView{"am"}, QLatin1StringView{"as"},
        QLatin1StringView{"by"}, QLatin1StringView{"cc"}, QLatin1StringView{"cr"}, QLatin1StringView{"do"},
        QLatin1StringView{"gd"}, QLatin1StringView{"id"}, QLatin1StringView{"is"}, QLatin1StringView{"la"},
        QLatin1StringView{"me"}, QLatin1StringView{"mk"}, QLatin1StringView{"ml"}, QLatin1StringView{"mm"},
        QLatin1StringView{"mo"}, QLatin1StringView{"ms"}, QLatin1StringView{"my"}, QLatin1StringView{"pl"},
        QLatin1StringView{"pm"}, QLatin1StringView{"pn"}, QLatin1StringView{"ps"}, QLatin1StringView{"rs"},
        QLatin1StringView{"sc"}, QLatin1StringView{"sh"}, QLatin1StringView{"so"}, QLatin1StringView{"st"},
        QLatin1StringView{"sv"}, QLatin1StringView{"tf"}, QLatin1StringView{"tm"}, QLatin1StringView{"to"},
        QLatin1StringView{"us"}, QLatin1StringView{"vc"}, QLatin1StringView{"va"},
    }};
    return holds(kAmbiguous, label);
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
    const bool isPlain = isClassicSuffix(suffix) || isForeign || (isNational && !isAmbiguousNationalSuffix(suffix));
    if (!isPlain || isKnownOtherwise(host)) {
        return BareNameTrust::WithPath;
    }
    // "1.st", "t.co", "a.is": too little of a name for a suffix that may be an abbreviation.
    if (isNational && (owner.size() < 2 || isNumber(owner)) && suffix != u"cn") {
        return BareNameTrust::WithPath;
    }
    return BareNameTrust::OnItsOwn;
}

} // namespace quib

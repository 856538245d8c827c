#include "LinkScanner.h"

#include "HostNames.h"
#include "LinkCharacters.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// The longest scheme that is looked for, and the longest name of a mailbox, in units.
constexpr qsizetype kLongestScheme = 32;
constexpr qsizetype kLongestMailbox = 64;

bool isSchemeUnit(char16_t unit)
{
    return isAsciiLetter(unit) || isAsciiDigit(unit) || unit == u'+' || unit == u'.' || unit == u'-';
}

bool isRunPunctuation(char32_t character)
{
    return character == U'.' || character == U'_' || character == U'%' || character == U'+' || character == U'-';
}

template <size_t Size> bool isOneOf(QStringView word, const std::array<QStringView, Size> &words)
{
    return std::any_of(words.begin(), words.end(),
                       [word](QStringView other) { return word.compare(other, Qt::CaseInsensitive) == 0; });
}

/// Schemes whose addresses name a machine.
bool namesMachine(QStringView scheme)
{
    static constexpr std::array<QStringView, 9> kSchemes{
        {u"http", u"https", u"ftp", u"ftps", u"sftp", u"ssh", u"ws", u"wss", u"git"}};
    return isOneOf(scheme, kSchemes);
}

/// Schemes that run their text as a program: never a link, whoever wrote the note.
bool runsItsText(QStringView scheme)
{
    static constexpr std::array<QStringView, 3> kSchemes{{u"javascript", u"vbscript", u"data"}};
    return isOneOf(scheme, kSchemes);
}

/// The address with each percent sign that begins no escape escaped; the others stay what they are.
QString withWholeEscapes(const QString &address)
{
    const auto isHex = [&address](qsizetype index) {
        const char16_t unit = index < address.size() ? address[index].unicode() : u'\0';
        return isAsciiDigit(unit) || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
    };
    QString whole;
    whole.reserve(address.size());
    for (qsizetype index = 0; index < address.size(); ++index) {
        whole.append(address[index]);
        if (address[index] == u'%' && !(isHex(index + 1) && isHex(index + 2))) {
            whole.append(u"25");
        }
    }
    return whole;
}

/// A link for the text that an address has, with what had to be put in front of it.
std::optional<LinkScanner::Link> linkOf(qsizetype start, qsizetype limit, const QString &address)
{
    QUrl url(address.contains(u'%') ? withWholeEscapes(address) : address, QUrl::TolerantMode);
    if (!url.isValid() || url.scheme().isEmpty()) {
        return std::nullopt;
    }
    return LinkScanner::Link{{start, limit - start}, std::move(url)};
}

} // namespace

/// 0 outside of the text.
char16_t LinkScanner::unitAt(qsizetype index) const
{
    ++m_work;
    return index >= 0 && index < m_text.size() ? m_text[index].unicode() : u'\0';
}

char32_t LinkScanner::characterAt(qsizetype index) const
{
    ++m_work;
    return index < m_text.size() ? codePointAt(m_text, index).value : U'\0';
}

char32_t LinkScanner::characterBefore(qsizetype index) const
{
    ++m_work;
    return index > 0 ? codePointBefore(m_text, index).value : U'\0';
}

QStringView LinkScanner::part(qsizetype start, qsizetype limit) const
{
    return m_text.sliced(std::min(start, m_text.size()), std::max<qsizetype>(0, limit - start));
}

LinkScanner::Run LinkScanner::runAt(qsizetype start) const
{
    Run run{start, start};
    ScriptSeam seam;
    while (run.limit < m_text.size()) {
        const CodePoint point = codePointAt(m_text, run.limit);
        ++m_work;
        const bool isPart = isWordCharacter(point.value) || isRunPunctuation(point.value);
        if (!isPart || seam.isBefore(point.value)) {
            break;
        }
        run.hasDot = run.hasDot || point.value == U'.';
        run.limit += point.size;
    }
    return run;
}

void LinkScanner::skipToCandidate()
{
    if (m_nextSign >= m_at) {
        return; // the run that holds it, or ends before it, was reached already
    }
    const auto *const units = m_text.utf16();
    qsizetype sign = m_at;
    for (; sign < m_text.size(); ++sign) {
        const auto unit = static_cast<char16_t>(units[sign]);
        if (unit == u'.' || unit == u':' || unit == u'@') {
            break;
        }
    }
    m_work += sign - m_at;
    m_nextSign = sign;
    // Back to where the runs before the sign begin: behind what is no part of one.
    qsizetype start = sign;
    while (sign < m_text.size() && start > m_at) {
        const CodePoint point = codePointBefore(m_text, start);
        ++m_work;
        if (start - point.size < m_at || !(isWordCharacter(point.value) || isRunPunctuation(point.value))) {
            break;
        }
        start -= point.size;
    }
    m_at = start;
}

std::optional<LinkScanner::Link> LinkScanner::next()
{
    while (true) {
        skipToCandidate();
        if (m_at >= m_text.size()) {
            break;
        }
        const Run run = runAt(m_at);
        if (run.limit == run.start) {
            m_at += codePointAt(m_text, m_at).size;
            continue;
        }
        // Whatever fails below goes on behind the run, so that no run is tried twice.
        m_at = run.limit;
        const char16_t behind = unitAt(run.limit);
        std::optional<Link> link;
        if (behind == u':') {
            link = linkWithScheme(run);
        } else if (behind == u'@') {
            link = mailLink(run);
        }
        // Behind an "@" that made no address of mail stands no domain either.
        if (!link && m_at == run.limit && run.hasDot && behind != u'@') {
            link = bareLink(run);
        }
        if (link) {
            m_at = link->range.limit();
            return link;
        }
    }
    return std::nullopt;
}

/// Where the scheme at the end of a run begins; the run's limit where none does.
qsizetype LinkScanner::schemeStart(const Run &run) const
{
    qsizetype start = run.limit;
    while (start > run.start && run.limit - start <= kLongestScheme && isSchemeUnit(unitAt(start - 1))) {
        --start;
    }
    while (start < run.limit && !isAsciiLetter(unitAt(start)) && !isAsciiDigit(unitAt(start))) {
        ++start; // a marker in front
    }
    // "Look.http://": a sentence without its space.
    const QStringView found = part(start, run.limit);
    for (const QStringView known : {QStringView(u"http"), QStringView(u"https")}) {
        if (found.size() > known.size() && found.endsWith(known, Qt::CaseInsensitive)) {
            const char16_t before = unitAt(run.limit - known.size() - 1);
            if (before == u'.' || before == u'-') {
                return run.limit - known.size();
            }
        }
    }
    constexpr qsizetype kShortestScheme = 2;
    if (run.limit - start < kShortestScheme || run.limit - start > kLongestScheme || !isAsciiLetter(unitAt(start))) {
        return run.limit;
    }
    const char32_t before = characterBefore(start);
    if (start > 0 && isWordCharacter(before) && !isWrittenWithoutSpaces(before)) {
        return run.limit;
    }
    // "a_http://" is inside a word, "_http://" is underlined.
    const bool isInsideWord = before == U'_' && start > 1 && isWordCharacter(characterBefore(start - 1));
    return isInsideWord ? run.limit : start;
}

std::optional<LinkScanner::Link> LinkScanner::linkWithScheme(const Run &run)
{
    const qsizetype start = schemeStart(run);
    const QStringView scheme = part(start, run.limit);
    if (scheme.isEmpty() || runsItsText(scheme)) {
        return std::nullopt;
    }
    const qsizetype behind = run.limit + 1;
    if (unitAt(behind) == u'/' && unitAt(behind + 1) == u'/') {
        return hierarchicalLink(start, behind + 2, namesMachine(scheme));
    }
    if (scheme.compare(u"mailto", Qt::CaseInsensitive) == 0) {
        return mailtoLink(start, behind);
    }
    return scheme.compare(u"tel", Qt::CaseInsensitive) == 0 ? telephoneLink(start, behind) : std::nullopt;
}

std::optional<LinkScanner::Link> LinkScanner::hierarchicalLink(qsizetype start, qsizetype authority, bool needsHost)
{
    qsizetype limit = authority;
    if (needsHost) {
        const qsizetype host = userInfoLimit(authority);
        limit = hostLimit(host);
        bool hasRest = true;
        if (unitAt(host) != u'[') {
            const qsizetype whole = limit;
            while (limit > host &&
                   (unitAt(limit - 1) == u'.' || unitAt(limit - 1) == u'-' || unitAt(limit - 1) == u'_')) {
                --limit;
            }
            // A path stands behind a name from which nothing was taken, or behind the dot of the root.
            hasRest = whole == limit || (whole == limit + 1 && unitAt(limit) == u'.' && beginsTail(whole));
            if (!isHostName(part(host, limit))) {
                return std::nullopt;
            }
            limit = hasRest ? whole : limit;
        } else if (limit == host) {
            return std::nullopt;
        }
        // "http://http://example.com" holds its link further on.
        if (unitAt(limit) == u':' && unitAt(limit + 1) == u'/' && unitAt(limit + 2) == u'/') {
            return std::nullopt;
        }
        limit = hasRest ? portLimit(limit) : limit;
        if (hasRest && beginsTail(limit)) {
            limit = tailLimit(start, limit, &m_at);
        }
    } else {
        const char32_t first = characterAt(authority);
        if (!isWordCharacter(first) && first != U'/' && first != U'?' && first != U'[' && first != U'~') {
            return std::nullopt;
        }
        limit = tailLimit(start, authority, &m_at);
        if (limit >= 0 && std::none_of(m_text.begin() + authority, m_text.begin() + limit,
                                       [](QChar unit) { return unit.isLetterOrNumber() || unit.isSurrogate(); })) {
            return std::nullopt;
        }
    }
    return limit < 0 ? std::nullopt : linkOf(start, limit, part(start, limit).toString());
}

std::optional<LinkScanner::Link> LinkScanner::mailtoLink(qsizetype start, qsizetype address)
{
    const qsizetype host = userInfoLimit(address);
    const qsizetype name = trimmedLimit(start, host, hostLimit(host));
    if (host == address || !isHostName(part(host, name))) {
        return std::nullopt;
    }
    const qsizetype limit = tailLimit(start, address, &m_at);
    return limit < 0 ? std::nullopt : linkOf(start, limit, part(start, limit).toString());
}

std::optional<LinkScanner::Link> LinkScanner::telephoneLink(qsizetype start, qsizetype number) const
{
    constexpr qsizetype kMostUnits = 40;
    constexpr qsizetype kFewestDigits = 3;
    qsizetype limit = unitAt(number) == u'+' ? number + 1 : number;
    qsizetype lastDigit = limit;
    qsizetype digits = 0;
    for (; limit < m_text.size() && limit - number < kMostUnits; ++limit) {
        const char16_t unit = unitAt(limit);
        if (isAsciiDigit(unit)) {
            ++digits;
            lastDigit = limit + 1;
        } else if (unit != u'-' && unit != u'.') {
            break;
        }
    }
    if (digits < kFewestDigits || isWordCharacter(characterAt(limit))) {
        return std::nullopt;
    }
    return linkOf(start, lastDigit, part(start, lastDigit).toString());
}

std::optional<LinkScanner::Link> LinkScanner::mailLink(const Run &run)
{
    qsizetype start = run.start;
    // "o'brien@example.com"
    if (start > 1 && unitAt(start - 1) == u'\'' && isWordCharacter(characterBefore(start - 1))) {
        return std::nullopt;
    }
    const qsizetype host = run.limit + 1;
    const qsizetype whole = hostLimit(host);
    qsizetype limit = whole;
    while (limit > host && isRunPunctuation(unitAt(limit - 1))) {
        --limit;
    }
    const bool isUnderlined = unitAt(start) == u'_' && unitAt(limit) == u'_';
    while (start < run.limit && isRunPunctuation(unitAt(start)) && (unitAt(start) != u'_' || isUnderlined)) {
        ++start;
    }
    const QStringView mailbox = part(start, run.limit);
    const QStringView name = part(host, limit);
    if (mailbox.isEmpty() || mailbox.size() > kLongestMailbox || mailbox.endsWith(u'.') || mailbox.contains(u"..") ||
        characterBefore(start) == U'@') {
        return std::nullopt;
    }
    // "git@example.com:path" is a place on a machine.
    const char16_t behind = unitAt(limit);
    const bool isPlace = behind == u'@' || (behind == u':' && (isWordCharacter(characterAt(limit + 1)) ||
                                                               unitAt(limit + 1) == u'/' || unitAt(limit + 1) == u'~'));
    if (isPlace || name.contains(u'_') || !isHostName(name) || !hasPublicSuffix(name)) {
        return std::nullopt;
    }
    const QString address = mailbox.toString() + u'@' + QString::fromLatin1(QUrl::toAce(name.toString()));
    QUrl url;
    url.setScheme(u"mailto"_s);
    url.setPath(address, QUrl::DecodedMode);
    return Link{{start, limit - start}, std::move(url)};
}

std::optional<LinkScanner::Link> LinkScanner::bareLink(const Run &run)
{
    qsizetype start = run.start;
    qsizetype limit = run.limit;
    const bool isBehindOther = start > 0 && QStringView(u"/\\@#$&=~").contains(QChar(unitAt(start - 1))) &&
                               (unitAt(start - 1) == u'/' || openerBefore(start) == 0);
    while (start < limit && (unitAt(start) == u'_' || unitAt(start) == u'-')) {
        ++start;
    }
    while (limit > start && isRunPunctuation(unitAt(limit - 1))) {
        --limit;
    }
    const QStringView host = part(start, limit);
    if (isBehindOther || host.size() > kLongestHostName || !host.contains(u'.') || host.contains(u'_') ||
        !isHostName(host) || !hasPublicSuffix(host)) {
        return std::nullopt;
    }
    // "name.first(" and "x.first=" are lines of a program.
    const bool isWhole = limit == run.limit;
    const char16_t behind = unitAt(limit);
    qsizetype tail = isWhole ? portLimit(limit) : limit;
    const bool goesOn = behind == u':' && tail == limit && isWordCharacter(characterAt(limit + 1));
    if (goesOn || QStringView(u"(=@\\${").contains(QChar(behind))) {
        return std::nullopt;
    }
    const char32_t inTail = characterAt(tail + 1);
    const bool hasPath =
        isWhole && unitAt(tail) == u'/' && (isWordCharacter(inTail) || inTail == U'~' || inTail == U'@');
    const bool hasTail = hasPath || (isWhole && beginsTail(tail) && isWordCharacter(inTail));
    const BareNameTrust trust =
        host.startsWith(u"www.", Qt::CaseInsensitive) ? BareNameTrust::OnItsOwn : trustOfBareName(host);
    if (trust == BareNameTrust::Never || (trust == BareNameTrust::WithPath && !hasPath)) {
        return std::nullopt;
    }
    if (hasTail) {
        tail = tailLimit(start, tail, &m_at);
    } else if (isWhole && unitAt(tail) == u'/') {
        ++tail;
    }
    return tail < 0 ? std::nullopt : linkOf(start, tail, u"http://"_s + part(start, tail));
}

} // namespace quib

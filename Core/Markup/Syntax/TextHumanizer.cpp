#include "TextHumanizer.h"

#include "QBItalicDataDetector.h"
#include "SyntaxCharacters.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib::syntax {

namespace {

/// What a reader sees of a match.
QStringView visiblePart(Construct construct, QStringView string, const NSTextCheckingResult &result)
{
    const auto group = [&](int index) {
        const NSRange range = result.rangeAtIndex(index);
        return string.sliced(range.location, range.length);
    };
    switch (construct) {
    case Construct::CodeBlock: {
        QStringView body = group(3);
        if (body.startsWith(u'\r')) {
            body = body.sliced(1);
        }
        return body.startsWith(u'\n') ? body.sliced(1) : body;
    }
    case Construct::LinkedNote:
    case Construct::TitledURL:
        return group(1);
    case Construct::GenericFile:
        return group(3);
    case Construct::Header:
    case Construct::Image:
    case Construct::LineSeparator:
        return {};
    default:
        return group(2);
    }
}

/// Keeps the slashes and underscores of web addresses and tags: no marker inside of one opens or closes italics, as
/// none does where they are styled.
class AddressGuard final : public QBItalicDataDetectorDelegate
{
public:
    explicit AddressGuard(QStringView string)
        : m_string(string)
    {
    }
    bool dataDetectorShouldMatchBeginMarkerInRange(NSRange range) override { return !isInside(range); }
    bool dataDetectorShouldMatchEndMarkerInRange(NSRange range) override { return !isInside(range); }

private:
    [[nodiscard]] bool isInside(NSRange range)
    {
        if (!m_isRead) {
            readGuarded();
        }
        const auto after =
            std::upper_bound(m_guarded.begin(), m_guarded.end(), range.location,
                             [](qint64 location, const NSRange &guarded) { return location < guarded.location; });
        return after != m_guarded.begin() && std::prev(after)->contains(range.location);
    }
    /// Each from its scheme or its hash to the next white space.
    void readGuarded()
    {
        m_isRead = true;
        for (qsizetype place = 0; place < m_string.size(); ++place) {
            const QChar unit = m_string[place];
            qsizetype start = place;
            if (unit == u':' && m_string.sliced(place).startsWith(u"://")) {
                while (start > 0 && m_string[start - 1].isLetterOrNumber()) {
                    --start;
                }
            } else if (unit != u'#' || (place > 0 && m_string[place - 1].isLetterOrNumber())) {
                continue;
            }
            while (place < m_string.size() && !isSpace(m_string[place].unicode())) {
                ++place;
            }
            m_guarded.append({start, place - start});
        }
    }
    QStringView m_string;
    QList<NSRange> m_guarded;
    bool m_isRead = false; // most strings have no marker that is asked about
};

/// The characters that markers begin with.
constexpr QStringView kMarkers = u"`:#[-~*_/";

/// Those of some characters that a text holds.
QString heldOf(QStringView characters, QStringView text)
{
    QString held;
    for (const QChar character : characters) {
        if (text.contains(character)) {
            held.append(character);
        }
    }
    return held;
}

/// The characters of kMarkers of which every match of a styler holds one.
QStringView markersOf(const HumanizeStyler &styler)
{
    const bool isMarkdown = styler.syntax == 1;
    switch (styler.construct) {
    case Construct::CodeBlock:
    case Construct::CodeInline:
        return u"`";
    case Construct::Highlighter:
        return u":";
    case Construct::Header:
        return u"#";
    case Construct::LinkedNote:
    case Construct::TitledURL:
    case Construct::GenericFile:
    case Construct::Image:
    case Construct::Wiki:
        return u"[";
    case Construct::LineSeparator:
        return isMarkdown ? u"-_*" : u"-";
    case Construct::Strike:
        return isMarkdown ? u"~" : u"-";
    case Construct::Bold:
        return isMarkdown ? u"*_" : u"*";
    case Construct::Italic:
        return isMarkdown ? u"*_" : u"/";
    case Construct::Underline:
        return isMarkdown ? u"~" : u"_";
    default:
        return {};
    }
}

} // namespace

const QList<HumanizeStyler> &stringHumanizeStylers()
{
    static const QList<HumanizeStyler> stylers{
        {Construct::CodeBlock, 0},   {Construct::CodeInline, 0}, {Construct::Highlighter, 0},
        {Construct::Header, 0},      {Construct::LinkedNote, 0}, {Construct::TitledURL, 0},
        {Construct::GenericFile, 0}, {Construct::Image, 0},      {Construct::LineSeparator, 0},
        {Construct::Strike, 1},      {Construct::Strike, 0},     {Construct::Bold, 1},
        {Construct::Italic, 1},      {Construct::Bold, 0},       {Construct::Italic, 0},
        {Construct::Underline, 1},   {Construct::Underline, 0},  {Construct::Wiki, 0},
    };
    return stylers;
}

void humanizeTextInInString(const HumanizeStyler &styler, QString &string, NSRange &range)
{
    const QStringView view(string);
    QList<NSTextCheckingResult> matches;
    const auto gather = [&matches](const NSTextCheckingResult &result, bool *) { matches.append(result); };
    if (styler.construct == Construct::Italic) {
        AddressGuard guard(view);
        static const QStringList s_native{u"/"_s};
        static const QStringList s_markdown{u"*"_s, u"_"_s};
        const QStringList &markers = styler.syntax == 1 ? s_markdown : s_native;
        QBItalicDataDetector::enumerateItalics(view, range, markers, markers, &guard, gather);
    } else {
        stylerRegularExpression(styler.construct, styler.syntax).enumerateMatchesInString(view, 0, range, gather);
    }
    if (matches.isEmpty()) {
        return;
    }
    // Pairs of several markers come pair by pair: the text is rebuilt from left to right, overlaps left as they are.
    std::stable_sort(matches.begin(), matches.end(), [](const NSTextCheckingResult &a, const NSTextCheckingResult &b) {
        return a.range().location < b.range().location;
    });
    QString humanized;
    humanized.reserve(string.size());
    qint64 copied = 0;
    for (const NSTextCheckingResult &match : std::as_const(matches)) {
        if (match.range().location < copied) {
            continue;
        }
        humanized.append(view.sliced(copied, match.range().location - copied));
        humanized.append(visiblePart(styler.construct, view, match));
        copied = match.range().limit();
    }
    humanized.append(view.sliced(copied));
    range.length += humanized.size() - string.size();
    string = humanized;
}

QString humanizedString(const QString &string)
{
    QString humanized = string;
    NSRange range{0, string.size()};
    // OPTIMIZATION: most titles and windows hold the markers of a few stylers. Humanising takes away only, so what the
    // string lacks at first it goes on lacking.
    const QString held = heldOf(kMarkers, string);
    for (const HumanizeStyler &styler : stringHumanizeStylers()) {
        const QStringView markers = markersOf(styler);
        if (markers.isEmpty() ||
            std::any_of(markers.begin(), markers.end(), [&held](QChar marker) { return held.contains(marker); })) {
            humanizeTextInInString(styler, humanized, range);
        }
    }
    return humanized;
}

} // namespace quib::syntax

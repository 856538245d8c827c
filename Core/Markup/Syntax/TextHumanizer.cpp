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

/// Keeps the slashes and underscores of web addresses: no marker inside of one opens or closes italics, as none does
/// where links are styled.
class AddressGuard final : public QBItalicDataDetectorDelegate
{
public:
    explicit AddressGuard(QStringView string)
    {
        for (qsizetype place = string.indexOf(u"://"); place >= 0; place = string.indexOf(u"://", place)) {
            qsizetype start = place;
            while (start > 0 && string[start - 1].isLetterOrNumber()) {
                --start;
            }
            while (place < string.size() && !isSpace(string[place].unicode())) {
                ++place;
            }
            m_addresses.append({start, place - start});
        }
    }
    bool dataDetectorShouldMatchBeginMarkerInRange(NSRange range) override { return !isInside(range); }
    bool dataDetectorShouldMatchEndMarkerInRange(NSRange range) override { return !isInside(range); }

private:
    [[nodiscard]] bool isInside(NSRange range) const
    {
        const auto after =
            std::upper_bound(m_addresses.begin(), m_addresses.end(), range.location,
                             [](qint64 location, const NSRange &address) { return location < address.location; });
        return after != m_addresses.begin() && std::prev(after)->contains(range.location);
    }
    QList<NSRange> m_addresses;
};

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
        const QStringList markers = styler.syntax == 1 ? QStringList{u"*"_s, u"_"_s} : QStringList{u"/"_s};
        QBItalicDataDetector(markers, markers, &guard).enumerateMatchesInString(view, 0, range, gather);
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
    for (const HumanizeStyler &styler : stringHumanizeStylers()) {
        humanizeTextInInString(styler, humanized, range);
    }
    return humanized;
}

} // namespace quib::syntax

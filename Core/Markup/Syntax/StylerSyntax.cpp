#include "StylerSyntax.h"

#include "CodeScanners.h"
#include "DelimitedScanner.h"
#include "LineScanner.h"
#include "LinkScanners.h"
#include "QBItalicDataDetector.h"
#include "QBNoteTextStylerRegexHelper.h"
#include "SyntaxCharacters.h"

#include <Text/DecimalDigits.h>

#include <QChar>

#include <algorithm>
#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace quib::syntax {

namespace {

using Expression = std::unique_ptr<const NSRegularExpression>;
using Helper = QBNoteTextStylerRegexHelper;

bool isBlankAt(QStringView region, qsizetype place)
{
    return place < region.size() && region[place] == u' ';
}

qsizetype runLength(QStringView region, qsizetype place, QChar unit)
{
    qsizetype limit = place;
    while (limit < region.size() && region[limit] == unit) {
        ++limit;
    }
    return limit - place;
}

// Markers of LineScanner, one a pattern.

template <int most> qsizetype headerMarker(QStringView region, qsizetype place, qsizetype *followLength)
{
    const qsizetype length = runLength(region, place, u'#');
    *followLength = 1;
    return length <= most && isBlankAt(region, place + length) ? length : 0;
}

/// One of some characters and a blank.
template <char16_t a, char16_t b> qsizetype signMarker(QStringView region, qsizetype place, qsizetype *followLength)
{
    *followLength = 1;
    return (region[place] == a || region[place] == b) && isBlankAt(region, place + 1) ? 1 : 0;
}

bool isBox(QStringView region, qsizetype place, QStringView box)
{
    return region.sliced(place).startsWith(box);
}

template <bool unchecked, bool checked>
qsizetype boxMarker(QStringView region, qsizetype place, qsizetype *followLength)
{
    *followLength = 1;
    const bool isFound = (unchecked && isBox(region, place, u"- [ ]")) || (checked && isBox(region, place, u"- [x]"));
    return isFound && isBlankAt(region, place + 5) ? 5 : 0;
}

qsizetype markdownBullet(QStringView region, qsizetype place, qsizetype *followLength)
{
    *followLength = 1;
    const char16_t unit = region[place].unicode();
    const bool isBullet = unit == u'*' || unit == u'•' || unit == u'+' ||
                          (unit == u'-' && !isBox(region, place, u"- [ ] ") && !isBox(region, place, u"- [x] "));
    return isBullet && isBlankAt(region, place + 1) ? 1 : 0;
}

qsizetype numberMarker(QStringView region, qsizetype place, qsizetype *followLength)
{
    *followLength = 1;
    qsizetype limit = place;
    while (limit < region.size()) {
        const qsizetype length = codePointLength(region, limit);
        const char32_t codePoint = length == 2 ? QChar::surrogateToUcs4(region[limit], region[limit + 1])
                                               : static_cast<char32_t>(region[limit].unicode());
        if (decimalDigitValue(codePoint) < 0) {
            break;
        }
        limit += length;
    }
    const bool isNumber =
        limit > place && limit < region.size() && region[limit] == u'.' && isBlankAt(region, limit + 1);
    return isNumber ? limit + 1 - place : 0;
}

bool isLineEnd(QStringView region, qsizetype place)
{
    return dollarPlace(region, place) == place;
}

qsizetype separatorMarker(QStringView region, qsizetype place, qsizetype *followLength)
{
    *followLength = 0;
    return isBox(region, place, u"---") && isLineEnd(region, place + 3) ? 3 : 0;
}

qsizetype markdownSeparatorMarker(QStringView region, qsizetype place, qsizetype *followLength)
{
    *followLength = 0;
    const QChar unit = region[place];
    const qsizetype length = unit == u'-' || unit == u'_' || unit == u'*' ? runLength(region, place, unit) : 0;
    return length >= 3 && isLineEnd(region, place + length) ? length : 0;
}

Expression lines(const QString &pattern, bool mayBeIndented, LineScanner::Marker marker)
{
    return std::make_unique<LineScanner>(pattern, mayBeIndented, marker);
}

Expression delimited(const QString &pattern, DelimitedScanner::Rule rule)
{
    return std::make_unique<DelimitedScanner>(pattern, std::move(rule));
}

QString content()
{
    return Helper::inlineContentWithoutBoundarySpaces();
}

QString bounded(const QString &pattern)
{
    return QString(Helper::inlineBeginPattern() % pattern % Helper::inlineEndPattern());
}

Expression makeMarkdown(Construct construct)
{
    switch (construct) {
    case Construct::Checkbox:
        return lines(u"^[ \\t]*(- \\[ \\]|- \\[x\\]) "_s, /*mayBeIndented=*/true, boxMarker<true, true>);
    case Construct::UnorderedList:
        return lines(u"^[ \\t]*(\\*|•|\\+|-(?! \\[ \\] | \\[x\\] )) "_s, /*mayBeIndented=*/true, markdownBullet);
    case Construct::LineSeparator:
        return lines(u"^(-{3,}|_{3,}|\\*{3,})$"_s, /*mayBeIndented=*/false, markdownSeparatorMarker);
    case Construct::Bold:
        return delimited(QString(u"(\\*\\*|__)" % content() % u"(\\*\\*|__)"),
                         {.openers = {u"**"_s, u"__"_s}, .closers = {u"**"_s, u"__"_s}});
    case Construct::Italic:
        return std::make_unique<QBItalicDataDetector>(QStringList{u"*"_s, u"_"_s}, QStringList{u"*"_s, u"_"_s});
    case Construct::Underline:
        return delimited(QString(u"(?<!~)(~)(?!~)" % content() % u"(?<!~)(~)(?!~)"),
                         {.openers = {u"~"_s}, .closers = {u"~"_s}, .standsAlone = true});
    case Construct::Strike:
        return delimited(QString(u"(~~)" % content() % u"(~~)"), {.openers = {u"~~"_s}, .closers = {u"~~"_s}});
    default:
        return nullptr; // as in the native syntax
    }
}

Expression makeNative(Construct construct)
{
    switch (construct) {
    case Construct::CodeBlock:
        return std::make_unique<CodeBlockScanner>(u"^(```)(.*?)$(.*?)^(```.*?)$"_s);
    case Construct::CodeInline:
        return std::make_unique<InlineCodeScanner>(u"(?!```)(`)(.*?)(`)"_s);
    case Construct::Header:
        return lines(u"^(#{1,6}) "_s, /*mayBeIndented=*/false, headerMarker<6>);
    case Construct::GenericFile:
        return std::make_unique<FileMarkerScanner>(u"\\[(file):(.+?)\\/(.+?)\\]"_s, u"file"_s);
    case Construct::Image:
        return std::make_unique<FileMarkerScanner>(u"\\[(image):(.+?)\\/(.+?)\\]"_s, u"image"_s);
    case Construct::Highlighter:
        return delimited(QString(u"(::)" % content() % u":?(::)"),
                         {.openers = {u"::"_s}, .closers = {u"::"_s}, .takesColon = true});
    case Construct::MarkdownImage:
        return std::make_unique<MarkdownImageScanner>(u"\\!\\[([^\\]\\[\\n]*)\\]\\(([^)(]+)\\)"_s);
    case Construct::LinkedNote:
        return std::make_unique<LinkedNoteScanner>(u"\\[(.+?)\\]\\((?!\\uFFFC)(quib.+?\\S)\\)"_s);
    case Construct::TitledURL:
        return std::make_unique<TitledURLScanner>(u"\\[([^\\]\\[\\n]+)\\]\\((?!\\uFFFC)([^)(\\n]+)\\)"_s);
    case Construct::InlineArrow:
        return std::make_unique<ArrowScanner>(bounded(u"(->|<-)"_s));
    case Construct::Color:
        return std::make_unique<ColorScanner>(bounded(QString(u'(' % Helper::hexColorPattern() % u')')));
    case Construct::Checkbox:
        return lines(u"^[ \\t]*(\\+|-) "_s, /*mayBeIndented=*/true, signMarker<u'+', u'-'>);
    case Construct::UnorderedList:
        return lines(u"^[ \\t]*(\\*|•) "_s, /*mayBeIndented=*/true, signMarker<u'*', u'•'>);
    case Construct::LineSeparator:
        return lines(u"^(---)$"_s, /*mayBeIndented=*/false, separatorMarker);
    case Construct::OrderedList:
        return lines(u"^[ \\t]*(\\d+\\.) "_s, /*mayBeIndented=*/true, numberMarker);
    case Construct::Quote:
        return lines(u"^(>) "_s, /*mayBeIndented=*/false, signMarker<u'>', u'>'>);
    case Construct::Bold:
        return delimited(QString(u"(\\*)" % content() % u"(\\*)"), {.openers = {u"*"_s}, .closers = {u"*"_s}});
    case Construct::Italic:
        return std::make_unique<QBItalicDataDetector>(QStringList{u"/"_s}, QStringList{u"/"_s});
    case Construct::Underline:
        return delimited(bounded(QString(u"(_)" % content() % u"(_)")),
                         {.openers = {u"_"_s}, .closers = {u"_"_s}, .needsBoundaries = true});
    case Construct::Strike:
        return delimited(bounded(QString(u"(-)" % content() % u"(-)")),
                         {.openers = {u"-"_s}, .closers = {u"-"_s}, .needsBoundaries = true});
    case Construct::InvalidCharacter: {
        QStringList characters;
        for (const char16_t unit : invalidUnicodeCharacterHexValues()) {
            characters.append(QString(QChar(unit)));
        }
        QList<char16_t> units = invalidUnicodeCharacterHexValues();
        std::ranges::sort(units);
        return std::make_unique<UnitScanner>(characters.join(u'|'), units);
    }
    case Construct::Wiki:
        return delimited(QString(u"(\\[\\[)" % content() % u"(\\]\\])"), {.openers = {u"[["_s}, .closers = {u"]]"_s}});
    }
    return nullptr;
}

using Table = std::array<Expression, kConstructCount>;

Table makeTable(Expression (*make)(Construct))
{
    Table table;
    for (int i = 0; i < kConstructCount; ++i) {
        table[static_cast<size_t>(i)] = make(static_cast<Construct>(i));
    }
    return table;
}

Expression makeAttachment(Construct construct, int syntax)
{
    const QString placeholder{QChar(kAttachmentPlaceholder)};
    const auto anchored = [](const QString &pattern) {
        return std::make_unique<NSRegularExpression>(pattern, NSRegularExpression::AnchorsMatchLines);
    };
    switch (construct) {
    case Construct::Header:
        return anchored(QString(u"^(" % placeholder % u") "));
    case Construct::UnorderedList:
        return anchored(syntax == 1 ? QString(u"^[ \\t]*(" % placeholder % u") (?!\\[ \\] |\\[x\\] )")
                                    : QString(u"^[ \\t]*(" % placeholder % u") "));
    case Construct::Checkbox:
        return anchored(QString(u"^[ \\t]*(" % placeholder % u") "));
    case Construct::LineSeparator:
        return anchored(QString(u"^(" % placeholder % u")$"));
    case Construct::InlineArrow:
        return anchored(bounded(QString(u'(' % placeholder % u')')));
    case Construct::Color:
        return anchored(bounded(QString(u'(' % placeholder % u")(" % Helper::hexColorPattern() % u')')));
    case Construct::TitledURL:
    case Construct::LinkedNote:
        return anchored(bounded(QString(u"\\[([^\\]\\[\\n]+)\\]\\((" % placeholder % u")\\)")));
    default:
        return nullptr;
    }
}

} // namespace

const NSRegularExpression &stylerRegularExpression(Construct construct, int syntax)
{
    static const Table native = makeTable(makeNative);
    static const Table markdown = makeTable(makeMarkdown);
    const auto index = static_cast<size_t>(construct);
    return syntax == 1 && markdown[index] ? *markdown[index] : *native[index];
}

QString stylerMarker(Construct construct, int syntax)
{
    const bool isMarkdown = syntax == 1;
    switch (construct) {
    case Construct::CodeBlock:
        return u"```"_s;
    case Construct::CodeInline:
        return u"`"_s;
    case Construct::Header:
        return u"# "_s;
    case Construct::Highlighter:
        return u"::"_s;
    case Construct::Checkbox:
        return stylerMarkerChecked(/*isChecked=*/false, syntax);
    case Construct::UnorderedList:
        return u"* "_s;
    case Construct::LineSeparator:
        return u"---"_s;
    case Construct::OrderedList:
        return u"1. "_s;
    case Construct::Quote:
        return u"> "_s;
    case Construct::Bold:
        return isMarkdown ? u"**"_s : u"*"_s;
    case Construct::Italic:
        return isMarkdown ? u"*"_s : u"/"_s;
    case Construct::Underline:
        return isMarkdown ? u"~"_s : u"_"_s;
    case Construct::Strike:
        return isMarkdown ? u"~~"_s : u"-"_s;
    case Construct::Wiki:
        return u"[["_s;
    default:
        return {};
    }
}

QStringList stylerMarkerComponents(Construct construct)
{
    switch (construct) {
    case Construct::GenericFile:
        return {u"[file:"_s, u"]"_s};
    case Construct::Image:
        return {u"[image:"_s, u"]"_s};
    case Construct::MarkdownImage:
    case Construct::LinkedNote:
    case Construct::TitledURL:
        return {u"["_s, u"]("_s, u")"_s};
    default:
        return {};
    }
}

QStringList stylerEnclosingStrings(Construct construct)
{
    return construct == Construct::LineSeparator ? QStringList{u"\n"_s} : QStringList();
}

QString stylerMarkerChecked(bool isChecked, int syntax)
{
    if (syntax == 1) {
        return isChecked ? u"- [x] "_s : u"- [ ] "_s;
    }
    return isChecked ? u"+ "_s : u"- "_s;
}

QString stylerMarkerForHeaderLevel(int level)
{
    return QString(QString(level, u'#') % u' ');
}

const NSRegularExpression &uncheckedRegularExpression(int syntax)
{
    static const Expression native = lines(u"^[ \\t]*(-) "_s, /*mayBeIndented=*/true, signMarker<u'-', u'-'>);
    static const Expression markdown = lines(u"^[ \\t]*(- \\[ \\]) "_s, /*mayBeIndented=*/true, boxMarker<true, false>);
    return syntax == 1 ? *markdown : *native;
}

const NSRegularExpression &checkedRegularExpression(int syntax)
{
    static const Expression native = lines(u"^[ \\t]*(\\+) "_s, /*mayBeIndented=*/true, signMarker<u'+', u'+'>);
    static const Expression markdown = lines(u"^[ \\t]*(- \\[x\\]) "_s, /*mayBeIndented=*/true, boxMarker<false, true>);
    return syntax == 1 ? *markdown : *native;
}

const NSRegularExpression *attachmentRegularExpression(Construct construct, int syntax)
{
    static const auto tables = [] {
        std::array<Table, 2> made;
        for (int i = 0; i < kConstructCount; ++i) {
            made[0][static_cast<size_t>(i)] = makeAttachment(static_cast<Construct>(i), 0);
            made[1][static_cast<size_t>(i)] = makeAttachment(static_cast<Construct>(i), 1);
        }
        return made;
    }();
    return tables[syntax == 1 ? 1 : 0][static_cast<size_t>(construct)].get();
}

int representedTextGroupIndex(Construct construct)
{
    switch (construct) {
    case Construct::GenericFile:
    case Construct::Image:
        return 0;
    case Construct::TitledURL:
    case Construct::LinkedNote:
        return 2;
    default:
        return 1;
    }
}

int attachmentTextGroupIndex(Construct construct)
{
    return construct == Construct::TitledURL || construct == Construct::LinkedNote ? 2 : 1;
}

const NSRegularExpression &markdownImageTitleRegularExpression()
{
    static const NSRegularExpression expression(u"\"(.*)\""_s);
    return expression;
}

const NSRegularExpression &sectionRegularExpression()
{
    static const Expression expression = lines(u"^(#{1,3}) "_s, /*mayBeIndented=*/false, headerMarker<3>);
    return *expression;
}

QList<char16_t> invalidUnicodeCharacterHexValues()
{
    return {0x00A0, 0x1680, 0x180E, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004, 0x2005, 0x2006,
            0x2007, 0x2008, 0x2009, 0x200A, 0x200B, 0x202F, 0x205F, 0x3000, 0xFEFF};
}

} // namespace quib::syntax

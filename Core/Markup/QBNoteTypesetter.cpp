#include "QBNoteTypesetter.h"

#include <Graphics/WritingDirection.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Text/NSStringHelpers.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// A very long piece ends behind the last space of its last so many units, where there is one.
constexpr qint64 kSearchedForSpace = 500;

/// False of nearly all units that end no paragraph: all of a text are looked at before it is shown.
bool mayEndParagraph(char16_t unit)
{
    return unit < 0x20 || (unit & 0xFF00) == 0x2000 || unit == 0x85;
}

/// Whether a unit goes on with the character before it, so that no piece may begin there.
bool continuesCharacter(QChar unit)
{
    constexpr char16_t kZeroWidthJoiner = 0x200D;
    return unit.isLowSurrogate() || unit.isMark() || unit.unicode() == kZeroWidthJoiner;
}

} // namespace

QBNoteTypesetter::QBNoteTypesetter(std::shared_ptr<QBNotesTextThemeManager> themeManager)
    : m_themeManager(std::move(themeManager))
{
    themeDidChange();
}

QBNoteTypesetter::~QBNoteTypesetter() = default;

void QBNoteTypesetter::setColumnWidth(double width)
{
    m_columnWidth = std::max(1.0, width);
}

void QBNoteTypesetter::themeDidChange()
{
    const NSFont font = m_themeManager->paragraphFont();
    m_characterWidth = std::max(1.0, font.advanceOfText(u"the quick brown fox"_s) / 19);
    m_indents = m_themeManager->paragraphHeadIndent() - m_themeManager->paragraphTailIndent();
    m_lineHeight = m_themeManager->paragraphLineHeight() + m_themeManager->paragraphLineSpacing();
    m_spacing = m_themeManager->paragraphSpacing();
}

qint64 QBNoteTypesetter::endOfPiece(QStringView text, qint64 location)
{
    const QStringView rest = text.sliced(location).first(std::min(kLongestPiece, text.size() - location));
    const char16_t *units = rest.utf16();
    for (qsizetype i = 0; i < rest.size(); ++i) {
        if (mayEndParagraph(units[i]) && isParagraphEnd(units[i])) {
            const bool isPair = rest[i] == u'\r' && location + i + 1 < text.size() && text[location + i + 1] == u'\n';
            return location + i + (isPair ? 2 : 1);
        }
    }
    if (location + rest.size() == text.size()) {
        return text.size();
    }
    for (qsizetype end = rest.size(); end > rest.size() - kSearchedForSpace; --end) {
        if (rest[end - 1] == u' ') {
            return location + end;
        }
    }
    for (qsizetype end = rest.size(); end > rest.size() - kSearchedForSpace; --end) {
        if (!continuesCharacter(text[location + end]) && !continuesCharacter(text[location + end - 1])) {
            return location + end;
        }
    }
    return location + rest.size();
}

std::unique_ptr<ParagraphLayout> QBNoteTypesetter::layoutOfPiece(const NSAttributedString &text, NSRange range,
                                                                 const ParagraphLayout::Preedit *preedit) const
{
    // A rule or a picture is no wider than the lines.
    const double lineWidth = std::max(1.0, m_columnWidth - m_indents);
    const auto boxOfAttachment = [lineWidth](const NSTextAttachment &attachment) {
        const auto *placed = dynamic_cast<const QBNotesTextAttachment *>(&attachment);
        if (placed == nullptr) {
            return AttachmentBox();
        }
        QSizeF size = placed->cachedAttachmentSize();
        if (size.width() > lineWidth) {
            // A picture keeps its proportions.
            const bool isPicture = dynamic_cast<const QBImageTextAttachment *>(&attachment) != nullptr;
            size = {lineWidth, isPicture ? size.height() * lineWidth / size.width() : size.height()};
        }
        return AttachmentBox{size, placed->cachedAttachmentBaselineOffset()};
    };
    const AttributeSet plain = range.length == 0 ? m_themeManager->defaultTextAttributes() : AttributeSet();
    const ParagraphLayout::Part part = {
        .isFirst = range.location == 0 || isParagraphEnd(text.characterAtIndex(range.location - 1)),
        .isLast = range.limit() == text.length() || isParagraphEnd(text.characterAtIndex(range.limit() - 1)),
        .attributesIfEmpty = &plain,
        .isRightToLeftIfNeutral = isRightToLeft(text.string(), range)};
    return std::make_unique<ParagraphLayout>(text, range, m_columnWidth, boxOfAttachment, part,
                                             &QBNoteSkipLineBreakByWordAttributeName, preedit);
}

bool QBNoteTypesetter::isRightToLeft(QStringView text, NSRange range) const
{
    const auto own = quib::isRightToLeft(text.sliced(range.location, range.length));
    return own ? *own : isRightToLeftAround(text, range).value_or(m_isRightToLeftByDefault);
}

double QBNoteTypesetter::estimatedHeight(qint64 length) const
{
    const double inLine = std::max(1.0, (m_columnWidth - m_indents) / m_characterWidth);
    return std::max(1.0, std::ceil(static_cast<double>(length) / inLine)) * m_lineHeight + m_spacing;
}

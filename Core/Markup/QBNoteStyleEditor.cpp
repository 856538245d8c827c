#include "QBNoteStyleEditor.h"

#include <Markup/Stylers/QBNoteTextStylerAttributes.h>

#include <utility>

using quib::syntax::Construct;

void QBNoteStyleEditor::setNoteStylerManager(std::shared_ptr<QBNoteStylersManager> noteStylerManager)
{
    m_noteStylerManager = std::move(noteStylerManager);
}

int QBNoteStyleEditor::syntax() const
{
    return m_noteStylerManager ? m_noteStylerManager->syntax() : 0;
}

QString QBNoteStyleEditor::marker(Construct construct) const
{
    return quib::syntax::stylerMarker(construct, syntax());
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyBoldStyleInAttributedString(const NSAttributedString &text,
                                                                              NSRange range) const
{
    return applyInlineStyle(marker(Construct::Bold), QBNoteBoldTextStylerMarkerAttributeName, /*needTrimming=*/true,
                            /*needExternalBoundarySpaces=*/false, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyItalicStyleInAttributedString(const NSAttributedString &text,
                                                                                NSRange range) const
{
    return applyInlineStyle(marker(Construct::Italic), QBNoteItalicTextStylerMarkerAttributeName, /*needTrimming=*/true,
                            /*needExternalBoundarySpaces=*/false, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyUnderlineStyleInAttributedString(const NSAttributedString &text,
                                                                                   NSRange range) const
{
    return applyInlineStyle(marker(Construct::Underline), QBNoteUnderlineTextStylerMarkerAttributeName,
                            /*needTrimming=*/true,
                            /*needExternalBoundarySpaces=*/true, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyStrikedStyleInAttributedString(const NSAttributedString &text,
                                                                                 NSRange range) const
{
    return applyInlineStyle(marker(Construct::Strike), QBNoteStrikedTextStylerMarkerAttributeName,
                            /*needTrimming=*/true,
                            /*needExternalBoundarySpaces=*/true, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyMarkerStyleInAttributedString(const NSAttributedString &text,
                                                                                NSRange range) const
{
    return applyInlineStyle(marker(Construct::Highlighter), QBNoteHighlighterTextStylerMarkerAttributeName,
                            /*needTrimming=*/true,
                            /*needExternalBoundarySpaces=*/false, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyInlineCodeStyleInAttributedString(const NSAttributedString &text,
                                                                                    NSRange range) const
{
    return applyInlineStyle(marker(Construct::CodeInline), QBNoteCodeInlineTextStylerMarkerAttributeName,
                            /*needTrimming=*/false,
                            /*needExternalBoundarySpaces=*/false, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyUnorderedListInAttributedString(const NSAttributedString &text,
                                                                                  NSRange range) const
{
    return applyFullLineStyle(QBNoteUnorderedListStylerAttributeName, marker(Construct::UnorderedList),
                              QBNoteUnorderedListStylerMarkerAttributeName, /*supportIndent=*/true, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyCheckboxInAttributedString(const NSAttributedString &text,
                                                                             NSRange range) const
{
    return applyFullLineStyle(QBNoteCheckboxStylerAttributeName, marker(Construct::Checkbox),
                              QBNoteCheckboxStylerMarkerAttributeName, /*supportIndent=*/true, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyQuoteInAttributedString(const NSAttributedString &text,
                                                                          NSRange range) const
{
    return applyFullLineStyle(QBNoteQuoteTextStylerAttributeName, marker(Construct::Quote),
                              QBNoteQuoteTextStylerMarkerAttributeName, /*supportIndent=*/false, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyHeaderLevel(int level, const NSAttributedString &inAttributedString,
                                                              NSRange range) const
{
    constexpr int kNoHeader = -1;
    constexpr int kLastLevel = 6;
    if (level != kNoHeader && (level < 1 || level > kLastLevel)) {
        return std::nullopt;
    }
    const QString marker = level == kNoHeader ? QString() : quib::syntax::stylerMarkerForHeaderLevel(level);
    return applyFullLineStyle(QBHeaderTextStylerAttributeName, marker, QBHeaderTextStylerMarkerAttributeName,
                              /*supportIndent=*/false, range, inAttributedString);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyMultilineCodeStyleInAttributedString(const NSAttributedString &text,
                                                                                       NSRange range) const
{
    return toggleMultiLineStyle(QBNoteCodeTextStylerAttributeName, marker(Construct::CodeBlock),
                                QBNoteCodeTextStylerMarkerAttributeName, range, text);
}

QBNoteStyleEditor::Result QBNoteStyleEditor::applyLineSeparatorInAttributedString(const NSAttributedString &text,
                                                                                  NSRange range) const
{
    return applyTypingStyle(marker(Construct::LineSeparator),
                            quib::syntax::stylerEnclosingStrings(Construct::LineSeparator), range, text);
}

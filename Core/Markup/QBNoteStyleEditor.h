#pragma once

#include "QBNoteStyleEditorResult.h"

#include <Markup/Stylers/QBNoteStylersManager.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Text/NSAttributeName.h>

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <span>

namespace quib {
class MarkerEdits;
} // namespace quib

/// The commands of formatting: each turns a styled text and a range into an edit of the markup, and touches nothing.
/// Whoever has the text makes the replacement and styles it again. Owned by a note's text stack, on its queue.
///
/// Every command gives nothing when there is nothing to do. Ranges are cut to the text. Commands take time in step with
/// the paragraphs that they change; a fence with its block, an ordered list with all its items.
class QBNoteStyleEditor
{
public:
    using Result = std::optional<QBNoteStyleEditorResult>;

    QBNoteStyleEditor() = default;

    /// Tells the syntax whose markers the commands write; native markers without one.
    [[nodiscard]] const std::shared_ptr<QBNoteStylersManager> &noteStylerManager() const { return m_noteStylerManager; }
    void setNoteStylerManager(std::shared_ptr<QBNoteStylersManager> noteStylerManager);

    // Inside lines: +Inline.cpp. A selection gets or loses a pair of markers on each of its lines; a caret gets a pair
    // around it, or takes away the pair that it stands in.

    [[nodiscard]] Result applyBoldStyleInAttributedString(const NSAttributedString &text, NSRange range) const;
    [[nodiscard]] Result applyItalicStyleInAttributedString(const NSAttributedString &text, NSRange range) const;
    [[nodiscard]] Result applyUnderlineStyleInAttributedString(const NSAttributedString &text, NSRange range) const;
    [[nodiscard]] Result applyStrikedStyleInAttributedString(const NSAttributedString &text, NSRange range) const;
    [[nodiscard]] Result applyMarkerStyleInAttributedString(const NSAttributedString &text, NSRange range) const;
    [[nodiscard]] Result applyInlineCodeStyleInAttributedString(const NSAttributedString &text, NSRange range) const;

    // Whole lines: +FullLine.cpp. What all lines of the range are, they cease to be; else they all become it, and are
    // nothing else of the kind any more.

    [[nodiscard]] Result applyUnorderedListInAttributedString(const NSAttributedString &text, NSRange range) const;
    /// A checked line becomes an open one first.
    [[nodiscard]] Result applyCheckboxInAttributedString(const NSAttributedString &text, NSRange range) const;
    /// Goes on with the numbers of a list right above.
    [[nodiscard]] Result applyOrderedListInAttributedString(const NSAttributedString &text, NSRange range) const;
    [[nodiscard]] Result applyQuoteInAttributedString(const NSAttributedString &text, NSRange range) const;
    /// Levels are 1 to 6; -1 takes a header away. Other levels give nothing.
    [[nodiscard]] Result applyHeaderLevel(int level, const NSAttributedString &inAttributedString, NSRange range) const;

    // Several lines: +Lines.cpp

    /// Puts the lines of the range between fences, together with the blocks that they touch; lines that are code
    /// already lose the fences of their blocks.
    [[nodiscard]] Result applyMultilineCodeStyleInAttributedString(const NSAttributedString &text, NSRange range) const;
    [[nodiscard]] Result applyLineSeparatorInAttributedString(const NSAttributedString &text, NSRange range) const;

    /// Numbers the ordered lists that the range touches: from the first item's own number on, each indentation for
    /// itself.
    [[nodiscard]] Result ensureOrderedListOrderInAttributedString(const NSAttributedString &text, NSRange range) const;

private:
    using CustomAddStyleBlock = std::function<void(quib::MarkerEdits &edits, NSRange paragraphs)>;

    [[nodiscard]] int syntax() const;
    [[nodiscard]] QString marker(quib::syntax::Construct construct) const;

    /// The markers that lines begin with, in the order of QBNoteStylersManager::fullLineStylers.
    [[nodiscard]] static std::span<const NSAttributeName> fullLineMarkerNames();

    [[nodiscard]] Result applyInlineStyle(const QString &styleMarker, const NSAttributeName &styleMarkerName,
                                          bool needTrimming, bool needExternalBoundarySpaces, NSRange range,
                                          const NSAttributedString &inAttributedString) const;
    [[nodiscard]] bool isHalfOfOtherMarker(const QString &marker) const;
    [[nodiscard]] static qint64 limitOfFullLineMarker(const NSAttributedString &text, NSRange line);

    [[nodiscard]] static Result applyFullLineStyle(const NSAttributeName &style, const QString &styleMarker,
                                                   const NSAttributeName &styleMarkerName, bool supportIndent,
                                                   NSRange range, const NSAttributedString &inAttributedString,
                                                   const CustomAddStyleBlock &customAddStyleBlock = {});
    static void removeAllFullLineAttachments(quib::MarkerEdits &edits, NSRange paragraphs);
    [[nodiscard]] static bool isAttributedString(const NSAttributedString &string, NSRange fullyStyledInRange,
                                                 const NSAttributeName &forFullLineStyler);

    [[nodiscard]] static Result toggleMultiLineStyle(const NSAttributeName &style, const QString &styleMarker,
                                                     const NSAttributeName &styleMarkerName, NSRange range,
                                                     const NSAttributedString &inAttributedString);
    [[nodiscard]] static Result applyTypingStyle(const QString &styleMarker, const QStringList &styleEnclosingStrings,
                                                 NSRange range, const NSAttributedString &inAttributedString);

    [[nodiscard]] static NSRange rangeToCheckForOrderedListItemInAttributedString(const NSAttributedString &string,
                                                                                  const NSAttributeName &styleName,
                                                                                  NSRange atRange);

    std::shared_ptr<QBNoteStylersManager> m_noteStylerManager;
};

#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSMutableAttributedString.h>
#include <Text/NSRegularExpression.h>

#include <functional>
#include <memory>
#include <utility>

class NSTextStorage;
class QBNoteAttachmentTextStyler;
class QBNotesTextThemeManager;

/// Recognises one construct of the markup and paints it. Stylers run in a fixed order, and what an earlier one guards a
/// later one leaves alone. One instance serves one text and lives on that text's queue; it owns nothing but its cache.
///
/// Ranges go in by reference: a styler that changes the text's length makes the range cover what it became.
class QBNoteTextStyler
{
public:
    QBNoteTextStyler() = default;
    QBNoteTextStyler(const QBNoteTextStyler &) = delete;
    QBNoteTextStyler &operator=(const QBNoteTextStyler &) = delete;
    virtual ~QBNoteTextStyler();

    /// The pattern that finds the construct; null for a styler that has none.
    [[nodiscard]] virtual const NSRegularExpression *regularExpression() const { return nullptr; }

    /// The supplier of fonts and colours. A styler without one finds constructs but paints nothing.
    [[nodiscard]] const std::shared_ptr<QBNotesTextThemeManager> &themeManager() const { return m_themeManager; }
    virtual void setThemeManager(std::shared_ptr<QBNotesTextThemeManager> themeManager)
    {
        m_themeManager = std::move(themeManager);
    }

    /// One pass of live styling: takes away what the styler set before, then sets what holds now.
    /// Shape: textStorage is null for a text that belongs to none.
    void styleTextInAttributedString(NSMutableAttributedString &attributedString, NSRange &range,
                                     NSTextStorage *textStorage);
    virtual void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                                     NSTextStorage *textStorage);
    virtual void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage);

    /// This styler as one that puts attachments in the place of markers; null when it does not.
    [[nodiscard]] virtual QBNoteAttachmentTextStyler *attachmentStyler() { return nullptr; }
    /// Forgets what was made for the theme's fonts and colours.
    virtual void cleanStylerCache() {}

protected:
    /// Calls block for each match of an expression in the range that no guard touches. The block may change attributes
    /// but no characters, and guard its match but nothing outside of it.
    static void enumerateUnguardedMatches(const NSRegularExpression &expression,
                                          const NSAttributedString &attributedString, NSRange range,
                                          const std::function<void(const NSTextCheckingResult &match)> &block);

private:
    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
};

#pragma once

#include "QBNoteTextStyler.h"

#include <QString>
#include <QStringList>

/// Images in the form of Markdown, `![alt](url "title")`, in both syntaxes. They are marked for the writers of other
/// formats; nothing is painted, and the later styler of titled URLs takes `[alt](...)` for a link. The URL's mark
/// covers all that stands in the parentheses, the title's what stands between the quotes.
class QBNoteImageMarkdownStyler final : public QBNoteTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QStringList stylerMarkerComponents();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerMarkerAttributeName();
    /// Finds the title, with its quotes, in what stands in the parentheses. Group 1: the title.
    [[nodiscard]] static const NSRegularExpression &titleRegularExpression();

    /// Reads the first image of the range that was marked by a pass. What an attachment stands for counts as text.
    /// Shape: a missing title or alternative text is empty. Gives false where there is no image.
    [[nodiscard]] static bool getUrl(QString *url, QString *title, QString *andAlt,
                                     const NSAttributedString &fromAttributedString, NSRange inRange);

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;
};

#pragma once

#include "QBNoteTextStyler.h"

#include <QCache>
#include <QString>
#include <QUrl>

#include <optional>

/// A link to a note by its title: `[[title]]`. Runs last, so that its text may carry inline styles.
class QBNoteWikiTextStyler final : public QBNoteTextStyler
{
public:
    [[nodiscard]] static const NSRegularExpression &stylerRegularExpression();
    [[nodiscard]] static QString stylerMarker();
    [[nodiscard]] static const NSAttributeName &stylerAttributeName();
    [[nodiscard]] static const NSAttributeName &stylerMarkerAttributeName();

    [[nodiscard]] const NSRegularExpression *regularExpression() const override;
    void removeUnusedStyleIn(NSMutableAttributedString &attributedString, NSRange &range,
                             NSTextStorage *textStorage) override;
    void applyStyleIn(NSMutableAttributedString &attributedString, NSRange &range, NSTextStorage *textStorage) override;

private:
    /// As an attribute, kept for the titles that come again; nothing where the title makes no link.
    [[nodiscard]] quib::AttributeValue linkForTitle(const QString &title);
    /// Opens the note of that title, or else creates it.
    [[nodiscard]] static std::optional<QUrl> urlForTitle(const QString &title);

    static constexpr int kKeptUnits = 4096;
    QCache<QString, quib::AttributeValue> m_links{kKeptUnits};
};

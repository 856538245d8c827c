#pragma once

#include <Graphics/NSColor.h>
#include <Markup/Stylers/QBNoteTextStyler.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Support/QtPrinters.h>
#include <Text/NSMutableAttributedString.h>

#include <QList>
#include <QString>

#include <memory>

class QBNotesTextThemeManager;

namespace quib::tests {

/// A theme in which every colour and every font that inline stylers use is another one.
[[nodiscard]] std::shared_ptr<QBNotesTextThemeManager> inlineTheme();

/// A text and the stylers of inline constructs in their order, behind those of code blocks and headers, which guard
/// theirs.
class StyledInline
{
public:
    enum class Theme : quint8
    {
        None,
        Plain,
    };
    explicit StyledInline(int syntax = 0, Theme theme = Theme::Plain);
    /// Other stylers.
    explicit StyledInline(QList<std::shared_ptr<QBNoteTextStyler>> stylers, Theme theme = Theme::Plain);

    /// Styles a text that is new.
    void load(const QString &text);
    /// Styles the text again as after an edit.
    void restyle();
    /// Puts plain text in the place of the first occurrence of another, "@" being any attachment, and styles again.
    void edit(QString old, const QString &withString);

    [[nodiscard]] NSMutableAttributedString &text() { return m_text; }
    [[nodiscard]] const NSAttributedString &text() const { return m_text; }
    [[nodiscard]] const QBNotesTextThemeManager &theme() const { return *m_theme; }

    /// What is saved: each attachment's text in its place.
    [[nodiscard]] QString expanded() const;
    /// The text with a sign for each attachment: arrows "→", spacers "¦", swatches "■", link symbols "§", those of
    /// notes "¶", pins "!", others "@".
    [[nodiscard]] QString shown() const;
    /// The same with braces around the runs of an attribute.
    [[nodiscard]] QString marked(const NSAttributeName &name) const;
    /// The same for the runs of one value.
    [[nodiscard]] QString marked(const NSAttributeName &name, const AttributeValue &value) const;
    [[nodiscard]] QString coloured(const std::optional<NSColor> &color) const;
    /// All that stylers mark, but for fonts, colours and metrics: a line an attribute.
    [[nodiscard]] QString marks() const;
    /// The attribute at a place that shown() begins with.
    [[nodiscard]] AttributeValue valueAt(const NSAttributeName &name, const QString &place) const;

private:
    [[nodiscard]] QString signs() const;

    std::shared_ptr<QBNotesTextThemeManager> m_theme;
    QList<std::shared_ptr<QBNoteTextStyler>> m_stylers;
    NSMutableAttributedString m_text;
};

} // namespace quib::tests

#pragma once

#include <Markup/Stylers/QBNoteTextStyler.h>
#include <Support/QtPrinters.h>
#include <Text/NSMutableAttributedString.h>
#include <Text/NSParagraphStyle.h>

#include <QList>
#include <QString>

#include <memory>

class QBNotesTextThemeManager;

namespace quib::tests {

/// A theme of a base size of 10 in which every colour, and the font of every place, is another one. Its fonts are the
/// system's, so that nothing hangs on what the machine has.
[[nodiscard]] std::shared_ptr<QBNotesTextThemeManager> blockTheme();

/// A text and the stylers of blocks, in their order; the editor's part in styling made as simple as can be.
class StyledBlocks
{
public:
    enum class Theme : quint8
    {
        None,
        Plain,
    };
    explicit StyledBlocks(int syntax = 0, Theme theme = Theme::Plain);
    /// Other stylers than those of blocks.
    explicit StyledBlocks(QList<std::shared_ptr<QBNoteTextStyler>> stylers,
                          std::shared_ptr<QBNotesTextThemeManager> themeManager = nullptr);

    /// Styles a text that is new.
    void load(const QString &text);
    /// Replaces a range of the buffer by plain text and styles the lines that it touches.
    void edit(NSRange range, const QString &string);
    /// Styles the lines that a range touches.
    void restyle(NSRange range);
    void restyle() { restyle(m_text.fullRange()); }

    [[nodiscard]] NSMutableAttributedString &text() { return m_text; }
    [[nodiscard]] const std::shared_ptr<QBNotesTextThemeManager> &themeManager() const { return m_themeManager; }
    template <typename T> [[nodiscard]] T &styler() const
    {
        for (const auto &styler : m_stylers) {
            if (auto *found = dynamic_cast<T *>(styler.get())) {
                return *found;
            }
        }
        Q_UNREACHABLE();
    }

    // The text in words

    /// What is saved: each attachment's text in its place.
    [[nodiscard]] QString expanded() const;
    /// The same with "«" and "»" around what attachments stand for.
    [[nodiscard]] QString shown() const;
    /// Where marks and guards stand: "quote 0+4, quoteMarker 0+2", in a fixed order of names.
    [[nodiscard]] QString marks() const;
    /// The runs of one attribute: "0+2 4+1".
    [[nodiscard]] QString runs(const NSAttributeName &name) const;
    /// Runs of one colour, but for the base text's: "accent 0+1".
    [[nodiscard]] QString colours() const;
    /// Runs of one font, but for the paragraph's: "h1 0+7".
    [[nodiscard]] QString fonts() const;
    /// Where the first and the other lines of the paragraph at a place begin.
    [[nodiscard]] const NSParagraphStyle &paragraphStyleAt(qint64 place) const;
    /// All of the above and the paragraph styles, for comparing texts.
    [[nodiscard]] QString description() const;

private:
    [[nodiscard]] QString withAttachments(const QString &before, const QString &behind) const;
    /// A pass over a range, which afterwards is what became of it.
    void style(NSRange &range);

    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
    QList<std::shared_ptr<QBNoteTextStyler>> m_stylers;
    NSMutableAttributedString m_text;
};

} // namespace quib::tests

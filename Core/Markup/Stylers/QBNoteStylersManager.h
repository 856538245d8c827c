#pragma once

#include "QBNoteTextStyler.h"

#include <QList>
#include <QString>

#include <memory>
#include <span>
#include <typeinfo>

class QBNoteAddressesStyler;
class QBNoteCodeHighlighting;
class QBNoteTextAttachmentConfiguring;

/// Owns the stylers of one text in their order, which is the precedence of the markup: what an earlier one guards a
/// later one leaves alone. Lives on the queue of its text.
class QBNoteStylersManager
{
public:
    using Styler = std::shared_ptr<QBNoteTextStyler>;
    using Stylers = QList<Styler>;
    /// The kinds of stylers that a text has, in their order.
    enum class Kind : quint8
    {
        NormalText,
        CodeBlock,
        CodeInline,
        HeaderText,
        GenericFile,
        Image,
        Marker,
        MarkdownImage,
        LinkedNote,
        TitledURL,
        InlineArrow,
        Color,
        Tag,
        Checkbox,
        UnorderedList,
        LineSeparator,
        OrderedList,
        Quote,
        URL,
        Bold,
        Italic,
        Underline,
        Striked,
        InvalidCharacters,
        CodeHighlighter,
        Wiki,
    };
    static constexpr int kKindCount = static_cast<int>(Kind::Wiki) + 1;

    /// Shape: syntax 1 is Markdown, any other value the native one.
    explicit QBNoteStylersManager(int syntax = 0);
    ~QBNoteStylersManager();
    QBNoteStylersManager(const QBNoteStylersManager &) = delete;
    QBNoteStylersManager &operator=(const QBNoteStylersManager &) = delete;

    [[nodiscard]] int syntax() const { return m_syntax; }
    /// Makes all stylers anew, their caches with them.
    void setSyntax(int syntax);

    [[nodiscard]] const std::shared_ptr<QBNotesTextThemeManager> &themeManager() const { return m_themeManager; }
    void setThemeManager(std::shared_ptr<QBNotesTextThemeManager> themeManager);
    [[nodiscard]] QBNoteTextAttachmentConfiguring *textAttachmentConfigurator() const
    {
        return m_textAttachmentConfigurator;
    }
    /// Not owned; set back to null before it goes.
    void setTextAttachmentConfigurator(QBNoteTextAttachmentConfiguring *textAttachmentConfigurator);

    [[nodiscard]] QBNoteCodeHighlighting *syntaxHighlighterDelegate() const { return m_syntaxHighlighterDelegate; }
    /// Who colours code; not owned, set back to null before it goes. Without one code stays in one colour.
    void setSyntaxHighlighterDelegate(QBNoteCodeHighlighting *syntaxHighlighterDelegate);

    [[nodiscard]] const Stylers &textStylers() const { return m_textStylers; }
    /// Those whose constructs span paragraphs.
    [[nodiscard]] const Stylers &multilineTextStylers() const { return m_multilineTextStylers; }
    /// Which stylers must run again after one changed the text.
    [[nodiscard]] Stylers doublePassStylersForStyler(const QBNoteTextStyler &styler) const;
    /// Forgets what was made for the theme's fonts.
    void cleanStylerCache();

    /// The stylers of a text in their order: those that it has, or new ones where it has none yet.
    [[nodiscard]] Stylers defaultStylers() const;
    /// The text's styler of a kind; a new one of the Markdown image kind at each call.
    [[nodiscard]] Styler styler(Kind kind) const;
    /// The text's styler of exactly this class, not of one below it; null where it has none.
    template <typename T> [[nodiscard]] std::shared_ptr<T> stylerForClass() const
    {
        for (const Styler &styler : m_textStylers) {
            if (const QBNoteTextStyler &object = *styler; typeid(object) == typeid(T)) {
                return std::static_pointer_cast<T>(styler);
            }
        }
        return nullptr;
    }
    /// Not among the stylers of a text: addresses are painted on request only.
    [[nodiscard]] std::shared_ptr<QBNoteAddressesStyler> addressStyler() const;

    // Subsets, for commands of the editor

    [[nodiscard]] Stylers fullLineStylers() const;
    [[nodiscard]] Stylers repeatableStylers() const;
    [[nodiscard]] Stylers tabbableStylers() const;
    [[nodiscard]] Stylers endOfSentenceStylers() const;

    // New stylers outside of any text

    [[nodiscard]] static Styler newStyler(Kind kind, int syntax);
    [[nodiscard]] static Styler checkboxStylerForSyntax(int syntax) { return newStyler(Kind::Checkbox, syntax); }
    [[nodiscard]] static Styler tagStylerForSyntax(int syntax) { return newStyler(Kind::Tag, syntax); }
    [[nodiscard]] static Styler colorStylerForSyntax(int syntax) { return newStyler(Kind::Color, syntax); }
    [[nodiscard]] static Styler codeBlockStylerForSyntax(int syntax) { return newStyler(Kind::CodeBlock, syntax); }
    [[nodiscard]] static Styler codeInlineStylerForSyntax(int syntax) { return newStyler(Kind::CodeInline, syntax); }
    [[nodiscard]] static Styler titledURLStylerForSyntax(int syntax) { return newStyler(Kind::TitledURL, syntax); }
    [[nodiscard]] static Styler headerStylerForSyntax(int syntax) { return newStyler(Kind::HeaderText, syntax); }
    [[nodiscard]] static Styler highlighterStyleForSyntax(int syntax) { return newStyler(Kind::Marker, syntax); }
    [[nodiscard]] static Styler genericFileStylerForSyntax(int syntax) { return newStyler(Kind::GenericFile, syntax); }
    [[nodiscard]] static Styler imageStylerForSyntax(int syntax) { return newStyler(Kind::Image, syntax); }

private:
    [[nodiscard]] Stylers stylersOfKinds(std::span<const Kind> kinds) const;
    void setUpStyler(QBNoteTextStyler &styler) const;

    int m_syntax = 0;
    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
    QBNoteTextAttachmentConfiguring *m_textAttachmentConfigurator = nullptr;
    QBNoteCodeHighlighting *m_syntaxHighlighterDelegate = nullptr;
    Stylers m_textStylers;
    Stylers m_multilineTextStylers;
};

#include "QBNoteStylersManager.h"

#include "QBNoteAddressesStyler.h"
#include "QBNoteAttachmentTextStyler.h"
#include "QBNoteBoldTextMarkdownStyler.h"
#include "QBNoteCheckBoxMarkdownStyler.h"
#include "QBNoteCodeHighlightTextStyler.h"
#include "QBNoteCodeInlineTextStyler.h"
#include "QBNoteCodeTextStyler.h"
#include "QBNoteColorStyler.h"
#include "QBNoteHeaderTextStyler.h"
#include "QBNoteImageMarkdownStyler.h"
#include "QBNoteImageStyler.h"
#include "QBNoteInlineArrowStyler.h"
#include "QBNoteInvalidCharacterStyler.h"
#include "QBNoteItalicTextMarkdownStyler.h"
#include "QBNoteLineSeparatorMarkdownStyler.h"
#include "QBNoteLinkedNoteStyler.h"
#include "QBNoteMarkerTextStyler.h"
#include "QBNoteNormalTextStyler.h"
#include "QBNoteOrderedListTextStyler.h"
#include "QBNoteQuoteTextStyler.h"
#include "QBNoteStrikedTextMarkdownStyler.h"
#include "QBNoteTagStyler.h"
#include "QBNoteURLStyler.h"
#include "QBNoteUnderlineTextMarkdownStyler.h"
#include "QBNoteUnorderedListMarkdownStyler.h"
#include "QBNoteWikiTextStyler.h"

#include <Foundation/Assert.h>

#include <array>

namespace {

using Kind = QBNoteStylersManager::Kind;
using Styler = QBNoteStylersManager::Styler;

constexpr int kMarkdownSyntax = 1;

template <typename Native, typename Markdown> Styler newOfSyntax(int syntax)
{
    if (syntax == kMarkdownSyntax) {
        return std::make_shared<Markdown>();
    }
    return std::make_shared<Native>();
}

} // namespace

QBNoteStylersManager::QBNoteStylersManager(int syntax)
{
    setSyntax(syntax);
}

QBNoteStylersManager::~QBNoteStylersManager() = default;

Styler QBNoteStylersManager::newStyler(Kind kind, int syntax)
{
    switch (kind) {
    case Kind::NormalText:
        return std::make_shared<QBNoteNormalTextStyler>();
    case Kind::CodeBlock:
        return std::make_shared<QBNoteCodeTextStyler>();
    case Kind::CodeInline:
        return std::make_shared<QBNoteCodeInlineTextStyler>();
    case Kind::HeaderText:
        return std::make_shared<QBNoteHeaderTextStyler>();
    case Kind::GenericFile:
        return std::make_shared<QBNoteGenericFileStyler>();
    case Kind::Image:
        return std::make_shared<QBNoteImageStyler>();
    case Kind::Marker:
        return std::make_shared<QBNoteMarkerTextStyler>();
    case Kind::MarkdownImage:
        return std::make_shared<QBNoteImageMarkdownStyler>();
    case Kind::LinkedNote:
        return std::make_shared<QBNoteLinkedNoteStyler>();
    case Kind::TitledURL:
        return std::make_shared<QBNoteTitledUrlStyler>();
    case Kind::InlineArrow:
        return std::make_shared<QBNoteInlineArrowStyler>();
    case Kind::Color:
        return std::make_shared<QBNoteColorStyler>();
    case Kind::Tag:
        return std::make_shared<QBNoteTagStyler>();
    case Kind::Checkbox:
        return newOfSyntax<QBNoteCheckBoxStyler, QBNoteCheckBoxMarkdownStyler>(syntax);
    case Kind::UnorderedList:
        return newOfSyntax<QBNoteUnorderedListStyler, QBNoteUnorderedListMarkdownStyler>(syntax);
    case Kind::LineSeparator:
        return newOfSyntax<QBNoteLineSeparatorStyler, QBNoteLineSeparatorMarkdownStyler>(syntax);
    case Kind::OrderedList:
        return std::make_shared<QBNoteOrderedListTextStyler>();
    case Kind::Quote:
        return std::make_shared<QBNoteQuoteTextStyler>();
    case Kind::URL:
        return std::make_shared<QBNoteURLStyler>();
    case Kind::Bold:
        return newOfSyntax<QBNoteBoldTextStyler, QBNoteBoldTextMarkdownStyler>(syntax);
    case Kind::Italic:
        return newOfSyntax<QBNoteItalicTextStyler, QBNoteItalicTextMarkdownStyler>(syntax);
    case Kind::Underline:
        return newOfSyntax<QBNoteUnderlineTextStyler, QBNoteUnderlineTextMarkdownStyler>(syntax);
    case Kind::Striked:
        return newOfSyntax<QBNoteStrikedTextStyler, QBNoteStrikedTextMarkdownStyler>(syntax);
    case Kind::InvalidCharacters:
        return std::make_shared<QBNoteInvalidCharacterStyler>();
    case Kind::CodeHighlighter:
        return std::make_shared<QBNoteCodeHighlightTextStyler>();
    case Kind::Wiki:
        return std::make_shared<QBNoteWikiTextStyler>();
    }
    Q_UNREACHABLE();
    return nullptr;
}

void QBNoteStylersManager::setUpStyler(QBNoteTextStyler &styler) const
{
    styler.setThemeManager(m_themeManager);
    if (auto *attachmentStyler = styler.attachmentStyler()) {
        attachmentStyler->setTextAttachmentConfigurator(m_textAttachmentConfigurator);
    }
}

void QBNoteStylersManager::setSyntax(int syntax)
{
    m_syntax = syntax;
    m_textStylers.clear();
    m_textStylers = defaultStylers();
    m_multilineTextStylers = {styler(Kind::CodeBlock)};
    setSyntaxHighlighterDelegate(m_syntaxHighlighterDelegate);
}

void QBNoteStylersManager::setSyntaxHighlighterDelegate(QBNoteCodeHighlighting *syntaxHighlighterDelegate)
{
    m_syntaxHighlighterDelegate = syntaxHighlighterDelegate;
    static_cast<QBNoteCodeHighlightTextStyler &>(*styler(Kind::CodeHighlighter))
        .enableSyntaxHightlight(syntaxHighlighterDelegate);
}

void QBNoteStylersManager::setThemeManager(std::shared_ptr<QBNotesTextThemeManager> themeManager)
{
    m_themeManager = std::move(themeManager);
    for (const Styler &styler : std::as_const(m_textStylers)) {
        setUpStyler(*styler);
    }
}

void QBNoteStylersManager::setTextAttachmentConfigurator(QBNoteTextAttachmentConfiguring *textAttachmentConfigurator)
{
    m_textAttachmentConfigurator = textAttachmentConfigurator;
    for (const Styler &styler : std::as_const(m_textStylers)) {
        setUpStyler(*styler);
    }
}

QBNoteStylersManager::Stylers QBNoteStylersManager::doublePassStylersForStyler(const QBNoteTextStyler &styler) const
{
    if (dynamic_cast<const QBNoteTagStyler *>(&styler) != nullptr) {
        return {this->styler(Kind::HeaderText), this->styler(Kind::Color)};
    }
    if (dynamic_cast<const QBNoteColorStyler *>(&styler) != nullptr) {
        return {this->styler(Kind::HeaderText)};
    }
    if (dynamic_cast<const QBNoteUnorderedListMarkdownStyler *>(&styler) != nullptr) {
        return {this->styler(Kind::Checkbox)};
    }
    return {};
}

void QBNoteStylersManager::cleanStylerCache()
{
    for (const Styler &styler : std::as_const(m_textStylers)) {
        styler->cleanStylerCache();
    }
}

QBNoteStylersManager::Stylers QBNoteStylersManager::defaultStylers() const
{
    Stylers stylers;
    for (int kind = 0; kind < kKindCount; ++kind) {
        stylers.append(styler(static_cast<Kind>(kind)));
    }
    return stylers;
}

Styler QBNoteStylersManager::styler(Kind kind) const
{
    if (kind == Kind::MarkdownImage || m_textStylers.isEmpty()) {
        const Styler made = newStyler(kind, m_syntax);
        setUpStyler(*made);
        return made;
    }
    return m_textStylers.at(static_cast<qsizetype>(kind));
}

std::shared_ptr<QBNoteAddressesStyler> QBNoteStylersManager::addressStyler() const
{
    auto made = std::make_shared<QBNoteAddressesStyler>();
    setUpStyler(*made);
    return made;
}

QBNoteStylersManager::Stylers QBNoteStylersManager::stylersOfKinds(std::span<const Kind> kinds) const
{
    Stylers stylers;
    for (const Kind kind : kinds) {
        stylers.append(styler(kind));
    }
    return stylers;
}

QBNoteStylersManager::Stylers QBNoteStylersManager::fullLineStylers() const
{
    return stylersOfKinds(
        std::array{Kind::Checkbox, Kind::UnorderedList, Kind::OrderedList, Kind::Quote, Kind::HeaderText});
}

QBNoteStylersManager::Stylers QBNoteStylersManager::repeatableStylers() const
{
    return stylersOfKinds(std::array{Kind::UnorderedList, Kind::Checkbox, Kind::Quote});
}

QBNoteStylersManager::Stylers QBNoteStylersManager::tabbableStylers() const
{
    return stylersOfKinds(std::array{Kind::UnorderedList, Kind::Checkbox, Kind::OrderedList});
}

QBNoteStylersManager::Stylers QBNoteStylersManager::endOfSentenceStylers() const
{
    return stylersOfKinds(
        std::array{Kind::HeaderText, Kind::UnorderedList, Kind::OrderedList, Kind::Checkbox, Kind::Quote});
}

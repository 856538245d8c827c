#pragma once

#include <Text/NSRegularExpression.h>

#include <QString>
#include <QStringList>

/// The class-level side of every styler of the markup, in both syntaxes (0 native, 1 Markdown): the pattern that finds
/// a construct, its marker, and the pattern that finds it once an attachment stands for its marker. All expressions are
/// built once, on first use, kept, and may be used on any thread.
namespace quib::syntax {

enum class Construct : quint8
{
    CodeBlock,
    CodeInline,
    Header,
    GenericFile,
    Image,
    Highlighter,
    MarkdownImage,
    LinkedNote,
    TitledURL,
    InlineArrow,
    Color,
    Checkbox,
    UnorderedList,
    LineSeparator,
    OrderedList,
    Quote,
    Bold,
    Italic,
    Underline,
    Strike,
    InvalidCharacter,
    Wiki,
};
inline constexpr int kConstructCount = static_cast<int>(Construct::Wiki) + 1;

[[nodiscard]] const NSRegularExpression &stylerRegularExpression(Construct construct, int syntax);
/// The canonical marker text that commands insert; empty where a construct has none.
[[nodiscard]] QString stylerMarker(Construct construct, int syntax);
/// The parts of a marker that has several: those of links and of file markers.
[[nodiscard]] QStringList stylerMarkerComponents(Construct construct);
/// What must stand around a marker that needs a line of its own.
[[nodiscard]] QStringList stylerEnclosingStrings(Construct construct);
/// "+ " or "- "; in Markdown "- [x] " or "- [ ] ".
[[nodiscard]] QString stylerMarkerChecked(bool isChecked, int syntax);
/// As many "#" as the level tells, and a blank.
[[nodiscard]] QString stylerMarkerForHeaderLevel(int level);
[[nodiscard]] const NSRegularExpression &uncheckedRegularExpression(int syntax);
[[nodiscard]] const NSRegularExpression &checkedRegularExpression(int syntax);
/// Finds a marker that was replaced by an attachment; null for constructs that have none.
[[nodiscard]] const NSRegularExpression *attachmentRegularExpression(Construct construct, int syntax);
/// The group of the styler's pattern that holds the text which the attachment will stand for.
[[nodiscard]] int representedTextGroupIndex(Construct construct);
/// The group of the attachment pattern that holds the attachment.
[[nodiscard]] int attachmentTextGroupIndex(Construct construct);
/// The title of a Markdown image, in the text of its parentheses.
[[nodiscard]] const NSRegularExpression &markdownImageTitleRegularExpression();
/// Headers of the levels 1 to 3, which sections begin with.
[[nodiscard]] const NSRegularExpression &sectionRegularExpression();
/// The look-alikes of a blank that a note must show.
[[nodiscard]] QList<char16_t> invalidUnicodeCharacterHexValues();

/// One character, U+FFFC.
inline constexpr char16_t kAttachmentPlaceholder = u'\uFFFC';

} // namespace quib::syntax

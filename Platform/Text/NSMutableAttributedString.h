#pragma once

#include "NSAttributedString.h"

#include <functional>
#include <span>
#include <vector>

/// A text with attributes that can be changed. Changes cost the same in a text of any length. A value, see the base.
class NSMutableAttributedString : public NSAttributedString
{
public:
    /// A stretch of the text and what comes in its place.
    struct Replacement
    {
        NSRange range;
        QString string;
        quib::AttributeSet attributes;
    };
    /// A stretch of the text and what it gets.
    using Addition = quib::AttributeRuns::Insertion;

    NSMutableAttributedString() = default;
    explicit NSMutableAttributedString(const QString &string)
        : NSAttributedString(string)
    {
    }
    NSMutableAttributedString(const QString &string, const quib::AttributeSet &attributes)
        : NSAttributedString(string, attributes)
    {
    }
    explicit NSMutableAttributedString(NSAttributedString string)
        : NSAttributedString(std::move(string))
    {
    }

    /// A copy of a part of a text that starts anew: without some names, and with the attributes of a set. Its runs stay
    /// apart until joinEqualRuns, since most attributes come back to where they were.
    [[nodiscard]] static NSMutableAttributedString resetCopy(const NSAttributedString &text, NSRange range,
                                                             std::span<const NSAttributeName> withoutNames,
                                                             const quib::AttributeSet &withAttributes);

    /// The same for this text.
    void reset(std::span<const NSAttributeName> withoutNames, const quib::AttributeSet &withAttributes);
    void joinEqualRuns() { m_runs.joinEqual(); }

    // Attributes

    /// Nothing as value removes the attribute.
    void addAttribute(const NSAttributeName &name, const quib::AttributeValue &value, NSRange range);
    void addAttributes(const quib::AttributeSet &attributes, NSRange range);
    /// Any number in one pass over the text. The attributes are taken from the additions.
    /// Requires: the ranges lie in the text, in ascending order and apart from each other (they may touch).
    void addAttributes(std::span<Addition> additions);
    void removeAttribute(const NSAttributeName &name, NSRange range);
    /// Many in one pass.
    void removeAttributes(std::span<const NSAttributeName> names, NSRange range);
    /// Removes names and adds a set, in one pass.
    void removeAndAddAttributes(std::span<const NSAttributeName> names, const quib::AttributeSet &attributes,
                                NSRange range);
    void setAttributes(const quib::AttributeSet &attributes, NSRange range);
    /// Makes attributes fit the text: an attachment stays on U+FFFC alone, and each paragraph that the range touches
    /// gets the paragraph style of its first unit throughout. Fonts are left alone.
    void fixAttributesInRange(NSRange range);

    // Text

    /// The new units get the attributes of the first replaced one; where none is replaced, of the one before, or of the
    /// one behind at the start of the text.
    void replaceCharactersInRange(NSRange range, QStringView withString);
    void replaceCharactersInRange(NSRange range, NSAttributedString withAttributedString);
    void insertAttributedString(const NSAttributedString &string, qint64 atIndex);
    void appendAttributedString(const NSAttributedString &string);
    void deleteCharactersInRange(NSRange range);
    void setAttributedString(NSAttributedString string);
    /// Places any number of replacements in one pass over the text.
    /// Requires: the ranges lie in the text, in ascending order and apart from each other (they may touch).
    void replaceCharacters(std::span<const Replacement> replacements);
    /// Answers with one replacement after the other, and then with null. Each is used before the next is asked for, and
    /// its attributes are taken from it.
    using NextReplacement = std::function<Replacement *()>;
    /// The same for replacements too many to be held at once, which together change the length by so much.
    void replaceCharacters(qint64 changeInLength, const NextReplacement &next);

private:
    /// Writes the text anew, or over itself, which asks that no replacement makes the text so far longer.
    template <typename Next> void rewrite(qint64 changeInLength, bool isOverItself, const Next &next);
    /// The units of a run in a range that have an attachment and no room for it.
    void addMisplacedAttachments(quib::AttributeRuns::Position position, NSRange range,
                                 std::vector<NSRange> &misplaced) const;
    void fixParagraphStyle(NSRange paragraph);
    /// Whether the range begins with a line and ends with one.
    [[nodiscard]] bool isWholeParagraphs(NSRange range) const;
};

#pragma once

#include "AttributeRuns.h"
#include "GapText.h"

#include <Foundation/NSRange.h>

#include <QString>
#include <QStringView>

#include <functional>

namespace quib {

/// The part of a range that lies in a text of that length; empty at the nearer end where there is none.
[[nodiscard]] NSRange rangeCutToLength(NSRange range, qint64 length);

} // namespace quib

/// How a text's attributes are enumerated; Forward is the default.
enum class NSAttributedStringEnumerationOptions : quint32
{
    Forward = 0,
    Reverse = 2,
};

/// A text whose stretches carry attributes. A value: copies are independent and may live on different threads, while
/// one instance, reading included, belongs to one thread at a time. Positions outside of the text are never an error: a
/// range is cut to the text, and a place without a unit has no attributes.
class NSAttributedString
{
public:
    /// Receives the attribute's value, nothing where the text has none; setting stop ends the enumeration.
    using AttributeBlock = std::function<void(const quib::AttributeValue &value, NSRange range, bool *stop)>;
    using AttributesBlock = std::function<void(const quib::AttributeSet &attributes, NSRange range, bool *stop)>;

    NSAttributedString() = default;
    explicit NSAttributedString(const QString &string);
    NSAttributedString(const QString &string, const quib::AttributeSet &attributes);

    /// The units. Valid until the next change and the next reading of a part of the text; while a part is read by
    /// stringInRange, the units stay near the place of the last edit, which spares long texts a move of half of them.
    [[nodiscard]] QStringView string() const { return m_text.view(); }
    [[nodiscard]] QStringView stringInRange(NSRange range) const;
    /// The units of a range as a text of their own. Costs nothing for all of a text that was not edited.
    [[nodiscard]] QString substring(NSRange range) const { return m_text.copy(cutToText(range)); }
    /// Requires: the text has a unit there.
    [[nodiscard]] char16_t characterAtIndex(qint64 index) const { return m_text.at(index); }
    [[nodiscard]] qint64 length() const { return m_text.length(); }
    [[nodiscard]] bool isEmpty() const { return length() == 0; }
    [[nodiscard]] NSRange fullRange() const { return {0, length()}; }
    /// The whole line or lines that touch the range, terminators included.
    [[nodiscard]] NSRange paragraphRangeForRange(NSRange range) const;
    /// Whether a line begins there. Requires: the text has a unit there.
    [[nodiscard]] bool isParagraphStart(qint64 index) const;
    [[nodiscard]] NSAttributedString attributedSubstringFromRange(NSRange range) const;

    /// Shape: effectiveRange becomes a range with these attributes, as long as it costs nothing to know; empty, at the
    /// index, where there is no unit.
    [[nodiscard]] quib::AttributeValue attribute(const NSAttributeName &name, qint64 atIndex,
                                                 NSRange *effectiveRange = nullptr) const;
    /// Shape: longestEffectiveRange becomes the whole range within inRange over which the value is the same.
    [[nodiscard]] quib::AttributeValue attribute(const NSAttributeName &name, qint64 atIndex,
                                                 NSRange *longestEffectiveRange, NSRange inRange) const;
    [[nodiscard]] quib::AttributeSet attributesAtIndex(qint64 index, NSRange *effectiveRange = nullptr) const;

    /// Calls the block for each longest range of one value. The block may change the text within the range that it is
    /// given: the enumeration goes on behind what has become of that range.
    void enumerateAttribute(const NSAttributeName &name, NSRange inRange, NSAttributedStringEnumerationOptions options,
                            const AttributeBlock &usingBlock) const;
    /// The same for ranges over which all attributes are the same.
    void enumerateAttributesInRange(NSRange range, NSAttributedStringEnumerationOptions options,
                                    const AttributesBlock &usingBlock) const;
    /// Whether any unit of the range has the attribute.
    [[nodiscard]] bool containsAttribute(const NSAttributeName &name, NSRange inRange) const;

    /// The same units with the same attributes.
    friend bool operator==(const NSAttributedString &a, const NSAttributedString &b);

    /// For walks over very many runs, for tests and measurements. Valid until the next change.
    [[nodiscard]] const quib::AttributeRuns &runs() const { return m_runs; }

protected:
    [[nodiscard]] NSRange cutToText(NSRange range) const;

    quib::GapText m_text;
    /// As long as the text.
    quib::AttributeRuns m_runs;
    /// Whole lines whose attributes are known to fit the text, so that they are not looked through again. Every change
    /// forgets them.
    NSRange m_fixed{};

private:
    /// Whether a place lies within one line end of two units.
    [[nodiscard]] bool splitsLineEnd(qint64 index) const;
    [[nodiscard]] NSRange longestRange(const NSAttributeName &name, quib::AttributeRuns::Position position,
                                       NSRange inRange) const;
};

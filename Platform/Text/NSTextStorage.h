#pragma once

#include "NSMutableAttributedString.h"

#include <Foundation/NSRange.h>
#include <Foundation/NotificationCenter.h>

#include <optional>

/// The text behind an editor: an attributed string that announces its edits. Each change is reported by edited, and
/// processed at once or, between beginEditing and endEditing, together with the others at the end. Confined to the
/// queue of its editor.
///
/// A subclass may override the changes marked as primitive and processEditing. An override of a primitive changes
/// contents() and reports; the other changes are made of the primitives or report themselves.
class NSTextStorage
{
public:
    /// Bits of an edit's mask. Replacing text has both, since the new units have attributes of their own.
    static constexpr quint32 kEditedAttributes = 1;
    static constexpr quint32 kEditedCharacters = 2;

    /// Shape: editedRange lies in the text as it is now; changeInLength is what its length has gained.
    using EditObserver = std::function<void(quint32 editedMask, NSRange editedRange, qint64 changeInLength)>;

    NSTextStorage() = default;
    NSTextStorage(const NSTextStorage &) = delete;
    NSTextStorage &operator=(const NSTextStorage &) = delete;
    virtual ~NSTextStorage();

    // Reading

    /// All that can be asked of an attributed string.
    [[nodiscard]] const NSMutableAttributedString &attributedString() const { return m_contents; }
    [[nodiscard]] QStringView string() const { return m_contents.string(); }
    [[nodiscard]] qint64 length() const { return m_contents.length(); }
    [[nodiscard]] NSRange fullRange() const { return m_contents.fullRange(); }
    [[nodiscard]] quib::AttributeSet attributesAtIndex(qint64 index, NSRange *effectiveRange = nullptr) const
    {
        return m_contents.attributesAtIndex(index, effectiveRange);
    }
    [[nodiscard]] NSAttributedString attributedSubstringFromRange(NSRange range) const
    {
        return m_contents.attributedSubstringFromRange(range);
    }

    // Primitive changes

    virtual void replaceCharactersInRange(NSRange range, QStringView withString);
    virtual void setAttributes(const quib::AttributeSet &attributes, NSRange range);
    virtual void setAttributedString(NSAttributedString string);

    // Other changes

    void replaceCharactersInRange(NSRange range, NSAttributedString withAttributedString);
    void insertAttributedString(const NSAttributedString &string, qint64 atIndex);
    void appendAttributedString(const NSAttributedString &string);
    void deleteCharactersInRange(NSRange range);
    void addAttribute(const NSAttributeName &name, const quib::AttributeValue &value, NSRange range);
    void addAttributes(const quib::AttributeSet &attributes, NSRange range);
    void removeAttribute(const NSAttributeName &name, NSRange range);

    // Announcing edits

    /// Edits until the matching endEditing are processed as one. Pairs nest.
    void beginEditing();
    void endEditing();
    /// Reports a change that was made.
    /// Units:   range is the changed range before the change, changeInLength what the change added to its length.
    void edited(quint32 mask, NSRange range, qint64 changeInLength);

    // The edit in process. Outside of processEditing: 0, not-found and 0.

    [[nodiscard]] quint32 editedMask() const { return m_current ? m_current->mask : 0; }
    [[nodiscard]] NSRange editedRange() const { return m_current ? m_current->range : kNotFoundRange; }
    [[nodiscard]] qint64 changeInLength() const { return m_current ? m_current->changeInLength : 0; }

    /// The observer is told of each processed edit, its attributes fixed already.
    [[nodiscard]] quib::ObservationToken observeEdits(EditObserver observer);

protected:
    [[nodiscard]] NSMutableAttributedString &contents() { return m_contents; }
    /// Fixes the attributes of the edited range and tells the observers. What is edited meanwhile is processed
    /// afterwards, as an edit of its own.
    virtual void processEditing();

private:
    struct Edit
    {
        quint32 mask = 0;
        NSRange range;
        qint64 changeInLength = 0;
    };

    void processPendingEdits();

    NSMutableAttributedString m_contents;
    quib::ObserverList<quint32, NSRange, qint64> m_observers;
    int m_editingDepth = 0;
    /// Reported and not processed yet.
    std::optional<Edit> m_pending;
    std::optional<Edit> m_current;
};

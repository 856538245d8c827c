#include "NSTextStorage.h"

#include <Foundation/Assert.h>

#include <utility>

using quib::AttributeSet;
using quib::AttributeValue;
using quib::rangeCutToLength;

NSTextStorage::~NSTextStorage() = default;

void NSTextStorage::replaceCharactersInRange(NSRange range, QStringView withString)
{
    const NSRange cut = rangeCutToLength(range, length());
    m_contents.replaceCharactersInRange(cut, withString);
    edited(kEditedAttributes | kEditedCharacters, cut, withString.size() - cut.length);
}

void NSTextStorage::setAttributes(const AttributeSet &attributes, NSRange range)
{
    m_contents.setAttributes(attributes, range);
    edited(kEditedAttributes, range, 0);
}

void NSTextStorage::setAttributedString(NSAttributedString string)
{
    const qint64 lengthBefore = length();
    m_contents.setAttributedString(std::move(string));
    edited(kEditedAttributes | kEditedCharacters, {0, lengthBefore}, length() - lengthBefore);
}

void NSTextStorage::replaceCharactersInRange(NSRange range, NSAttributedString withAttributedString)
{
    const NSRange cut = rangeCutToLength(range, length());
    if (withAttributedString.isEmpty()) {
        deleteCharactersInRange(cut);
        return;
    }
    beginEditing();
    replaceCharactersInRange(cut, withAttributedString.string());
    const NSRange placed{cut.location, withAttributedString.length()};
    m_contents.replaceCharactersInRange(placed, std::move(withAttributedString));
    edited(kEditedAttributes, placed, 0);
    endEditing();
}

void NSTextStorage::insertAttributedString(const NSAttributedString &string, qint64 atIndex)
{
    replaceCharactersInRange({atIndex, 0}, string);
}

void NSTextStorage::appendAttributedString(const NSAttributedString &string)
{
    replaceCharactersInRange({length(), 0}, string);
}

void NSTextStorage::deleteCharactersInRange(NSRange range)
{
    // Empty, not null: an override may take null for no change.
    replaceCharactersInRange(range, QStringView(u""));
}

void NSTextStorage::addAttribute(const NSAttributeName &name, const AttributeValue &value, NSRange range)
{
    m_contents.addAttribute(name, value, range);
    edited(kEditedAttributes, range, 0);
}

void NSTextStorage::addAttributes(const AttributeSet &attributes, NSRange range)
{
    m_contents.addAttributes(attributes, range);
    edited(kEditedAttributes, range, 0);
}

void NSTextStorage::removeAttribute(const NSAttributeName &name, NSRange range)
{
    m_contents.removeAttribute(name, range);
    edited(kEditedAttributes, range, 0);
}

void NSTextStorage::beginEditing()
{
    ++m_editingDepth;
}

void NSTextStorage::endEditing()
{
    QUIB_ASSERT(m_editingDepth > 0);
    --m_editingDepth;
    processPendingEdits();
}

void NSTextStorage::edited(quint32 mask, NSRange range, qint64 changeInLength)
{
    // The range as it was before the change, whose units the text no longer has.
    const NSRange before = rangeCutToLength(range, length() - changeInLength);
    if (!m_pending) {
        m_pending = Edit{mask, {before.location, before.length + changeInLength}, changeInLength};
    } else {
        const NSRange both = NSUnionRange(m_pending->range, before);
        m_pending->mask |= mask;
        m_pending->range = {both.location, both.length + changeInLength};
        m_pending->changeInLength += changeInLength;
    }
    processPendingEdits();
}

quib::ObservationToken NSTextStorage::observeEdits(EditObserver observer)
{
    return m_observers.add(std::move(observer));
}

void NSTextStorage::processEditing()
{
    const Edit edit = *m_current;
    m_contents.fixAttributesInRange(edit.range);
    m_observers.notify(edit.mask, edit.range, edit.changeInLength);
}

void NSTextStorage::processPendingEdits()
{
    // An edit that is reported while another is processed waits for it.
    while (m_pending && m_editingDepth == 0 && !m_current) {
        m_current = std::exchange(m_pending, std::nullopt);
        m_current->range = rangeCutToLength(m_current->range, length());
        processEditing();
        m_current.reset();
    }
}

#include "QBNotesTextStorage.h"

#include <Foundation/Assert.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Stylers/QBNoteTextStylerCommonAttributes.h>

#include <algorithm>
#include <array>

QBNotesTextStorage::QBNotesTextStorage()
    : m_noteStylersManager(std::make_shared<QBNoteStylersManager>())
{
}

QBNotesTextStorage::~QBNotesTextStorage() = default;

void QBNotesTextStorage::setNoteStylersManager(std::shared_ptr<QBNoteStylersManager> noteStylersManager)
{
    QUIB_ASSERT(noteStylersManager != nullptr);
    m_noteStylersManager = std::move(noteStylersManager);
}

void QBNotesTextStorage::replaceCharactersInRange(NSRange range, QStringView withString)
{
    if (withString.isNull()) {
        return;
    }
    m_previousEditInsertedNewline = withString.contains(u'\n');
    const qint64 location = std::min(range.location, length());
    const NSRange replaced{location, std::min(range.length, length() - location)};
    contents().replaceCharactersInRange(replaced, withString);
    // New text takes over what stands beside it, but it never is the attachment beside it, even where it is U+FFFC.
    contents().removeAttributes(std::array{NSAttachmentAttributeName, QBNoteTagSpacerAttributeName},
                                {replaced.location, withString.size()});
    edited(kEditedAttributes | kEditedCharacters, replaced, withString.size() - replaced.length);
}

void QBNotesTextStorage::setAttributedString(NSAttributedString string)
{
    NSTextStorage::setAttributedString(std::move(string));
    // A load is no edit: the next one starts from nothing.
    m_previousEditedRange = kNotFoundRange;
    m_previousChangeInLength = 0;
    m_previousEditInsertedNewline = false;
}

void QBNotesTextStorage::processEditing()
{
    NSTextStorage::processEditing();
    m_previousEditedRange = editedRange();
    m_previousChangeInLength = changeInLength();
}

bool QBNotesTextStorage::lastEditDidDeleteText() const
{
    return m_previousChangeInLength < 0 && m_previousEditedRange.length < 2;
}

bool QBNotesTextStorage::canEditTextInRange(NSRange range) const
{
    return QBNoteTextStylerCommonAttributes::canEditTextInAttributedString(attributedString(), range);
}

std::unique_ptr<QBNotesTextStorage> QBNotesTextStorage::subTextStorageWithRange(NSRange range) const
{
    auto storage = std::make_unique<QBNotesTextStorage>();
    storage->setNoteStylersManager(m_noteStylersManager);
    storage->setAttributedString(NSTextStorage::attributedSubstringFromRange(range));
    return storage;
}

NSRange QBNotesTextStorage::rangeToStyle() const
{
    return rangeToStyleFromEditedRange(m_previousEditedRange, m_previousChangeInLength, m_previousEditInsertedNewline);
}

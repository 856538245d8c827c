#include "StyledEdit.h"

#include "QBNotesTextStorage.h"

namespace quib {

StyledEdit StyledEdit::performStylingInTextStorage(QBNotesTextStorage &storage, NSRange selection)
{
    StyledEdit edit;
    edit.rangeToStyle = storage.rangeToStyle();
    if (auto styled = storage.styleTextInRange(edit.rangeToStyle, selection, &edit.proposedSelection)) {
        edit.isReplaced = true;
        storage.replaceCharactersInRange(edit.rangeToStyle, *std::move(styled));
    }
    return edit;
}

StyledEdit StyledEdit::replaceCharactersInRange(QBNotesTextStorage &storage, NSRange range, QStringView withString,
                                                NSRange selection)
{
    storage.replaceCharactersInRange(range, withString);
    return performStylingInTextStorage(storage, selection);
}

} // namespace quib

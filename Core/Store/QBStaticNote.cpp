#include "QBStaticNote.h"

quib::Ref<QBStaticNote> QBStaticNote::staticNoteWithItem(const QBStaticNoteItem &item, NSManagedObjectContext &moc)
{
    auto note = insertInManagedObjectContext(moc);
    note->m_item = item;
    return note;
}

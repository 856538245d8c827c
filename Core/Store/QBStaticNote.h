#pragma once

#include <Store/_QBStaticNote.h>

#include <QString>

/// What a built-in sample note says. A value.
struct QBStaticNoteItem
{
    QString uniqueIdentifier;
    QString text;
    QString title;
    QString subtitle;
};

/// A built-in sample note: shown like a note, never changed, never in the store's file. Lives in the in-memory context
/// and takes what it says from its item. Main queue.
class QBStaticNote : public _QBStaticNote
{
public:
    /// A sample note of the in-memory context.
    static quib::Ref<QBStaticNote> staticNoteWithItem(const QBStaticNoteItem &item, NSManagedObjectContext &moc);

    [[nodiscard]] const QString &uniqueIdentifier() const { return m_item.uniqueIdentifier; }
    [[nodiscard]] const QString &text() const { return m_item.text; }
    [[nodiscard]] const QString &title() const { return m_item.title; }
    [[nodiscard]] const QString &subtitle() const { return m_item.subtitle; }

    [[nodiscard]] bool isStatic() const { return true; }
    [[nodiscard]] bool isPinned() const { return false; }
    [[nodiscard]] bool isTrashed() const { return false; }
    [[nodiscard]] bool isArchived() const { return false; }
    [[nodiscard]] bool isEditable() const { return false; }
    [[nodiscard]] bool hasConflictedNotes() const { return false; }

private:
    QBStaticNoteItem m_item;
};

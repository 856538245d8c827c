#include "QBNote.h"
#include "QBNoteFile.h"

#include <Foundation/Clock.h>
#include <Store/NSManagedObjectContext.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

constexpr double kMicroseconds = 1e6;

/// "ROOT/SECONDS.MICROSECONDS": its order as a string is the order of the stamps.
QString conflictIdentifier(const QString &rootUUID, qint64 microsecondsSince1970)
{
    return rootUUID + u'/' +
           QString::number(static_cast<double>(microsecondsSince1970) / kMicroseconds, 'f', /*precision=*/6);
}

qint64 microsecondsNow()
{
    return std::llround(NSDate::now().timeIntervalSince1970() * kMicroseconds);
}

} // namespace

QString QBNote::conflictedUUIDFromRootUUID(const QString &rootUUID) const
{
    return conflictIdentifier(rootUUID, microsecondsNow());
}

QString QBNote::conflictedRootUUID() const
{
    const QString identifier = conflictUniqueIdentifier();
    return identifier.isNull() ? uniqueIdentifier() : identifier.section(u'/', 0, 0);
}

bool QBNote::isConflictRoot() const
{
    return hasConflictedNotes() && conflictedRootUUID() == uniqueIdentifier();
}

QList<Ref<QBNote>> QBNote::conflictedNotes() const
{
    return conflictedNotesForUniqueIdentifier(conflictedRootUUID(), *managedObjectContext());
}

/// From the end to the start, each stamp later than the one before, however slowly the clock moves: so the group keeps
/// its order, which is by stamp descending.
void QBNote::restampConflictGroup(const QList<Ref<QBNote>> &group, const QString &rootUUID) const
{
    qint64 stamp = 0;
    for (auto note = group.crbegin(); note != group.crend(); ++note) {
        stamp = std::max(stamp + 1, microsecondsNow());
        (*note)->setConflictUniqueIdentifier(conflictIdentifier(rootUUID, stamp));
        (*note)->setConflictUniqueIdentifierDate(NSDate::now());
    }
}

void QBNote::markAsConflictedFromNote(QBNote &note)
{
    const QString rootUUID = note.conflictedRootUUID();
    auto group = conflictedNotesForUniqueIdentifier(rootUUID, *managedObjectContext());
    if (group.isEmpty()) {
        group.append(Ref<QBNote>(&note));
    }
    group.append(Ref<QBNote>(this));
    restampConflictGroup(group, rootUUID);
}

void QBNote::unmarkAsConflicted()
{
    auto group = conflictedNotes();
    group.removeAll(Ref<QBNote>(this));
    setConflictUniqueIdentifier(QString());
    setConflictUniqueIdentifierDate(NSDate::now());
    if (group.size() == 1) {
        group.constFirst()->setConflictUniqueIdentifier(QString());
        group.constFirst()->setConflictUniqueIdentifierDate(NSDate::now());
    } else if (!group.isEmpty()) {
        restampConflictGroup(group, group.constFirst()->uniqueIdentifier());
    }
}

Ref<QBNote> QBNote::keepLostText(const QString &text, int syntax)
{
    // An attachment that only the lost text speaks of goes with it; one that both speak of is needed twice.
    const QString kept = this->text();
    QList<std::pair<QString, QString>> markers;
    for (const auto &file : QBNoteFile::parseNoteFilesFromText(removeCodeFromText(text, nullptr, syntax), *this)) {
        const QString marker = file->textRepresentation();
        if (kept.contains(marker)) {
            markers.append({marker, file->duplicate()->textRepresentation()});
        } else {
            file->setNote({});
        }
    }
    auto copy = insertInManagedObjectContext(*managedObjectContext());
    copy->updateNoteWithText(QBNoteFile::stringByReplacingMarkers(text, markers), syntax);
    copy->setPinned(isPinned());
    copy->markAsConflictedFromNote(*this);
    for (QBNote *side : {this, copy.get()}) {
        side->restoreFromTrash();
        side->unarchive();
    }
    return copy;
}

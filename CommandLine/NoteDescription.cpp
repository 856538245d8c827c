#include "NoteDescription.h"

#include "Output.h"

#include <Store/QBNoteFile.h>
#include <Store/QBNoteTag.h>

#include <QDateTime>
#include <QJsonArray>
#include <QUrl>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

QJsonValue jsonForDate(const std::optional<NSDate> &date)
{
    return date ? QJsonValue(date->iso8601String()) : QJsonValue();
}

} // namespace

QString localDateTime(NSDate date)
{
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(date.timeIntervalSince1970() * 1000)))
        .toString(u"yyyy-MM-dd HH:mm"_s);
}

QJsonObject jsonForNote(const QBNote &note, bool withText)
{
    QStringList tags = note.tagsStrings();
    tags.sort();
    QJsonArray files;
    for (const auto &file : note.orderedFiles()) {
        files.append(QJsonObject{{u"id"_s, file->uniqueIdentifier()},
                                 {u"filename"_s, file->filename()},
                                 {u"size"_s, file->fileSize()},
                                 {u"path"_s, file->fileURL().value_or(QUrl()).toLocalFile()}});
    }
    QJsonObject object{
        {u"id"_s, note.uniqueIdentifier()},
        {u"title"_s, note.title()},
        {u"subtitle"_s, note.subtitle()},
        {u"creationDate"_s, jsonForDate(note.creationDate())},
        {u"modificationDate"_s, jsonForDate(note.modificationDate())},
        {u"lastEditingDevice"_s, note.lastEditingDevice()},
        {u"pinned"_s, note.isPinned()},
        {u"archived"_s, note.isArchived()},
        {u"trashed"_s, note.isTrashed()},
        {u"conflicted"_s, note.hasConflictedNotes()},
        {u"tags"_s, QJsonArray::fromStringList(tags)},
        {u"todoIncompleted"_s, note.todoIncompletedValue()},
        {u"todoCompleted"_s, note.todoCompletedValue()},
        {u"hasSourceCode"_s, note.hasSourceCodeValue()},
        {u"hasImages"_s, note.hasImagesValue()},
        {u"hasFiles"_s, note.hasFilesValue()},
        {u"files"_s, files},
    };
    if (withText) {
        object.insert(u"text"_s, note.text());
    }
    return object;
}

QString lineForNote(const QBNote &note)
{
    QString marks;
    marks += note.isPinned() ? u'*' : u'-';
    marks += note.isTrashed() ? u't' : note.isArchived() ? u'a' : u'-';
    marks += note.hasConflictedNotes() ? u'!' : u'-';
    const QString date = note.modificationDate() ? localDateTime(*note.modificationDate()) : QString(16, u' ');
    const QString title = note.title().isEmpty() ? u"(no title)"_s : singleLine(note.title());
    const QString gap = isTerminal() ? u"  "_s : u"\t"_s;
    return QString(note.uniqueIdentifier() % gap % date % gap % marks % gap % title);
}

} // namespace quib::cli

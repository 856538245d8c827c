#include "QBNote.h"
#include "QBNoteFile.h"
#include "QBNoteImage.h"
#include "QBNoteTag.h"
#include "QBSafeFileWriter.h"

#include <Store/NSManagedObjectContext.h>
#include <Text/NSStringHelpers.h>

#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

/// Everything but the unreserved characters becomes percent forms, so a value can end neither itself nor the query.
QString encodedForQuery(const QString &text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString iso8601(std::optional<NSDate> date)
{
    return date ? date->iso8601String() : QString();
}

} // namespace

QStringList QBNote::tagsStrings() const
{
    QStringList titles;
    for (const auto &tag : targetObjectsForKey(QBNoteRelationships::tags)) {
        titles.append(static_cast<const QBNoteTag *>(tag.get())->title());
    }
    return titles;
}

void QBNote::setTagsFromStrings(const QStringList &strings)
{
    const auto found = QBNoteTag::getOrCreateTagsWithNames(strings, *managedObjectContext());
    const QSet<Ref<QBNoteTag>> newTags(found.cbegin(), found.cend());
    if (newTags != tags()) {
        setTags(newTags);
    }
}

QList<Ref<QBNoteFile>> QBNote::orderedFiles() const
{
    QList<Ref<QBNoteFile>> ordered;
    for (const auto &file : targetObjectsForKey(QBNoteRelationships::files)) {
        ordered.append(file.as<QBNoteFile>());
    }
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const Ref<QBNoteFile> &a, const Ref<QBNoteFile> &b) { return a->index() < b->index(); });
    return ordered;
}

QList<Ref<QBNoteFile>> QBNote::orderedImages() const
{
    auto ordered = orderedFiles();
    ordered.removeIf([](const Ref<QBNoteFile> &file) { return !file.as<QBNoteImage>(); });
    return ordered;
}

QList<Ref<QBNoteFile>> QBNote::orderedFilesWithoutImages() const
{
    auto ordered = orderedFiles();
    ordered.removeIf([](const Ref<QBNoteFile> &file) { return static_cast<bool>(file.as<QBNoteImage>()); });
    return ordered;
}

int QBNote::completedToDoPercentage() const
{
    const int completed = todoCompleted();
    const int all = completed + todoIncompleted();
    return all == 0 ? 0 : static_cast<int>(static_cast<double>(completed) / all * 100);
}

QString QBNote::filename() const
{
    const QString trimmed = quib::trimmedWhitespaceAndNewlines(title());
    return QBSafeFileWriter::sanitizeFilename(trimmed.isEmpty() ? iso8601(modificationDate()) : trimmed);
}

QStringList QBNote::noteInfoItems() const
{
    return {u"Creation Date: "_s + iso8601(creationDate()), u"Modification Date: "_s + iso8601(modificationDate())};
}

QString QBNote::autoCompleteItemTextRepresentation() const
{
    return u"[["_s + title() + u"]]"_s;
}

QString QBNote::openNoteXCallbackURLString() const
{
    return u"quib://x-callback-url/open-note?id="_s + encodedForQuery(uniqueIdentifier());
}

QString QBNote::openNoteWithTitleXCallbackURLString() const
{
    return u"quib://x-callback-url/open-note?title="_s + encodedForQuery(title());
}

QString QBNote::openNoteInNewWindowXCallbackURLString() const
{
    return u"quib://x-callback-url/open-note?new_window=yes&id="_s + encodedForQuery(uniqueIdentifier());
}

QString QBNote::openNoteXCallbackURLStringWithHeader(const QString &header) const
{
    return appendHeader(header, openNoteXCallbackURLString());
}

QString QBNote::appendHeader(const QString &header, const QString &toNoteLink)
{
    return toNoteLink + u"&header="_s + encodedForQuery(quib::trimmedWhitespaceAndNewlines(header));
}

#include "QBURL.h"

#include "QBNote.h"
#include "StoreFetch.h"

#include <Foundation/Identifiers.h>
#include <Store/NSManagedObjectContext.h>

using namespace Qt::StringLiterals;
using quib::fetchLogged;
using quib::Ref;
using quib::requestFor;

namespace {

QList<NSPredicateArgument> videoHosts()
{
    return {predicateArgument(u"youtube.com"_s), predicateArgument(u"youtu.be"_s)};
}

} // namespace

Ref<QBURL> QBURL::insertInManagedObjectContext(NSManagedObjectContext &moc)
{
    auto url = _QBURL::insertInManagedObjectContext(moc);
    const NSDate now = NSDate::now();
    url->setUniqueIdentifier(quib::globallyUniqueString());
    url->setCreationDate(now);
    url->setModificationDate(now);
    return url;
}

Ref<QBURL> QBURL::urlWithURL(const QString &url, const Ref<QBNote> &note,
                             NSManagedObjectContext &inManagedObjectContext)
{
    auto request = note ? requestFor<QBURL>(u"url = %@ AND note = %@"_s, {predicateArgument(url), note->objectID()})
                        : requestFor<QBURL>(u"url = %@ AND note = NULL"_s, {predicateArgument(url)});
    request.fetchLimit = 1;
    const auto urls = fetchLogged<QBURL>(inManagedObjectContext, request);
    return urls.isEmpty() ? Ref<QBURL>() : urls.constFirst();
}

Ref<QBURL> QBURL::addNewURLWithURL(const QString &url, const Ref<QBNote> &note,
                                   NSManagedObjectContext &inManagedObjectContext)
{
    auto record = insertInManagedObjectContext(inManagedObjectContext);
    record->setUrl(url);
    record->setNote(note);
    return record;
}

Ref<QBURL> QBURL::getOrCreateURLWithURL(const QString &url, const Ref<QBNote> &note,
                                        NSManagedObjectContext &inManagedObjectContext, bool *createdNew)
{
    auto record = urlWithURL(url, note, inManagedObjectContext);
    if (createdNew != nullptr) {
        *createdNew = !record;
    }
    return record ? record : addNewURLWithURL(url, note, inManagedObjectContext);
}

QList<Ref<QBURL>> QBURL::urlsInManagedObjectContext(NSManagedObjectContext &moc, const NSPredicate::Ref &withPredicate,
                                                    qint64 limit, const QList<NSSortDescriptor> &sortDescriptors)
{
    NSFetchRequest request;
    request.entityName = entityName();
    request.predicate = withPredicate;
    request.fetchLimit = limit;
    request.sortDescriptors = sortDescriptors;
    return fetchLogged<QBURL>(moc, request);
}

QList<Ref<QBURL>> QBURL::noteUrlsInManagedObjectContext(NSManagedObjectContext &moc, qint64 limit,
                                                        const QList<NSSortDescriptor> &sortDescriptors)
{
    return urlsInManagedObjectContext(moc, NSPredicate::predicateWithFormat(u"note != NULL AND note.trashed == NO"_s),
                                      limit, sortDescriptors);
}

QList<Ref<QBURL>> QBURL::youtubeUrlsInManagedObjectContext(NSManagedObjectContext &moc, qint64 limit,
                                                           const QList<NSSortDescriptor> &sortDescriptors)
{
    const auto predicate =
        NSPredicate::predicateWithFormat(u"url contains[cd] %@ OR url contains[cd] %@"_s, videoHosts());
    return urlsInManagedObjectContext(moc, predicate, limit, sortDescriptors);
}

QList<Ref<QBURL>> QBURL::youtubeUrlsForNote(QBNote &note)
{
    const auto predicate =
        NSPredicate::predicateWithFormat(u"note = %@ AND (url contains[cd] %@ OR url contains[cd] %@)"_s,
                                         QList<NSPredicateArgument>{note.objectID()} + videoHosts());
    NSManagedObjectContext *const moc = note.managedObjectContext();
    return moc != nullptr ? urlsInManagedObjectContext(*moc, predicate, 0, {}) : QList<Ref<QBURL>>();
}

void QBURL::deleteAllUnusedURLsInManagedObjectContext(NSManagedObjectContext &moc)
{
    for (const auto &url : fetchLogged<QBURL>(moc, requestFor<QBURL>(u"note = NULL"_s))) {
        moc.deleteObject(url.get());
    }
}

QUrl QBURL::wellFormedURL() const
{
    const QString text = url();
    return QUrl(text.startsWith("http://"_L1) || text.startsWith("https://"_L1) ? text : QString(u"http://"_s % text));
}

void QBURL::updateTitle(const QString &title)
{
    setTitle(title);
}

void QBURL::updateOpenGraphData(const QMap<QString, QString> &openGraphData)
{
    setOgTitle(openGraphData.value(u"og:title"_s));
    setOgType(openGraphData.value(u"og:type"_s));
    setOgURL(openGraphData.value(u"og:url"_s));
    setOgImage(openGraphData.value(u"og:image"_s));
    setOgDescription(openGraphData.value(u"og:description"_s));
    setOgVideo(openGraphData.value(u"og:video"_s));
}

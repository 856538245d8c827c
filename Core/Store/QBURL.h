#pragma once

#include <Store/NSFetchRequest.h>
#include <Store/_QBURL.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QUrl>

/// A link that was found in a note, with what is known of its page. Confined to its context's queue. A fetch that fails
/// is logged and finds nothing.
class QBURL : public _QBURL
{
public:
    /// A record with an identifier of its own, made and changed now.
    static quib::Ref<QBURL> insertInManagedObjectContext(NSManagedObjectContext &moc);

    // Lookup

    /// The record of a link in a note, or null.
    [[nodiscard]] static quib::Ref<QBURL> urlWithURL(const QString &url, const quib::Ref<QBNote> &note,
                                                     NSManagedObjectContext &inManagedObjectContext);
    static quib::Ref<QBURL> addNewURLWithURL(const QString &url, const quib::Ref<QBNote> &note,
                                             NSManagedObjectContext &inManagedObjectContext);
    /// Shape:   createdNew, where it is given, tells whether the record is new.
    static quib::Ref<QBURL> getOrCreateURLWithURL(const QString &url, const quib::Ref<QBNote> &note,
                                                  NSManagedObjectContext &inManagedObjectContext,
                                                  bool *createdNew = nullptr);
    /// Shape:   a null predicate takes all; limit 0 is none.
    [[nodiscard]] static QList<quib::Ref<QBURL>>
    urlsInManagedObjectContext(NSManagedObjectContext &moc, const NSPredicate::Ref &withPredicate, qint64 limit,
                               const QList<NSSortDescriptor> &sortDescriptors);
    /// Those of notes that are not in the trash.
    [[nodiscard]] static QList<quib::Ref<QBURL>>
    noteUrlsInManagedObjectContext(NSManagedObjectContext &moc, qint64 limit,
                                   const QList<NSSortDescriptor> &sortDescriptors);
    [[nodiscard]] static QList<quib::Ref<QBURL>>
    youtubeUrlsInManagedObjectContext(NSManagedObjectContext &moc, qint64 limit,
                                      const QList<NSSortDescriptor> &sortDescriptors);
    [[nodiscard]] static QList<quib::Ref<QBURL>> youtubeUrlsForNote(QBNote &note);
    /// Deletes the records that belong to no note.
    static void deleteAllUnusedURLsInManagedObjectContext(NSManagedObjectContext &moc);

    // The record

    /// The link with "http://" in front where it begins with neither that nor "https://".
    [[nodiscard]] QUrl wellFormedURL() const;
    void updateTitle(const QString &title);
    /// Takes over "og:title", "og:type", "og:url", "og:image", "og:description" and "og:video"; what is missing becomes
    /// null.
    void updateOpenGraphData(const QMap<QString, QString> &openGraphData);
};

#include "StoreFixture.h"

#include <Store/QBURL.h>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

class QBURLTest : public StoreFixture
{
protected:
    static QStringList links(const QList<Ref<QBURL>> &urls)
    {
        QStringList found;
        for (const auto &url : urls) {
            found.append(url->url());
        }
        return found;
    }
    static QList<NSSortDescriptor> byLink() { return {{QBURLAttributes::url, true}}; }
};

TEST_F(QBURLTest, IsMadeOncePerLinkAndNote)
{
    const auto one = makeNote(u"one"_s);
    const auto two = makeNote(u"two"_s);
    bool isNew = false;
    const auto first = QBURL::getOrCreateURLWithURL(u"http://a.b/"_s, one, moc(), &isNew);
    EXPECT_TRUE(isNew);
    EXPECT_FALSE(first->uniqueIdentifier().isEmpty());
    EXPECT_EQ(first->creationDate(), clock.now());
    EXPECT_EQ(first->modificationDate(), clock.now());
    EXPECT_EQ(QBURL::getOrCreateURLWithURL(u"http://a.b/"_s, one, moc(), &isNew), first);
    EXPECT_FALSE(isNew);
    EXPECT_NE(QBURL::getOrCreateURLWithURL(u"http://a.b/"_s, two, moc(), &isNew), first);
    EXPECT_TRUE(isNew);
    EXPECT_NE(QBURL::getOrCreateURLWithURL(u"http://a.b/x"_s, one, moc()), first);
    reopen();
    EXPECT_TRUE(QBURL::urlWithURL(u"http://a.b/x"_s, QBNote::noteWithTitle(u"one"_s, moc()), moc()));
    EXPECT_FALSE(QBURL::urlWithURL(u"http://a.b/x"_s, QBNote::noteWithTitle(u"two"_s, moc()), moc()));
    EXPECT_FALSE(QBURL::urlWithURL(u"http://a.b/x"_s, {}, moc()));
}

TEST_F(QBURLTest, IsListedByTheStateOfItsNote)
{
    const auto kept = makeNote(u"kept"_s);
    const auto trashed = makeNote(u"trashed"_s);
    trashed->trash();
    QBURL::addNewURLWithURL(u"b"_s, kept, moc());
    QBURL::addNewURLWithURL(u"a"_s, kept, moc());
    QBURL::addNewURLWithURL(u"c"_s, trashed, moc());
    QBURL::addNewURLWithURL(u"d"_s, {}, moc());
    EXPECT_EQ(links(QBURL::noteUrlsInManagedObjectContext(moc(), 0, byLink())), (QStringList{u"a"_s, u"b"_s}));
    save();
    EXPECT_EQ(links(QBURL::noteUrlsInManagedObjectContext(moc(), 0, byLink())), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(links(QBURL::noteUrlsInManagedObjectContext(moc(), 1, byLink())), QStringList{u"a"_s});
    EXPECT_EQ(links(QBURL::urlsInManagedObjectContext(moc(), {}, 0, byLink())).size(), 4);

    QBURL::deleteAllUnusedURLsInManagedObjectContext(moc());
    EXPECT_EQ(links(QBURL::urlsInManagedObjectContext(moc(), {}, 0, byLink())), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

TEST_F(QBURLTest, FindsThoseOfVideos)
{
    const auto one = makeNote(u"one"_s);
    const auto two = makeNote(u"two"_s);
    QBURL::addNewURLWithURL(u"https://www.YouTube.com/watch?v=1"_s, one, moc());
    QBURL::addNewURLWithURL(u"https://youtu.be/2"_s, two, moc());
    QBURL::addNewURLWithURL(u"https://video.example/3"_s, one, moc());
    EXPECT_EQ(QBURL::youtubeUrlsInManagedObjectContext(moc(), 0, {}).size(), 2);
    EXPECT_EQ(links(QBURL::youtubeUrlsForNote(*two)), QStringList{u"https://youtu.be/2"_s});
}

TEST_F(QBURLTest, GoesWithItsNote)
{
    const auto note = makeNote(u"note"_s);
    QBURL::addNewURLWithURL(u"x"_s, note, moc());
    save();
    moc().deleteObject(note.get());
    save();
    EXPECT_TRUE(QBURL::urlsInManagedObjectContext(moc(), {}, 0, {}).isEmpty());
}

TEST_F(QBURLTest, PutsASchemeInFrontWhereThereIsNone)
{
    const auto record = QBURL::addNewURLWithURL({}, {}, moc());
    const std::pair<QString, QString> cases[] = {
        {u"example.com/a"_s, u"http://example.com/a"_s},
        {u"http://example.com"_s, u"http://example.com"_s},
        {u"https://example.com"_s, u"https://example.com"_s},
        {u"httpx.org"_s, u"http://httpx.org"_s},
    };
    for (const auto &[link, wellFormed] : cases) {
        record->setUrl(link);
        EXPECT_EQ(record->wellFormedURL().toString(), wellFormed);
    }
}

TEST_F(QBURLTest, KeepsWhatThePageTells)
{
    const auto record = QBURL::addNewURLWithURL(u"x"_s, {}, moc());
    record->updateTitle(u"A title"_s);
    record->updateOpenGraphData({{u"og:title"_s, u"t"_s},
                                 {u"og:type"_s, u"y"_s},
                                 {u"og:url"_s, u"u"_s},
                                 {u"og:image"_s, u"i"_s},
                                 {u"og:description"_s, u"d"_s},
                                 {u"og:video"_s, u"v"_s},
                                 {u"og:other"_s, u"o"_s}});
    reopen();
    const auto kept = QBURL::urlWithURL(u"x"_s, {}, moc());
    ASSERT_TRUE(kept);
    const QStringList fields{kept->title(),   kept->ogTitle(),       kept->ogType(), kept->ogURL(),
                             kept->ogImage(), kept->ogDescription(), kept->ogVideo()};
    EXPECT_EQ(fields, (QStringList{u"A title"_s, u"t"_s, u"y"_s, u"u"_s, u"i"_s, u"d"_s, u"v"_s}));
    kept->updateOpenGraphData({{u"og:title"_s, u"only"_s}});
    EXPECT_EQ(kept->ogTitle(), u"only"_s);
    EXPECT_TRUE(kept->ogVideo().isNull());
}

} // namespace
} // namespace quib::tests

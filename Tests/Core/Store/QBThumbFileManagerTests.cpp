#include "StoreFixture.h"

#include <Foundation/DispatchQueue.h>
#include <Graphics/GraphicsContext.h>
#include <Logging/QBLogger.h>
#include <Store/QBImageAlphaTrimmer.h>
#include <Store/QBNoteImage.h>
#include <Store/QBThumbFileManager.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

using Options = QBThumbFileManager::Options;

const NSColor &red()
{
    static const NSColor color = NSColor::colorWithRed(1, 0, 0);
    return color;
}

const NSColor &blue()
{
    static const NSColor color = NSColor::colorWithRed(0, 0, 1);
    return color;
}

/// Red to the left and blue to the right.
NSImage twoColors(QSize size)
{
    GraphicsContext context(size, 1, red());
    context.fillRect(QRectF(size.width() / 2, 0, size.width() / 2, size.height()), blue());
    return context.image();
}

/// A drawing in the middle of an empty page.
NSImage drawing(QSize page, QRect box)
{
    GraphicsContext context(page);
    context.fillRect(box, blue());
    return context.image();
}

/// What a picture shows along a row: r, b, "." for nothing and "w" for white.
QString row(const NSImage &image, int y)
{
    QString colors;
    for (int x = 0; x < image.pixelSize().width(); ++x) {
        const NSColor color = image.colorAt(x, y);
        const bool isWhite = color == NSColor::whiteColor();
        colors += color.alphaComponent() == 0 ? u'.' : isWhite ? u'w' : color.redComponent() > 0.5 ? u'r' : u'b';
    }
    return colors;
}

} // namespace

class Thumbs : public StoreFixture
{
protected:
    [[nodiscard]] QUrl picture(const QString &name, const NSImage &image) const
    {
        return userFile(name, name.endsWith(u".jpg"_s) ? image.jpegData() : image.pngData());
    }
    [[nodiscard]] QStringList thumbs() const { return folder.names(u"thumbs"_s); }
    static void runMainQueue()
    {
        QBThumbFileManager::waitUntilBackgroundIsIdle();
        QCoreApplication::processEvents();
    }
    static Options with(std::initializer_list<std::pair<QString, QVariant>> options) { return Options(options); }

    QBThumbFileManager manager{QUrl::fromLocalFile(folder.path(u"thumbs"_s))};
};

TEST_F(Thumbs, ANameTellsThePictureTheSizeAndTheOptions)
{
    const QUrl png = QUrl::fromLocalFile(u"/pictures/a.png"_s);
    const QString base = QBThumbFileManager::baseThumbNameImageURL(png);
    EXPECT_EQ(base, u"d71763d5f60dea0224d20cea5096e306242313f9"_s);
    EXPECT_EQ(QBThumbFileManager::thumbNameForImageURL(png, {10.9, 20}, {}), base + u"_10x20.png"_s);
    EXPECT_EQ(QBThumbFileManager::thumbNameForImageURL(png, {10, 20}, QBThumbFileManager::defaultThumbOptions()),
              base + u"_10x20_pr_1_aa_1_x_0_y_0.png"_s);
    EXPECT_EQ(manager.thumbURLForImageURL(png, {10, 20}).fileName(), base + u"_10x20_pr_1_aa_1_x_0_y_0.png"_s);

    const std::pair<QString, QString> extensions[] = {
        {u"/a.jpg"_s, u".jpg"_s},  {u"/a.JPG"_s, u".jpg"_s},  {u"/a.jpeg"_s, u".jpg"_s}, {u"/a.gif"_s, u".png"_s},
        {u"/a.heic"_s, u".png"_s}, {u"/a.tiff"_s, u".png"_s}, {u"/a.jp2"_s, u".png"_s},  {u"/a"_s, QString()},
    };
    for (const auto &[path, extension] : extensions) {
        const QUrl url = QUrl::fromLocalFile(path);
        EXPECT_EQ(QBThumbFileManager::thumbNameForImageURL(url, {1, 1}, {}),
                  QBThumbFileManager::baseThumbNameImageURL(url) + u"_1x1"_s + extension);
    }
}

TEST_F(Thumbs, APictureHasOneNameInEveryHomeFolder)
{
    const QByteArray home = qgetenv("HOME");
    const auto nameAt = [](const QByteArray &homeFolder, const QString &path) {
        qputenv("HOME", homeFolder);
        return QBThumbFileManager::baseThumbNameImageURL(QUrl::fromLocalFile(path));
    };
    const QString name = nameAt("/home/a", u"/home/a/x.png"_s);
    EXPECT_EQ(name, nameAt("/other", u"/other/x.png"_s));
    EXPECT_EQ(name, nameAt("/elsewhere", u"/x.png"_s));
    EXPECT_NE(name, nameAt("/home/b", u"/home/a/x.png"_s));
    EXPECT_NE(name, nameAt("/home/a", u"/home/ab/x.png"_s));
    qputenv("HOME", home);
}

TEST_F(Thumbs, OptionsStandInTheNameInOneOrderAndOnlyThoseThatAreGiven)
{
    const std::pair<Options, QString> cases[] = {
        {{}, QString()},
        {with({{kQBThumbPreserveRatio, false}}), u"_pr_0"_s},
        {with({{kQBThumbContain, true}}), u"_cn"_s},
        {with({{kQBThumbContain, false}, {kQBThumbCover, false}}), QString()},
        {with({{kQBThumbCover, true}, {kQBThumbPreserveRatio, true}}), u"_pr_1_cv"_s},
        {with({{kQBThumbYAlign, -0.5}, {kQBThumbXAlign, 1}, {kQBThumbAntialias, false}}), u"_aa_0_x_1_y_-0.5"_s},
        {with({{kQBThumbXAlign, 1.0 / 3}}), u"_x_0.333333"_s},
        {with({{kQBThumbBackgroundColor, QVariant::fromValue(red())},
               {kQBThumbTrimTopBottonTransparentPixels, true},
               {kQBThumbTrimTransparentPixelsHorizontalMargin, 3}}),
         QString()},
    };
    for (const auto &[options, expected] : cases) {
        EXPECT_EQ(QBThumbFileManager::stringFromOptions(options), expected);
    }
}

TEST_F(Thumbs, AThumbIsScaledByItsModeAndKept)
{
    const QUrl wide = picture(u"wide.png"_s, twoColors({40, 20}));
    struct Case
    {
        Options options;
        QSize size;
        QSize expected;
        QString middleRow;
    };
    const auto white = QVariant::fromValue(NSColor::whiteColor());
    const Case cases[] = {
        {{}, {8, 8}, {8, 4}, u"rrrrbbbb"_s},
        {{}, {8, 2}, {4, 2}, u"rrbb"_s},
        {with({{kQBThumbPreserveRatio, false}}), {4, 8}, {4, 8}, u"rrbb"_s},
        {with({{kQBThumbContain, true}}), {12, 4}, {12, 4}, u"..rrrrbbbb.."_s},
        {with({{kQBThumbContain, true}, {kQBThumbXAlign, -1}}), {12, 4}, {12, 4}, u"rrrrbbbb...."_s},
        {with({{kQBThumbContain, true}, {kQBThumbXAlign, 1}, {kQBThumbBackgroundColor, white}}),
         {12, 4},
         {12, 4},
         u"wwwwrrrrbbbb"_s},
        {with({{kQBThumbCover, true}}), {4, 4}, {4, 4}, u"rrbb"_s},
        {with({{kQBThumbCover, true}, {kQBThumbXAlign, -1}}), {4, 4}, {4, 4}, u"rrrr"_s},
        {with({{kQBThumbCover, true}, {kQBThumbXAlign, 1}}), {4, 4}, {4, 4}, u"bbbb"_s},
        {with({{kQBThumbAntialias, false}}), {80, 80}, {80, 40}, QString(40, u'r') + QString(40, u'b')},
    };
    for (const auto &given : cases) {
        SCOPED_TRACE(QBThumbFileManager::stringFromOptions(given.options).toStdString());
        const auto thumb = manager.makeThumbForImageURL(wide, given.size, given.options);
        ASSERT_TRUE(thumb);
        EXPECT_EQ(thumb->pixelSize(), given.expected);
        EXPECT_EQ(row(*thumb, given.expected.height() / 2), given.middleRow);
        const auto kept = NSImage::imageWithContentsOfFile(
            manager.thumbURLForImageURL(wide, given.size, given.options).toLocalFile(), nullptr);
        ASSERT_TRUE(kept);
        EXPECT_EQ(kept->pixelSize(), given.expected);
    }
    EXPECT_EQ(thumbs().size(), std::ssize(cases)) << "each under a name of its own";
}

TEST_F(Thumbs, TheEmptyPageAroundADrawingIsTrimmed)
{
    const NSImage page = drawing({100, 60}, {40, 10, 20, 20});
    EXPECT_EQ(QBImageAlphaTrimmer::trimImage(page, std::nullopt).pixelSize(), QSize(100, 20));
    EXPECT_EQ(QBImageAlphaTrimmer::trimImage(page, 0).pixelSize(), QSize(20, 20));
    EXPECT_EQ(QBImageAlphaTrimmer::trimImage(page, 5).pixelSize(), QSize(30, 20));
    EXPECT_EQ(QBImageAlphaTrimmer::trimImage(page, 1000).pixelSize(), QSize(100, 20));
    EXPECT_EQ(QBImageAlphaTrimmer::trimImage(page, -3).pixelSize(), QSize(20, 20));
    EXPECT_EQ(QBImageAlphaTrimmer::trimImage(drawing({9, 9}, {}), 1).pixelSize(), QSize(9, 9));
    EXPECT_EQ(QBImageAlphaTrimmer::trimImage(twoColors({6, 4}), 1).pixelSize(), QSize(6, 4));

    const QUrl url = picture(u"quib_sketch1.png"_s, page);
    const auto thumb =
        manager.makeThumbForImageURL(url, {50, 50}, with({{kQBThumbTrimTopBottonTransparentPixels, true}}));
    ASSERT_TRUE(thumb);
    EXPECT_EQ(thumb->pixelSize(), QSize(50, 10));
    EXPECT_EQ(row(*thumb, 5).count(u'b'), 10);
}

TEST_F(Thumbs, WhatIsNoPictureOrMakesNoSenseGivesNoFile)
{
    const QUrl broken = userFile(u"b.png"_s, "\x89PNG\r\n\x1A\nnot a picture");
    const QUrl good = picture(u"a.png"_s, twoColors({4, 4}));
    EXPECT_FALSE(manager.makeThumbForImageURL(broken, {10, 10}, {}));
    EXPECT_FALSE(manager.makeThumbForImageURL(QUrl::fromLocalFile(folder.path(u"absent.png"_s)), {10, 10}, {}));
    EXPECT_FALSE(manager.makeThumbForImageURL(good, {1e300, 10}, {}));
    EXPECT_FALSE(manager.makeThumbForImageURL(good, {16384, 16385}, {}));
    EXPECT_TRUE(thumbs().isEmpty());
    const auto least = manager.makeThumbForImageURL(good, {-5, 0}, {});
    ASSERT_TRUE(least);
    EXPECT_EQ(least->pixelSize(), QSize(1, 1));
}

TEST_F(Thumbs, AFailureIsLoggedInALineOfItsOwnBeforeItsReason)
{
    auto &log = QBLogger::sharedLogger();
    log.setFileLoggerEnabled(true);
    const QUrl none = userFile(u"none.png"_s, "no picture");
    EXPECT_FALSE(manager.makeThumbForImageURL(none, {10, 10}, {}));
    // Where the folder belongs there is a file.
    const QBThumbFileManager nowhere(userFile(u"taken"_s, "x"));
    const QUrl some = picture(u"some.png"_s, twoColors({4, 4}));
    EXPECT_FALSE(nowhere.makeThumbForImageURL(some, {2, 2}, {}));
    log.flush();
    QFile file(log.lastLogFilePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    log.setFileLoggerEnabled(false);
    const auto lineAfter = [&lines](const QString &expected) {
        const auto found =
            std::find_if(lines.begin(), lines.end(), [&](const QString &line) { return line.endsWith(expected); });
        return found == lines.end() || found + 1 == lines.end() ? QString() : *(found + 1);
    };
    const QString thumb = manager.thumbURLForImageURL(none, {10, 10}, {}).toLocalFile();
    EXPECT_FALSE(lineAfter(u"Failed to create CGImageDestination for "_s + thumb).isEmpty());
    const QString unwritten = nowhere.thumbURLForImageURL(some, {2, 2}, {}).toLocalFile();
    EXPECT_FALSE(lineAfter(u"Failed to write image to "_s + unwritten).isEmpty());
}

TEST_F(Thumbs, AThinPictureThatCoversASquareStaysWithinIt)
{
    const QUrl thin = picture(u"thin.png"_s, twoColors({4000, 2}));
    const auto thumb = manager.makeThumbForImageURL(thin, {500, 500}, with({{kQBThumbCover, true}}));
    ASSERT_TRUE(thumb);
    EXPECT_EQ(thumb->pixelSize(), QSize(500, 500));
}

TEST_F(Thumbs, ALongPictureIsShownToItsEnd)
{
    // One half red and one blue, far longer than any screen, both ways.
    const auto longPicture = [](int length, bool isHigh) {
        GraphicsContext context({4, 4}, 1, red());
        context.fillRect(isHigh ? QRectF(0, 2, 4, 2) : QRectF(2, 0, 2, 4), blue());
        return context.image().imageScaledToPixelSize(isHigh ? QSize(4, length) : QSize(length, 4),
                                                      /*antialias=*/false);
    };
    const auto white = QVariant::fromValue(NSColor::whiteColor());
    const std::pair<QString, Options> modes[] = {
        {u"fitting"_s, {}},
        {u"stretched"_s, with({{kQBThumbPreserveRatio, false}})},
        {u"on white"_s, with({{kQBThumbContain, true}, {kQBThumbBackgroundColor, white}})},
        {u"covering"_s, with({{kQBThumbCover, true}})},
        {u"single pixels"_s, with({{kQBThumbAntialias, false}})},
    };
    for (const bool isHigh : {true, false}) {
        for (const int length : {20'000, 40'000}) {
            const QUrl url = picture(u"long%1%2.png"_s.arg(length).arg(isHigh), longPicture(2 * length, isHigh));
            const QSize size = isHigh ? QSize(2, length) : QSize(length, 2);
            for (const auto &[mode, options] : modes) {
                SCOPED_TRACE(u"%1 %2 %3"_s.arg(mode).arg(length).arg(isHigh).toStdString());
                const auto thumb = manager.makeThumbForImageURL(url, size, options);
                ASSERT_TRUE(thumb);
                EXPECT_EQ(thumb->pixelSize(), size);
                EXPECT_EQ(thumb->colorAt(0, 0), red());
                EXPECT_EQ(thumb->colorAt(size.width() - 1, size.height() - 1), blue());
            }
        }
    }
}

TEST_F(Thumbs, ThumbsArriveOnTheMainQueue)
{
    const QUrl url = picture(u"a.jpg"_s, twoColors({40, 20}));
    int arrived = 0;
    const auto success = [&](const QUrl &thumbURL, const NSImage &thumb) {
        EXPECT_TRUE(DispatchQueue::main()->isCurrent());
        EXPECT_EQ(thumbURL, manager.thumbURLForImageURL(url, {10, 10}, {}));
        EXPECT_EQ(thumb.pixelSize(), QSize(10, 5));
        ++arrived;
    };
    manager.makeThumbForImageURL(url, {10, 10}, {}, success);
    EXPECT_EQ(arrived, 0);
    runMainQueue();
    EXPECT_EQ(arrived, 1);

    manager.makeThumbForImageURL(userFile(u"b.jpg"_s, "none"), {10, 10}, {}, success);
    runMainQueue();
    EXPECT_EQ(arrived, 1) << "where there is no thumb, nobody is told of one";
}

TEST_F(Thumbs, AThumbThatIsThereIsUsedAndReadOnlyToPreloadIt)
{
    const QUrl url = picture(u"a.png"_s, twoColors({40, 20}));
    const QUrl thumbURL = manager.thumbURLForImageURL(url, {10, 10}, {});
    std::vector<QSize> sizes;
    const auto ask = [&](bool preload) {
        manager.thumbForImageURL(url, {10, 10}, preload, {},
                                 [&](const QUrl &, const NSImage &thumb) { sizes.push_back(thumb.pixelSize()); });
        runMainQueue();
    };
    ask(false);
    EXPECT_EQ(sizes.back(), QSize(10, 5)) << "it had to be made";
    ASSERT_TRUE(twoColors({7, 7}).writePNGToFile(thumbURL.toLocalFile(), nullptr));
    ask(true);
    EXPECT_EQ(sizes.back(), QSize(7, 7)) << "the file is the answer";
    ask(false);
    EXPECT_EQ(sizes.back(), QSize(0, 0));
    folder.write(u"thumbs/"_s + thumbURL.fileName(), "broken");
    ask(true);
    EXPECT_EQ(sizes.back(), QSize(10, 5)) << "what cannot be read is made anew";
    EXPECT_EQ(sizes.size(), 4U);
}

TEST_F(Thumbs, AllThumbsOfAPictureGoAndNoOthers)
{
    const QUrl a = picture(u"a.png"_s, twoColors({4, 4}));
    const QUrl b = picture(u"b.png"_s, twoColors({4, 4}));
    for (const QUrl &url : {a, b}) {
        ASSERT_TRUE(manager.makeThumbForImageURL(url, {2, 2}, {}));
        ASSERT_TRUE(manager.makeThumbForImageURL(url, {3, 3}, QBThumbFileManager::defaultThumbOptions()));
    }
    manager.deleteAllThumbsForImageURL(a);
    QStringList expected{manager.thumbURLForImageURL(b, {2, 2}, {}).fileName(),
                         manager.thumbURLForImageURL(b, {3, 3}).fileName()};
    expected.sort();
    EXPECT_EQ(thumbs(), expected);
    manager.deleteAllThumbsForImageURLs({a, b});
    EXPECT_TRUE(thumbs().isEmpty());
}

TEST_F(Thumbs, AnAttachmentTakesItsThumbsAlongWhenItsDeletionIsSaved)
{
    auto *shared = QBThumbFileManager::thumbFileManagerForPathComponent(QBThumbFileManager::kNoteImages);
    EXPECT_EQ(shared, QBThumbFileManager::thumbFileManagerForPathComponent(QBThumbFileManager::kNoteImages));
    EXPECT_TRUE(shared->baseURL().toLocalFile().endsWith(u"/net.quibworks.quib/Thumbs/Note Images"_s));
    const auto import = [&](const QString &name) {
        return QBNoteFile::factoryNoteFileForFileURL(picture(name, twoColors({40, 20})), moc());
    };
    const auto image = import(u"a.png"_s);
    const auto other = import(u"b.png"_s);
    save();
    const auto thumbOf = [&](const Ref<QBNoteFile> &file) {
        return shared->thumbURLForImageURL(*file->fileURL(), {5, 5}, {}).toLocalFile();
    };
    for (const auto &file : {image, other}) {
        ASSERT_TRUE(shared->makeThumbForImageURL(*file->fileURL(), {5, 5}, {}));
    }
    const QString imageThumb = thumbOf(image);
    const QString otherThumb = thumbOf(other);
    image->permanentlyDelete();
    EXPECT_TRUE(QFileInfo::exists(imageThumb)) << "until then it can be rolled back";
    save();
    EXPECT_FALSE(QFileInfo::exists(imageThumb));
    EXPECT_TRUE(QFileInfo::exists(otherThumb));
    other->deleteFileThumbnails();
    EXPECT_FALSE(QFileInfo::exists(otherThumb));
}

} // namespace quib::tests

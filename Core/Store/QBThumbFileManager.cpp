#include "QBThumbFileManager.h"

#include "QBImageAlphaTrimmer.h"
#include "QBLocalFileManager.h"

#include <Files/AtomicFile.h>
#include <Files/UniformType.h>
#include <Foundation/DispatchQueue.h>
#include <Foundation/NSOperationQueue.h>
#include <Graphics/GraphicsContext.h>
#include <Graphics/NSImage.h>
#include <Logging/QBLogger.h>

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <mutex>

using namespace Qt::StringLiterals;

struct QBThumbFileManager::State
{
    QUrl baseURL;
    /// Held while copies are put in place and while they are removed, so that none of an older file comes back.
    std::mutex publishing;
};

namespace {

/// How many pictures are read at once: each may take the memory of a large one.
constexpr int kPicturesAtOnce = 2;
/// The digits of the hash that names begin with.
constexpr qsizetype kBaseNameSize = 40;

NSOperationQueue &backgroundQueue()
{
    static NSOperationQueue *queue = [] {
        auto *made = new NSOperationQueue(u"thumbs"_s); // never destroyed: work may end after everything else
        made->setMaxConcurrentOperationCount(kPicturesAtOnce);
        return made;
    }();
    return *queue;
}

/// What tells one content of a file from the next.
struct Stamp
{
    qint64 size = -1;
    qint64 modified = 0;
    friend bool operator==(const Stamp &a, const Stamp &b) = default;
};

Stamp stampOfFile(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() ? Stamp{file.size(), file.lastModified().toMSecsSinceEpoch()} : Stamp();
}

bool isJPEG(const QString &extension)
{
    struct Known
    {
        std::mutex mutex;
        QHash<QString, bool> answers;
    };
    static Known known;
    const std::lock_guard lock(known.mutex);
    const auto answer = known.answers.constFind(extension);
    if (answer != known.answers.cend()) {
        return *answer;
    }
    const QString type = UTTypeCreatePreferredIdentifierForTag(kUTTagClassFilenameExtension, extension);
    return *known.answers.insert(extension, UTTypeConformsTo(type, kUTTypeJPEG));
}

QString extensionOf(const QUrl &imageURL)
{
    return QFileInfo(imageURL.toLocalFile()).suffix().toLower();
}

/// A side in whole pixels, whatever number was given.
int wholeSide(double side)
{
    return std::isfinite(side) ? static_cast<int>(std::clamp(side, 0.0, 1e9)) : 0;
}

bool isOn(const QBThumbFileManager::Options &options, QLatin1StringView key)
{
    return options.value(key).toBool();
}

/// The part of what is left over that lies in front.
double partInFront(const QBThumbFileManager::Options &options, QLatin1StringView key)
{
    const double alignment = options.value(key).toDouble();
    return std::isfinite(alignment) ? (std::clamp(alignment, -1.0, 1.0) + 1) / 2 : 0.5;
}

QSize scaledBy(double factor, QSize size)
{
    const auto scaled = [factor](int side) { return std::max(1, static_cast<int>(std::lround(side * factor))); };
    return {scaled(size.width()), scaled(size.height())};
}

/// Where an inner size lies in an outer one.
QPoint alignedPlace(QSize outer, QSize inner, const QBThumbFileManager::Options &options)
{
    const auto place = [](int left, double part) { return static_cast<int>(std::lround(left * part)); };
    return {place(outer.width() - inner.width(), partInFront(options, kQBThumbXAlign)),
            place(outer.height() - inner.height(), partInFront(options, kQBThumbYAlign))};
}

/// A picture on the options' background.
NSImage onBackground(const NSImage &image, QSize size, QPoint place, const QBThumbFileManager::Options &options)
{
    const QVariant color = options.value(kQBThumbBackgroundColor);
    const bool hasColor = color.canConvert<NSColor>();
    if (size == image.pixelSize() && (!hasColor || !image.hasAlpha())) {
        return image;
    }
    quib::GraphicsContext context(size, 1, hasColor ? color.value<NSColor>() : NSColor::clearColor());
    context.drawImage(image, {place, image.pixelSize()});
    return context.image();
}

NSImage scaledPicture(const NSImage &image, QSize size, const QBThumbFileManager::Options &options)
{
    const QSize whole = image.pixelSize();
    const double width = static_cast<double>(size.width()) / whole.width();
    const double height = static_cast<double>(size.height()) / whole.height();
    const bool antialias = isOn(options, kQBThumbAntialias);
    if (isOn(options, kQBThumbCover)) {
        // Cut first, so that nothing grows beyond the size.
        const QSize seen = scaledBy(1 / std::max(width, height), size).boundedTo(whole);
        const NSImage part = image.imageCroppedToPixelRect({alignedPlace(whole, seen, options), seen});
        return onBackground(part.imageScaledToPixelSize(size, antialias), size, {}, options);
    }
    const bool keepsRatio = isOn(options, kQBThumbPreserveRatio) || isOn(options, kQBThumbContain);
    const QSize inside = keepsRatio ? scaledBy(std::min(width, height), whole).boundedTo(size) : size;
    const NSImage scaled = image.imageScaledToPixelSize(inside, antialias);
    const QSize outside = isOn(options, kQBThumbContain) ? size : inside;
    return onBackground(scaled, outside, alignedPlace(outside, inside, options), options);
}

/// Reads a picture and makes the copy that the options describe.
std::optional<NSImage> readScaledPicture(const QString &path, QSize size, const QBThumbFileManager::Options &options,
                                         NSError *error)
{
    size = size.expandedTo({1, 1});
    if (size.height() > QBThumbFileManager::kLargestPixelCount / size.width()) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileReadTooLarge),
                      u"a thumbnail of %1 by %2 is too large"_s.arg(size.width()).arg(size.height()));
        return std::nullopt;
    }
    const bool trims = isOn(options, kQBThumbTrimTopBottonTransparentPixels);
    const bool fitsInside = !trims && !isOn(options, kQBThumbCover) && isOn(options, kQBThumbAntialias) &&
                            (isOn(options, kQBThumbPreserveRatio) || isOn(options, kQBThumbContain));
    // A picture that will be small is read small where its form allows that.
    auto image = NSImage::imageWithContentsOfFile(path, error, fitsInside ? std::optional(size) : std::nullopt);
    if (!image) {
        return std::nullopt;
    }
    if (trims) {
        const QVariant margin = options.value(kQBThumbTrimTransparentPixelsHorizontalMargin);
        image = QBImageAlphaTrimmer::trimImage(*image, margin.isValid() ? std::optional(margin.toInt()) : std::nullopt);
    }
    return scaledPicture(*image, size, options);
}

} // namespace

QBThumbFileManager *QBThumbFileManager::thumbFileManagerForPathComponent(const QString &pathComponent)
{
    struct Managers
    {
        std::mutex mutex;
        QHash<QString, std::shared_ptr<QBThumbFileManager>> byFolder;
    };
    static Managers managers;
    const QString folder = QBLocalFileManager::applicationSupportURL().toLocalFile() % u"/Thumbs/" % pathComponent;
    const std::lock_guard lock(managers.mutex);
    auto &manager = managers.byFolder[folder];
    if (!manager) {
        manager = std::make_shared<QBThumbFileManager>(QUrl::fromLocalFile(folder));
    }
    return manager.get();
}

QBThumbFileManager::QBThumbFileManager(const QUrl &baseURL)
    : m_state(std::make_shared<State>())
{
    m_state->baseURL = baseURL;
}

const QUrl &QBThumbFileManager::baseURL() const
{
    return m_state->baseURL;
}

QBThumbFileManager::Options QBThumbFileManager::defaultThumbOptions()
{
    return {{kQBThumbPreserveRatio, true}, {kQBThumbContain, false}, {kQBThumbCover, false},
            {kQBThumbAntialias, true},     {kQBThumbXAlign, 0.0},    {kQBThumbYAlign, 0.0}};
}

QString QBThumbFileManager::stringFromOptions(const Options &options)
{
    QString text;
    const auto addFlag = [&](QLatin1StringView key, QLatin1StringView prefix) {
        if (options.contains(key)) {
            text += prefix % (isOn(options, key) ? u'1' : u'0');
        }
    };
    const auto addNumber = [&](QLatin1StringView key, QLatin1StringView prefix) {
        if (options.contains(key)) {
            text += prefix % QString::asprintf("%g", options.value(key).toDouble());
        }
    };
    addFlag(kQBThumbPreserveRatio, "_pr_"_L1);
    text += isOn(options, kQBThumbContain) ? u"_cn"_s : QString();
    text += isOn(options, kQBThumbCover) ? u"_cv"_s : QString();
    addFlag(kQBThumbAntialias, "_aa_"_L1);
    addNumber(kQBThumbXAlign, "_x_"_L1);
    addNumber(kQBThumbYAlign, "_y_"_L1);
    return text;
}

QString QBThumbFileManager::baseThumbNameImageURL(const QUrl &imageURL)
{
    QString path = imageURL.toLocalFile();
    const QString home = QDir::homePath();
    if (path.startsWith(home + u'/')) {
        path.remove(0, home.size());
    }
    return QString::fromLatin1(QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex());
}

QString QBThumbFileManager::thumbNameForImageURL(const QUrl &imageURL, QSizeF thumbSize, const Options &options)
{
    QString name = baseThumbNameImageURL(imageURL);
    name += u"_%1x%2"_s.arg(wholeSide(thumbSize.width())).arg(wholeSide(thumbSize.height()));
    name += stringFromOptions(options);
    const QString extension = extensionOf(imageURL);
    if (!extension.isEmpty()) {
        name += isJPEG(extension) ? u".jpg"_s : u".png"_s;
    }
    return name;
}

QUrl QBThumbFileManager::thumbURLForImageURL(const QUrl &imageURL, QSizeF thumbSize, const Options &options) const
{
    return QUrl::fromLocalFile(baseURL().toLocalFile() % u'/' % thumbNameForImageURL(imageURL, thumbSize, options));
}

QUrl QBThumbFileManager::thumbURLForImageURL(const QUrl &imageURL, QSizeF thumbSize) const
{
    return thumbURLForImageURL(imageURL, thumbSize, defaultThumbOptions());
}

std::optional<NSImage> QBThumbFileManager::makeThumbForImageURL(const QUrl &imageURL, QSizeF thumbSize,
                                                                const Options &options) const
{
    return makeThumb(*m_state, imageURL, thumbURLForImageURL(imageURL, thumbSize, options), thumbSize, options);
}

void QBThumbFileManager::makeThumbForImageURL(const QUrl &imageURL, QSizeF thumbSize, const Options &options,
                                              const SuccessBlock &success) const
{
    const QUrl thumbURL = thumbURLForImageURL(imageURL, thumbSize, options);
    performInBackground([state = m_state, imageURL, thumbURL, thumbSize, options, success] {
        if (const auto thumb = makeThumb(*state, imageURL, thumbURL, thumbSize, options)) {
            quib::DispatchQueue::main()->async([success, thumbURL, thumb] { success(thumbURL, *thumb); });
        }
    });
}

void QBThumbFileManager::thumbForImageURL(const QUrl &imageURL, QSizeF thumbSize, bool preload, const Options &options,
                                          const SuccessBlock &success) const
{
    const QUrl thumbURL = thumbURLForImageURL(imageURL, thumbSize, options);
    performInBackground([state = m_state, imageURL, thumbURL, thumbSize, preload, options, success] {
        const QString path = thumbURL.toLocalFile();
        std::optional<NSImage> thumb;
        if (QFileInfo::exists(path)) {
            thumb = preload ? NSImage::imageWithContentsOfFile(path, nullptr) : NSImage();
        }
        if (!thumb) {
            thumb = makeThumb(*state, imageURL, thumbURL, thumbSize, options);
        }
        if (thumb) {
            quib::DispatchQueue::main()->async([success, thumbURL, thumb] { success(thumbURL, *thumb); });
        }
    });
}

void QBThumbFileManager::deleteAllThumbsForImageURL(const QUrl &imageURL) const
{
    deleteAllThumbsForImageURLs({imageURL});
}

void QBThumbFileManager::deleteAllThumbsForImageURLs(const QList<QUrl> &imageURLs) const
{
    QSet<QString> baseNames;
    for (const QUrl &url : imageURLs) {
        baseNames.insert(baseThumbNameImageURL(url));
    }
    if (baseNames.isEmpty()) {
        return;
    }
    const std::lock_guard lock(m_state->publishing);
    QDir folder(baseURL().toLocalFile());
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden, QDir::Unsorted)) {
        if (baseNames.contains(name.left(kBaseNameSize))) {
            folder.remove(name);
        }
    }
}

void QBThumbFileManager::performInBackground(std::function<void()> block)
{
    backgroundQueue().addOperationWithBlock(std::move(block));
}

void QBThumbFileManager::waitUntilBackgroundIsIdle()
{
    backgroundQueue().waitUntilAllOperationsAreFinished();
}

std::optional<NSImage> QBThumbFileManager::makeThumb(State &state, const QUrl &imageURL, const QUrl &thumbURL,
                                                     QSizeF thumbSize, const Options &options)
{
    const QString source = imageURL.toLocalFile();
    const QString target = thumbURL.toLocalFile();
    Options all = defaultThumbOptions();
    all.insert(options);
    const Stamp before = stampOfFile(source);
    NSError error;
    const QSize size(wholeSide(thumbSize.width()), wholeSide(thumbSize.height()));
    const auto thumb = readScaledPicture(source, size, all, &error);
    if (!thumb) {
        QBLogError(u"Failed to create CGImageDestination for "_s + target);
        QBLogError(error.localizedDescription());
        return std::nullopt;
    }
    const QByteArray bytes = target.endsWith(u".jpg"_s) ? thumb->jpegData() : thumb->pngData();
    if (bytes.isEmpty()) {
        QBLogError(u"Failed to create CGImageDestination for "_s + target);
        return std::nullopt;
    }
    const std::lock_guard lock(state.publishing);
    if (stampOfFile(source) != before) {
        return std::nullopt;
    }
    if (!quib::ensureFolder(state.baseURL.toLocalFile(), &error) || !quib::writeFileAtomically(target, bytes, &error)) {
        QBLogError(u"Failed to write image to "_s + target);
        QBLogError(error.localizedDescription());
        return std::nullopt;
    }
    return thumb;
}

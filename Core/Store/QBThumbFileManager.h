#pragma once

#include <QHash>
#include <QLatin1StringView>
#include <QSizeF>
#include <QString>
#include <QUrl>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

class NSImage;

// The options of a thumbnail. A picture that keeps its ratio and is neither contained nor covering becomes as large as
// fits the size, without margins.

inline constexpr QLatin1StringView kQBThumbPreserveRatio{"QBThumbPreserveRatio"};
/// Fits inside the size; what is left is background.
inline constexpr QLatin1StringView kQBThumbContain{"QBThumbContain"};
/// Fills the size; what is too much is cut off. Goes before containing.
inline constexpr QLatin1StringView kQBThumbCover{"QBThumbCover"};
/// Smooth scaling.
inline constexpr QLatin1StringView kQBThumbAntialias{"QBThumbAntialias"};
/// Where the picture lies in the size, or the size in the picture: -1 is left or top, 0 the middle, 1 right or bottom.
inline constexpr QLatin1StringView kQBThumbXAlign{"QBThumbXAlign"};
inline constexpr QLatin1StringView kQBThumbYAlign{"QBThumbYAlign"};
/// An NSColor that is filled in behind the picture.
inline constexpr QLatin1StringView kQBThumbBackgroundColor{"QBThumbBackgroundColor"};
/// Transparent rows at the top and at the bottom go first. Spelled so.
inline constexpr QLatin1StringView kQBThumbTrimTopBottonTransparentPixels{"QBThumbTrimTopBottonTransparentPixels"};
/// With that, transparent columns at the sides go too, but for so many pixels.
inline constexpr QLatin1StringView kQBThumbTrimTransparentPixelsHorizontalMargin{
    "QBThumbTrimTransparentPixelsHorizontalMargin"};

/// The small copies of pictures below one folder. The name of a copy tells the picture, the size and the options, so
/// whether there is one needs no database, and a copy is never written anew for other options. One instance a path
/// component and profile, for the life of the process. Any thread.
class QBThumbFileManager
{
public:
    using Options = QHash<QString, QVariant>;
    /// Receives where the copy lies, and the copy. Called on the main queue, and only where there is a copy.
    using SuccessBlock = std::function<void(const QUrl &thumbURL, const NSImage &thumb)>;

    /// The component of the copies that notes and lists of notes show.
    static constexpr QLatin1StringView kNoteImages{"Note Images"};
    /// Nothing with more pixels is made. However long a side is: a picture of a whole page may be very high.
    static constexpr qint64 kLargestPixelCount = qint64{16384} * 16384;

    /// The instance for a folder below "Thumbs" in the application's support folder.
    [[nodiscard]] static QBThumbFileManager *thumbFileManagerForPathComponent(const QString &pathComponent);

    explicit QBThumbFileManager(const QUrl &baseURL);

    [[nodiscard]] const QUrl &baseURL() const;

    // Names. Units: sizes are in pixels and are cut to whole ones.

    [[nodiscard]] static Options defaultThumbOptions();
    /// The part of a name that tells the options: only of those that are given, and not of all of these.
    [[nodiscard]] static QString stringFromOptions(const Options &options);
    /// What the names of all copies of a picture begin with: it goes by the path, without the home folder.
    [[nodiscard]] static QString baseThumbNameImageURL(const QUrl &imageURL);
    /// Shape: ends in ".jpg" for a JPEG and in ".png" for all else; without an extension where the source has none.
    [[nodiscard]] static QString thumbNameForImageURL(const QUrl &imageURL, QSizeF thumbSize, const Options &options);
    /// Where a copy lies, or would lie.
    [[nodiscard]] QUrl thumbURLForImageURL(const QUrl &imageURL, QSizeF thumbSize, const Options &options) const;
    /// The same with the default options.
    [[nodiscard]] QUrl thumbURLForImageURL(const QUrl &imageURL, QSizeF thumbSize) const;

    // Copies. The options go over the default ones.

    /// Makes and keeps a copy, blocking.
    /// Errors: nullopt, logged, when the picture cannot be read, or the copy cannot be written, or the file of the
    ///         picture changed or went meanwhile.
    [[nodiscard]] std::optional<NSImage> makeThumbForImageURL(const QUrl &imageURL, QSizeF thumbSize,
                                                              const Options &options) const;
    /// The same in the background.
    void makeThumbForImageURL(const QUrl &imageURL, QSizeF thumbSize, const Options &options,
                              const SuccessBlock &success) const;
    /// The copy that is there, or a new one. One that is there is read only to preload it; the block otherwise receives
    /// no picture for it.
    void thumbForImageURL(const QUrl &imageURL, QSizeF thumbSize, bool preload, const Options &options,
                          const SuccessBlock &success) const;
    /// Removes all copies of a picture, and those under way come to nothing where its file changed.
    void deleteAllThumbsForImageURL(const QUrl &imageURL) const;
    /// The same of many, for the price of one reading of the folder.
    void deleteAllThumbsForImageURLs(const QList<QUrl> &imageURLs) const;

    /// Runs work on pictures off the main queue, a few pieces at a time. A block that is given later may end sooner.
    static void performInBackground(std::function<void()> block);
    /// Waits for all that is under way in the background, for tests and for the end of programs. Results that are on
    /// their way to the main queue are not waited for.
    static void waitUntilBackgroundIsIdle();

private:
    /// Shared with the work under way.
    struct State;
    [[nodiscard]] static std::optional<NSImage> makeThumb(State &state, const QUrl &imageURL, const QUrl &thumbURL,
                                                          QSizeF thumbSize, const Options &options);

    std::shared_ptr<State> m_state;
};

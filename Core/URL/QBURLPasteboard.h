#pragma once

#include <QString>

#include <memory>
#include <optional>

class NSPasteboard;
class QBWebsiteParser;

/// Finds the title of a link that is about to be pasted, once for each copy, and puts it beside the link. What was
/// looked up is remembered on the pasteboard itself. One for each pasteboard. Main queue.
class QBURLPasteboard
{
public:
    /// The title of the link.
    static constexpr QLatin1StringView kURLNameType{"net.quibworks.quib.url-name"};
    /// The link that was looked up.
    static constexpr QLatin1StringView kURLAlreadyParsedType{"net.quibworks.quib.url-already-parsed"};
    /// The longest text that is taken for a link. Units: UTF-16 code units.
    static constexpr qsizetype kLongestURL = 8192;

    explicit QBURLPasteboard(std::shared_ptr<NSPasteboard> pasteboard);
    ~QBURLPasteboard();
    QBURLPasteboard(const QBURLPasteboard &) = delete;
    QBURLPasteboard &operator=(const QBURLPasteboard &) = delete;

    /// Begins to look for the title of the link on the pasteboard, unless that was done for this copy already, or the
    /// link has a title. Where a page has none the title is empty. A failure leaves the pasteboard as it is.
    void fixURLWithoutTitle();
    void setTitle(const QString &title, const QString &forURL);
    [[nodiscard]] bool urlAlreadyParsedForString(const QString &string) const;
    void setURLAlreadyParsed(const QString &url);
    /// The link on the pasteboard: one that was copied as such, or a plain text that is a web address and nothing else.
    [[nodiscard]] std::optional<QString> urlString() const;

private:
    std::shared_ptr<NSPasteboard> m_pasteboard;
    std::optional<qint64> m_changeCountAlreadyParsed;
    std::unique_ptr<QBWebsiteParser> m_parser; ///< of the link that was looked at last
};

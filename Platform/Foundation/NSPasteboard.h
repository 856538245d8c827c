#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>
#include <variant>

inline constexpr QLatin1StringView NSPasteboardTypeString{"public.utf8-plain-text"};
inline constexpr QLatin1StringView NSPasteboardTypeURL{"public.url"};
inline constexpr QLatin1StringView NSPasteboardTypeFileURL{"public.file-url"};
inline constexpr QLatin1StringView NSPasteboardTypeHTML{"public.html"};
inline constexpr QLatin1StringView NSPasteboardTypeRTF{"public.rtf"};

/// One thing that was copied, in each of its forms. A value.
class NSPasteboardItem
{
public:
    [[nodiscard]] QStringList types() const { return m_forms.keys(); }
    void setString(const QString &string, const QString &forType) { m_forms.insert(forType, string); }
    void setData(const QByteArray &data, const QString &forType) { m_forms.insert(forType, data); }
    /// Takes over the forms of another item.
    void add(const NSPasteboardItem &forms) { m_forms.insert(forms.m_forms); }
    /// Bytes are read as UTF-8; strings come back as they went in.
    [[nodiscard]] std::optional<QString> stringForType(const QString &type) const;
    [[nodiscard]] std::optional<QByteArray> dataForType(const QString &type) const;

private:
    QMap<QString, std::variant<QString, QByteArray>> m_forms; ///< by type
};

/// What one program hands to another, or a copy to a later paste: items, each in one or more forms. The desktop's
/// clipboard is one, a hand-over in memory another. Main queue.
class NSPasteboard
{
public:
    virtual ~NSPasteboard() = default;

    // What each pasteboard does in its way

    /// Changes whenever somebody puts new content in the place of the old, and only then.
    [[nodiscard]] virtual qint64 changeCount() const = 0;
    [[nodiscard]] virtual QList<NSPasteboardItem> pasteboardItems() const = 0;
    /// Takes all content away; gives the new change count.
    virtual qint64 clearContents() = 0;
    /// Adds items behind those that are there.
    /// Errors: false where the pasteboard took nothing.
    virtual bool writeItems(const QList<NSPasteboardItem> &items) = 0;
    /// Puts a form of the first item beside its others; without items, makes one. Not a change of content.
    /// Errors: as writeItems.
    virtual bool addToFirstItem(const NSPasteboardItem &forms) = 0;

    // What follows from it

    /// The types of all items, each once, in the items' order.
    [[nodiscard]] QStringList types() const;
    /// The first of some types that is there; null where none is.
    [[nodiscard]] QString availableTypeFromArray(const QStringList &types) const;
    /// The form of the first item that has the type.
    [[nodiscard]] std::optional<QString> stringForType(const QString &dataType) const;
    [[nodiscard]] std::optional<QByteArray> dataForType(const QString &dataType) const;
    bool setString(const QString &string, const QString &forType);
    bool setData(const QByteArray &data, const QString &forType);
    /// The URLs of the items, in order: those of files alone, or all. What is no absolute URL is left out.
    [[nodiscard]] QList<QUrl> urls(bool fileURLsOnly) const;
    /// The plain texts of the items, in order.
    [[nodiscard]] QStringList strings() const;
};

namespace quib {

/// A pasteboard of this process alone: for what was handed over, for programs without a window, and for tests.
class InMemoryPasteboard final : public NSPasteboard
{
public:
    [[nodiscard]] qint64 changeCount() const override { return m_changeCount; }
    [[nodiscard]] QList<NSPasteboardItem> pasteboardItems() const override { return m_items; }
    qint64 clearContents() override;
    bool writeItems(const QList<NSPasteboardItem> &items) override;
    bool addToFirstItem(const NSPasteboardItem &forms) override;

private:
    QList<NSPasteboardItem> m_items;
    qint64 m_changeCount = 0;
};

} // namespace quib

#pragma once

#include "QBThemeItem.h"

#include <Graphics/NSFont.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QUrl>

#include <optional>

/// A list of named colours, fonts and numbers, read from a file with the extension "theme": a property list with an
/// array of dictionaries of "key", "value" and "kind". Later items win over earlier ones of their key, so one theme can
/// be laid over another. Shared by its managers. Queue: theirs, one at a time.
class QBTheme
{
public:
    /// Bounds on what is read: resolving looks at all items for each variable. Units: bytes, items, UTF-16 units.
    static constexpr qint64 kLargestFile = 1024 * 1024;
    static constexpr qsizetype kMostItems = 4096;
    static constexpr qsizetype kLongestText = 1024;

    QBTheme() = default;
    QBTheme(const QBTheme &) = delete;
    QBTheme &operator=(const QBTheme &) = delete;

    /// The theme of a file, or of a resource ("qrc:").
    /// Shape:   items without a key or a value, or with a text longer than kLongestText, are left out.
    /// Errors:  those of reading the file; PropertyListReadCorrupt where it holds no array or too many items.
    [[nodiscard]] static std::shared_ptr<QBTheme> initWithContentOfURL(const QUrl &url, NSError *error);
    /// The same of a file's bytes.
    [[nodiscard]] static std::shared_ptr<QBTheme> initWithData(const QByteArray &data, NSError *error);
    /// Writes all items in their order, as XML.
    /// Errors:  those of writing; PropertyListWriteInvalid for an item without a value. The old file is then unchanged.
    [[nodiscard]] bool writeToURL(const QUrl &url, NSError *error) const;

    // Items

    [[nodiscard]] const QList<std::shared_ptr<QBThemeItem>> &themeItems() const { return m_themeItems; }
    [[nodiscard]] const QHash<QString, std::shared_ptr<QBThemeItem>> &mappingDictionary() const { return m_mapping; }
    /// Null where there is none.
    [[nodiscard]] std::shared_ptr<QBThemeItem> themeItemForKey(const QString &key) const
    {
        return m_mapping.value(key);
    }
    /// Appends an item in place of any of its key. Items that refer to a variable added after them get what it was
    /// resolved to before, which is nothing for a new one: variables stand first in a file.
    void addThemeItem(const std::shared_ptr<QBThemeItem> &item);
    void removeThemeItem(const std::shared_ptr<QBThemeItem> &item);
    /// Takes over a change of the item's key or value.
    void updateThemeItem(const std::shared_ptr<QBThemeItem> &item);
    /// Adds the other theme's items, which both then share.
    void addThemeItemsFromTheme(const QBTheme &theme);

    // Values

    /// Nullopt where the key is unknown or its value leads to no text. Text without numbers is transparent black.
    [[nodiscard]] std::optional<NSColor> colorForKey(const QString &key) const;
    /// The system's font where there is no such key, or no such font.
    [[nodiscard]] NSFont fontForKey(const QString &key, double size) const;
    /// Nullopt where there is no such key, or no such font.
    [[nodiscard]] std::optional<NSFont> fontForKeyIfAny(const QString &key, double size) const;
    /// Nullopt where there is no such key, or its value is no finite number, nor the text of one.
    [[nodiscard]] std::optional<double> numberForKey(const QString &key) const;

    // Resolving

    /// Sets what the item's value comes to: a variable stands for the value of its item, one step and no further, and
    /// "@alpha(colour, alpha)" for the colour with that alpha.
    void updateItemProxyValue(QBThemeItem &item) const;
    /// Hands what a variable comes to on to the items whose whole value is its key. Those with the variable in "@alpha"
    /// stay as they are until they are resolved again.
    void updateItemLinkedItems(const QBThemeItem &item);

private:
    void removeMappingsOf(const QBThemeItem *item);

    QList<std::shared_ptr<QBThemeItem>> m_themeItems;
    QHash<QString, std::shared_ptr<QBThemeItem>> m_mapping;
};

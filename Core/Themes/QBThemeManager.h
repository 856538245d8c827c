#pragma once

#include "QBTheme.h"
#include "ThemeCache.h"

#include <Text/AttributeValue.h>

#include <QList>

class QBThemeManager;

namespace quib {

/// What draws with a theme and is told to do it anew. It leaves its managers by itself when it dies.
class StylableObject
{
public:
    StylableObject() = default;
    StylableObject(const StylableObject & /*other*/) {}
    StylableObject &operator=(const StylableObject & /*other*/) { return *this; }
    virtual ~StylableObject();

    virtual void themeManagerWillChangeStyles(QBThemeManager &manager);
    virtual void styleObjectWithThemeManager(QBThemeManager &manager) = 0;
    virtual void themeManagerDidChangeStyles(QBThemeManager &manager);

private:
    friend class ::QBThemeManager;
    QList<QBThemeManager *> m_managers; ///< those it is registered with; a copy is registered with none
};

} // namespace quib

/// Holds the theme in force, what was made from it, and those who draw with it. Base of the managers of the text and of
/// the application. Queue: one at a time; in the program the main one.
class QBThemeManager
{
public:
    QBThemeManager() = default;
    QBThemeManager(const QBThemeManager &) = delete;
    QBThemeManager &operator=(const QBThemeManager &) = delete;
    virtual ~QBThemeManager();

    // The theme

    /// Null before one is loaded: then there is no colour, and every font is the system's.
    [[nodiscard]] const std::shared_ptr<QBTheme> &currentTheme() const { return m_currentTheme; }
    void loadTheme(const std::shared_ptr<QBTheme> &theme) { loadTheme(theme, /*updateStylableObjects=*/true); }
    void loadTheme(const std::shared_ptr<QBTheme> &theme, bool updateStylableObjects);
    /// Lays a theme over the current one, which is changed; without one, over an empty theme.
    void addItemFromTheme(const QBTheme &theme) { addItemFromTheme(theme, /*updateStylableObjects=*/true); }
    void addItemFromTheme(const QBTheme &theme, bool updateStylableObjects);

    // What is made from it

    /// Emptied at each change.
    [[nodiscard]] quib::ThemeCache &themeCache() const { return m_themeCache; }
    void emptyCache();
    /// Another number after each emptying of the cache: what others keep of a theme is good while it stays the same.
    [[nodiscard]] quint64 cacheGeneration() const { return m_cacheGeneration; }

    // Those who draw with it

    /// Registered once, however often it asks, until it unregisters or dies.
    void registerStylableObject(quib::StylableObject &object);
    void unregisterStylableObject(quib::StylableObject &object);
    /// In the order of their registration.
    [[nodiscard]] const QList<quib::StylableObject *> &registeredStylableObjects() const { return m_stylableObjects; }
    /// Tells all that the styles will change, then all to style themselves, then all that the styles did change. Those
    /// that register meanwhile are not told; those that leave are not told any more.
    void styleRegisteredStylableObjects();

    // Values

    /// Nullopt where there is no theme, or it has no such colour.
    [[nodiscard]] std::optional<NSColor> colorForKey(const QString &key) const;
    /// The same as the value of a text attribute; nothing where there is no colour. Kept in the cache.
    [[nodiscard]] quib::AttributeValue colorAttributeForKey(const QString &key) const;
    [[nodiscard]] NSFont fontForKey(const QString &key, double size) const;
    [[nodiscard]] std::optional<double> numberForKey(const QString &key) const;

private:
    std::shared_ptr<QBTheme> m_currentTheme;
    mutable quib::ThemeCache m_themeCache;
    quint64 m_cacheGeneration = 0;
    QList<quib::StylableObject *> m_stylableObjects;
};

#include "QBThemeManager.h"

#include <Graphics/GraphicsAttributes.h>

using namespace Qt::StringLiterals;
using quib::StylableObject;

StylableObject::~StylableObject()
{
    while (!m_managers.isEmpty()) {
        m_managers.last()->unregisterStylableObject(*this);
    }
}

void StylableObject::themeManagerWillChangeStyles(QBThemeManager & /*manager*/) {}

void StylableObject::themeManagerDidChangeStyles(QBThemeManager & /*manager*/) {}

QBThemeManager::~QBThemeManager()
{
    for (StylableObject *object : std::as_const(m_stylableObjects)) {
        object->m_managers.removeOne(this);
    }
}

void QBThemeManager::loadTheme(const std::shared_ptr<QBTheme> &theme, bool updateStylableObjects)
{
    emptyCache();
    m_currentTheme = theme;
    if (updateStylableObjects) {
        styleRegisteredStylableObjects();
    }
}

void QBThemeManager::addItemFromTheme(const QBTheme &theme, bool updateStylableObjects)
{
    emptyCache();
    if (m_currentTheme == nullptr) {
        m_currentTheme = std::make_shared<QBTheme>();
    }
    m_currentTheme->addThemeItemsFromTheme(theme);
    if (updateStylableObjects) {
        styleRegisteredStylableObjects();
    }
}

void QBThemeManager::emptyCache()
{
    m_themeCache.clear();
    ++m_cacheGeneration;
}

void QBThemeManager::registerStylableObject(StylableObject &object)
{
    if (!m_stylableObjects.contains(&object)) {
        m_stylableObjects.append(&object);
        object.m_managers.append(this);
    }
}

void QBThemeManager::unregisterStylableObject(StylableObject &object)
{
    m_stylableObjects.removeOne(&object);
    object.m_managers.removeOne(this);
}

void QBThemeManager::styleRegisteredStylableObjects()
{
    // Who is called may register, leave or kill others.
    const QList<StylableObject *> objects = m_stylableObjects;
    const auto tellAll = [this, &objects](auto call) {
        for (StylableObject *object : objects) {
            if (m_stylableObjects.contains(object)) {
                call(*object);
            }
        }
    };
    tellAll([this](StylableObject &object) { object.themeManagerWillChangeStyles(*this); });
    tellAll([this](StylableObject &object) { object.styleObjectWithThemeManager(*this); });
    tellAll([this](StylableObject &object) { object.themeManagerDidChangeStyles(*this); });
}

std::optional<NSColor> QBThemeManager::colorForKey(const QString &key) const
{
    return m_currentTheme ? m_currentTheme->colorForKey(key) : std::nullopt;
}

quib::AttributeValue QBThemeManager::colorAttributeForKey(const QString &key) const
{
    return m_themeCache.value(key, [this, &key] {
        const std::optional<NSColor> color = colorForKey(key);
        return color ? quib::attributeValue(*color) : quib::AttributeValue();
    });
}

NSFont QBThemeManager::fontForKey(const QString &key, double size) const
{
    return m_currentTheme ? m_currentTheme->fontForKey(key, size) : NSFont::systemFontOfSize(size);
}

std::optional<double> QBThemeManager::numberForKey(const QString &key) const
{
    return m_currentTheme ? m_currentTheme->numberForKey(key) : std::nullopt;
}

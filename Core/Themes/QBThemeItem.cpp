#include "QBThemeItem.h"

using namespace Qt::StringLiterals;
using quib::PropertyValue;

QBThemeItem::QBThemeItem(QString key, PropertyValue value, QString kind)
    : m_kind(std::move(kind))
    , m_key(std::move(key))
{
    setValue(std::move(value));
}

std::shared_ptr<QBThemeItem> QBThemeItem::fontThemeItem()
{
    return std::make_shared<QBThemeItem>(u"New Font"_s, u"Helvetica"_s, u"font"_s);
}

std::shared_ptr<QBThemeItem> QBThemeItem::colorThemeItem()
{
    return std::make_shared<QBThemeItem>(u"New Color"_s, u"rgba(255, 255, 255, 1.00)"_s, u"color"_s);
}

std::shared_ptr<QBThemeItem> QBThemeItem::numberThemeItem()
{
    return std::make_shared<QBThemeItem>(u"New Number"_s, 0, u"number"_s);
}

std::shared_ptr<QBThemeItem> QBThemeItem::groupThemeItem()
{
    return std::make_shared<QBThemeItem>(u""_s, u"New Group"_s, u"group"_s);
}

void QBThemeItem::setValue(PropertyValue value)
{
    m_value = std::move(value);
    const std::optional<QString> text = m_value.asString();
    m_reference = text && text->startsWith(u'$') ? *text : QString();
}

void QBThemeItem::setProxyValue(const PropertyValue &value)
{
    m_proxyValue = value;
    const std::optional<QString> text = value.asString();
    m_color = text ? std::optional(NSColor::colorFromRgbaString(*text)) : std::nullopt;
}

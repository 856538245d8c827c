#include "QBTheme.h"

#include <Files/AtomicFile.h>
#include <Files/FileError.h>
#include <Text/NSRegularExpression.h>

#include <QFile>

#include <cmath>

using namespace Qt::StringLiterals;
using quib::PropertyValue;

namespace {

/// A longer text is no use of "@alpha": the pattern backtracks, so it is tried on short ones only. Units: UTF-16.
constexpr qsizetype kLongestAlphaText = 128;

const NSRegularExpression &alphaExpression()
{
    static const NSRegularExpression s_expression(uR"(@alpha\((.*)\s*,\s*(0(\.\d+)?|1(\.0+)?)\))"_s,
                                                  NSRegularExpression::CaseInsensitive);
    return s_expression;
}

struct AlphaUse
{
    QString color;
    double alpha = 0;
};

/// The two pieces of a text with "@alpha(colour, alpha)" in it.
std::optional<AlphaUse> alphaUseIn(const QString &text)
{
    if (text.size() > kLongestAlphaText || !text.contains("@alpha("_L1, Qt::CaseInsensitive)) {
        return std::nullopt;
    }
    const std::optional<NSTextCheckingResult> match = alphaExpression().firstMatchInString(text, 0, {0, text.size()});
    if (!match) {
        return std::nullopt;
    }
    const auto group = [&text, &match](qint64 index) {
        const NSRange range = match->rangeAtIndex(index);
        return text.sliced(range.location, range.length);
    };
    return AlphaUse{.color = group(1), .alpha = group(2).toDouble()};
}

/// A value that a theme can hold: a text that is not too long, or a finite number.
bool isThemeValue(const PropertyValue &value)
{
    if (const std::optional<QString> text = value.asString()) {
        return text->size() <= QBTheme::kLongestText;
    }
    return value.isNumber() && std::isfinite(value.toDouble());
}

std::shared_ptr<QBThemeItem> itemOf(const PropertyValue &entry)
{
    const PropertyValue::Dictionary *fields = entry.asDictionary();
    if (fields == nullptr) {
        return nullptr;
    }
    std::optional<QString> key = fields->value(u"key"_s).asString();
    const PropertyValue value = fields->value(u"value"_s);
    if (!key || key->size() > QBTheme::kLongestText || !isThemeValue(value)) {
        return nullptr;
    }
    QString kind = fields->value(u"kind"_s).asString().value_or(QString());
    kind.truncate(QBTheme::kLongestText);
    return std::make_shared<QBThemeItem>(*std::move(key), value, std::move(kind));
}

std::optional<QByteArray> bytesOf(const QUrl &url, NSError *error)
{
    if (url.isLocalFile()) {
        return quib::readWholeFile(url.toLocalFile(), error, QBTheme::kLargestFile);
    }
    QFile resource(u':' % url.path());
    if (url.scheme() != "qrc"_L1 || !resource.open(QIODevice::ReadOnly)) {
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::FileNoSuchFile),
                      u"there is no resource "_s % url.toString());
        return std::nullopt;
    }
    return resource.readAll();
}

bool fillCorrupt(NSError *error, const QString &message)
{
    return NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PropertyListReadCorrupt),
                         message);
}

} // namespace

std::shared_ptr<QBTheme> QBTheme::initWithContentOfURL(const QUrl &url, NSError *error)
{
    const std::optional<QByteArray> bytes = bytesOf(url, error);
    if (!bytes) {
        return nullptr;
    }
    NSError reading;
    std::shared_ptr<QBTheme> theme = initWithData(*bytes, &reading);
    if (theme == nullptr) {
        fillCorrupt(error, url.toDisplayString() % u": "_s % reading.localizedDescription());
    }
    return theme;
}

std::shared_ptr<QBTheme> QBTheme::initWithData(const QByteArray &data, NSError *error)
{
    if (data.size() > kLargestFile) {
        fillCorrupt(error, u"the theme is too large"_s);
        return nullptr;
    }
    const std::optional<PropertyValue> content = quib::readPropertyList(data, error);
    if (!content) {
        return nullptr;
    }
    const PropertyValue::Array *entries = content->asArray();
    if (entries == nullptr) {
        fillCorrupt(error, u"the theme is no list of items"_s);
        return nullptr;
    }
    if (entries->size() > kMostItems) {
        fillCorrupt(error, u"the theme has too many items"_s);
        return nullptr;
    }
    auto theme = std::make_shared<QBTheme>();
    for (const PropertyValue &entry : *entries) {
        if (const std::shared_ptr<QBThemeItem> item = itemOf(entry)) {
            theme->addThemeItem(item);
        }
    }
    return theme;
}

bool QBTheme::writeToURL(const QUrl &url, NSError *error) const
{
    PropertyValue::Array entries;
    for (const std::shared_ptr<QBThemeItem> &item : m_themeItems) {
        entries.append(PropertyValue::Dictionary{
            {u"key"_s, PropertyValue(item->key())},
            {u"value"_s, item->value()},
            {u"kind"_s, PropertyValue(item->kind())},
        });
    }
    const std::optional<QByteArray> bytes =
        quib::writePropertyList(PropertyValue(std::move(entries)), quib::PropertyListFormat::XML, error);
    return bytes && quib::writeFileAtomically(url.toLocalFile(), *bytes, error);
}

void QBTheme::addThemeItem(const std::shared_ptr<QBThemeItem> &item)
{
    // The item is held: it may be the very one that is removed, and named by the list that changes.
    const std::shared_ptr<QBThemeItem> added = item;
    // 1. A later item takes the place of an earlier one of its key.
    if (const std::shared_ptr<QBThemeItem> earlier = themeItemForKey(added->key())) {
        removeThemeItem(earlier);
    }
    // 2. It stands last.
    m_themeItems.append(added);
    m_mapping.insert(added->key(), added);
    // 3. Items that refer to it get what it came to so far.
    updateItemLinkedItems(*added);
    // 4. Then it is resolved itself.
    updateItemProxyValue(*added);
}

void QBTheme::removeThemeItem(const std::shared_ptr<QBThemeItem> &item)
{
    const std::shared_ptr<QBThemeItem> removed = item;
    m_themeItems.removeAll(removed);
    removeMappingsOf(removed.get());
}

void QBTheme::updateThemeItem(const std::shared_ptr<QBThemeItem> &item)
{
    removeMappingsOf(item.get());
    updateItemProxyValue(*item);
    updateItemLinkedItems(*item);
    m_mapping.insert(item->key(), item);
}

void QBTheme::addThemeItemsFromTheme(const QBTheme &theme)
{
    const QList<std::shared_ptr<QBThemeItem>> items = theme.m_themeItems; // which may be this theme's own
    for (const std::shared_ptr<QBThemeItem> &item : items) {
        addThemeItem(item);
    }
}

std::optional<NSColor> QBTheme::colorForKey(const QString &key) const
{
    const auto found = m_mapping.constFind(key);
    return found == m_mapping.cend() ? std::nullopt : (*found)->color();
}

std::optional<NSFont> QBTheme::fontForKeyIfAny(const QString &key, double size) const
{
    const auto found = m_mapping.constFind(key);
    const std::optional<QString> name = found == m_mapping.cend() ? std::nullopt : (*found)->value().asString();
    return name ? NSFont::fontWithName(*name, size) : std::nullopt;
}

NSFont QBTheme::fontForKey(const QString &key, double size) const
{
    const std::optional<NSFont> font = fontForKeyIfAny(key, size);
    return font ? *font : NSFont::systemFontOfSize(size);
}

std::optional<double> QBTheme::numberForKey(const QString &key) const
{
    const auto found = m_mapping.constFind(key);
    if (found == m_mapping.cend()) {
        return std::nullopt;
    }
    const PropertyValue &value = (*found)->value();
    double number = value.toDouble();
    if (const std::optional<QString> text = value.asString()) {
        bool isNumber = false;
        number = text->toDouble(&isNumber);
        if (!isNumber) {
            return std::nullopt;
        }
    } else if (!value.isNumber()) {
        return std::nullopt;
    }
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

void QBTheme::updateItemProxyValue(QBThemeItem &item) const
{
    // 1. The value as written.
    PropertyValue value = item.value();
    // 2. A text with "@alpha" gives a colour and an alpha.
    std::optional<double> alpha;
    if (const std::optional<QString> text = value.asString()) {
        if (std::optional<AlphaUse> use = alphaUseIn(*text)) {
            alpha = use->alpha;
            value = PropertyValue(std::move(use->color));
        }
    }
    // 3. A variable stands for the value of its item as written, so a reference that leads to a reference ends there
    //    and circles are no matter.
    const std::optional<QString> reference = value.asString();
    if (reference && reference->startsWith(u'$')) {
        const std::shared_ptr<QBThemeItem> variable = themeItemForKey(*reference);
        value = variable ? variable->value() : PropertyValue();
    }
    // 4. The alpha goes into the colour. Where there is no text to read one from, there stays none.
    const std::optional<QString> color = value.asString();
    if (alpha && color && item.kind() == "color"_L1) {
        value = PropertyValue(NSColor::colorFromRgbaString(*color).colorWithAlphaComponent(*alpha).rgbaString());
    }
    item.setProxyValue(value);
}

void QBTheme::updateItemLinkedItems(const QBThemeItem &item)
{
    if (!item.isVariable()) {
        return;
    }
    const PropertyValue result = item.proxyValue(); // a copy: an item may refer to itself
    for (const std::shared_ptr<QBThemeItem> &linked : std::as_const(m_themeItems)) {
        if (linked->reference() == item.key()) {
            linked->setProxyValue(result);
        }
    }
}

void QBTheme::removeMappingsOf(const QBThemeItem *item)
{
    m_mapping.removeIf([item](const auto &entry) { return entry.value().get() == item; });
}

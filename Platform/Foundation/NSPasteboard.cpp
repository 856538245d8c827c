#include "NSPasteboard.h"

using namespace Qt::StringLiterals;

std::optional<QString> NSPasteboardItem::stringForType(const QString &type) const
{
    const auto found = m_forms.constFind(type);
    if (found == m_forms.cend()) {
        return std::nullopt;
    }
    const auto *string = std::get_if<QString>(&*found);
    return string != nullptr ? *string : QString::fromUtf8(*std::get_if<QByteArray>(&*found));
}

std::optional<QByteArray> NSPasteboardItem::dataForType(const QString &type) const
{
    const auto found = m_forms.constFind(type);
    if (found == m_forms.cend()) {
        return std::nullopt;
    }
    const auto *string = std::get_if<QString>(&*found);
    return string != nullptr ? string->toUtf8() : *std::get_if<QByteArray>(&*found);
}

QStringList NSPasteboard::types() const
{
    QStringList all;
    for (const NSPasteboardItem &item : pasteboardItems()) {
        all += item.types();
    }
    all.removeDuplicates();
    return all;
}

QString NSPasteboard::availableTypeFromArray(const QStringList &types) const
{
    const QStringList present = this->types();
    for (const QString &type : types) {
        if (present.contains(type)) {
            return type;
        }
    }
    return {};
}

std::optional<QString> NSPasteboard::stringForType(const QString &dataType) const
{
    for (const NSPasteboardItem &item : pasteboardItems()) {
        if (auto string = item.stringForType(dataType)) {
            return string;
        }
    }
    return std::nullopt;
}

std::optional<QByteArray> NSPasteboard::dataForType(const QString &dataType) const
{
    for (const NSPasteboardItem &item : pasteboardItems()) {
        if (auto data = item.dataForType(dataType)) {
            return data;
        }
    }
    return std::nullopt;
}

bool NSPasteboard::setString(const QString &string, const QString &forType)
{
    NSPasteboardItem form;
    form.setString(string, forType);
    return addToFirstItem(form);
}

bool NSPasteboard::setData(const QByteArray &data, const QString &forType)
{
    NSPasteboardItem form;
    form.setData(data, forType);
    return addToFirstItem(form);
}

QList<QUrl> NSPasteboard::urls(bool fileURLsOnly) const
{
    QList<QUrl> found;
    for (const NSPasteboardItem &item : pasteboardItems()) {
        auto string = item.stringForType(NSPasteboardTypeFileURL);
        if (!string && !fileURLsOnly) {
            string = item.stringForType(NSPasteboardTypeURL);
        }
        const QUrl url(string ? *string : QString());
        if (url.isValid() && !url.isRelative() && (!fileURLsOnly || url.isLocalFile())) {
            found.append(url);
        }
    }
    return found;
}

QStringList NSPasteboard::strings() const
{
    QStringList found;
    for (const NSPasteboardItem &item : pasteboardItems()) {
        if (const auto string = item.stringForType(NSPasteboardTypeString)) {
            found.append(*string);
        }
    }
    return found;
}

namespace quib {

qint64 InMemoryPasteboard::clearContents()
{
    m_items.clear();
    return ++m_changeCount;
}

bool InMemoryPasteboard::writeItems(const QList<NSPasteboardItem> &items)
{
    m_items += items;
    return true;
}

bool InMemoryPasteboard::addToFirstItem(const NSPasteboardItem &forms)
{
    if (m_items.isEmpty()) {
        m_items.append(forms);
        return true;
    }
    m_items.first().add(forms);
    return true;
}

} // namespace quib

#include "DesktopPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

DesktopPasteboard::DesktopPasteboard()
{
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] {
        if (!m_isWriting) {
            ++m_changeCount;
            m_beside = {};
        }
    });
}

std::shared_ptr<DesktopPasteboard> DesktopPasteboard::general()
{
    static std::weak_ptr<DesktopPasteboard> s_general;
    auto general = s_general.lock();
    if (!general) {
        general = std::make_shared<DesktopPasteboard>();
        s_general = general;
    }
    return general;
}

QList<NSPasteboardItem> DesktopPasteboard::pasteboardItems() const
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr) {
        return {};
    }
    NSPasteboardItem first;
    if (data->hasText()) {
        first.setString(data->text(), NSPasteboardTypeString);
    }
    if (data->hasHtml()) {
        first.setString(data->html(), NSPasteboardTypeHTML);
    }
    QList<NSPasteboardItem> items;
    for (const QUrl &url : data->urls()) {
        NSPasteboardItem item = items.isEmpty() ? first : NSPasteboardItem();
        item.setString(url.toString(QUrl::FullyEncoded),
                       url.isLocalFile() ? QString(NSPasteboardTypeFileURL) : QString(NSPasteboardTypeURL));
        items.append(item);
    }
    if (items.isEmpty() && !first.types().isEmpty()) {
        items.append(first);
    }
    if (!items.isEmpty()) {
        items.first().add(m_beside);
    }
    return items;
}

qint64 DesktopPasteboard::clearContents()
{
    m_isWriting = true;
    QGuiApplication::clipboard()->clear();
    m_isWriting = false;
    m_beside = {};
    return ++m_changeCount;
}

bool DesktopPasteboard::writeItems(const QList<NSPasteboardItem> &items)
{
    put(pasteboardItems() + items);
    return true;
}

bool DesktopPasteboard::addToFirstItem(const NSPasteboardItem &forms)
{
    const QStringList types = forms.types();
    if (std::all_of(types.begin(), types.end(), [](const QString &type) { return type.startsWith(kOwnTypes); })) {
        m_beside.add(forms);
        return true;
    }
    QList<NSPasteboardItem> items = pasteboardItems();
    if (items.isEmpty()) {
        items.append(NSPasteboardItem());
    }
    items.first().add(forms);
    put(items);
    return true;
}

void DesktopPasteboard::put(const QList<NSPasteboardItem> &items)
{
    auto *data = new QMimeData;
    QList<QUrl> urls;
    for (const NSPasteboardItem &item : items) {
        if (const auto text = item.stringForType(QString(NSPasteboardTypeString)); text && !data->hasText()) {
            data->setText(*text);
        }
        if (const auto html = item.stringForType(QString(NSPasteboardTypeHTML)); html && !data->hasHtml()) {
            data->setHtml(*html);
        }
        for (const auto type : {NSPasteboardTypeURL, NSPasteboardTypeFileURL}) {
            if (const auto url = item.stringForType(QString(type))) {
                urls.append(QUrl(*url));
            }
        }
    }
    if (!urls.isEmpty()) {
        data->setUrls(urls);
    }
    m_isWriting = true;
    QGuiApplication::clipboard()->setMimeData(data);
    m_isWriting = false;
}

} // namespace quib

#pragma once

#include <Foundation/NSPasteboard.h>

#include <QObject>

QT_BEGIN_NAMESPACE
class QMimeData;
QT_END_NAMESPACE

namespace quib {

/// The desktop's clipboard: texts, HTML and URLs that any program copied. Main queue.
class DesktopPasteboard final : public QObject, public NSPasteboard
{
    Q_OBJECT

public:
    DesktopPasteboard();

    [[nodiscard]] qint64 changeCount() const override { return m_changeCount; }
    [[nodiscard]] QList<NSPasteboardItem> pasteboardItems() const override;
    qint64 clearContents() override;
    bool writeItems(const QList<NSPasteboardItem> &items) override;
    bool addToFirstItem(const NSPasteboardItem &forms) override;

private:
    /// Puts items in the place of what is there, without counting as a change of content.
    void put(const QList<NSPasteboardItem> &items);

    qint64 m_changeCount = 0;
    bool m_isWriting = false;
};

} // namespace quib

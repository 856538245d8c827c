#pragma once

#include <Foundation/NSPasteboard.h>

#include <QObject>

#include <memory>

QT_BEGIN_NAMESPACE
class QMimeData;
QT_END_NAMESPACE

namespace quib {

/// The desktop's clipboard: texts, HTML and URLs that any program copied. What the program finds out about a copy
/// (types of its own) is kept beside it, until something else is copied: the clipboard stays its owner's, with all its
/// forms. Main queue.
class DesktopPasteboard final : public QObject, public NSPasteboard
{
    Q_OBJECT

public:
    /// The types that are kept here, not on the clipboard, begin so.
    static constexpr QLatin1StringView kOwnTypes{"net.quibworks.quib.url-"};

    DesktopPasteboard();
    /// The one that is in use; a new one where none is.
    [[nodiscard]] static std::shared_ptr<DesktopPasteboard> general();

    [[nodiscard]] qint64 changeCount() const override { return m_changeCount; }
    [[nodiscard]] QList<NSPasteboardItem> pasteboardItems() const override;
    qint64 clearContents() override;
    bool writeItems(const QList<NSPasteboardItem> &items) override;
    bool addToFirstItem(const NSPasteboardItem &forms) override;

private:
    /// Puts items in the place of what is there, without counting as a change of content.
    void put(const QList<NSPasteboardItem> &items);

    qint64 m_changeCount = 0;
    NSPasteboardItem m_beside; ///< the forms of our own types, of what is there now
    bool m_isWriting = false;
};

} // namespace quib

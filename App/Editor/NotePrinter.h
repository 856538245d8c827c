#pragma once

#include <QSizeF>
#include <QString>

#include <functional>
#include <memory>

class NSManagedObjectContext;

QT_BEGIN_NAMESPACE
class QPagedPaintDevice;
QT_END_NAMESPACE

namespace quib {

class GraphicsContext;

/// Prints a note: its text in the theme that is made for paper, cut into pages between its lines. A page at a time is
/// laid out, whatever the length of the note. Lives for one printing; main queue.
/// Units: points of the page within its margins.
class NotePrinter
{
public:
    /// Attachments are found in a context; without one they are printed as empty cards.
    NotePrinter(QString text, int syntax, std::weak_ptr<NSManagedObjectContext> context = {});

    /// Paints the pages of the device's ranges, or all. False where the device can't be painted on, or refused a page.
    [[nodiscard]] bool print(QPagedPaintDevice &device) const;
    [[nodiscard]] int pageCount(QSizeF pageSize) const;

    /// Draws one page with its top left at the origin. Valid until the next page.
    using DrawPage = std::function<void(GraphicsContext &context)>;
    /// Hands out the pages in their order, as long as it is told to go on.
    void enumeratePages(QSizeF pageSize, const std::function<bool(const DrawPage &drawPage)> &block) const;

private:
    QString m_text;
    int m_syntax;
    std::weak_ptr<NSManagedObjectContext> m_context;
};

} // namespace quib

#include "NotePrinter.h"

#include <Graphics/GraphicsContext.h>
#include <Markup/NotePainter.h>
#include <Markup/QBNoteTextAttachmentConfigurator.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Markup/QBNoteTypesetter.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <deque>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr double kPointsOfInch = 72;
/// Pictures are read this much finer than the points of the page.
constexpr double kPictureScale = 3;

/// A piece of the text that the current page, or the next, has lines of.
struct SetPiece
{
    std::unique_ptr<ParagraphLayout> layout;
    PlacedParagraph placed;
};

} // namespace

NotePrinter::NotePrinter(QString text, int syntax, std::weak_ptr<NSManagedObjectContext> context)
    : m_text(std::move(text))
    , m_syntax(syntax)
    , m_context(std::move(context))
{
}

void NotePrinter::enumeratePages(QSizeF pageSize, const std::function<bool(const DrawPage &drawPage)> &block) const
{
    QBNoteTextKitStack stack;
    const auto &theme = stack.themeManager();
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    theme->loadTheme(QBNotesThemesManager::textThemeForThemeName(
        u"Print"_s,
        preferences != nullptr ? preferences->fontThemeName() : QBNotesThemesManager::defaultFontThemeName()));
    QBNoteTextAttachmentConfigurator configurator;
    configurator.setManagedObjectContext(m_context);
    configurator.setScale(kPictureScale);
    configurator.setMaxAttachmentWidth(
        std::max(1.0, pageSize.width() - theme->paragraphHeadIndent() + theme->paragraphTailIndent()));
    configurator.setMaxAttachmentHeight(std::max(1.0, pageSize.height() - 2 * theme->paragraphLineHeight()));
    configurator.setConfigureAttachmentSynchronously(true);
    stack.stylerManager()->setSyntax(m_syntax);
    stack.stylerManager()->setTextAttachmentConfigurator(&configurator);
    stack.noteTextStorage().loadString(m_text);

    const NSAttributedString &text = stack.noteTextStorage().attributedString();
    QBNoteTypesetter typesetter(theme);
    typesetter.setColumnWidth(pageSize.width());
    const NotePainter notePainter(text, *theme, 0, pageSize.width());
    std::deque<SetPiece> pieces;
    double pageTop = 0;
    const auto handOut = [&](double pageBottom) {
        std::vector<PlacedParagraph> paragraphs;
        for (const SetPiece &piece : pieces) {
            paragraphs.push_back(piece.placed);
        }
        return block([&](GraphicsContext &context) {
            context.saveState();
            context.clipToRect({0, 0, pageSize.width(), pageBottom - pageTop});
            context.translateBy(0, -pageTop);
            notePainter.drawBackground(context, paragraphs);
            notePainter.drawText(context, paragraphs);
            context.restoreState();
        });
    };
    double top = 0;
    for (qint64 location = 0; location < text.length();) {
        const NSRange range = {location, QBNoteTypesetter::endOfPiece(text.string(), location) - location};
        auto layout = typesetter.layoutOfPiece(text, range);
        const ParagraphLayout &set = *layout;
        pieces.push_back({.layout = std::move(layout),
                          .placed = {.range = range, .origin = {0, top}, .height = set.height(), .layout = &set}});
        for (const ParagraphLayout::Line &line : set.lines()) {
            const double lineTop = top + line.rect.top();
            if (top + line.rect.bottom() <= pageTop + pageSize.height() || lineTop <= pageTop) {
                continue; // a line that is higher than a page has one for itself, and is cut
            }
            if (!handOut(lineTop)) {
                stack.stylerManager()->setTextAttachmentConfigurator(nullptr);
                return;
            }
            pageTop = lineTop;
            while (pieces.front().placed.bottom() <= pageTop) {
                pieces.pop_front();
            }
        }
        top += set.height();
        location = range.limit();
    }
    (void)handOut(pageTop + pageSize.height());
    stack.stylerManager()->setTextAttachmentConfigurator(nullptr);
}

int NotePrinter::pageCount(QSizeF pageSize) const
{
    int count = 0;
    enumeratePages(pageSize, [&count](const DrawPage & /*drawPage*/) {
        ++count;
        return true;
    });
    return count;
}

bool NotePrinter::print(QPagedPaintDevice &device) const
{
    const QSizeF pageSize = device.pageLayout().paintRect(QPageLayout::Point).size();
    QPainter painter;
    if (pageSize.isEmpty() || !painter.begin(&device)) {
        return false;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const QPageRanges ranges = device.pageRanges();
    int number = 0;
    bool isFirst = true;
    bool isGood = true;
    enumeratePages(pageSize, [&](const DrawPage &drawPage) {
        ++number;
        if (!ranges.isEmpty() && !ranges.contains(number)) {
            return number < ranges.lastPage();
        }
        if (!std::exchange(isFirst, false)) {
            isGood = device.newPage();
        }
        if (isGood) {
            painter.save();
            painter.scale(device.logicalDpiX() / kPointsOfInch, device.logicalDpiY() / kPointsOfInch);
            GraphicsContext context(painter);
            drawPage(context);
            painter.restore();
        }
        return isGood;
    });
    return painter.end() && isGood;
}

} // namespace quib

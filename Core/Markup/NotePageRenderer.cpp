#include "NotePageRenderer.h"

#include "NotePainter.h"
#include "QBNoteTypesetter.h"
#include "QBNotesTextContainer.h"
#include "QBNotesTextStorage.h"

#include <Graphics/GraphicsContext.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>
#include <cmath>

namespace quib {

NotePageRenderer::NotePageRenderer(const QBNotesTextStorage &storage,
                                   std::shared_ptr<QBNotesTextThemeManager> themeManager, double width)
    : m_storage(storage)
    , m_themeManager(std::move(themeManager))
    , m_width(width)
    , m_padding(QBNotesTextContainer({width, 0}, m_themeManager).lineFragmentPadding())
{
    layOut();
}

NotePageRenderer::~NotePageRenderer() = default;

void NotePageRenderer::layOut()
{
    const NSAttributedString &text = m_storage.attributedString();
    QBNoteTypesetter typesetter(m_themeManager);
    typesetter.setColumnWidth(m_width - 2 * m_padding);
    const double inset = m_themeManager->textColumnTopBottomInset();
    double top = inset;
    qint64 location = 0;
    while ((location < text.length() || m_paragraphs.empty()) && top < kTallestPage) {
        const qint64 end = QBNoteTypesetter::endOfPiece(text.string(), location);
        const NSRange range = {location, end - location};
        m_layouts.push_back(typesetter.layoutOfPiece(text, range));
        const ParagraphLayout *layout = m_layouts.back().get();
        m_paragraphs.push_back(
            {.range = range, .origin = {m_padding, top}, .height = layout->height(), .layout = layout});
        top += layout->height();
        location = end;
    }
    m_height = std::min(std::ceil(top + inset), kTallestPage);
}

NSImage NotePageRenderer::image(double scale) const
{
    const NSColor paper = m_themeManager->backgroundTextColor().value_or(NSColor::whiteColor());
    GraphicsContext context({m_width, m_height}, scale, paper);
    const NotePainter painter(m_storage.attributedString(), *m_themeManager, m_padding, m_width - 2 * m_padding);
    painter.drawBackground(context, m_paragraphs);
    painter.drawText(context, m_paragraphs);
    return context.image();
}

} // namespace quib

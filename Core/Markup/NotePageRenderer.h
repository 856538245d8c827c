#pragma once

#include "PlacedParagraph.h"

#include <Graphics/NSImage.h>

#include <memory>
#include <vector>

class QBNotesTextStorage;
class QBNotesTextThemeManager;

namespace quib {

/// Draws a styled text as a page: its paragraphs, its attachments, and what lies under the text (blocks of code, marks,
/// tags, the bars of quotes). For pictures of notes without a window. Lives for one page, on the queue of the text.
/// Units: points.
class NotePageRenderer
{
public:
    /// A page ends here, whatever the text goes on with.
    static constexpr double kTallestPage = 16'000;

    NotePageRenderer(const QBNotesTextStorage &storage, std::shared_ptr<QBNotesTextThemeManager> themeManager,
                     double width);
    ~NotePageRenderer();
    NotePageRenderer(const NotePageRenderer &) = delete;
    NotePageRenderer &operator=(const NotePageRenderer &) = delete;

    [[nodiscard]] double height() const { return m_height; }
    /// Shape: as many pixels to a point as the scale says.
    [[nodiscard]] NSImage image(double scale) const;

private:
    void layOut();

    const QBNotesTextStorage &m_storage;
    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
    double m_width;
    double m_padding = 0;
    double m_height = 0;
    std::vector<PlacedParagraph> m_paragraphs;
    std::vector<std::unique_ptr<ParagraphLayout>> m_layouts;
};

} // namespace quib

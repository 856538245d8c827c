#pragma once

#include <Foundation/NSRange.h>
#include <Text/NSAttributedString.h>
#include <Text/NSParagraphStyle.h>

#include <QCache>
#include <QSizeF>
#include <QString>

#include <memory>

class QBNotesTextThemeManager;

namespace quib {

/// The width of a stretch of text set in one line: attachments by their size, text by its font and kern. A tab ends at
/// the next multiple of the theme's tab length.
/// Units: points; boxWidth is the most that is measured.
[[nodiscard]] double widthOfText(const NSAttributedString &text, NSRange range,
                                 const QBNotesTextThemeManager &themeManager, double boxWidth);

/// The layout of paragraphs whose marker hangs to the left of the text's column, kept by the text in front of the
/// marker. So all lines of one indentation stand alike, even where their markers differ in width: the first one
/// measured decides. Belongs to one styler; holds for one state of the theme and starts anew with the next.
class MarkerParagraphStyles
{
public:
    /// The style of a line, from its own indentation or the cache.
    [[nodiscard]] std::shared_ptr<NSParagraphStyle>
    attachmentParagraphStyleForAttributeRange(NSRange attributeRange, const NSAttributedString &attributedString,
                                              NSRange paragraphRange, const QBNotesTextThemeManager &themeManager);
    /// The theme's tab stops, each as far to the left as the marker is wide: what stands behind a marker at a tab stop
    /// is in step with what has no marker.
    [[nodiscard]] static QList<NSTextTab> tabStopsForAttachmentRect(QSizeF rect,
                                                                    const QBNotesTextThemeManager &themeManager);
    void clear()
    {
        m_styles.clear();
        m_lastStyle.reset();
    }

private:
    static constexpr int kCachedStyles = 256;
    /// Longer ones seldom come twice; nor is kept what is not all blanks and tabs, since its width hangs on more than
    /// its text. Units: UTF-16 units.
    static constexpr qint64 kLongestKeptIndentation = 256;

    QCache<QString, std::shared_ptr<NSParagraphStyle>> m_styles{kCachedStyles};
    /// The one asked for last, mostly that of the next line too; null for none.
    std::shared_ptr<NSParagraphStyle> m_lastStyle;
    QString m_lastIndentation;
    const QBNotesTextThemeManager *m_themeManager = nullptr; ///< compared only
    quint64 m_cacheGeneration = 0;
};

} // namespace quib

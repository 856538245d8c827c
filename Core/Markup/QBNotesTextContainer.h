#pragma once

#include <QSizeF>

#include <memory>

class QBNotesTextThemeManager;

/// The column that a note's text is set in. A value but for the theme, which is shared. Units: points.
class QBNotesTextContainer
{
public:
    QBNotesTextContainer(QSizeF size, std::shared_ptr<QBNotesTextThemeManager> themeManager);

    [[nodiscard]] QSizeF size() const { return m_size; }
    void setSize(QSizeF size) { m_size = size; }
    /// What stays free on either side: the theme's inset, or more where the column would become wider than it may.
    [[nodiscard]] double lineFragmentPadding() const;
    /// The width that is left to the lines, never below 0.
    [[nodiscard]] double lineWidth() const;

private:
    QSizeF m_size;
    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
};

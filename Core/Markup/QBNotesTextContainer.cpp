#include "QBNotesTextContainer.h"

#include <Themes/QBNotesTextThemeManager.h>

#include <algorithm>

QBNotesTextContainer::QBNotesTextContainer(QSizeF size, std::shared_ptr<QBNotesTextThemeManager> themeManager)
    : m_size(size)
    , m_themeManager(std::move(themeManager))
{
}

double QBNotesTextContainer::lineFragmentPadding() const
{
    const double inset = m_themeManager->textColumnLeftRightInset();
    return std::max(inset, (m_size.width() - m_themeManager->textColumnMaxSize()) / 2);
}

double QBNotesTextContainer::lineWidth() const
{
    return std::max(0.0, m_size.width() - 2 * lineFragmentPadding());
}

#include "ThemesPage.h"

#include "PreferencesForm.h"
#include "ThemeGallery.h"

#include <Editor/EditorSymbol.h>
#include <Foundation/DispatchQueue.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <QButtonGroup>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Around and between the two buttons. Units: points.
constexpr int kButtonMargins = 64;

QString nameOrDefault(const QString &name, bool isForDark)
{
    if (QBNotesThemesManager::availableThemesNames().contains(name)) {
        return name;
    }
    // What there is no theme of is drawn in the default one; nothing stands for the desktop's own choice.
    return isForDark && name.isNull() ? u"Dark Graphite"_s : QBNotesThemesManager::defaultThemeName();
}

} // namespace

ThemesPage::ThemesPage(QWidget *parent)
    : QWidget(parent)
    , m_light(new QPushButton(this))
    , m_dark(new QPushButton(this))
    , m_explanation(makeHelpLabel({}, this))
    , m_gallery(new ThemeGallery(this))
{
    setObjectName(u"preferencesPage"_s);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(20, 24, 20, 0);
    rows->setSpacing(10);
    m_top = new QHBoxLayout;
    m_top->setContentsMargins(8, 0, 8, 0);
    m_top->setSpacing(8);
    setMinimumWidth(1); // the window may be narrower than both buttons side by side
    auto *group = new QButtonGroup(this);
    for (QPushButton *button : {m_light, m_dark}) {
        button->setCheckable(true);
        button->setObjectName(u"preferencesSegment"_s);
        button->setIcon(editorSymbol(button == m_light ? u"appearance-light"_s : u"appearance-dark"_s));
        group->addButton(button);
        m_top->addWidget(button, 1);
    }
    m_light->setAccessibleDescription(tr("Choose the theme for a light desktop"));
    m_dark->setAccessibleDescription(tr("Choose the theme for a dark desktop"));
    rows->addLayout(m_top);
    m_explanation->setContentsMargins(10, 0, 10, 2);
    rows->addWidget(m_explanation);
    rows->addWidget(m_gallery, 1);
    connect(group, &QButtonGroup::buttonToggled, this, [this] { refresh(); });
    connect(m_gallery, &ThemeGallery::themeWasChosen, this, &ThemesPage::choose);
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        return;
    }
    const auto follow = [this, preferences](const QString &keyPath, void (ThemesPage::*changed)()) {
        m_observations.push_back(
            preferences->addObserver(keyPath, [self = QPointer(this), changed](const QString & /*keyPath*/) {
                const auto tell = [self, changed] {
                    if (self) {
                        (self->*changed)();
                    }
                };
                DispatchQueue::main()->isCurrent() ? tell() : DispatchQueue::main()->async(tell);
            }));
    };
    for (const auto &keyPath : {u"appThemeName"_s, u"appDarkThemeName"_s, u"currentAppThemeName"_s}) {
        follow(keyPath, &ThemesPage::refresh);
    }
    for (const auto &keyPath : {u"fontThemeName"_s, u"markdownCompatibilityMode"_s}) {
        follow(keyPath, &ThemesPage::fontsDidChange);
    }
    setChoosesForDark(preferences->hasDarkAppearance());
}

bool ThemesPage::choosesForDark() const
{
    return m_dark->isChecked();
}

void ThemesPage::setChoosesForDark(bool isForDark)
{
    (isForDark ? m_dark : m_light)->setChecked(true);
}

void ThemesPage::showEvent(QShowEvent *event)
{
    refresh();
    QWidget::showEvent(event);
}

void ThemesPage::changeEvent(QEvent *event)
{
    // The desktop's appearance has changed: no preference has, but another theme is in effect.
    if ((event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) && isVisible()) {
        refresh();
    }
    QWidget::changeEvent(event);
}

void ThemesPage::fontsDidChange()
{
    m_gallery->themes().forgetPictures();
}

void ThemesPage::placeButtons()
{
    const int wanted = 2 * std::max(m_light->sizeHint().width(), m_dark->sizeHint().width()) + kButtonMargins;
    m_top->setDirection(wanted <= width() ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void ThemesPage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeButtons();
}

void ThemesPage::refresh()
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const QString light = nameOrDefault(preferences->appThemeName(), /*isForDark=*/false);
    const QString dark = nameOrDefault(preferences->appDarkThemeName(), /*isForDark=*/true);
    m_light->setText(tr("Light desktop: %1").arg(light));
    m_dark->setText(tr("Dark desktop: %1").arg(dark));
    m_explanation->setText(preferences->hasDarkAppearance()
                               ? tr("Quib follows the desktop, which is dark at the moment.")
                               : tr("Quib follows the desktop, which is light at the moment."));
    m_gallery->themes().setChosen(light, dark);
    m_gallery->showChosen(choosesForDark() ? dark : light);
}

void ThemesPage::choose(const QString &name)
{
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const bool isForDark = choosesForDark();
    if (isForDark == preferences->hasDarkAppearance()) {
        preferences->setCurrentAppThemeName(name); // which tells those who draw with it
    } else if (isForDark) {
        preferences->setAppDarkThemeName(name);
    } else {
        preferences->setAppThemeName(name);
    }
}

} // namespace quib

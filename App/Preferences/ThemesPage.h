#pragma once

#include <Foundation/KeyedObservers.h>

#include <QWidget>

#include <vector>

QT_BEGIN_NAMESPACE
class QAbstractButton;
class QHBoxLayout;
class QLabel;
class QPushButton;
QT_END_NAMESPACE

namespace quib {

class ThemeGallery;

/// The themes, and which of them stand for the light and for the dark desktop. Owned by the window; main queue.
class ThemesPage final : public QWidget
{
    Q_OBJECT

public:
    explicit ThemesPage(QWidget *parent = nullptr);

    [[nodiscard]] ThemeGallery &gallery() { return *m_gallery; }
    /// The appearance of the desktop that a theme is chosen for.
    [[nodiscard]] bool choosesForDark() const;
    void setChoosesForDark(bool isForDark);

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// Side by side, or one below the other.
    void placeButtons();
    void refresh();
    void fontsDidChange();
    void choose(const QString &name);

    QHBoxLayout *m_top = nullptr;
    QPushButton *m_light;
    QPushButton *m_dark;
    QLabel *m_explanation;
    ThemeGallery *m_gallery;
    std::vector<ObservationToken> m_observations;
};

} // namespace quib

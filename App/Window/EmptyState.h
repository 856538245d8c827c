#pragma once

#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
class QSpacerItem;
QT_END_NAMESPACE

namespace quib {

/// What stands where a note would: the animal of the house, a line that says what is the matter, and what to do about
/// it. Drawn in the theme's colours. Owned by the editor's column; main queue.
class EmptyState final : public QWidget
{
    Q_OBJECT

public:
    explicit EmptyState(QWidget *parent = nullptr);

    /// Shape:   without the name of a button there is none.
    void show(const QString &title, const QString &text, const QString &button);

Q_SIGNALS:
    void buttonWasPressed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// The text gets the width that there is, and the picture goes where there is no room for it.
    void placeText();

    QWidget *m_picture;
    QLabel *m_title;
    QLabel *m_text;
    QSpacerItem *m_pictureGap;
    QSpacerItem *m_buttonGap;
    QPushButton *m_button;
};

} // namespace quib

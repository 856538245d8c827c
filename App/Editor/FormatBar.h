#pragma once

#include <QWidget>

#include <vector>

QT_BEGIN_NAMESPACE
class QAction;
class QHBoxLayout;
class QMenu;
class QToolButton;
QT_END_NAMESPACE

namespace quib {

/// The row of buttons below a note, one for each command of formatting. Buttons for which there is no room stand in a
/// menu at its end. Tab, or the arrows, lead from one to the next, and Escape back to the text. Owned by the editor's
/// pane, whose actions it shows; main queue.
class FormatBar final : public QWidget
{
    Q_OBJECT

public:
    explicit FormatBar(QWidget *parent = nullptr);

    /// A button for a command; with a name, for tests and style sheets, like the command's.
    QToolButton *addButton(QAction *action);
    /// A button that opens a list of commands.
    QToolButton *addMenuButton(const QString &name, const QString &symbol, const QString &text,
                               const QList<QAction *> &actions);
    void addSeparator();
    /// What is added next stands at the far end, and always has room.
    void addStretch();
    /// Gives the keyboard to the first button that can be pressed. False where there is none.
    bool focusFirstButton();

    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void didLeave();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Entry
    {
        QToolButton *button = nullptr;
        int spaceBefore = 0;
        bool isAtEnd = false;
    };

    QToolButton *makeButton(const QString &name);
    void placeButtons();
    void fillMore();

    QHBoxLayout *m_layout = nullptr;
    std::vector<Entry> m_entries;
    QToolButton *m_more = nullptr;
    QMenu *m_moreMenu = nullptr;
    int m_spaceBefore = 0;
};

} // namespace quib

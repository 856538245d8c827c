#pragma once

#include "CommandGroup.h"

#include <QWidget>

#include <functional>

QT_BEGIN_NAMESPACE
class QListWidget;
class QStackedWidget;
QT_END_NAMESPACE

namespace quib {

/// The window of preferences: pages beside a list of them. What is changed holds at once; there is nothing to confirm,
/// and nothing that keeps other windows waiting. One a program, shown by show(); owned by the window that it was first
/// shown for. Main queue.
class PreferencesWindow final : public QWidget
{
    Q_OBJECT

public:
    /// In the order in which they are offered.
    enum class Page : int
    {
        General = 0,
        Editor = 1,
        Themes = 2,
        Automation = 3,
        Shortcuts = 4,
        About = 5,
    };
    static constexpr int kPages = 6;

    /// What the pages ask of the program.
    struct Host
    {
        /// The commands that the overview of shortcuts shows; asked each time that it is shown.
        std::function<QList<CommandGroup>()> commandGroups;
    };

    PreferencesWindow(Host host, QWidget *owner);
    /// Shows a page and brings the window to the front; makes it at the first asking.
    static PreferencesWindow &show(QWidget &owner, Page page, const Host &host);

    [[nodiscard]] Page page() const;
    void setPage(Page page);
    [[nodiscard]] QWidget *pageWidget(Page page) const;

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makePages();
    void applyStyle();
    /// Where there is no room for the names of the pages their symbols stand alone.
    void placeNames();

    Host m_host;
    QListWidget *m_list = nullptr;
    QStackedWidget *m_pages = nullptr;
};

} // namespace quib

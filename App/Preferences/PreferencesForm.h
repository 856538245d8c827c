#pragma once

#include <Foundation/KeyedObservers.h>

#include <QHash>
#include <QList>
#include <QScrollArea>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <utility>
#include <vector>

QT_BEGIN_NAMESPACE
class QComboBox;
class QLabel;
class QSlider;
class QVBoxLayout;
QT_END_NAMESPACE

namespace quib {

class Switch;

/// A page of preferences: titled groups of rows, each with a text, what it means, and its control at the far end. The
/// controls show what the preferences hold, and follow when somebody else changes them. Owned by the window; main
/// queue.
class PreferencesForm : public QScrollArea
{
    Q_OBJECT

public:
    explicit PreferencesForm(QWidget *parent = nullptr);

    // Groups and rows, from the top

    /// Rows that follow stand below this title.
    void addGroup(const QString &title);
    /// A control with its text, which becomes its name for those who cannot see it. Gives the row.
    QWidget *addRow(const QString &text, const QString &help, QWidget *control);
    /// Something as wide as the group.
    void addWide(QWidget *widget);
    /// Shows or hides a row with the line above it.
    void setRowVisible(QWidget *row, bool isVisible);
    /// A paragraph in the group.
    QLabel *addParagraph(const QString &text);

    // Controls of preferences. keyPaths are the accessors whose changes the control follows.

    Switch *addSwitch(const QString &text, const QString &help, const QStringList &keyPaths, std::function<bool()> get,
                      std::function<void(bool)> set);
    /// Shape: the text of each choice and what it stands for.
    QComboBox *addChoice(const QString &text, const QString &help, const QStringList &keyPaths,
                         const QList<std::pair<QString, QVariant>> &choices, std::function<QVariant()> get,
                         std::function<void(const QVariant &)> set);
    /// A slider with its value beside it. Shape: whole steps; show makes a text of one.
    QSlider *addSlider(const QString &text, const QString &help, const QStringList &keyPaths,
                       std::pair<int, int> bounds, std::function<int()> get, std::function<void(int)> set,
                       std::function<QString(int)> show);

    /// Runs something now and whenever one of the accessors changes.
    void follow(const QStringList &keyPaths, const std::function<void()> &update);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QVBoxLayout *m_rows;
    QVBoxLayout *m_group = nullptr;
    QHash<QWidget *, QWidget *> m_lines; ///< of each row but the first of its group, the line above it
    std::vector<ObservationToken> m_observations;
};

/// A label that tells more about something: paler, smaller, as many lines as it needs.
[[nodiscard]] QLabel *makeHelpLabel(const QString &text, QWidget *parent);

} // namespace quib

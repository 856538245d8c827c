#pragma once

#include <QFrame>
#include <QString>

QT_BEGIN_NAMESPACE
class QListView;
QT_END_NAMESPACE

namespace quib {

/// A small window over the others in which a tag's symbol is chosen: arrows and Return, or a click; Escape leaves it as
/// it is. Deletes itself when it closes; main queue.
class SymbolPicker final : public QFrame
{
    Q_OBJECT

public:
    /// chosen: the symbol that the tag has by choice; empty where its name decides. shown: the one that it has.
    SymbolPicker(const QString &chosen, const QString &shown, QWidget *parent);

    /// Opens below a point, or above it where there is no room.
    void open(const QPoint &globalPosition);
    /// What a symbol shows, in words.
    [[nodiscard]] static QString nameOfSymbol(const QString &symbol);

Q_SIGNALS:
    /// Empty for the one that the tag's name gives.
    void symbolWasChosen(const QString &symbol);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void choose(const QString &symbol);

    QListView *m_list;
};

} // namespace quib

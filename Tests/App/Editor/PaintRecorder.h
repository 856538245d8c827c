#pragma once

#include "EditorFixture.h"

#include <QCoreApplication>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>

#include <utility>

namespace quib::tests {

/// Keeps which areas of a text view are painted.
class PaintRecorder : public QObject
{
public:
    explicit PaintRecorder(EditorFixture &editor)
        : m_viewport(editor.view().viewport())
    {
        settle();
        m_viewport->installEventFilter(this);
    }
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            m_painted += static_cast<QPaintEvent *>(event)->region();
        }
        return false;
    }
    /// What was painted since the last call.
    QRegion take()
    {
        settle();
        return std::exchange(m_painted, QRegion());
    }

private:
    static void settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    QWidget *m_viewport;
    QRegion m_painted;
};

} // namespace quib::tests

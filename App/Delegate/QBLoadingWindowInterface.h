#pragma once

#include <QString>

#include <memory>

class NSProgress;

/// A window that asks for patience. Made by QBApplicationInterface; destroying it orders it out. Main queue.
class QBLoadingWindowInterface
{
public:
    QBLoadingWindowInterface() = default;
    virtual ~QBLoadingWindowInterface() = default;
    QBLoadingWindowInterface(const QBLoadingWindowInterface &) = delete;
    QBLoadingWindowInterface &operator=(const QBLoadingWindowInterface &) = delete;

    virtual void setTitle(const QString &title) = 0;
    virtual void setMessage(const QString &message) = 0;
    /// The progress to follow; it counts on other threads.
    virtual void setProgress(const std::shared_ptr<NSProgress> &progress) = 0;
    virtual void center() = 0;
    /// Shows the window and keeps the others from being used.
    virtual void beginModalSession() = 0;
    virtual void endModalSession() = 0;
    virtual void orderOut() = 0;
};

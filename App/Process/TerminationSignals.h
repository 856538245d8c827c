#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QSocketNotifier;
QT_END_NAMESPACE

namespace quib {

/// Turns the signals that ask a process to end (SIGTERM, SIGINT, SIGHUP) into a call on the main queue, so that it ends
/// in order. A second signal that comes before the end ends the process at once. One for the process; main queue.
class TerminationSignals
{
public:
    explicit TerminationSignals(std::function<void()> terminate);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals &) = delete;
    TerminationSignals &operator=(const TerminationSignals &) = delete;

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace quib

#include "TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace quib {

namespace {

constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};
int s_writeEnd = -1;
int s_readEnd = -1;

void noteSignal(int number)
{
    // Whatever else happens, the next one ends the process.
    std::signal(number, SIG_DFL);
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(s_writeEnd, &byte, 1);
}

} // namespace

TerminationSignals::TerminationSignals(std::function<void()> terminate)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals then end the process as they always do
    }
    s_readEnd = ends[0];
    s_writeEnd = ends[1];
    m_notifier = std::make_unique<QSocketNotifier>(s_readEnd, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
                     [terminate = std::move(terminate)] {
                         char byte = 0;
                         [[maybe_unused]] const auto read = ::read(s_readEnd, &byte, 1);
                         terminate();
                     });
    for (const int number : kSignals) {
        struct sigaction action = {};
        action.sa_handler = noteSignal;
        action.sa_flags = SA_RESTART;
        ::sigemptyset(&action.sa_mask);
        ::sigaction(number, &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier) {
        return;
    }
    for (const int number : kSignals) {
        std::signal(number, SIG_DFL);
    }
    m_notifier.reset();
    ::close(s_readEnd);
    ::close(s_writeEnd);
}

} // namespace quib

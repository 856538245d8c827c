#include "TransferLoop.h"

#include <Foundation/Assert.h>
#include <Foundation/DispatchQueue.h>

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <vector>

TransferLoop::TransferLoop()
{
    QUIB_ASSERT(quib::DispatchQueue::main()->isCurrent());
    [[maybe_unused]] static const CURLcode s_isReady = curl_global_init(CURL_GLOBAL_DEFAULT);
    QUIB_ASSERT(s_isReady == CURLE_OK);
    m_multi = curl_multi_init();
    m_timer = new QTimer;
    m_timer->setSingleShot(true);
    QObject::connect(m_timer, &QTimer::timeout, m_timer, [this] { turn(CURL_SOCKET_TIMEOUT, 0); });
    curl_multi_setopt(m_multi, CURLMOPT_SOCKETFUNCTION, &TransferLoop::watchSocket);
    curl_multi_setopt(m_multi, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(m_multi, CURLMOPT_TIMERFUNCTION, &TransferLoop::setTimer);
    curl_multi_setopt(m_multi, CURLMOPT_TIMERDATA, this);
}

TransferLoop::~TransferLoop()
{
    QUIB_ASSERT(m_states.empty());
    curl_multi_cleanup(m_multi);
    while (!m_watches.empty()) {
        unwatch(m_watches.begin()->first);
    }
    m_timer->stop();
    m_timer->deleteLater();
}

void TransferLoop::add(CURL *easy, const std::shared_ptr<Transfer::State> &state)
{
    m_states.emplace(easy, state);
    curl_multi_add_handle(m_multi, easy);
}

void TransferLoop::remove(CURL *easy)
{
    curl_multi_remove_handle(m_multi, easy);
    m_states.erase(easy);
}

int TransferLoop::watchSocket(CURL *, curl_socket_t socket, int what, void *self, void *)
{
    auto &loop = *static_cast<TransferLoop *>(self);
    if (what == CURL_POLL_REMOVE) {
        loop.unwatch(socket);
        return 0;
    }
    Watch &watch = loop.m_watches[socket];
    const auto watchFor = [&loop, socket](QSocketNotifier *&notifier, QSocketNotifier::Type type, int event,
                                          bool isWanted) {
        if (notifier == nullptr && isWanted) {
            notifier = new QSocketNotifier(socket, type);
            QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                             [&loop, socket, event] { loop.turn(socket, event); });
        }
        if (notifier != nullptr) {
            notifier->setEnabled(isWanted);
        }
    };
    watchFor(watch.reading, QSocketNotifier::Read, CURL_CSELECT_IN, (what & CURL_POLL_IN) != 0);
    watchFor(watch.writing, QSocketNotifier::Write, CURL_CSELECT_OUT, (what & CURL_POLL_OUT) != 0);
    return 0;
}

void TransferLoop::unwatch(curl_socket_t socket)
{
    const auto found = m_watches.find(socket);
    if (found == m_watches.end()) {
        return;
    }
    for (QSocketNotifier *const notifier : {found->second.reading, found->second.writing}) {
        if (notifier != nullptr) {
            // The number of a closed socket is soon another's.
            notifier->setEnabled(false);
            notifier->deleteLater();
        }
    }
    m_watches.erase(found);
}

int TransferLoop::setTimer(CURLM *, long milliseconds, void *self)
{
    QTimer *const timer = static_cast<TransferLoop *>(self)->m_timer;
    if (milliseconds < 0) {
        timer->stop();
    } else {
        timer->start(static_cast<int>(std::min<long>(milliseconds, 60'000)));
    }
    return 0;
}

void TransferLoop::turn(curl_socket_t socket, int events)
{
    int running = 0;
    curl_multi_socket_action(m_multi, socket, events, &running);
    int left = 0;
    while (const CURLMsg *const message = curl_multi_info_read(m_multi, &left)) {
        if (message->msg == CURLMSG_DONE) {
            Transfer::end(*m_states.at(message->easy_handle), message->data.result);
        }
    }
    std::vector<std::shared_ptr<Transfer::State>> states;
    states.reserve(m_states.size());
    for (const auto &[easy, state] : m_states) {
        states.push_back(state);
    }
    for (const auto &state : states) {
        Transfer::deliver(state);
    }
}

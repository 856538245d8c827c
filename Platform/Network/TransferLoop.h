#pragma once

#include "Transfer.h"

#include <curl/curl.h>

#include <memory>
#include <unordered_map>

class QSocketNotifier;
class QTimer;

/// Drives libcurl's transfers from the event loop of the main queue: notifiers watch its sockets, a timer its times.
/// Transfers of one loop share connections that are still open, and no other loop's. Main queue.
class TransferLoop
{
public:
    TransferLoop();
    /// Closes all connections. No transfer may be left.
    ~TransferLoop();
    TransferLoop(const TransferLoop &) = delete;
    TransferLoop &operator=(const TransferLoop &) = delete;

private:
    friend class Transfer;

    /// The notifiers of a socket. Let go of from within their own signals, so they delete themselves later.
    struct Watch
    {
        QSocketNotifier *reading = nullptr;
        QSocketNotifier *writing = nullptr;
    };

    void add(CURL *easy, const std::shared_ptr<Transfer::State> &state);
    void remove(CURL *easy);

    static int watchSocket(CURL *easy, curl_socket_t socket, int what, void *self, void *socketData);
    static int setTimer(CURLM *multi, long milliseconds, void *self);
    void unwatch(curl_socket_t socket);
    /// Lets libcurl go on, then tells the transfers' news. Nothing of the loop may be touched behind a call: one of
    /// those who are told may have let go of it.
    void turn(curl_socket_t socket, int events);

    CURLM *m_multi;
    QTimer *m_timer; ///< deletes itself later: it is let go of from within its own signal
    std::unordered_map<curl_socket_t, Watch> m_watches;
    std::unordered_map<CURL *, std::shared_ptr<Transfer::State>> m_states; ///< of the transfers that there are
};

#pragma once

#include "NSHTTPURLResponse.h"

#include <Foundation/NSError.h>

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <curl/curl.h>

#include <functional>
#include <memory>

class TransferLoop;

/// What a transfer tells. Called on the main queue, never from within the transfer's constructor.
struct TransferHandlers
{
    /// The lines before the body, once; those of interim answers are not told.
    std::function<void(int statusCode, const QList<NSHTTPURLResponse::Header> &headers)> didReceiveHead;
    /// The next piece of the body, unpacked.
    std::function<void(const QByteArray &data)> didReceiveData;
    /// The end, once. No error for an answer that is whole, whatever its status.
    std::function<void(const NSError &error)> didEnd;
};

/// One request over http or https and its answer, through libcurl; a redirect is an answer like any other. Letting go
/// of it ends it, and closes its connection unless the answer was whole. What a server may make it hold is bounded: the
/// heads by kMaximumHead, the body by what the owner allows. Main queue.
class Transfer
{
public:
    /// The most that the lines of all heads may take, interim answers and trailers included. Units: bytes.
    static constexpr qsizetype kMaximumHead = 256 * 1024;

    /// Begins at the loop's next turn. The loop must outlive the transfer.
    /// @param maximumBodySize Units: bytes, unpacked.
    /// Errors: told by didEnd, of kNSURLErrorDomain: BadServerResponse for a head that is too large,
    ///         DataLengthExceedsMaximum for a body that is.
    Transfer(TransferLoop &loop, const QUrl &url, qint64 maximumBodySize, TransferHandlers handlers);
    ~Transfer();
    Transfer(const Transfer &) = delete;
    Transfer &operator=(const Transfer &) = delete;

private:
    friend class TransferLoop;
    struct State;

    static size_t takeHeadLine(char *bytes, size_t size, size_t count, void *data);
    static size_t takeBody(char *bytes, size_t size, size_t count, void *data);
    /// libcurl has done with it.
    static void end(State &state, CURLcode code);
    /// Tells what has gathered. A handler may let go of the transfer, and of the loop with it: neither is touched
    /// after.
    static void deliver(const std::shared_ptr<State> &state);

    TransferLoop &m_loop;
    std::shared_ptr<State> m_state;
};

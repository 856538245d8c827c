#include "Transfer.h"

#include "NSURLSession.h"
#include "TransferLoop.h"

#include <QLocale>

#include <deque>
#include <optional>
#include <utility>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

/// How large a piece of a body is told at a time. Units: bytes.
constexpr qsizetype kPiece = 256 * 1024;

NSURLErrorCode codeOf(CURLcode code)
{
    switch (code) {
    case CURLE_URL_MALFORMAT:
        return NSURLErrorCode::BadURL;
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
    case CURLE_HTTP2:
    case CURLE_HTTP2_STREAM:
        return NSURLErrorCode::BadServerResponse;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return NSURLErrorCode::CannotFindHost;
    case CURLE_COULDNT_CONNECT:
        return NSURLErrorCode::CannotConnectToHost;
    case CURLE_OPERATION_TIMEDOUT:
        return NSURLErrorCode::TimedOut;
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return NSURLErrorCode::NetworkConnectionLost;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
        return NSURLErrorCode::SecureConnectionFailed;
    default:
        return NSURLErrorCode::Unknown;
    }
}

/// The languages that a page may be in, the user's first, as a header line.
QByteArray acceptedLanguages()
{
    const QString language = QLocale().bcp47Name();
    if (language.isEmpty() || language == "C"_L1 || language == "en"_L1) {
        return "Accept-Language: en,*;q=0.5";
    }
    return "Accept-Language: " + language.toLatin1() + ",en;q=0.8,*;q=0.5";
}

} // namespace

/// What libcurl's callbacks fill and deliver() empties. It outlives the transfer while its news are told.
struct Transfer::State
{
    struct Head
    {
        int statusCode;
        QList<NSHTTPURLResponse::Header> headers;
    };
    using News = std::variant<Head, QByteArray, NSError>;

    CURL *easy = nullptr;
    curl_slist *requestHeaders = nullptr;
    TransferHandlers handlers;
    qint64 maximumBodySize = 0;
    bool isOpen = true; ///< the transfer is still there
    std::deque<News> news;

    QList<NSHTTPURLResponse::Header> headers; ///< of the head that is being read
    qsizetype headBytes = 0;                  ///< of all heads
    qint64 bodyBytes = 0;
    bool hasHead = false; ///< told, or among the news
    /// Why a callback refused to go on.
    std::optional<NSURLErrorCode> refusal;
};

Transfer::Transfer(TransferLoop &loop, const QUrl &url, qint64 maximumBodySize, TransferHandlers handlers)
    : m_loop(loop)
    , m_state(std::make_shared<State>())
{
    State &state = *m_state;
    state.handlers = std::move(handlers);
    state.maximumBodySize = maximumBodySize;
    state.easy = curl_easy_init();
    CURL *const easy = state.easy;
    curl_easy_setopt(easy, CURLOPT_URL, url.toEncoded(QUrl::RemoveFragment).constData());
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "Quib");
    // Whatever libcurl can unpack; it hands out the pieces one by one as they are unpacked.
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // Letting go must not wait for a name server: the thread that asks it ends by itself.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    state.requestHeaders = curl_slist_append(nullptr, acceptedLanguages().constData());
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, state.requestHeaders);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &Transfer::takeHeadLine);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, &state);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Transfer::takeBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &state);
    m_loop.add(easy, m_state);
}

Transfer::~Transfer()
{
    m_loop.remove(m_state->easy);
    m_state->isOpen = false;
    curl_easy_cleanup(m_state->easy);
    curl_slist_free_all(m_state->requestHeaders);
}

size_t Transfer::takeHeadLine(char *bytes, size_t size, size_t count, void *data)
{
    State &state = *static_cast<State *>(data);
    const QByteArray line(bytes, static_cast<qsizetype>(size * count));
    state.headBytes += line.size();
    if (state.headBytes > kMaximumHead) {
        state.refusal = NSURLErrorCode::BadServerResponse;
        return 0;
    }
    if (state.hasHead) {
        // A trailer.
        return size * count;
    }
    const QByteArray text = line.trimmed();
    if (text.isEmpty()) {
        // The end of a head. An interim one is followed by another.
        long status = 0;
        curl_easy_getinfo(state.easy, CURLINFO_RESPONSE_CODE, &status);
        if (status >= 200) {
            state.hasHead = true;
            state.news.emplace_back(State::Head{static_cast<int>(status), std::exchange(state.headers, {})});
        }
        state.headers.clear();
    } else if ((line.front() == ' ' || line.front() == '\t') && !state.headers.isEmpty()) {
        // The line before goes on.
        state.headers.last().second += ' ' + text;
    } else if (const qsizetype colon = text.indexOf(':'); colon > 0) {
        state.headers.emplace_back(text.first(colon).trimmed(), text.sliced(colon + 1).trimmed());
    }
    return size * count;
}

size_t Transfer::takeBody(char *bytes, size_t size, size_t count, void *data)
{
    State &state = *static_cast<State *>(data);
    const QByteArray piece(bytes, static_cast<qsizetype>(size * count));
    state.bodyBytes += piece.size();
    if (state.bodyBytes > state.maximumBodySize) {
        state.refusal = NSURLErrorCode::DataLengthExceedsMaximum;
        return CURL_WRITEFUNC_ERROR;
    }
    QByteArray *const last = state.news.empty() ? nullptr : std::get_if<QByteArray>(&state.news.back());
    if (last != nullptr && last->size() + piece.size() <= kPiece) {
        last->append(piece);
    } else {
        state.news.emplace_back(piece);
    }
    return size * count;
}

void Transfer::end(State &state, CURLcode code)
{
    NSError error;
    if (state.refusal) {
        const QString message = *state.refusal == NSURLErrorCode::BadServerResponse
                                    ? u"the server's answer does not come to its body"_s
                                    : u"the answer is too large"_s;
        error = NSError(kNSURLErrorDomain, static_cast<qint64>(*state.refusal), message);
    } else if (code != CURLE_OK) {
        error = NSError(kNSURLErrorDomain, static_cast<qint64>(codeOf(code)),
                        QString::fromUtf8(curl_easy_strerror(code)), code);
    }
    state.news.emplace_back(error);
}

void Transfer::deliver(const std::shared_ptr<State> &state)
{
    while (state->isOpen && !state->news.empty()) {
        const State::News news = std::move(state->news.front());
        state->news.pop_front();
        if (const auto *const head = std::get_if<State::Head>(&news)) {
            state->handlers.didReceiveHead(head->statusCode, head->headers);
        } else if (const auto *const data = std::get_if<QByteArray>(&news)) {
            state->handlers.didReceiveData(*data);
        } else {
            state->handlers.didEnd(std::get<NSError>(news));
        }
    }
}

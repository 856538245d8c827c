#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QHash>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUrl>

#include <functional>

namespace quib::tests {

/// Turns the event loop until a condition holds; false when that takes so long that it never will.
inline bool runUntil(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(30'000);
    // Wakes the loop where nothing else happens, so that the deadline is looked at.
    QTimer tick;
    tick.start(1000);
    while (!condition() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return condition();
}

/// A web server on the loopback interface, as well or badly behaved as a test wants. On the test's own event loop.
class LoopbackServer
{
public:
    /// Answers one request; the socket is closed behind it by close() only.
    using Handler = std::function<void(QTcpSocket &socket)>;

    LoopbackServer()
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { accept(); });
    }

    [[nodiscard]] QUrl url(const QString &path) const
    {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
    }
    /// What was asked for so far, as "GET /path".
    [[nodiscard]] const QList<QByteArray> &requests() const { return m_requests; }
    [[nodiscard]] const QByteArray &lastHeaders() const { return m_lastHeaders; }
    /// How many connections the other side has ended.
    [[nodiscard]] int disconnections() const { return m_disconnections; }
    [[nodiscard]] qint64 bytesWritten() const { return m_bytesWritten; }

    void on(const QByteArray &path, const Handler &handler) { m_handlers.insert(path, handler); }
    /// Answers with these very bytes, then closes.
    void answer(const QByteArray &path, const QByteArray &bytes)
    {
        on(path, [bytes](QTcpSocket &socket) {
            socket.write(bytes);
            socket.disconnectFromHost();
        });
    }
    void serve(const QByteArray &path, const QByteArray &body, const QByteArray &type = "text/html",
               const QByteArray &status = "200 OK", const QByteArray &moreHeaders = {})
    {
        answer(path, "HTTP/1.1 " + status + "\r\nContent-Type: " + type + "\r\nContent-Length: " +
                         QByteArray::number(body.size()) + "\r\nConnection: close\r\n" + moreHeaders + "\r\n" + body);
    }
    void redirect(const QByteArray &path, const QByteArray &to, const QByteArray &status = "302 Found")
    {
        serve(path, "moved", "text/plain", status, "Location: " + to + "\r\n");
    }
    /// The bytes, then filler again and again, as long as somebody reads.
    void flood(const QByteArray &path, const QByteArray &bytes, const QByteArray &filler)
    {
        on(path, [this, bytes, filler](QTcpSocket &socket) {
            QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [this, &socket, filler](qint64 written) {
                m_bytesWritten += written;
                if (socket.bytesToWrite() < 65536) {
                    socket.write(filler);
                }
            });
            socket.write(bytes);
        });
    }

private:
    void accept()
    {
        while (QTcpSocket *const socket = m_server.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::disconnected, &m_server, [this, socket] {
                ++m_disconnections;
                socket->deleteLater();
            });
            QObject::connect(socket, &QTcpSocket::readyRead, &m_server, [this, socket] { read(*socket); });
        }
    }
    void read(QTcpSocket &socket)
    {
        if (!socket.peek(65536).contains("\r\n\r\n")) {
            return;
        }
        const QByteArray request = socket.readAll();
        const QByteArray line = request.first(request.indexOf("\r\n"));
        m_lastHeaders = request.sliced(line.size() + 2);
        const QByteArray path = line.split(' ').value(1);
        m_requests.append(line.first(line.lastIndexOf(' ')));
        if (const auto handler = m_handlers.value(path)) {
            handler(socket);
        } else {
            socket.write("HTTP/1.1 404 Not Found\r\nContent-Type: text/html\r\nContent-Length: 0\r\n"
                         "Connection: close\r\n\r\n");
            socket.disconnectFromHost();
        }
    }

    QTcpServer m_server;
    QHash<QByteArray, Handler> m_handlers;
    QList<QByteArray> m_requests;
    QByteArray m_lastHeaders;
    qint64 m_bytesWritten = 0;
    int m_disconnections = 0;
};

} // namespace quib::tests

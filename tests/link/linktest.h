#ifndef LINKTEST_H
#define LINKTEST_H

// Shared by the link tests: a message with a body, frames built without the library's
// writers, waiting on the event loop with generous timeouts, and raw sockets.

#include "messageheader.h"
#include "telortest.h"

#include "qcontainerpacket.h"
#include "qprotocolstruct.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QTcpSocket>

#include <functional>

namespace linktest {

/** Timeout of every wait in these tests: long, so that only a real failure reaches it. */
constexpr int Patience = 20000;

/** A message with a body: a number and a text, identity 3, 99, 1. */
class EchoMessage : public QProtocolStruct
{
public:
    EchoMessage(qint32 number = 0, const QString &text = QString())
        : number(number)
        , text(text)
    {
        serviceId = 3;
        messageId = 99;
        messageType = 1;
    }
    void writePrivate(QContainerPacket &packet) const override { packet << number << text; }
    bool readPrivate(QContainerPacket &packet) override
    {
        packet >> number >> text;
        return true;
    }
    qint32 number;
    QString text;
};

/** Reads an EchoMessage from a received untyped frame; number -1 if it does not read. */
inline EchoMessage echoOf(const QProtocolStruct &frame)
{
    EchoMessage message;
    message.setPacket(frame);
    if (!message.read())
        message.number = -1;
    return message;
}

/** Written bytes of an EchoMessage. */
inline QByteArray echoFrame(qint32 number, const QString &text = QString())
{
    EchoMessage message(number, text);
    return message.write();
}

/** A header alone whose body-length word is @p length. */
inline QByteArray headerWithLength(qint32 length)
{
    QByteArray bytes = telortest::packetBytes(3, 99, 1, QByteArray());
    qToBigEndian<qint32>(length, bytes.data() + 16);
    return bytes;
}

/**
 * Runs the event loop until @p done holds or @p timeoutMs pass; returns whether it holds.
 * The loop sleeps between events and looks at @p done every few milliseconds.
 */
inline bool waitUntil(const std::function<bool()> &done, int timeoutMs = Patience)
{
    if (done())
        return true;
    QEventLoop loop;
    QTimer poll;
    QElapsedTimer clock;
    clock.start();
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done() || clock.elapsed() > timeoutMs)
            loop.quit();
    });
    poll.start(2);
    loop.exec();
    return done();
}

/** Runs the event loop for @p ms milliseconds. */
inline void spin(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

/** "127.0.0.1:<port>" as the server names a peer on the loopback. */
inline QString loopbackPeer(quint16 port)
{
    return QStringLiteral("127.0.0.1:%1").arg(port);
}

/** Connects a raw socket to the loopback port and waits for it. */
inline bool connectRaw(QTcpSocket &socket, quint16 port)
{
    socket.connectToHost(QHostAddress::LocalHost, port);
    return waitUntil([&] { return socket.state() == QAbstractSocket::ConnectedState; });
}

/** Writes bytes on a raw socket and waits until the system has taken them. */
inline bool writeAll(QTcpSocket &socket, const QByteArray &bytes)
{
    if (socket.write(bytes) != bytes.size())
        return false;
    return waitUntil([&] { return socket.bytesToWrite() == 0; });
}

/** The log lines that the link library wrote, in order. */
inline QStringList linkLines(const telortest::LogCapture &log)
{
    QStringList lines;
    for (const QString &line : log.captured())
        if (line.startsWith(QLatin1String("TELORLink")))
            lines.append(line);
    return lines;
}

} // namespace linktest

#endif // LINKTEST_H

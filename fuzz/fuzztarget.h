#ifndef FUZZTARGET_H
#define FUZZTARGET_H

// Shared by the fuzz targets: a packet built around a fuzzed body, the check that stops the
// fuzzer with a finding, Qt's messages kept off the fuzzer's output, and an input split
// into a selector byte that picks a reader and the body that reader gets.

#include "qprotocolstruct.h"

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>
#include <QtCore/QtGlobal>

#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace fuzz {

/**
 * A packet as a transport hands it over: the eight header words, each big-endian (the
 * service, message and type given, version 1, the size of @p body and the route words),
 * followed by @p body.
 */
inline QByteArray packetWith(qint32 serviceId, qint32 messageId, qint32 messageType, const QByteArray &body,
                             qint32 source = 0, qint32 session = 0, qint32 sequence = 0)
{
    QByteArray packet(QProtocolStruct::HeaderSize, '\0');
    const qint32 words[8] = {serviceId, messageId, messageType, 1, qint32(body.size()), source, session, sequence};
    for (int i = 0; i < 8; ++i)
        qToBigEndian<qint32>(words[i], packet.data() + 4 * i);
    return packet + body;
}

/** Stops the fuzzer with a finding when @p condition does not hold. */
inline void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

/**
 * Drops every Qt message from the first call on, so that the warnings broken input is
 * meant to raise do not flood the fuzzer's output. The handler is installed once.
 */
inline void silenceQtMessages()
{
    static const QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    Q_UNUSED(previous)
}

/** A reader of a fuzzed body. */
using BodyReader = void (*)(const QByteArray &body);

/**
 * Splits the input into a selector byte and a body, and hands the body to the reader the
 * selector picks: its value modulo the number of @p readers. An empty input and one larger
 * than 1 MiB are passed over.
 */
inline void readSelected(const uint8_t *data, size_t size, std::initializer_list<BodyReader> readers)
{
    if (size < 1 || size > (1u << 20))
        return;
    const QByteArray body(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    readers.begin()[data[0] % readers.size()](body);
}

} // namespace fuzz

#endif // FUZZTARGET_H

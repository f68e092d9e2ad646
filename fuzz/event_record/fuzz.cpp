// Feeds arbitrary bytes to the readers of the event record: the message form of an
// EventStruct, a run of records in the stream form as event lists hold them, and the two
// wrapper messages. The first byte picks the reader; the rest is the body. Every record
// read is written again and read back, and its four numbers must survive.

#include "eventstruct.h"
#include "eventstructwithreaded.h"
#include "qcontainerpacket.h"
#include "registratoreventstruct.h"

#include <QtCore/QDataStream>
#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

namespace {

void quiet(QtMsgType, const QMessageLogContext &, const QString &) {}

QByteArray packetWith(int messageId, int messageType, const QByteArray &body)
{
    QByteArray packet(QProtocolStruct::HeaderSize, '\0');
    const qint32 words[8] = {3, messageId, messageType, 1, qint32(body.size()), 0, 0, 0};
    for (int i = 0; i < 8; ++i)
        qToBigEndian<qint32>(words[i], packet.data() + 4 * i);
    return packet + body;
}

void sameNumbers(const EventStruct &a, const EventStruct &b)
{
    if (a.typeId != b.typeId || a.eventMessage != b.eventMessage || a.firstId != b.firstId
        || a.secondId != b.secondId || a.isValid() != b.isValid())
        __builtin_trap();
}

void readMessageForm(const QByteArray &body)
{
    EventStruct event;
    event.setPacket(packetWith(17, 3, body));
    if (!event.read())
        __builtin_trap(); // a body never makes the record refuse
    EventStruct again;
    again.setPacket(event.write());
    again.read();
    sameNumbers(event, again);
}

void readStreamRun(const QByteArray &bytes)
{
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_5_15);
    for (int i = 0; i < 1000 && !in.atEnd() && in.status() == QDataStream::Ok; ++i) {
        EventStruct event;
        in >> event;
        QByteArray out;
        QDataStream writer(&out, QIODevice::WriteOnly);
        writer.setVersion(QDataStream::Qt_5_15);
        writer << event;
        QDataStream back(out);
        back.setVersion(QDataStream::Qt_5_15);
        EventStruct again;
        back >> again;
        sameNumbers(event, again);
    }
}

void readWrapper(const QByteArray &body, bool withReaded)
{
    if (withReaded) {
        EventStructWithReaded message(EventStruct(), false);
        message.setPacket(packetWith(41, 3, body));
        if (!message.read())
            __builtin_trap();
        EventStructWithReaded again(EventStruct(), !message.readed);
        again.setPacket(message.write());
        again.read();
        sameNumbers(message.event, again.event);
        if (again.readed != message.readed)
            __builtin_trap();
    } else {
        RegistratorEventStruct message{EventStruct()};
        message.setPacket(packetWith(40, 3, body));
        if (!message.read())
            __builtin_trap();
        RegistratorEventStruct again{EventStruct()};
        again.setPacket(message.write());
        again.read();
        sameNumbers(message.event, again.event);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QtMessageHandler previous = qInstallMessageHandler(quiet);
    Q_UNUSED(previous)
    if (size < 1 || size > (1u << 20))
        return 0;
    const QByteArray body(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    switch (data[0] & 3) {
    case 0:
        readMessageForm(body);
        break;
    case 1:
        readStreamRun(body);
        break;
    case 2:
        readWrapper(body, false);
        break;
    default:
        readWrapper(body, true);
        break;
    }
    return 0;
}

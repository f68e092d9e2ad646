// Feeds arbitrary bytes to the readers of the event record: the message form of an
// EventStruct, a run of records in the stream form as event lists hold them, and the two
// wrapper messages. The first byte picks the reader; the rest is the body. Every record
// read is written again and read back, and its four numbers must survive.

#include "fuzztarget.h"

#include "eventstruct.h"
#include "eventstructwithreaded.h"
#include "qcontainerpacket.h"
#include "registratoreventstruct.h"

#include <QtCore/QDataStream>

#include <cstddef>
#include <cstdint>

namespace {

void sameNumbers(const EventStruct &a, const EventStruct &b)
{
    if (a.typeId != b.typeId || a.eventMessage != b.eventMessage || a.firstId != b.firstId
        || a.secondId != b.secondId || a.isValid() != b.isValid())
        __builtin_trap();
}

void readMessageForm(const QByteArray &body)
{
    EventStruct event;
    event.setPacket(fuzz::packetWith(3, 17, 3, body));
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
        message.setPacket(fuzz::packetWith(3, 41, 3, body));
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
        message.setPacket(fuzz::packetWith(3, 40, 3, body));
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
    fuzz::silenceQtMessages();
    fuzz::readSelected(data, size,
                       {readMessageForm, readStreamRun, [](const QByteArray &body) { readWrapper(body, false); },
                        [](const QByteArray &body) { readWrapper(body, true); }});
    return 0;
}

// Writes event records in both encodings and the two wrapper messages, built with the
// library's own writers, as the seed corpus of the event record fuzz target. The first
// byte of each seed picks the reader: 0 message form, 1 stream form, 2 and 3 wrappers.

#include "eventstruct.h"
#include "eventstructwithreaded.h"
#include "registratoreventstruct.h"
#include "seedwriter.h"

#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QVariant>

namespace {

QByteArray withSelector(char selector, const QByteArray &body)
{
    return QByteArray(1, selector) + body;
}

QByteArray bodyOf(QProtocolStruct &message)
{
    return message.write().mid(QProtocolStruct::HeaderSize);
}

QByteArray streamForm(const QList<EventStruct> &events)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_5_15);
    for (const EventStruct &event : events)
        out << event;
    return bytes;
}

EventStruct bitChange()
{
    EventStruct event;
    event.typeId = 40;
    event.eventMessage = 2;
    event.dateTime = QDateTime(QDate(2025, 3, 14), QTime(10, 20, 30, 456), Qt::UTC);
    event.firstId = 1001;
    event.secondId = 7;
    event.parameters.insert(QStringLiteral("#old_bit_value"), 0x10u);
    event.parameters.insert(QStringLiteral("#new_bit_value"), 0x11u);
    event.parameters.insert(QStringLiteral("#old_bit_state"), 8);
    event.parameters.insert(QStringLiteral("#new_bit_state"), 4096);
    return event;
}

EventStruct rich()
{
    EventStruct event;
    event.typeId = 65535;
    event.eventMessage = 255;
    event.dateTime = QDateTime(QDate(2024, 12, 31), QTime(23, 59, 59), Qt::OffsetFromUTC, 3 * 3600);
    event.firstId = 0xFFFFFFFFu;
    event.secondId = 1;
    event.parameters.insert(QStringLiteral("text"), QStringLiteral("Pressure high"));
    event.parameters.insert(QStringLiteral("list"), QVariantList{1, QStringLiteral("two"), 3.5});
    event.parameters.insert(QStringLiteral("map"), QVariantMap{{QStringLiteral("a"), QStringList{QStringLiteral("b")}}});
    event.parameters.insert(QStringLiteral("bytes"), QByteArray("\x01\x02", 2));
    event.parameters.insert(QStringLiteral("when"), QDateTime(QDate(2000, 1, 1), QTime(0, 0), Qt::LocalTime));
    return event;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    EventStruct empty;
    EventStruct change = bitChange();
    EventStruct full = rich();
    seeds.add(QStringLiteral("message-empty"), withSelector(0, bodyOf(empty)));
    seeds.add(QStringLiteral("message-bit-change"), withSelector(0, bodyOf(change)));
    seeds.add(QStringLiteral("message-rich"), withSelector(0, bodyOf(full)));

    seeds.add(QStringLiteral("stream-one"), withSelector(1, streamForm({change})));
    seeds.add(QStringLiteral("stream-three"), withSelector(1, streamForm({change, empty, full})));

    RegistratorEventStruct registrator(change);
    seeds.add(QStringLiteral("registrator"), withSelector(2, bodyOf(registrator)));
    EventStructWithReaded readed(full, true);
    seeds.add(QStringLiteral("with-readed"), withSelector(3, bodyOf(readed)));
    EventStructWithReaded unread(empty, false);
    seeds.add(QStringLiteral("with-readed-false"), withSelector(3, bodyOf(unread)));
    return seeds.finish();
}

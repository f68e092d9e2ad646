#include "eventstruct.h"

#include <QtCore/QDataStream>

#include "hashwalk_p.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

namespace {

void writeParameters(QDataStream &stream, const QHash<QString, QVariant> &parameters)
{
    stream << quint32(parameters.size());
    TelorEvents::walkFromLast(parameters, [&stream](const QString &key, const QVariant &value) {
        stream << key << value;
    });
}

/**
 * Reads the named values in Qt's form for a hash, bounded by the bytes left. A time in a
 * zone that this side doesn't know, at any depth of a value, becomes a null QDateTime: Qt
 * reads it as an invalid time that its own writer cannot write again.
 */
QDataStream &readParameters(QDataStream &stream, QHash<QString, QVariant> &parameters)
{
    TelorWire::readHash(stream, parameters);
    for (auto it = parameters.begin(); it != parameters.end(); ++it)
        TelorWire::forgetUnknownZones(it.value());
    return stream;
}

} // namespace

EventStruct::EventStruct()
    : typeId(0)
    , eventMessage(0)
    , firstId(0)
    , secondId(0)
{
    serviceId = 3;
    messageId = 17;
    messageType = 3;
}

EventStruct::~EventStruct() = default;

void EventStruct::writePrivate(QContainerPacket &packet) const
{
    packet << typeId << eventMessage << firstId << dateTime;
    writeParameters(packet, parameters);
    packet << secondId;
}

bool EventStruct::readPrivate(QContainerPacket &packet)
{
    packet >> typeId >> eventMessage >> firstId;
    TelorWire::readDateTime(packet, dateTime);
    readParameters(packet, parameters);
    packet >> secondId;
    return true;
}

bool EventStruct::isValid() const
{
    return typeId != 0 && eventMessage != 0 && firstId != 0 && secondId != 0;
}

bool EventStruct::operator==(const EventStruct &other) const
{
    return typeId == other.typeId && eventMessage == other.eventMessage && dateTime == other.dateTime
        && firstId == other.firstId && secondId == other.secondId;
}

QDataStream &operator<<(QDataStream &stream, const EventStruct &event)
{
    stream << event.typeId << event.eventMessage << event.firstId << event.secondId << event.dateTime;
    writeParameters(stream, event.parameters);
    return stream;
}

QDataStream &operator>>(QDataStream &stream, EventStruct &event)
{
    stream >> event.typeId >> event.eventMessage >> event.firstId >> event.secondId;
    TelorWire::readDateTime(stream, event.dateTime);
    return readParameters(stream, event.parameters);
}

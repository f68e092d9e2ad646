#include "eventsdaydata.h"

#include "hashwalk_p.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

EventsDayData::EventsDayData() = default;

EventsDayData::~EventsDayData() = default;

void EventsDayData::writePrivate(QContainerPacket &packet) const
{
    EventsResultBase::writePrivate(packet);
    packet << day << quint32(dayValues.size());
    TelorEvents::walkFromLast(dayValues, [&packet](unsigned short key, int value) {
        packet << quint16(key) << qint32(value);
    });
}

bool EventsDayData::readPrivate(QContainerPacket &packet)
{
    EventsResultBase::readPrivate(packet);
    packet >> day;
    TelorWire::readHash(packet, dayValues);
    return true;
}

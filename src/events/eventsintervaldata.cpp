#include "eventsintervaldata.h"

#include "qcontainerpacket.h"
#include "wirestream_p.h"

EventsIntervalData::EventsIntervalData() = default;

EventsIntervalData::~EventsIntervalData() = default;

void EventsIntervalData::writePrivate(QContainerPacket &packet) const
{
    EventsResultBase::writePrivate(packet);
    packet << begin << end;
}

bool EventsIntervalData::readPrivate(QContainerPacket &packet)
{
    EventsResultBase::readPrivate(packet);
    TelorWire::readDateTime(packet, begin);
    TelorWire::readDateTime(packet, end);
    return true;
}

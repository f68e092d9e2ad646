#include "eventsresultbase.h"

#include "qcontainerpacket.h"

EventsResultBase::EventsResultBase()
    : parent(0)
    , value1(0)
    , value2(0)
    , value3(0)
{
}

EventsResultBase::~EventsResultBase() = default;

void EventsResultBase::writePrivate(QContainerPacket &packet) const
{
    packet << parent << qint32(value1) << qint32(value2) << qint32(value3);
}

bool EventsResultBase::readPrivate(QContainerPacket &packet)
{
    packet >> parent >> value1 >> value2 >> value3;
    return true;
}

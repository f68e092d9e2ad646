#include "eventsarchiveresult.h"

#include "eventwire_p.h"
#include "qcontainerpacket.h"

EventsArchiveResult::EventsArchiveResult() = default;

EventsArchiveResult::~EventsArchiveResult() = default;

void EventsArchiveResult::writePrivate(QContainerPacket &packet) const
{
    EventsResultBase::writePrivate(packet);
    TelorEvents::writeList(packet, events);
}

bool EventsArchiveResult::readPrivate(QContainerPacket &packet)
{
    EventsResultBase::readPrivate(packet);
    TelorEvents::readList(packet, events);
    return true;
}

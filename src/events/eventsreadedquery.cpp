#include "eventsreadedquery.h"

#include "eventwire_p.h"
#include "qcontainerpacket.h"

EventsReadedQuery::EventsReadedQuery()
    : readed(false)
{
    serviceId = 3;
    messageId = 20;
    messageType = 1;
}

EventsReadedQuery::~EventsReadedQuery() = default;

void EventsReadedQuery::writePrivate(QContainerPacket &packet) const
{
    packet << readed;
    TelorEvents::writeList(packet, ids);
}

bool EventsReadedQuery::readPrivate(QContainerPacket &packet)
{
    packet >> readed;
    TelorEvents::readList(packet, ids);
    return true;
}

#include "eventstructwithreaded.h"

#include "qcontainerpacket.h"

EventStructWithReaded::EventStructWithReaded(const EventStruct &event, bool readed)
    : RegistratorEventStruct(event)
    , readed(readed)
{
}

EventStructWithReaded::~EventStructWithReaded() = default;

void EventStructWithReaded::writePrivate(QContainerPacket &packet) const
{
    RegistratorEventStruct::writePrivate(packet);
    packet << readed;
}

bool EventStructWithReaded::readPrivate(QContainerPacket &packet)
{
    RegistratorEventStruct::readPrivate(packet);
    packet >> readed;
    return true;
}

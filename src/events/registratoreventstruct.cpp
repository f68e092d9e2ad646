#include "registratoreventstruct.h"

#include "qcontainerpacket.h"

RegistratorEventStruct::RegistratorEventStruct(const EventStruct &event)
    : event(event)
{
}

RegistratorEventStruct::~RegistratorEventStruct() = default;

void RegistratorEventStruct::writePrivate(QContainerPacket &packet) const
{
    packet << event;
}

bool RegistratorEventStruct::readPrivate(QContainerPacket &packet)
{
    packet >> event;
    return true;
}

#include "eventsquerybase.h"

#include "eventwire_p.h"
#include "clienttoken_p.h"
#include "qcontainerpacket.h"

EventsQueryBase::EventsQueryBase(signed char queryType, const QObject *parent)
    : queryType(queryType)
    , parent(parent)
    , queryTag(0)
{
}

EventsQueryBase::~EventsQueryBase() = default;

void EventsQueryBase::writePrivate(QContainerPacket &packet) const
{
    packet << qint8(queryType) << TelorToken::toWire(parent) << qint32(queryTag);
}

bool EventsQueryBase::readPrivate(QContainerPacket &packet)
{
    qint8 type = 0;
    qint64 token = 0;
    qint32 tag = 0;
    packet >> type >> token >> tag;
    queryType = type;
    parent = TelorToken::fromWire(token);
    queryTag = tag;
    return true;
}

signed char EventsQueryBase::type() const
{
    return queryType;
}

#include "eventbasesubscription.h"

#include "eventwire_p.h"
#include "clienttoken_p.h"
#include "qcontainerpacket.h"

EventBaseSubscription::EventBaseSubscription(const QObject *parent)
    : m_parent(parent)
{
}

EventBaseSubscription::~EventBaseSubscription() = default;

void EventBaseSubscription::writePrivate(QContainerPacket &packet) const
{
    packet << TelorToken::toWire(m_parent);
}

bool EventBaseSubscription::readPrivate(QContainerPacket &packet)
{
    qint64 token = 0;
    packet >> token;
    m_parent = TelorToken::fromWire(token);
    return true;
}

const QObject *EventBaseSubscription::parent() const
{
    return m_parent;
}

bool EventBaseSubscription::checkQuery(const EventBaseSubscription &other) const
{
    const QProtocolHeader mine = getHeader();
    const QProtocolHeader theirs = other.getHeader();
    if (mine.sequence != theirs.sequence)
        return false;
    if (mine.session != theirs.session)
        return false;
    if (mine.source != theirs.source)
        return false;
    return m_parent == other.m_parent;
}

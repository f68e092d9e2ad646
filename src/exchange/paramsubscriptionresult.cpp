#include "paramsubscriptionresult.h"

#include "qcontainerpacket.h"
#include "clienttoken_p.h"
#include "wirestream_p.h"

ParamSubscriptionResult::ParamSubscriptionResult() = default;

ParamSubscriptionResult::~ParamSubscriptionResult() = default;

void ParamSubscriptionResult::writePrivate(QContainerPacket &packet) const
{
    packet << ids << data << dateTime << TelorToken::toWire(m_parent);
}

bool ParamSubscriptionResult::readPrivate(QContainerPacket &packet)
{
    TelorWire::readList(packet, ids);
    packet >> data;
    TelorWire::readDateTime(packet, dateTime);
    qint64 token = 0;
    packet >> token;
    m_parent = TelorToken::fromWire(token);
    return true;
}

const QObject *ParamSubscriptionResult::parent() const
{
    return m_parent;
}

void ParamSubscriptionResult::setParent(const QObject *parent)
{
    m_parent = parent;
}

#include "paramsubscriptionquery.h"

#include "qcontainerpacket.h"
#include "clienttoken_p.h"

ParamSubscriptionQuery::ParamSubscriptionQuery(const QObject *parent)
    : m_parent(parent)
{
    serviceId = 3;
    messageId = 1;
    messageType = 1;
}

ParamSubscriptionQuery::~ParamSubscriptionQuery() = default;

void ParamSubscriptionQuery::writePrivate(QContainerPacket &packet) const
{
    packet << ids << refreshIds << TelorToken::toWire(m_parent);
}

bool ParamSubscriptionQuery::readPrivate(QContainerPacket &packet)
{
    // Qt's set reader reserves nothing: it reads element by element and stops at the end
    // of the data, so a hostile count costs no memory.
    packet >> ids >> refreshIds;
    qint64 token = 0;
    packet >> token;
    m_parent = TelorToken::fromWire(token);
    return true;
}

const QObject *ParamSubscriptionQuery::parent() const
{
    return m_parent;
}

void ParamSubscriptionQuery::setParent(const QObject *parent)
{
    m_parent = parent;
}

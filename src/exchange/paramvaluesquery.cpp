#include "paramvaluesquery.h"

#include "qcontainerpacket.h"
#include "clienttoken_p.h"
#include "wirestream_p.h"

ParamValuesQuery::ParamValuesQuery()
{
    serviceId = 3;
    messageId = 8;
    messageType = 1;
}

ParamValuesQuery::~ParamValuesQuery() = default;

void ParamValuesQuery::writePrivate(QContainerPacket &packet) const
{
    packet << TelorToken::toWire(parent) << ids;
}

bool ParamValuesQuery::readPrivate(QContainerPacket &packet)
{
    qint64 token = 0;
    packet >> token;
    TelorWire::readList(packet, ids);
    parent = TelorToken::fromWire(token);
    return parent != nullptr;
}

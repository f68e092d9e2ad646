#include "paramvaluesresult.h"

#include "qcontainerpacket.h"
#include "clienttoken_p.h"
#include "wirestream_p.h"

ParamValuesResult::ParamValuesResult() = default;

ParamValuesResult::~ParamValuesResult() = default;

void ParamValuesResult::writePrivate(QContainerPacket &packet) const
{
    packet << ids << data << dateTime << TelorToken::toWire(parent);
}

bool ParamValuesResult::readPrivate(QContainerPacket &packet)
{
    TelorWire::readList(packet, ids);
    packet >> data;
    TelorWire::readDateTime(packet, dateTime);
    qint64 token = 0;
    packet >> token;
    parent = TelorToken::fromWire(token);
    return parent != nullptr;
}

const QObject *ParamValuesResult::getQObject() const
{
    return parent;
}

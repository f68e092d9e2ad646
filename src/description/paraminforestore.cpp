#include "paraminforestore.h"

#include "qcontainerpacket.h"
#include "wirestream_p.h"

ParamInfoRestore::ParamInfoRestore()
{
    serviceId = 2;
    messageId = 6;
    messageType = 4;
}

ParamInfoRestore::~ParamInfoRestore() = default;

void ParamInfoRestore::writePrivate(QContainerPacket &packet) const
{
    packet << ids;
}

bool ParamInfoRestore::readPrivate(QContainerPacket &packet)
{
    TelorWire::readList(packet, ids);
    return true;
}

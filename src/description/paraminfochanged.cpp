#include "paraminfochanged.h"

#include "qcontainerpacket.h"

#include <QtCore/QDebug>

ParamInfoChanged::ParamInfoChanged()
{
    serviceId = 2;
    messageId = 5;
    messageType = 4;
}

ParamInfoChanged::~ParamInfoChanged() = default;

void ParamInfoChanged::writePrivate(QContainerPacket &packet) const
{
    packet << qint32(params.size());
    for (const ParamInfo &info : params)
        info.write(packet);
}

bool ParamInfoChanged::readPrivate(QContainerPacket &packet)
{
    qint32 count = 0;
    packet >> count;
    if (count < 1)
        return false;
    // A record read where the data has ended has type 0 and fails, so the count can't
    // make this loop run beyond the data. Each record is read in place at the end of the
    // list, which spares a copy of it, and taken out again when it fails.
    for (qint32 i = 0; i < count; ++i) {
        params.append(ParamInfo());
        if (!params.last().read(packet)) {
            params.removeLast();
            qDebug() << "Error reading ParamInfo";
            return false;
        }
    }
    return true;
}

void ParamInfoChanged::setMessageType(int type)
{
    messageType = type;
}

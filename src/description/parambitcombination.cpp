#include "parambitcombination.h"

#include "descriptionwire_p.h"
#include "qcontainerpacket.h"

void ParamBitCombination::write(QContainerPacket &packet) const
{
    packet << qint64(value) << qint32(state)
           << static_cast<const QHash<QString, QString> &>(shortText)
           << static_cast<const QHash<QString, QString> &>(fullText)
           << sign;
}

bool ParamBitCombination::read(QContainerPacket &packet)
{
    qint32 wireState = 0;
    packet >> value >> wireState;
    DescriptionWire::readTextTable(packet, shortText);
    DescriptionWire::readTextTable(packet, fullText);
    packet >> sign;
    state = wireState;
    return true;
}

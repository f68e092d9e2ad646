#include "bpdiscrete.h"

#include "qcontainerpacket.h"

BPDiscrete::BPDiscrete()
    : value(0)
{
}

BPDiscrete::BPDiscrete(unsigned int idParameter)
    : AbstractParameterBase(idParameter)
    , value(0)
{
}

BPDiscrete::~BPDiscrete() = default;

double BPDiscrete::floatValue() const
{
    return static_cast<double>(static_cast<quint32>(value));
}

int BPDiscrete::valueType() const
{
    return 2;
}

bool BPDiscrete::readPrivate(QContainerPacket &packet)
{
    packet >> value;
    return true;
}

void BPDiscrete::writePrivate(QContainerPacket &packet) const
{
    packet << value;
}

int BPDiscrete::getValue() const
{
    return value;
}

void BPDiscrete::setValue(int newValue)
{
    if (newValue != value)
        upFlag();
    value = newValue;
}

#include "bpdouble.h"

#include "qcontainerpacket.h"

BPDouble::BPDouble()
    : value(0.0)
{
}

BPDouble::BPDouble(unsigned int idParameter)
    : AbstractParameterBase(idParameter)
    , value(0.0)
{
}

BPDouble::~BPDouble() = default;

double BPDouble::floatValue() const
{
    return value;
}

int BPDouble::valueType() const
{
    return 1;
}

void BPDouble::writePrivate(QContainerPacket &packet, bool) const
{
    packet << value;
}

bool BPDouble::readPrivate(QContainerPacket &packet)
{
    packet >> value;
    return true;
}

double BPDouble::getValue() const
{
    return value;
}

void BPDouble::setValue(double newValue)
{
    if (newValue == value)
        return;
    upFlag();
    value = newValue;
}

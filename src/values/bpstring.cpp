#include "bpstring.h"

#include "qcontainerpacket.h"

BPString::BPString() = default;

BPString::BPString(int idParameter)
    : AbstractParameterBase(static_cast<unsigned int>(idParameter))
{
}

BPString::~BPString() = default;

int BPString::valueType() const
{
    return 3;
}

void BPString::writePrivate(QContainerPacket &packet, bool) const
{
    packet << value;
}

bool BPString::readPrivate(QContainerPacket &packet)
{
    packet >> value;
    return true;
}

QString BPString::getValue() const
{
    return value;
}

void BPString::setValue(const QString &newValue)
{
    if (newValue != value)
        upFlag();
    value = newValue;
}

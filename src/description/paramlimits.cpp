#include "paramlimits.h"

#include "qcontainerpacket.h"

#include <QtCore/QXmlStreamReader>

ParamLimits::ParamLimits()
    : enabled(0)
    , lo(0.0)
    , hi(0.0)
{
}

void ParamLimits::write(QContainerPacket &packet) const
{
    packet << enabled;
    if (enabled != 0)
        packet << lo << hi;
}

bool ParamLimits::read(QContainerPacket &packet)
{
    packet >> enabled;
    const quint8 flag = quint8(enabled);
    if (flag == 0)
        return true;
    if (flag != 1)
        return false;
    packet >> lo >> hi;
    return true;
}

void ParamLimits::readFromSource(const QXmlStreamReader &reader)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const QStringRef hiText = attributes.value(QLatin1String("hi"));
    if (hiText.isNull())
        return;
    const QStringRef loText = attributes.value(QLatin1String("lo"));
    if (loText.isNull())
        return;
    lo = loText.toString().toDouble();
    hi = hiText.toString().toDouble();
    enabled = 1;
}

#include "bpmap.h"

#include "healthword_p.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

BPMap::BPMap() = default;

BPMap::BPMap(unsigned int idParameter)
    : AbstractParameterBase(idParameter)
{
}

BPMap::~BPMap() = default;

QString BPMap::stringValue(int, char) const
{
    return TelorHealth::word(state);
}

double BPMap::floatValue() const
{
    return 0.0;
}

int BPMap::valueType() const
{
    return 7;
}

void BPMap::writePrivate(QContainerPacket &packet, bool) const
{
    packet << map;
}

bool BPMap::readPrivate(QContainerPacket &packet)
{
    // Same result as Qt's operator>> (repeated keys kept twice), with every received
    // value read by the bounded variant reader.
    TelorWire::readMap(packet, map);
    // A time in a zone unknown here could not be written again: it is kept as a null time.
    for (auto it = map.begin(); it != map.end(); ++it)
        TelorWire::forgetUnknownZones(it.value());
    return true;
}

const QMap<double, QVariant> &BPMap::getMap() const
{
    return map;
}

void BPMap::setMap(const QMap<double, QVariant> &newMap)
{
    map = newMap;
    upFlag();
}

QVariant BPMap::getValue() const
{
    QVariantMap byText;
    // Rising key order: of two keys that share a text, the higher one is inserted last
    // and keeps its value. A key received twice gives the value that map.value() gives.
    for (auto it = map.constBegin(); it != map.constEnd(); ++it)
        byText.insert(QString::number(it.key(), 'g', 6), map.value(it.key()));
    return QVariant(byText);
}

void BPMap::setValue(const QVariant &)
{
}

#include "bplist.h"

#include "healthword_p.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

#include <QtCore/QDebug>

BPList::BPList() = default;

BPList::BPList(unsigned int idParameter)
    : AbstractParameterBase(idParameter)
{
}

BPList::~BPList() = default;

QString BPList::stringValue(int, char) const
{
    return TelorHealth::word(state);
}

double BPList::floatValue() const
{
    return 0.0;
}

int BPList::valueType() const
{
    return 6;
}

void BPList::writePrivate(QContainerPacket &packet, bool) const
{
    packet << list;
}

bool BPList::readPrivate(QContainerPacket &packet)
{
    // Same result as Qt's operator>>, without reserving room for a count that the
    // remaining bytes could not hold.
    TelorWire::readList(packet, list);
    // A time in a zone unknown here could not be written again: it is kept as a null time.
    for (int i = 0; i < list.size(); ++i) {
        QVariant entry = list.at(i);
        if (TelorWire::forgetUnknownZones(entry))
            list[i] = entry;
    }
    return true;
}

const QList<QVariant> &BPList::getList() const
{
    return list;
}

void BPList::setList(const QList<QVariant> &newList)
{
    list = newList;
    upFlag();
}

QVariant BPList::getValue() const
{
    return QVariant(list);
}

void BPList::setValue(const QVariant &)
{
    qDebug() << "Invalid method void BPList::setValue(const QVariant &)";
}

#include "paramgroupinfobase.h"

#include "qcontainerpacket.h"
#include "wirestream_p.h"

ParamGroupInfoBase::ParamGroupInfoBase()
    : item(ParamGroupItem::NoItem, false, QHash<QString, QString>())
{
    serviceId = 2;
    messageType = 1;
}

ParamGroupInfoBase::ParamGroupInfoBase(const ParamGroupInfoBase &other)
    : QProtocolStruct()
    , item(ParamGroupItem::NoItem, false, QHash<QString, QString>())
{
    ParamGroupInfoBase::operator=(other);
}

ParamGroupInfoBase::~ParamGroupInfoBase() = default;

void ParamGroupInfoBase::writePrivate(QContainerPacket &packet) const
{
    QDataStream &stream = packet;
    stream << path << extra1 << extra2;
    item.write(packet);
    stream << qint32(params.size());
    for (const Data &data : params)
        stream << quint32(data.id) << data.name;
    stream << qint32(params.size());
}

bool ParamGroupInfoBase::readPrivate(QContainerPacket &packet)
{
    QDataStream &stream = packet;
    stream >> path >> extra1 >> extra2;
    if (!item.read(packet))
        return false;

    qint32 count = 0;
    stream >> count;
    for (qint32 i = 0; i < count; ++i) {
        // Past the end of the data every record would read as id 0 with an empty name,
        // and the trailing count as 0, which can't match the size of a list that grew.
        if (TelorWire::bytesLeft(stream) == 0)
            return false;
        Data data;
        stream >> data.id >> data.name;
        params.append(data);
    }

    qint32 trailing = 0;
    stream >> trailing;
    return trailing == params.size();
}

ParamGroupInfoBase &ParamGroupInfoBase::operator=(const ParamGroupInfoBase &other)
{
    serviceId = other.serviceId;
    messageId = other.messageId;
    messageType = other.messageType;
    path = other.path;
    extra1 = other.extra1;
    extra2 = other.extra2;
    item = other.item;
    params = other.params;
    return *this;
}

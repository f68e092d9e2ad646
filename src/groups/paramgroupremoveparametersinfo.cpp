#include "paramgroupremoveparametersinfo.h"

#include "qcontainerpacket.h"
#include "wirestream_p.h"

ParamGroupRemoveParametersInfo::ParamGroupRemoveParametersInfo()
{
    serviceId = 2;
    messageId = 14;
    messageType = 1;
}

ParamGroupRemoveParametersInfo::ParamGroupRemoveParametersInfo(const ParamGroupRemoveParametersInfo &other)
    : QProtocolStruct()
{
    operator=(other);
}

ParamGroupRemoveParametersInfo::~ParamGroupRemoveParametersInfo() = default;

void ParamGroupRemoveParametersInfo::writePrivate(QContainerPacket &packet) const
{
    QDataStream &stream = packet;
    stream << extra;
    stream << qint32(removed.size());
    for (auto group = removed.constBegin(); group != removed.constEnd(); ++group) {
        const QList<Data> &list = group.value();
        stream << qint32(list.size()) << group.key();
        for (const Data &data : list)
            stream << quint32(data.id) << data.name << data.extra1 << data.extra2 << data.path;
        stream << qint32(list.size());
    }
    stream << qint32(removed.size());
}

bool ParamGroupRemoveParametersInfo::readPrivate(QContainerPacket &packet)
{
    QDataStream &stream = packet;
    stream >> extra;
    qint32 groupCount = 0;
    stream >> groupCount;
    for (qint32 g = 0; g < groupCount; ++g) {
        // Once the data has ended, every further group reads as an empty list under an
        // empty key and replaces the one before it: reading one of them gives the result
        // of reading them all.
        const bool atEnd = TelorWire::bytesLeft(stream) == 0;

        qint32 count = 0;
        QString key;
        stream >> count >> key;
        QList<Data> list;
        for (qint32 i = 0; i < count; ++i) {
            // Past the end every record would read as zeros and the trailing count as 0,
            // which can't match the list that grew: the group is refused either way.
            if (TelorWire::bytesLeft(stream) == 0)
                return false;
            Data data;
            stream >> data.id >> data.name >> data.extra1 >> data.extra2 >> data.path;
            list.append(data);
        }
        qint32 trailing = 0;
        stream >> trailing;
        if (trailing != list.size())
            return false;
        removed.insert(key, list);

        if (atEnd)
            break;
    }
    qint32 trailing = 0;
    stream >> trailing;
    return trailing == removed.size();
}

ParamGroupRemoveParametersInfo &ParamGroupRemoveParametersInfo::operator=(const ParamGroupRemoveParametersInfo &other)
{
    serviceId = other.serviceId;
    messageId = 14;
    messageType = other.messageType;
    extra = other.extra;
    removed = other.removed;
    return *this;
}

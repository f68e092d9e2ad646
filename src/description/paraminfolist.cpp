#include "paraminfolist.h"

#include "descriptionwire_p.h"
#include "qcontainerpacket.h"
#include "translationtable.h"

ParamInfoList::ParamInfoList()
    : rootItem(ParamGroupItem::NoItem, false, QHash<QString, QString>())
{
    serviceId = 2;
    messageId = 1;
}

ParamInfoList::ParamInfoList(const ParamInfoList &other) = default;

ParamInfoList &ParamInfoList::operator=(const ParamInfoList &other)
{
    if (this == &other)
        return *this;
    QProtocolStruct::operator=(other);
    params = other.params;
    // Assigning a group node adds to the children it has: empty the root first, so that
    // the tree becomes a copy of the source's.
    const QList<ParamGroupItem *> oldChildren = rootItem.children;
    rootItem.children.clear();
    qDeleteAll(oldChildren);
    rootItem = other.rootItem;
    eventTypes = other.eventTypes;
    rawData = other.rawData;
    translations = other.translations;
    return *this;
}

ParamInfoList::~ParamInfoList() = default;

void ParamInfoList::writePrivate(QContainerPacket &packet) const
{
    packet << qint32(params.size());
    for (const ParamInfo &info : params)
        info.write(packet);
    packet << qint32(params.size());
    rootItem.write(packet);
    packet << qint32(eventTypes.size());
    const QList<unsigned int> keys = eventTypes.keys();
    for (unsigned int key : keys)
        eventTypes.value(key).write(packet);
    packet << rawData;
    writeTranslationTable(packet, translations);
}

bool ParamInfoList::readPrivate(QContainerPacket &packet)
{
    qint32 count = 0;
    packet >> count;
    // A description read where the data has ended has type 0 and fails, so the count
    // can't make this loop run beyond the data. Each description is read in place at the
    // end of the list, which spares a copy of it, and taken out again when it fails.
    for (qint32 i = 0; i < count; ++i) {
        params.append(ParamInfo());
        if (!params.last().read(packet)) {
            params.removeLast();
            return false;
        }
    }

    qint32 again = 0;
    packet >> again;
    if (again != params.size())
        return false;

    if (!rootItem.read(packet))
        return false;

    quint32 typeCount = 0;
    packet >> typeCount;
    DescriptionWire::readEntries(packet, typeCount, [this, &packet]() {
        const EventTypeInfoStruct type(packet);
        eventTypes.insert(type.id, type);
        return true;
    });

    packet >> rawData;
    readTranslationTable(packet, translations);
    return true;
}

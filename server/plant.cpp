#include "plant.h"

#include "telorstream.h"

#include <QtCore/QSet>

const PlantParameter *Plant::parameter(unsigned int id) const
{
    for (const PlantParameter &p : parameters) {
        if (p.info.id == id)
            return &p;
    }
    return nullptr;
}

QList<ParamInfo> Plant::descriptions() const
{
    QList<ParamInfo> list;
    list.reserve(parameters.size());
    for (const PlantParameter &p : parameters)
        list.append(p.info);
    return list;
}

QByteArray Plant::tagBlock() const
{
    QHash<unsigned int, QHash<QString, QString>> paramTags;
    QHash<QString, QHash<QString, QSet<unsigned int>>> tagParams;
    for (const PlantParameter &p : parameters) {
        if (p.tags.isEmpty())
            continue;
        paramTags.insert(p.info.id, p.tags);
        for (auto it = p.tags.constBegin(); it != p.tags.constEnd(); ++it)
            tagParams[it.key()][it.value()].insert(p.info.id);
    }
    QByteArray block;
    TELORDataStream stream(&block);
    stream.openToWrite();
    stream << tagTexts << paramTags << tagParams;
    stream.close();
    return block;
}

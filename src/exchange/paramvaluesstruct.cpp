#include "paramvaluesstruct.h"

#include "abstractparameterbase.h"
#include "paramvaluesresult.h"
#include "parametersunder_p.h"
#include "qcontainerpacket.h"

ParamValuesStruct::ParamValuesStruct(const QObject *parent)
    : parent(parent)
{
}

ParamValuesStruct::~ParamValuesStruct() = default;

void ParamValuesStruct::append(QSharedPointer<AbstractParameterBase> param)
{
    if (param.isNull())
        return;
    const unsigned int id = param->getIdParameter();
    params.insert(id, std::move(param));
}

void ParamValuesStruct::clear()
{
    params.clear();
}

ParamValuesQuery ParamValuesStruct::query() const
{
    ParamValuesQuery request;
    request.parent = parent;
    QList<unsigned int> ids;
    ids.reserve(params.size());
    for (auto it = params.cbegin(), end = params.cend(); it != end; ++it)
        ids.append(it.key());
    request.ids = std::move(ids);
    return request;
}

QDateTime ParamValuesStruct::dateTime() const
{
    return m_dateTime;
}

bool ParamValuesStruct::newDataSlot(const ParamValuesResult &result)
{
    if (result.parent != parent)
        return false;
    m_dateTime = result.dateTime;

    QContainerPacket packet(result.data);
    const QList<unsigned int> ids = result.ids;
    TelorExchange::ParameterRun objects;
    for (const unsigned int id : ids) {
        qint32 leadingId = 0;
        packet >> leadingId;
        if (static_cast<unsigned int>(leadingId) != id)
            return false;
        const unsigned int position = packet.position();
        // A private list of strong references: an object that lets go of this
        // structure's entries while it reads cannot pull the walk away.
        TelorExchange::collect(params, id, objects);
        for (const QSharedPointer<AbstractParameterBase> &object : objects) {
            packet.at(position);
            if (!object->read(packet))
                return false;
        }
    }
    return true;
}

#include "abstractparameterbase.h"

#include "parambaseptr.h"
#include "qcontainerpacket.h"

namespace {

constexpr unsigned int StateNoData = 2;
constexpr unsigned int StateGoodBit = 8;
constexpr unsigned int MaxInvalidDepth = 4;

} // namespace

AbstractParameterBase::AbstractParameterBase()
    : AbstractParameterBase(0)
{
}

AbstractParameterBase::AbstractParameterBase(unsigned int idParameter)
    : idParameter(idParameter)
    , state(StateNoData)
    , changedFlag(false)
    , refreshAnyway(false)
    , noDataYet(true)
    , abnormalLatched(false)
    , abnormalHeld(false)
    , abnormalWatch(false)
{
}

AbstractParameterBase::~AbstractParameterBase() = default;

void AbstractParameterBase::setState(unsigned int newState)
{
    if (newState == state)
        refreshHandles();
    else
        upFlag();
    state = newState;
}

unsigned int AbstractParameterBase::getState() const
{
    return state;
}

bool AbstractParameterBase::changed() const
{
    return changedFlag;
}

QString AbstractParameterBase::stringValue(int, char) const
{
    return QString();
}

double AbstractParameterBase::floatValue() const
{
    return 0.0;
}

double AbstractParameterBase::floatValue(int, int, bool *) const
{
    return 0.0;
}

QVariant AbstractParameterBase::variantValue() const
{
    return QVariant();
}

QSharedPointer<AbstractParameterBase> AbstractParameterBase::param(unsigned int, unsigned int) const
{
    return QSharedPointer<AbstractParameterBase>();
}

const ParamInfo *AbstractParameterBase::info(unsigned int, unsigned int) const
{
    return nullptr;
}

int AbstractParameterBase::elementType() const
{
    return 0;
}

void AbstractParameterBase::upFlag()
{
    changedFlag = true;
    const QList<ParamBasePtr *> handles = relatedValues;
    for (ParamBasePtr *handle : handles) {
        if (handle)
            handle->upFlag();
    }
}

void AbstractParameterBase::dropFlag()
{
    changedFlag = false;
}

void AbstractParameterBase::setNoData()
{
    setState(StateNoData);
    changedFlag = true;
    const QList<ParamBasePtr *> handles = relatedValues;
    for (ParamBasePtr *handle : handles) {
        if (handle)
            handle->setNoData();
    }
}

void AbstractParameterBase::setInvalid(unsigned int depth)
{
    if (depth > MaxInvalidDepth)
        return;
    setState(StateNoData);
    const QList<ParamBasePtr *> handles = relatedValues;
    for (ParamBasePtr *handle : handles) {
        if (!handle)
            continue;
        if (AbstractParameterBase *parameter = handle->getParam())
            parameter->setInvalid(depth + 1);
    }
}

unsigned int AbstractParameterBase::getIdParameter() const
{
    return idParameter;
}

void AbstractParameterBase::write(QContainerPacket &packet, bool full) const
{
    packet << static_cast<qint32>(idParameter) << static_cast<qint32>(valueType())
           << static_cast<qint32>(state);
    writePrivate(packet, full);
}

bool AbstractParameterBase::read(QContainerPacket &packet)
{
    qint32 id = 0;
    qint32 type = 0;
    qint32 recordState = 0;
    packet >> id >> type >> recordState;
    // The state is taken before the identifier is compared: a record for another
    // parameter still leaves its state here.
    state = static_cast<unsigned int>(recordState);
    if (static_cast<unsigned int>(id) != idParameter)
        return false;

    changedFlag = true;
    noDataYet = false;
    if (state & StateGoodBit)
        abnormalHeld = false;
    else if (isValid(state) && !abnormalHeld && abnormalWatch)
        abnormalLatched = true;
    return readPrivate(packet);
}

bool AbstractParameterBase::isValid(unsigned int state)
{
    if (state > 4)
        return true;
    // Bits 0, 2 and 4 of the mask are the states 0, 2 and 4.
    return ((0x15u >> state) & 1u) == 0;
}

bool AbstractParameterBase::dataReceived() const
{
    return !noDataYet;
}

void AbstractParameterBase::cleanChanged()
{
    dropFlag();
}

void AbstractParameterBase::setRefreshAnyway(bool refresh)
{
    refreshAnyway = refresh;
}

bool AbstractParameterBase::isRefreshAnyway() const
{
    return refreshAnyway;
}

const CalcLimit &AbstractParameterBase::limits() const
{
    return limitsStore;
}

void AbstractParameterBase::registerRelatedValue(ParamBasePtr *handle)
{
    relatedValues.append(handle);
}

void AbstractParameterBase::unregisterRelatedValue(ParamBasePtr *handle)
{
    relatedValues.removeOne(handle);
}

void AbstractParameterBase::refreshHandles() const
{
    const QList<ParamBasePtr *> handles = relatedValues;
    for (ParamBasePtr *handle : handles) {
        if (handle)
            handle->refresh();
    }
}

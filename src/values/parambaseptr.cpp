#include "parambaseptr.h"

#include "abstractparameterbase.h"

ParamBasePtr::ParamBasePtr(AbstractParameterBase *parameter, bool refresh)
    : paramPtr(parameter)
    , changedFlag(true)
    , refreshFlag(refresh)
    , firstWrite(true)
{
    if (paramPtr)
        paramPtr->registerRelatedValue(this);
}

ParamBasePtr::~ParamBasePtr()
{
    if (paramPtr)
        paramPtr->unregisterRelatedValue(this);
}

void ParamBasePtr::upFlag()
{
    changedFlag = true;
}

void ParamBasePtr::dropFlag()
{
    changedFlag = false;
}

void ParamBasePtr::setNoData()
{
    changedFlag = true;
}

void ParamBasePtr::write(QContainerPacket &packet) const
{
    if (!paramPtr)
        return;
    paramPtr->write(packet, firstWrite);
    firstWrite = false;
}

void ParamBasePtr::refresh()
{
    if (refreshFlag)
        changedFlag = true;
}

bool ParamBasePtr::changed() const
{
    return changedFlag;
}

unsigned int ParamBasePtr::id() const
{
    return paramPtr ? paramPtr->getIdParameter() : 0;
}

AbstractParameterBase *ParamBasePtr::getParam() const
{
    return paramPtr;
}

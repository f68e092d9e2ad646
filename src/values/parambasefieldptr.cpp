#include "parambasefieldptr.h"

#include "bpfield.h"

ParamBaseFieldPtr::ParamBaseFieldPtr(BPField *owner, AbstractParameterBase *element)
    : ParamBasePtr(element, false)
    , field(owner)
{
}

ParamBaseFieldPtr::~ParamBaseFieldPtr() = default;

void ParamBaseFieldPtr::upFlag()
{
    if (field)
        field->upFlag();
    changedFlag = true;
}

void ParamBaseFieldPtr::dropFlag()
{
    changedFlag = false;
    if (paramPtr)
        paramPtr->dropFlag();
}

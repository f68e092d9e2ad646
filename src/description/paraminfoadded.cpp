#include "paraminfoadded.h"

ParamInfoAdded::ParamInfoAdded()
    : ParamInfoChanged()
{
    serviceId = 2;
    messageId = 7;
    messageType = 4;
}

ParamInfoAdded::~ParamInfoAdded() = default;

#include "paraminfoquery.h"

ParamInfoQuery::ParamInfoQuery()
{
    serviceId = 2;
    messageId = 1;
    messageType = 1;
}

ParamInfoQuery::~ParamInfoQuery() = default;

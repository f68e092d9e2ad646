#include "paramgroupinfo.h"

ParamGroupInfo::ParamGroupInfo(int messageId)
{
    this->messageId = messageId;
}

ParamGroupInfo::ParamGroupInfo(const ParamGroupInfo &other) = default;

ParamGroupInfo::~ParamGroupInfo() = default;

ParamGroupInfo &ParamGroupInfo::operator=(const ParamGroupInfo &other)
{
    ParamGroupInfoBase::operator=(other);
    return *this;
}

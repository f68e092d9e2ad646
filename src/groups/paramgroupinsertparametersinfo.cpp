#include "paramgroupinsertparametersinfo.h"

#include "qcontainerpacket.h"

ParamGroupInsertParametersInfo::ParamGroupInsertParametersInfo()
    : mode(ReplaceMode)
{
    messageId = 10;
}

ParamGroupInsertParametersInfo::ParamGroupInsertParametersInfo(const ParamGroupInsertParametersInfo &other)
    : ParamGroupInfoBase()
    , mode(ReplaceMode)
{
    ParamGroupInsertParametersInfo::operator=(other);
}

ParamGroupInsertParametersInfo::~ParamGroupInsertParametersInfo() = default;

void ParamGroupInsertParametersInfo::writePrivate(QContainerPacket &packet) const
{
    ParamGroupInfoBase::writePrivate(packet);
    packet << anchor << anchorExtra << qint32(mode);
}

bool ParamGroupInsertParametersInfo::readPrivate(QContainerPacket &packet)
{
    if (!ParamGroupInfoBase::readPrivate(packet))
        return false;
    qint32 newMode = 0;
    packet >> anchor >> anchorExtra >> newMode;
    mode = newMode;
    return true;
}

ParamGroupInsertParametersInfo &ParamGroupInsertParametersInfo::operator=(const ParamGroupInsertParametersInfo &other)
{
    ParamGroupInfoBase::operator=(other);
    anchor = other.anchor;
    anchorExtra = other.anchorExtra;
    mode = other.mode;
    return *this;
}

int ParamGroupInsertParametersInfo::getInsertPosition(int position) const
{
    return mode == BelowMode ? position + 1 : position;
}

#include "paramgroupcopypasteremoveinfo.h"

#include "qcontainerpacket.h"

ParamGroupCopyPasteRemoveInfo::ParamGroupCopyPasteRemoveInfo(int messageId)
{
    this->messageId = messageId;
}

ParamGroupCopyPasteRemoveInfo::ParamGroupCopyPasteRemoveInfo(const ParamGroupCopyPasteRemoveInfo &other)
    : ParamGroupInfoBase()
{
    ParamGroupCopyPasteRemoveInfo::operator=(other);
}

ParamGroupCopyPasteRemoveInfo::~ParamGroupCopyPasteRemoveInfo() = default;

void ParamGroupCopyPasteRemoveInfo::writePrivate(QContainerPacket &packet) const
{
    ParamGroupInfoBase::writePrivate(packet);
    packet << what << whatExtra;
}

bool ParamGroupCopyPasteRemoveInfo::readPrivate(QContainerPacket &packet)
{
    // The common part's verdict is deliberately not passed on: this message accepts
    // every body.
    ParamGroupInfoBase::readPrivate(packet);
    packet >> what >> whatExtra;
    return true;
}

ParamGroupCopyPasteRemoveInfo &ParamGroupCopyPasteRemoveInfo::operator=(const ParamGroupCopyPasteRemoveInfo &other)
{
    ParamGroupInfoBase::operator=(other);
    what = other.what;
    whatExtra = other.whatExtra;
    return *this;
}

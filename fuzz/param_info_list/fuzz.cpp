// Feeds arbitrary bytes, as the body of a packet, to the reader of the parameter list:
// descriptions, the second count, the group tree, the event type catalogue, the block of
// bytes and the table of texts.
//
// Whatever the read returns, what it stored must write again, copy and assign. A list
// that read as true must come back as true from its own bytes, with the same
// descriptions, tree, event types, data and texts.

#include "fuzztarget.h"

#include "paraminfolist.h"

#include <cstddef>
#include <cstdint>

namespace {

bool sameTree(const ParamGroupItem &a, const ParamGroupItem &b)
{
    if (a.type != b.type || a.flag != b.flag || a.tags != b.tags || a.children.size() != b.children.size())
        return false;
    for (int i = 0; i < a.children.size(); ++i) {
        const ParamGroupItem *x = a.children.at(i);
        const ParamGroupItem *y = b.children.at(i);
        if (!x || !y || !sameTree(*x, *y))
            return false;
    }
    return true;
}

bool sameList(const ParamInfoList &a, const ParamInfoList &b)
{
    if (a.params.size() != b.params.size())
        return false;
    for (int i = 0; i < a.params.size(); ++i) {
        if (!(a.params.at(i) == b.params.at(i)))
            return false;
    }
    if (!sameTree(a.rootItem, b.rootItem) || a.eventTypes.size() != b.eventTypes.size())
        return false;
    for (auto it = a.eventTypes.cbegin(); it != a.eventTypes.cend(); ++it) {
        const auto other = b.eventTypes.constFind(it.key());
        if (other == b.eventTypes.cend() || other->id != it->id || other->messages.size() != it->messages.size())
            return false;
    }
    return a.rawData == b.rawData && a.translations == b.translations;
}

void useList(const ParamInfoList &list)
{
    (void)list.rootItem.getParamList();
    (void)list.rootItem.getID();
    for (const ParamInfo &info : list.params) {
        (void)info.isValid();
        (void)info.getName(QStringLiteral("ru"));
    }
    for (const EventTypeInfoStruct &type : list.eventTypes) {
        (void)type.translate(QStringLiteral("ru"), true);
        for (const QXmlTranslation &message : type.messages)
            (void)message.engName();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray body(reinterpret_cast<const char *>(data), static_cast<int>(size));

    ParamInfoList list;
    list.setPacket(fuzz::packetWith(2, 1, 0, body));
    const bool accepted = list.read();
    useList(list);

    const ParamInfoList copy(list);
    ParamInfoList assigned;
    assigned.rootItem.children << new ParamGroupItem(ParamGroupItem::ParamItem);
    assigned = copy;
    if (!sameList(assigned, list))
        __builtin_trap();

    const QByteArray written = list.write();
    if (accepted) {
        ParamInfoList again;
        again.setPacket(written);
        if (!again.read() || !sameList(list, again))
            __builtin_trap();
    }
    return 0;
}

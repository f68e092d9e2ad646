// Feeds arbitrary bytes, as the body of a packet, to the readers of the group change
// messages that share the common body: ParamGroupInfo, ParamGroupCopyPasteRemoveInfo and
// ParamGroupInsertParametersInfo.
//
// Whatever a read returns, what it stored must write a body that reads back as true into
// the same fields; the copy-paste-remove reader must accept every body. Each message is
// then copied, assigned and asked for its log texts.

#include "fuzztarget.h"

#include "multitranslator.h"
#include "paramgroupcopypasteremoveinfo.h"
#include "paramgroupinfo.h"
#include "paramgroupinsertparametersinfo.h"

#include <cstdint>

namespace {

bool sameTree(const ParamGroupItem &a, const ParamGroupItem &b)
{
    if (a.type != b.type || a.flag != b.flag || a.tags != b.tags || a.children.size() != b.children.size())
        return false;
    for (int i = 0; i < a.children.size(); ++i) {
        if (!sameTree(*a.children.at(i), *b.children.at(i)))
            return false;
    }
    return true;
}

bool sameBase(const ParamGroupInfoBase &a, const ParamGroupInfoBase &b)
{
    return a.path == b.path && a.extra1 == b.extra1 && a.extra2 == b.extra2 && sameTree(a.item, b.item)
        && a.params == b.params;
}

/** Writes @p message, reads the packet into a fresh @p Message and checks that it matches. */
template<typename Message, typename Same>
void rewrite(Message &message, Message fresh, Same same)
{
    fresh.setPacket(message.write());
    if (!fresh.read() || !same(message, fresh))
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool translated = [] {
        multiTranslator.insert(QStringLiteral("ru"), QStringLiteral("ParamGroupInfo"), QStringLiteral("Path: %0"),
                               QStringLiteral("Put: %0"));
        multiTranslator.insert(QStringLiteral("ru"), QStringLiteral("ParamGroupInfo"), QStringLiteral("Where:"),
                               QStringLiteral("Kuda:"));
        return true;
    }();
    (void)translated;

    const QByteArray body(reinterpret_cast<const char *>(data), static_cast<int>(size));

    ParamGroupInfo info(0);
    info.setPacket(fuzz::packetWith(2, 3, 1, body));
    info.read();
    rewrite(info, ParamGroupInfo(0), sameBase);
    (void)info.getCreateGroupLogDetails().translate(QStringLiteral("ru"), false);
    ParamGroupInfo infoCopy(info);
    infoCopy = info;

    ParamGroupCopyPasteRemoveInfo copy(0);
    copy.setPacket(fuzz::packetWith(2, 4, 1, body));
    if (!copy.read())
        __builtin_trap();
    rewrite(copy, ParamGroupCopyPasteRemoveInfo(0), [](const ParamGroupCopyPasteRemoveInfo &a, const ParamGroupCopyPasteRemoveInfo &b) {
        return sameBase(a, b) && a.what == b.what && a.whatExtra == b.whatExtra;
    });
    (void)copy.getCopyLogDetails();
    (void)copy.getRemoveLogDetails();
    ParamGroupCopyPasteRemoveInfo copyCopy(copy);
    ParamGroupInfoBase &asBase = copyCopy;
    asBase = info;

    ParamGroupInsertParametersInfo insert;
    insert.setPacket(fuzz::packetWith(2, 10, 1, body));
    const bool inserted = insert.read();
    rewrite(insert, ParamGroupInsertParametersInfo(), [](const ParamGroupInsertParametersInfo &a, const ParamGroupInsertParametersInfo &b) {
        return sameBase(a, b) && a.anchor == b.anchor && a.anchorExtra == b.anchorExtra && a.mode == b.mode;
    });
    (void)insert.getInsertLogDetails();
    (void)insert.getInsertPosition(insert.params.size());
    ParamGroupInsertParametersInfo insertCopy(insert);
    insertCopy = insert;

    // The three readers share the common part: where it fails, the insert fails too.
    ParamGroupInfo again(0);
    again.setPacket(fuzz::packetWith(2, 3, 1, body));
    if (inserted && !again.read())
        __builtin_trap();
    return 0;
}

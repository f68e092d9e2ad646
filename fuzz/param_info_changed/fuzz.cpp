// Feeds arbitrary bytes, as the body of a packet, to the readers of the description
// notices: changed descriptions, added descriptions and restored identifiers.
//
// The notice of added descriptions reads exactly as the notice of changes does, so the
// two must agree on every body. The notice of restored identifiers accepts every body.
// A notice that read as true must come back as true from its own bytes with the same
// records; every record read is written again and asked for its texts.

#include "fuzztarget.h"

#include "paraminfoadded.h"
#include "paraminfochanged.h"
#include "paraminforestore.h"
#include "qcontainerpacket.h"

#include <cstddef>
#include <cstdint>

namespace {

bool sameRecords(const QList<ParamInfo> &a, const QList<ParamInfo> &b)
{
    if (a.size() != b.size())
        return false;
    for (int i = 0; i < a.size(); ++i) {
        if (!(a.at(i) == b.at(i)))
            return false;
    }
    return true;
}

void useRecord(const ParamInfo &info)
{
    (void)info.isValid();
    (void)info.getUnit(QStringLiteral("en"));
    bool ok = false;
    for (unsigned int word : {0u, 1u, 0xFFFFFFFFu})
        (void)info.bitField.fullWord(word, QStringLiteral("en"), 8, true, &ok);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::silenceQtMessages();

    const QByteArray body(reinterpret_cast<const char *>(data), static_cast<int>(size));

    ParamInfoChanged changed;
    changed.setPacket(fuzz::packetWith(2, 5, 4, body));
    const bool accepted = changed.read();
    for (const ParamInfo &info : qAsConst(changed.params))
        useRecord(info);

    ParamInfoAdded added;
    added.setPacket(fuzz::packetWith(2, 7, 4, body));
    if (added.read() != accepted || !sameRecords(added.params, changed.params))
        __builtin_trap();

    const QByteArray written = changed.write();
    if (accepted) {
        ParamInfoChanged again;
        again.setPacket(written);
        if (!again.read() || !sameRecords(again.params, changed.params))
            __builtin_trap();
    }

    ParamInfoRestore restore;
    restore.setPacket(fuzz::packetWith(2, 6, 4, body));
    if (!restore.read())
        __builtin_trap();
    ParamInfoRestore restoreAgain;
    restoreAgain.setPacket(restore.write());
    if (!restoreAgain.read() || restoreAgain.ids != restore.ids)
        __builtin_trap();
    return 0;
}

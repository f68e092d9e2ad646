// Feeds arbitrary bytes, as the body of a packet, to the reader of
// ParamGroupRemoveParametersInfo. Whatever the read returns, what it stored must write a
// body that reads back as true into the same fields. The message is then copied,
// assigned and asked for its log text.

#include "fuzztarget.h"

#include "multitranslator.h"
#include "paramgroupremoveparametersinfo.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool translated = [] {
        multiTranslator.insert(QStringLiteral("ru"), QStringLiteral("ParamGroupRemoveParametersInfo"),
                               QStringLiteral("Path: %0"), QStringLiteral("Gruppa: %0"));
        return true;
    }();
    (void)translated;

    const QByteArray body(reinterpret_cast<const char *>(data), static_cast<int>(size));
    ParamGroupRemoveParametersInfo info;
    info.setPacket(fuzz::packetWith(2, 14, 1, body));
    info.read();

    ParamGroupRemoveParametersInfo back;
    back.setPacket(info.write());
    if (!back.read() || back.extra != info.extra || back.removed != info.removed)
        __builtin_trap();

    (void)info.getDetails().translate(QStringLiteral("ru"), false);
    ParamGroupRemoveParametersInfo copy(info);
    copy = back;
    return 0;
}

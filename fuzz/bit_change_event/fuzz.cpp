// Feeds arbitrary bytes to the interpretation of a bit-change event. The bytes hold an
// event in its message form, as a server sends it alone, followed by a parameter
// description; both are read from one packet. The event is then shown against that
// description, against a fixed status word description, and against none.
//
// Whatever the bytes, every record shown is keyed by a described bit or by a fault
// combination of the description, and an event whose word did not change shows nothing
// unless the old word had no data.

#include "describe.h"
#include "fuzztarget.h"

#include "eventstruct.h"
#include "parambitfield.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <cstddef>
#include <cstdint>

namespace {

ParamInfo fixedDescription()
{
    ParamInfo info = describe::described(1, QStringLiteral("SW"), 2);
    info.bitField.enabled = 1;
    for (int bit = 0; bit < 6; ++bit) {
        ParamBitField::ParamBitAttributes attributes;
        attributes.name.insert(QStringLiteral("en"), QStringLiteral("Bit %1").arg(bit));
        ParamBitField::ParamBitAttributes::ParamBitState state;
        state.state = bit % 3 == 0 ? 4096 : (bit % 3 == 1 ? 16 : 8);
        attributes.states.insert(bit % 2, state);
        info.bitField.attributes.insert(bit, attributes);
    }
    for (int key : {0x30, 0x3, 0}) {
        ParamBitCombination combination;
        combination.sign = QStringLiteral("==");
        combination.state = key == 0x3 ? 8 : 4096;
        combination.shortText.insert(QStringLiteral("en"), QStringLiteral("C%1").arg(key));
        info.bitField.combinations.insert(key, combination);
    }
    return info;
}

void check(const EventStruct &event, const ParamInfo *info)
{
    const QHash<unsigned int, ParamBitInfo> shown = ParamBitField::getNewBitWord(event, info, QStringLiteral("en"));
    if (!info) {
        if (!shown.isEmpty())
            __builtin_trap();
        return;
    }
    for (auto it = shown.cbegin(); it != shown.cend(); ++it) {
        const int key = int(it.key());
        const bool bit = info->bitField.attributes.contains(key);
        const bool combination = info->bitField.combinations.contains(key);
        if (!bit && !combination)
            __builtin_trap();
    }
    const unsigned int oldWord = event.parameters.value(QStringLiteral("#old_bit_value")).toUInt();
    const unsigned int newWord = event.parameters.value(QStringLiteral("#new_bit_value")).toUInt();
    const int oldState = event.parameters.value(QStringLiteral("#old_bit_state")).toInt();
    if (oldWord == newWord && oldState != 2 && !shown.isEmpty())
        __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::silenceQtMessages();
    static const ParamInfo fixed = fixedDescription();
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QContainerPacket packet(bytes);

    EventStruct event;
    event.readPrivate(packet);
    ParamInfo info;
    info.read(packet);

    check(event, &info);
    check(event, &fixed);
    check(event, nullptr);
    return 0;
}

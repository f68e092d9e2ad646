// Feeds arbitrary bytes to the reader of parameter descriptions, which reaches every
// reader of the description records: limits, enumerations, bit fields, cells, value
// tables, setpoints, translations and the identifier list.
//
// Records are read back to back, as a list message walks them, until one is refused or
// the bytes run out. Each record that was read is then used as an application uses it:
// written again, copied, compared, and asked for the text of values and status words.

#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <cstdint>

namespace {

void useRecord(const ParamInfo &info)
{
    QByteArray out;
    QContainerPacket writer(&out);
    info.write(writer);

    const ParamInfo copy = info;
    (void)(copy == info);
    (void)copy.isValid();
    (void)copy.getName(QStringLiteral("ru"));
    (void)copy.getUnit(QStringLiteral("en"));
    (void)copy.getUnitX(QString());

    for (long long value : {0LL, 1LL, -1LL, 16LL, 0x7FFFFFFFFFFFFFFFLL}) {
        (void)info.enumeration.shortValue(value, QStringLiteral("en"));
        (void)info.enumeration.fullValue(value, QStringLiteral("ru"));
    }
    bool ok = false;
    for (unsigned int word : {0u, 1u, 0x10u, 0xFFFFFFFFu}) {
        for (int state : {0, 2, 8})
            (void)info.bitField.fullWord(word, QStringLiteral("en"), state, true, &ok);
        (void)ParamBitField::getCombination(word, &info, QStringLiteral("en"), &ok);
    }
    for (const ParamFieldElementInfo &cell : info.elements)
        (void)cell.info.isValid();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QContainerPacket packet(bytes);
    while (packet.bytesLeft() > 0) {
        ParamInfo info;
        const bool accepted = info.read(packet);
        useRecord(info);
        if (!accepted)
            break;
    }
    return 0;
}

// Feeds arbitrary bytes to the reader of a status-word description, then renders words
// with what was read.
//
// The first four bytes, when there are four, are the status word to render; the rest is
// the description.

#include "parambitfield.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <QtCore/QtEndian>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 4)
        return 0;
    const unsigned int word = qFromBigEndian<quint32>(data);
    const QByteArray bytes(reinterpret_cast<const char *>(data + 4), static_cast<int>(size - 4));

    ParamInfo info;
    QContainerPacket packet(bytes);
    info.bitField.read(packet);

    QByteArray out;
    QContainerPacket writer(&out);
    info.bitField.write(writer);

    bool ok = false;
    for (int state : {0, 2, 8, 4096}) {
        (void)info.bitField.fullWord(word, QStringLiteral("en"), state, true, &ok);
        (void)info.bitField.fullWord(word, QStringLiteral("ru"), state, false, nullptr);
    }
    (void)ParamBitField::getCombination(word, &info, QStringLiteral("en"), &ok);
    (void)ParamBitField::getCombination(word, &info, QStringLiteral("ru"), nullptr);
    return 0;
}

// Feeds arbitrary bytes, as the body of a packet, to the readers of the description
// notices: changed descriptions, added descriptions and restored identifiers.
//
// The notice of added descriptions reads exactly as the notice of changes does, so the
// two must agree on every body. The notice of restored identifiers accepts every body.
// A notice that read as true must come back as true from its own bytes with the same
// records; every record read is written again and asked for its texts.

#include "paraminfoadded.h"
#include "paraminfochanged.h"
#include "paraminforestore.h"
#include "qcontainerpacket.h"

#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

namespace {

void quiet(QtMsgType, const QMessageLogContext &, const QString &) {}

QByteArray packetWith(qint32 messageId, const QByteArray &body)
{
    QByteArray packet(QProtocolStruct::HeaderSize, '\0');
    const qint32 words[8] = {2, messageId, 4, 1, qint32(body.size()), 0, 0, 0};
    for (int i = 0; i < 8; ++i)
        qToBigEndian<qint32>(words[i], packet.data() + 4 * i);
    return packet + body;
}

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
    static const bool installed = [] {
        qInstallMessageHandler(quiet);
        return true;
    }();
    (void)installed;

    const QByteArray body(reinterpret_cast<const char *>(data), static_cast<int>(size));

    ParamInfoChanged changed;
    changed.setPacket(packetWith(5, body));
    const bool accepted = changed.read();
    for (const ParamInfo &info : qAsConst(changed.params))
        useRecord(info);

    ParamInfoAdded added;
    added.setPacket(packetWith(7, body));
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
    restore.setPacket(packetWith(6, body));
    if (!restore.read())
        __builtin_trap();
    ParamInfoRestore restoreAgain;
    restoreAgain.setPacket(restore.write());
    if (!restoreAgain.read() || restoreAgain.ids != restore.ids)
        __builtin_trap();
    return 0;
}

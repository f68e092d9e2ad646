// Feeds arbitrary bytes to the packet reader of event type descriptions. Descriptions
// are read back to back, as the parameter list message reads its catalogue, until the
// bytes run out or the stream goes bad. Each record is read a second time into a used
// description, which must come out as the fresh one did, and written again.

#include "eventtypeinfostruct.h"
#include "qcontainerpacket.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QContainerPacket packet(bytes);
    EventTypeInfoStruct reused;
    reused.setEngName(QStringLiteral("used"));
    reused.setTranslation(QStringLiteral("text"), QStringLiteral("ru"));
    reused.id = 9;
    reused.messages.insert(1, QXmlTranslation(QStringLiteral("old")));
    do {
        const unsigned int start = packet.position();
        const EventTypeInfoStruct event(packet);
        const unsigned int end = packet.position();

        packet.at(start);
        reused.read(packet);
        if (packet.position() != end || reused.id != event.id || reused.engName() != event.engName()
            || reused.translations() != event.translations() || reused.messages.size() != event.messages.size())
            __builtin_trap();

        QByteArray out;
        QContainerPacket writer(&out);
        event.write(writer);
    } while (packet.status() == QDataStream::Ok && packet.bytesLeft() > 0);
    return 0;
}

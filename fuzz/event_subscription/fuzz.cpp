// Feeds arbitrary bytes to the reader of the event subscription messages. The first byte
// picks the message and, with the next three, the route words of the packet; the rest is
// the body. The token read must survive a second trip, and checkQuery must agree with
// the route and the token.

#include "fuzztarget.h"

#include "eventstatisticssubscription.h"
#include "eventstatisticssubscriptioncancel.h"
#include "eventsubscription.h"
#include "eventsubscriptioncancel.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace {

std::unique_ptr<EventBaseSubscription> make(int which)
{
    switch (which & 3) {
    case 0:
        return std::make_unique<EventSubscription>(nullptr);
    case 1:
        return std::make_unique<EventSubscriptionCancel>(nullptr);
    case 2:
        return std::make_unique<EventStatisticsSubscription>(nullptr);
    default:
        return std::make_unique<EventStatisticsSubscriptionCancel>(nullptr);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::silenceQtMessages();
    if (size < 4 || size > (1u << 16))
        return 0;
    const QByteArray body(reinterpret_cast<const char *>(data + 4), static_cast<int>(size - 4));
    const qint32 source = data[1], session = data[2], sequence = data[3];

    std::unique_ptr<EventBaseSubscription> message = make(data[0]);
    message->setPacket(fuzz::packetWith(3, 18 + (data[0] & 3), 1, body, source, session, sequence));
    if (!message->read())
        __builtin_trap();

    std::unique_ptr<EventBaseSubscription> again = make(data[0] >> 2);
    again->setPacket(message->write());
    if (!again->read() || again->parent() != message->parent())
        __builtin_trap();
    if (!message->checkQuery(*message) || !message->checkQuery(*again))
        __builtin_trap();

    std::unique_ptr<EventBaseSubscription> other = make(data[0]);
    other->setPacket(fuzz::packetWith(3, 18, 1, body, source, session, sequence + 1));
    other->read();
    if (message->checkQuery(*other))
        __builtin_trap();
    return 0;
}

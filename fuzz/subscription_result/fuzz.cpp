// Feeds arbitrary bytes to the subscription path: the body of a ParamSubscriptionResult,
// delivered as an untyped message to ClientParamSubscription::newDataSlot(), which routes
// it by token to one of two clients and walks the records into their objects; and the
// same bytes as the body of a ParamSubscriptionQuery, as a server reads it. The result and
// the objects are written again, as a relay would. The token field is forced to a known
// client unless the selector byte says otherwise, so that the record walk is reached.

#include "fuzzsetup.h"
#include "fuzztarget.h"

#include "paramsubscriptionquery.h"
#include "paramsubscriptionresult.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1 || size > (1u << 20))
        return 0;
    const auto selector = static_cast<subscriptionfuzz::Selector>(data[0] % subscriptionfuzz::SelectorCount);
    QByteArray body(reinterpret_cast<const char *>(data + 1), static_cast<int>(size - 1));
    switch (selector) {
    case subscriptionfuzz::Panel:
        body = resultfuzz::withToken(body, subscriptionfuzz::panel());
        break;
    case subscriptionfuzz::Logger:
        body = resultfuzz::withToken(body, subscriptionfuzz::logger());
        break;
    case subscriptionfuzz::NullToken:
        body = resultfuzz::withToken(body, nullptr);
        break;
    case subscriptionfuzz::Stranger:
        body = resultfuzz::withToken(body, subscriptionfuzz::stranger());
        break;
    case subscriptionfuzz::KeepToken:
        break;
    }

    const QByteArray packet = fuzz::packetWith(3, 1, 1, body);
    ClientParamSubscription subscription;
    QList<QSharedPointer<AbstractParameterBase>> objects;
    subscriptionfuzz::fill(subscription, &objects);
    QProtocolStruct message;
    message.setPacket(packet);
    subscription.newDataSlot(message);
    subscription.allQueries();
    subscription.setState(8);
    subscription.dropFlags();
    resultfuzz::writeAll(objects);

    ParamSubscriptionResult result;
    result.setPacket(packet);
    result.read();
    result.write();

    ParamSubscriptionQuery query(nullptr);
    query.setPacket(packet);
    query.read();
    return 0;
}

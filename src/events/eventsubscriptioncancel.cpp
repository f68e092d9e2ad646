#include "eventsubscriptioncancel.h"

EventSubscriptionCancel::EventSubscriptionCancel(const QObject *parent)
    : EventBaseSubscription(parent)
{
    serviceId = 3;
    messageId = 19;
    messageType = 1;
}

EventSubscriptionCancel::~EventSubscriptionCancel() = default;

#include "eventsubscription.h"

EventSubscription::EventSubscription(const QObject *parent)
    : EventBaseSubscription(parent)
{
    serviceId = 3;
    messageId = 18;
    messageType = 1;
}

EventSubscription::~EventSubscription() = default;

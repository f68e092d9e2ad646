#include "eventstatisticssubscriptioncancel.h"

EventStatisticsSubscriptionCancel::EventStatisticsSubscriptionCancel(const QObject *parent)
    : EventBaseSubscription(parent)
{
    serviceId = 3;
    messageId = 22;
    messageType = 1;
}

EventStatisticsSubscriptionCancel::~EventStatisticsSubscriptionCancel() = default;

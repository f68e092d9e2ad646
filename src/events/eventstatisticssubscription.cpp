#include "eventstatisticssubscription.h"

EventStatisticsSubscription::EventStatisticsSubscription(const QObject *parent)
    : EventBaseSubscription(parent)
{
    serviceId = 3;
    messageId = 21;
    messageType = 1;
}

EventStatisticsSubscription::~EventStatisticsSubscription() = default;

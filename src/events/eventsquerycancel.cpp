#include "eventsquerycancel.h"

EventsQueryCancel::EventsQueryCancel(const QObject *parent)
    : EventsQueryBase(2, parent)
{
    serviceId = 3;
    messageId = 16;
    messageType = 1;
}

EventsQueryCancel::~EventsQueryCancel() = default;

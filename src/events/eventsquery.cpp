#include "eventsquery.h"

#include "eventwire_p.h"
#include "qcontainerpacket.h"

namespace {

/** @p point without its milliseconds of the second, when it is valid. */
void cutMilliseconds(QDateTime &point)
{
    if (point.isValid())
        point = point.addMSecs(-point.time().msec());
}

} // namespace

EventsQuery::EventsQuery(signed char type, QObject *parent)
    : EventsQueryBase(type, parent)
    , msecReset(true)
    , fromBegin(false)
    , toEnd(false)
    , option1(-1)
    , localValue(0)
    , option2(-1)
{
    serviceId = 3;
    messageId = 12;
    messageType = 1;
}

EventsQuery::EventsQuery(const EventsQuery &other)
    : EventsQueryBase(other.type(), other.parent)
    , msecReset(true)
    , beginPoint(other.beginPoint)
    , endPoint(other.endPoint)
    , fromBegin(other.fromBegin)
    , toEnd(other.toEnd)
    , option1(other.option1)
    , localValue(other.localValue)
    , events(other.events)
    , option2(other.option2)
{
    queryTag = other.queryTag;
    serviceId = 3;
    messageId = 12;
    messageType = 1;
}

EventsQuery::~EventsQuery() = default;

void EventsQuery::writePrivate(QContainerPacket &packet) const
{
    EventsQueryBase::writePrivate(packet);
    const bool valid = isValid();
    packet << qint8(valid ? 1 : 0);
    if (!valid)
        return;
    packet << msecReset << fromBegin;
    if (!fromBegin)
        packet << beginPoint;
    packet << toEnd;
    if (!toEnd)
        packet << endPoint;
    packet << qint32(option1);
    TelorEvents::writeList(packet, events);
    packet << qint32(option2);
}

bool EventsQuery::readPrivate(QContainerPacket &packet)
{
    EventsQueryBase::readPrivate(packet);
    qint8 valid = 0;
    packet >> valid;
    if (valid == 0)
        return true;
    packet >> msecReset >> fromBegin;
    if (!fromBegin)
        TelorWire::readDateTime(packet, beginPoint);
    packet >> toEnd;
    if (!toEnd)
        TelorWire::readDateTime(packet, endPoint);
    if (msecReset) {
        cutMilliseconds(beginPoint);
        cutMilliseconds(endPoint);
    }
    packet >> option1;
    TelorEvents::readList(packet, events);
    packet >> option2;
    return true;
}

bool EventsQuery::setInterval(const QDateTime &begin, const QDateTime &end)
{
    if (!begin.isValid())
        return false;
    if (!end.isValid() || end < begin)
        return false;
    beginPoint = begin.toUTC();
    endPoint = end.toUTC();
    fromBegin = false;
    toEnd = false;
    return true;
}

bool EventsQuery::setBeginPoint(const QDateTime &point)
{
    beginPoint = point.toUTC();
    fromBegin = false;
    return true;
}

bool EventsQuery::setEndPoint(const QDateTime &point)
{
    endPoint = point.toUTC();
    toEnd = false;
    return true;
}

bool EventsQuery::isValid() const
{
    if (!fromBegin && !beginPoint.isValid())
        return false;
    if (!toEnd && !endPoint.isValid())
        return false;
    if (!beginPoint.isValid() || !endPoint.isValid())
        return true;
    return !(endPoint < beginPoint);
}

QDateTime EventsQuery::getBeginDateTime() const
{
    return beginPoint;
}

QDateTime EventsQuery::getEndDateTime() const
{
    return endPoint;
}

void EventsQuery::setFromBegin()
{
    fromBegin = true;
    beginPoint = QDateTime();
}

void EventsQuery::setToEnd()
{
    toEnd = true;
    endPoint = QDateTime();
}

void EventsQuery::setMSecReset(bool reset)
{
    msecReset = reset;
}

#include "archivevalue.h"

#include <QtCore/QDataStream>

#include "wirestream_p.h"

ArchiveValue::ArchiveValue()
    : state(2)
{
}

ArchiveValue::ArchiveValue(QDataStream &stream)
    : state(2)
{
    quint32 wireState = 0;
    TelorWire::readDateTime(stream, dateTime);
    TelorWire::readVariant(stream, value);
    TelorWire::forgetUnknownZones(value);
    stream >> wireState;
    state = wireState;
}

ArchiveValue::ArchiveValue(const QDateTime &dateTime, const QVariant &value, unsigned int state)
    : dateTime(dateTime)
    , value(value)
    , state(state)
{
}

ArchiveValue::ArchiveValue(const QDateTime &dateTime, double value, unsigned int state)
    : dateTime(dateTime)
    , value(value)
    , state(state)
{
}

ArchiveValue::ArchiveValue(const QDateTime &dateTime, unsigned int value, unsigned int state)
    : dateTime(dateTime)
    , value(value)
    , state(state)
{
}

ArchiveValue::ArchiveValue(const QDateTime &dateTime, const QString &value, unsigned int state)
    : dateTime(dateTime)
    , value(value)
    , state(state)
{
}

ArchiveValue::ArchiveValue(const QDateTime &dateTime, const QByteArray &value, unsigned int state)
    : dateTime(dateTime)
    , value(value)
    , state(state)
{
}

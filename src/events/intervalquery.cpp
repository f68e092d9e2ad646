#include "intervalquery.h"

#include "qcontainerpacket.h"
#include "wirestream_p.h"

namespace {

void writeOptionalDate(QDataStream &stream, const QDateTime &date)
{
    if (date.isValid())
        stream << qint8(1) << date;
    else
        stream << qint8(0);
}

void readOptionalDate(QDataStream &stream, QDateTime &date)
{
    qint8 present = 0;
    stream >> present;
    if (present == 0)
        date = QDateTime();
    else
        TelorWire::readDateTime(stream, date);
}

} // namespace

IntervalQuery::IntervalQuery(int messageId)
{
    serviceId = 3;
    this->messageId = messageId;
    messageType = 1;
}

IntervalQuery::~IntervalQuery() = default;

void IntervalQuery::writePrivate(QContainerPacket &packet) const
{
    writeOptionalDate(packet, begin);
    writeOptionalDate(packet, end);
}

bool IntervalQuery::readPrivate(QContainerPacket &packet)
{
    readOptionalDate(packet, begin);
    readOptionalDate(packet, end);
    return true;
}

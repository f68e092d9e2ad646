#include "datetimestruct.h"

#include "rawrecord_p.h"
#include "telorstream.h"


DateTimeStruct::DateTimeStruct()
    : first(0), second(0)
{
}

DateTimeStruct::DateTimeStruct(const DateTimeStruct &other) = default;

DateTimeStruct &DateTimeStruct::operator=(const DateTimeStruct &other) = default;

DateTimeStruct::~DateTimeStruct() = default;

int DateTimeStruct::size() const
{
    return 8;
}

void DateTimeStruct::writeBuffer(char *&buffer, TELORDataStream &stream) const
{
    Q_UNUSED(stream)
    TelorRaw::put(buffer, first);
    TelorRaw::put(buffer, second);
}

void DateTimeStruct::readBuffer(char *&buffer, TELORDataStream &stream)
{
    Q_UNUSED(stream)
    TelorRaw::take(buffer, first);
    TelorRaw::take(buffer, second);
}

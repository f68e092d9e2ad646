#include "sevenuint.h"

#include "rawrecord_p.h"
#include "telorstream.h"


SevenUInt::SevenUInt()
    : values{}
{
}

SevenUInt::SevenUInt(const SevenUInt &other) = default;

SevenUInt &SevenUInt::operator=(const SevenUInt &other) = default;

SevenUInt::~SevenUInt() = default;

int SevenUInt::size() const
{
    return 28;
}

void SevenUInt::writeBuffer(char *&buffer, TELORDataStream &stream) const
{
    Q_UNUSED(stream)
    for (const quint32 &entry : values)
        TelorRaw::put(buffer, entry);
}

void SevenUInt::readBuffer(char *&buffer, TELORDataStream &stream)
{
    Q_UNUSED(stream)
    for (quint32 &entry : values)
        TelorRaw::take(buffer, entry);
}

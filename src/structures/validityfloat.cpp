#include "validityfloat.h"

#include "rawrecord_p.h"
#include "telorstream.h"

static_assert(sizeof(float) == 4, "float must be 32 bits wide in a packed record");

ValidityFloat::ValidityFloat()
    : value(0), validity(0)
{
}

ValidityFloat::ValidityFloat(const ValidityFloat &other) = default;

ValidityFloat &ValidityFloat::operator=(const ValidityFloat &other) = default;

ValidityFloat::~ValidityFloat() = default;

int ValidityFloat::size() const
{
    return 8;
}

void ValidityFloat::writeBuffer(char *&buffer, TELORDataStream &stream) const
{
    Q_UNUSED(stream)
    TelorRaw::put(buffer, value);
    TelorRaw::put(buffer, validity);
}

void ValidityFloat::readBuffer(char *&buffer, TELORDataStream &stream)
{
    Q_UNUSED(stream)
    TelorRaw::take(buffer, value);
    TelorRaw::take(buffer, validity);
}

#include "validitydouble.h"

#include "rawrecord_p.h"
#include "telorstream.h"

static_assert(sizeof(double) == 8, "double must be 64 bits wide in a packed record");

ValidityDouble::ValidityDouble()
    : value(0), validity(0)
{
}

ValidityDouble::ValidityDouble(const ValidityDouble &other) = default;

ValidityDouble &ValidityDouble::operator=(const ValidityDouble &other) = default;

ValidityDouble::~ValidityDouble() = default;

int ValidityDouble::size() const
{
    return 12;
}

void ValidityDouble::writeBuffer(char *&buffer, TELORDataStream &stream) const
{
    Q_UNUSED(stream)
    TelorRaw::put(buffer, value);
    TelorRaw::put(buffer, validity);
}

void ValidityDouble::readBuffer(char *&buffer, TELORDataStream &stream)
{
    Q_UNUSED(stream)
    TelorRaw::take(buffer, value);
    TelorRaw::take(buffer, validity);
}

#include "sevenfloat.h"

#include "rawrecord_p.h"
#include "telorstream.h"

static_assert(sizeof(float) == 4, "float must be 32 bits wide in a packed record");

SevenFloat::SevenFloat()
    : values{}
{
}

SevenFloat::SevenFloat(const SevenFloat &other) = default;

SevenFloat &SevenFloat::operator=(const SevenFloat &other) = default;

SevenFloat::~SevenFloat() = default;

int SevenFloat::size() const
{
    return 28;
}

void SevenFloat::writeBuffer(char *&buffer, TELORDataStream &stream) const
{
    Q_UNUSED(stream)
    for (const float &entry : values)
        TelorRaw::put(buffer, entry);
}

void SevenFloat::readBuffer(char *&buffer, TELORDataStream &stream)
{
    Q_UNUSED(stream)
    for (float &entry : values)
        TelorRaw::take(buffer, entry);
}

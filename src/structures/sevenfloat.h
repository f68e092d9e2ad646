#ifndef SEVENFLOAT_H
#define SEVENFLOAT_H

#include <QtCore/QtGlobal>

#include "abstractvaluestruct.h"
#include "telorparams5_export.h"

/**
 * @brief A packed record of seven 32-bit floating-point numbers, 28 bytes long.
 *
 * The entries of `values` lie at offsets 0, 4, 8, 12, 16, 20 and 24. The library only
 * carries them; their meaning is the application's. All fields are in the byte order of
 * the machine. A new record has every field zero; the fields are public and are the
 * record's accessors.
 *
 * writeBuffer() and readBuffer() copy the fields in this order and stream nothing to the
 * side stream.
 */
class TELORPARAMS5_EXPORT SevenFloat : public AbstractValueStruct
{
public:
    /** Every field zero. */
    SevenFloat();
    /** Copies the fields; the copy has `checkSize` true. */
    SevenFloat(const SevenFloat &other);
    /** Copies the fields and leaves this record's `checkSize` alone. */
    SevenFloat &operator=(const SevenFloat &other);
    ~SevenFloat() override;

    /** 28. */
    int size() const override;
    void writeBuffer(char *&buffer, TELORDataStream &stream) const override;
    void readBuffer(char *&buffer, TELORDataStream &stream) override;

    /** Seven 32-bit floats at offsets 0, 4, 8, 12, 16, 20 and 24. */
    float values[7];
};

#endif // SEVENFLOAT_H

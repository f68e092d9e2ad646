#ifndef SEVENUINT_H
#define SEVENUINT_H

#include <QtCore/QtGlobal>

#include "abstractvaluestruct.h"
#include "telorparams5_export.h"

/**
 * @brief A packed record of seven 32-bit unsigned integers, 28 bytes long.
 *
 * The entries of `values` lie at offsets 0, 4, 8, 12, 16, 20 and 24. The library only
 * carries them; their meaning is the application's. All fields are in the byte order of
 * the machine. A new record has every field zero; the fields are public and are the
 * record's accessors.
 *
 * writeBuffer() and readBuffer() copy the fields in this order and stream nothing to the
 * side stream.
 */
class TELORPARAMS5_EXPORT SevenUInt : public AbstractValueStruct
{
public:
    /** Every field zero. */
    SevenUInt();
    /** Copies the fields; the copy has `checkSize` true. */
    SevenUInt(const SevenUInt &other);
    /** Copies the fields and leaves this record's `checkSize` alone. */
    SevenUInt &operator=(const SevenUInt &other);
    ~SevenUInt() override;

    /** 28. */
    int size() const override;
    void writeBuffer(char *&buffer, TELORDataStream &stream) const override;
    void readBuffer(char *&buffer, TELORDataStream &stream) override;

    /** Seven 32-bit unsigned integers at offsets 0, 4, 8, 12, 16, 20 and 24. */
    quint32 values[7];
};

#endif // SEVENUINT_H

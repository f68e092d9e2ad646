#ifndef VALIDITYFLOAT_H
#define VALIDITYFLOAT_H

#include <QtCore/QtGlobal>

#include "abstractvaluestruct.h"
#include "telorparams5_export.h"

/**
 * @brief A packed record of a 32-bit floating-point value and a 32-bit validity, 8 bytes long.
 *
 * `value` lies at offset 0 and `validity` at offset 4. All fields are in the byte order of
 * the machine. A new record has every field zero; the fields are public and are the
 * record's accessors.
 *
 * writeBuffer() and readBuffer() copy the fields in this order and stream nothing to the
 * side stream.
 */
class TELORPARAMS5_EXPORT ValidityFloat : public AbstractValueStruct
{
public:
    /** Every field zero. */
    ValidityFloat();
    /** Copies the fields; the copy has `checkSize` true. */
    ValidityFloat(const ValidityFloat &other);
    /** Copies the fields and leaves this record's `checkSize` alone. */
    ValidityFloat &operator=(const ValidityFloat &other);
    ~ValidityFloat() override;

    /** 8. */
    int size() const override;
    void writeBuffer(char *&buffer, TELORDataStream &stream) const override;
    void readBuffer(char *&buffer, TELORDataStream &stream) override;

    /** 32-bit floating point at offset 0. */
    float value;
    /** 32-bit integer at offset 4. */
    qint32 validity;
};

#endif // VALIDITYFLOAT_H

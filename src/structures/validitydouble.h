#ifndef VALIDITYDOUBLE_H
#define VALIDITYDOUBLE_H

#include <QtCore/QtGlobal>

#include "abstractvaluestruct.h"
#include "telorparams5_export.h"

/**
 * @brief A packed record of a 64-bit floating-point value and a 32-bit validity, 12 bytes long.
 *
 * `value` lies at offset 0 and `validity` at offset 8, with no padding between them. All
 * fields are in the byte order of the machine. A new record has every field zero; the
 * fields are public and are the record's accessors.
 *
 * writeBuffer() and readBuffer() copy the fields in this order and stream nothing to the
 * side stream.
 */
class TELORPARAMS5_EXPORT ValidityDouble : public AbstractValueStruct
{
public:
    /** Every field zero. */
    ValidityDouble();
    /** Copies the fields; the copy has `checkSize` true. */
    ValidityDouble(const ValidityDouble &other);
    /** Copies the fields and leaves this record's `checkSize` alone. */
    ValidityDouble &operator=(const ValidityDouble &other);
    ~ValidityDouble() override;

    /** 12. */
    int size() const override;
    void writeBuffer(char *&buffer, TELORDataStream &stream) const override;
    void readBuffer(char *&buffer, TELORDataStream &stream) override;

    /** 64-bit floating point at offset 0. */
    double value;
    /** 32-bit integer at offset 8. */
    qint32 validity;
};

#endif // VALIDITYDOUBLE_H

#ifndef AZCOORD_H
#define AZCOORD_H

#include <QtCore/QtGlobal>

#include "abstractvaluestruct.h"
#include "telorparams5_export.h"

/**
 * @brief A packed record of two 8-bit integers, 2 bytes long.
 *
 * `first` lies at offset 0 and `second` at offset 1. The library only carries the two
 * numbers; their meaning is the application's. All fields are in the byte order of the
 * machine. A new record has every field zero; the fields are public and are the record's
 * accessors.
 *
 * writeBuffer() and readBuffer() copy the fields in this order and stream nothing to the
 * side stream.
 */
class TELORPARAMS5_EXPORT AZCoord : public AbstractValueStruct
{
public:
    /** Every field zero. */
    AZCoord();
    /** Copies the fields; the copy has `checkSize` true. */
    AZCoord(const AZCoord &other);
    /** Copies the fields and leaves this record's `checkSize` alone. */
    AZCoord &operator=(const AZCoord &other);
    ~AZCoord() override;

    /** 2. */
    int size() const override;
    void writeBuffer(char *&buffer, TELORDataStream &stream) const override;
    void readBuffer(char *&buffer, TELORDataStream &stream) override;

    /** 8-bit integer at offset 0. */
    qint8 first;
    /** 8-bit integer at offset 1. */
    qint8 second;
};

#endif // AZCOORD_H

#ifndef DATETIMESTRUCT_H
#define DATETIMESTRUCT_H

#include <QtCore/QtGlobal>

#include "abstractvaluestruct.h"
#include "telorparams5_export.h"

/**
 * @brief A packed record of two 32-bit integers, 8 bytes long.
 *
 * `first` lies at offset 0 and `second` at offset 4. The library only carries the two
 * numbers; their meaning is the application's. All fields are in the byte order of the
 * machine. A new record has every field zero; the fields are public and are the record's
 * accessors.
 *
 * writeBuffer() and readBuffer() copy the fields in this order and stream nothing to the
 * side stream.
 */
class TELORPARAMS5_EXPORT DateTimeStruct : public AbstractValueStruct
{
public:
    /** Every field zero. */
    DateTimeStruct();
    /** Copies the fields; the copy has `checkSize` true. */
    DateTimeStruct(const DateTimeStruct &other);
    /** Copies the fields and leaves this record's `checkSize` alone. */
    DateTimeStruct &operator=(const DateTimeStruct &other);
    ~DateTimeStruct() override;

    /** 8. */
    int size() const override;
    void writeBuffer(char *&buffer, TELORDataStream &stream) const override;
    void readBuffer(char *&buffer, TELORDataStream &stream) override;

    /** 32-bit integer at offset 0. */
    qint32 first;
    /** 32-bit integer at offset 4. */
    qint32 second;
};

#endif // DATETIMESTRUCT_H

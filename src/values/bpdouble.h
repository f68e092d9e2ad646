#ifndef BPDOUBLE_H
#define BPDOUBLE_H

#include "abstractparameterbase.h"

/**
 * @brief A parameter whose value is a double. Value type 1.
 *
 * setValue() changes no state: it raises the flags (before storing, so that a handle
 * still sees the old value) when the value differs, and a NaN always differs. The payload
 * is the value as an 8-byte double. floatValue() gives the value; stringValue() is the
 * base's null string.
 */
class TELORPARAMS5_EXPORT BPDouble : public AbstractParameterBase
{
public:
    /** A parameter with identifier 0, the value 0.0 and the state 2 (no data). */
    BPDouble();
    /** A parameter with identifier @p idParameter, the value 0.0 and the state 2 (no data). */
    explicit BPDouble(unsigned int idParameter);
    ~BPDouble() override;

    double floatValue() const override;
    using AbstractParameterBase::floatValue;
    int valueType() const override;
    void writePrivate(QContainerPacket &packet, bool full) const override;
    /** Reads the value; always true. A truncated payload reads as 0.0. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The stored value; 0.0 for a new parameter. */
    double getValue() const;
    /** Stores @p value; raises the flags first unless it equals the stored value. */
    void setValue(double value);

protected:
    /** The stored value, the double of the payload. */
    double value;
};

#endif // BPDOUBLE_H

#ifndef BPDISCRETE_H
#define BPDISCRETE_H

#include "abstractparameterbase.h"

/**
 * @brief A parameter whose value is a 32-bit integer, such as a status word. Value type 2.
 *
 * BPDiscrete writes its payload through its own writePrivate(QContainerPacket&), without
 * the `full` argument, and leaves the pure writePrivate(QContainerPacket&, bool) of the
 * base to a subclass. It is therefore abstract: an application uses it through a
 * subclass whose writePrivate(packet, full) usually calls writePrivate(packet).
 *
 * floatValue() converts the 32 bits as an unsigned number, so a stored -1 gives
 * 4294967295.0. setValue() raises the flags (before storing) when the value differs.
 */
class TELORPARAMS5_EXPORT BPDiscrete : public AbstractParameterBase
{
public:
    /** A parameter with identifier 0, the value 0 and the state 2 (no data). */
    BPDiscrete();
    /** A parameter with identifier @p idParameter, the value 0 and the state 2 (no data). */
    explicit BPDiscrete(unsigned int idParameter);
    ~BPDiscrete() override;

    double floatValue() const override;
    using AbstractParameterBase::floatValue;
    int valueType() const override;
    /** Reads the value as a 32-bit integer; always true. */
    bool readPrivate(QContainerPacket &packet) override;
    /** Writes the payload: the value as a 32-bit integer. */
    virtual void writePrivate(QContainerPacket &packet) const;
    using AbstractParameterBase::writePrivate;

    /** The stored value; 0 for a new parameter. */
    int getValue() const;
    /** Stores @p value; raises the flags first if it differs from the stored value. */
    void setValue(int value);

protected:
    /** The stored value, the 32-bit integer of the payload. */
    qint32 value;
};

#endif // BPDISCRETE_H

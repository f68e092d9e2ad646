#ifndef BPVARIANT_H
#define BPVARIANT_H

#include <QtCore/QVariant>

#include "abstractparameterbase.h"

// setState(int) deliberately stands beside the inherited setState(unsigned int) instead of
// overriding it; clang reports the hiding at this class, GCC at the base's declaration.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif

/**
 * @brief A parameter that holds any value as a QVariant, judges it against its computed
 * limits and sends the limits on the wire. Value type 5.
 *
 * Changes are reported through the state, not through the value:
 *
 * - setValue() stores a value that differs (by QVariant comparison, which converts
 *   between types) and marks it pending. It raises no flag and tells no handle.
 * - setState(int) with the state 8 on a parameter with limits judges the value against
 *   the limits and stores the resulting code (64, 128, 256, 512, 1024, 2048 or 8). A
 *   pending value counts as a change even when the state stays; the state is stored
 *   before the flags go up. A repeated state with no pending value refreshes the handles,
 *   unless the parameter's own flag is still up.
 * - setStateOnly(int) does the same without judging.
 *
 * setState(int) is not an override of AbstractParameterBase::setState(unsigned int): a
 * call through a BPVariant judges the value, a call through an AbstractParameterBase
 * pointer (as a client subscription, setNoData() and setInvalid() make) stores the state
 * as it is, without looking at the limits and without clearing the pending value.
 *
 * changed() and dropFlag() include the limits' own changed flag.
 *
 * Payload: the value in QVariant stream form, then the limits in their wire form. A full
 * write (the first through a handle) raises the limits' changed flag first so that the
 * limits travel whole; the flag stays up afterwards. Reading replaces the value without
 * comparison and takes the limits; it always returns true. A received variant whose
 * nested containers announce more elements than the payload could hold reads as an
 * invalid variant, without allocating for the announced count.
 *
 * Both constructors start with the value pending, so that the first state assignment of
 * a new parameter is always reported as a change.
 */
class TELORPARAMS5_EXPORT BPVariant : public AbstractParameterBase
{
public:
    /** An invalid value, state 2, the value pending. */
    BPVariant();
    /** An invalid value with identifier @p idParameter, state 2, the value pending. */
    explicit BPVariant(unsigned int idParameter);
    ~BPVariant() override;

    /** True if the parameter's flag or the flag of its limits is up. */
    bool changed() const override;
    /** The static stringValue() applied to the value. */
    QString stringValue(int precision = 6, char format = 'g') const override;
    /** The value converted by QVariant::toDouble(); 0.0 if it has no numeric form. */
    double floatValue() const override;
    using AbstractParameterBase::floatValue;
    /** The same as getValue(). */
    QVariant variantValue() const override;
    int valueType() const override;
    /** Lowers the limits' changed flag and the parameter's own flag; handles keep theirs. */
    void dropFlag() override;
    /**
     * Writes the value and the limits. With @p full the limits' changed flag is raised
     * first (and stays up), so that both blocks travel.
     */
    void writePrivate(QContainerPacket &packet, bool full) const override;
    /**
     * Reads the value (replacing it without comparison, the pending mark untouched) and
     * the limits. Always returns true; a truncated payload reads as an invalid value and
     * zero limits. A time in a zone that this side doesn't know, anywhere in the value,
     * is kept as a null QDateTime, so that the value can be written again.
     */
    bool readPrivate(QContainerPacket &packet) override;

    /**
     * Assigns a state. The state 8 on a parameter with limits is replaced by the verdict
     * of the limits on the value's numeric form (a value without one stays at 8), unless
     * no value is pending and the state already is 8. A new state or a pending value is
     * stored, clears the pending mark and raises every flag; otherwise the handles are
     * refreshed if the parameter's own flag is down.
     */
    virtual void setState(int newState);

    /** A copy of the value. */
    QVariant getValue() const;
    /**
     * Stores @p value and marks it pending, unless it compares equal to the stored value
     * (then the stored variant stays, with its type). Raises no flag.
     */
    void setValue(const QVariant &value);

    /**
     * The display text of @p value: a null string for an invalid variant, the text for a
     * string, getDTstring() for a date and time, otherwise the numeric form as
     * QString::number(number, @p format, @p precision), or a null string if there is none.
     */
    static QString stringValue(const QVariant &value, int precision = 6, char format = 'g');

    /** Assigns a state as setState(int) does, but never judges the value. */
    void setStateOnly(int newState);

    /** Writable access to the limits, so that the owner can set the setpoints. */
    CalcLimit &limitsPrivate();

protected:
    /** The stored value; invalid for a new parameter. */
    QVariant value;
    /** Zero from the constructors; nothing reads or writes it afterwards. */
    int spare;
    /**
     * Whether setValue() stored a value that the next state assignment has not yet
     * reported; true for a new parameter, so the first assignment always counts as a change.
     */
    bool newValuePending;

private:
    void assignState(unsigned int newState);
};
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

#endif // BPVARIANT_H

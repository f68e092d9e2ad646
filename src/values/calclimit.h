#ifndef CALCLIMIT_H
#define CALCLIMIT_H

#include <memory>

#include "telorparams5_export.h"

class QDataStream;

/**
 * @brief The two possible-limit setpoints of a parameter, judged before all others.
 *
 * Wire form, 18 bytes: `lowPossible` and `hiPossible` as doubles, then the two flags as
 * one byte each.
 */
struct TELORPARAMS5_EXPORT BaseLimits
{
    /** The low possible setpoint; judged only when lowPossibleSet is true. */
    double lowPossible = 0.0;
    /** The high possible setpoint; judged only when hiPossibleSet is true. */
    double hiPossible = 0.0;
    /** Whether lowPossible is in force. */
    bool lowPossibleSet = false;
    /** Whether hiPossible is in force. */
    bool hiPossibleSet = false;

    /** 1024 below the low possible setpoint, 2048 above the high one, otherwise 8. */
    int checkValue(double value) const;
    /** Writes the 18-byte wire form of the block to @p stream. */
    void write(QDataStream &stream) const;
    /** Reads the block. Always returns true; a truncated stream reads as zeros. */
    bool read(QDataStream &stream);
};

/**
 * @brief The warning and emergency setpoints of a parameter.
 *
 * Wire form, 36 bytes: the four setpoints as doubles, then the four flags as one byte
 * each, in the order of the members.
 */
struct TELORPARAMS5_EXPORT FullLimits
{
    /** The low emergency setpoint; judged only when lowEmergencySet is true. */
    double lowEmergency = 0.0;
    /** The low warning setpoint; judged only when lowWarningSet is true. */
    double lowWarning = 0.0;
    /** The high warning setpoint; judged only when hiWarningSet is true. */
    double hiWarning = 0.0;
    /** The high emergency setpoint; judged only when hiEmergencySet is true. */
    double hiEmergency = 0.0;
    /** Whether lowEmergency is in force. */
    bool lowEmergencySet = false;
    /** Whether lowWarning is in force. */
    bool lowWarningSet = false;
    /** Whether hiWarning is in force. */
    bool hiWarningSet = false;
    /** Whether hiEmergency is in force. */
    bool hiEmergencySet = false;

    /**
     * 256 below the low emergency setpoint, 64 below the low warning setpoint, 512 above
     * the high emergency setpoint, 128 above the high warning setpoint, otherwise 8; the
     * first that applies wins, in that order.
     */
    int checkValue(double value) const;
    /** Writes the 36-byte wire form of the block to @p stream. */
    void write(QDataStream &stream) const;
    /** Reads the block. Always returns true; a truncated stream reads as zeros. */
    bool read(QDataStream &stream);
};

/**
 * @brief The run-time limits that turn a parameter's numeric value into a state code.
 *
 * The six setpoints live in two blocks, each allocated on the first setter that touches
 * it (or the first read that carries it) and kept until the CalcLimit is destroyed. A
 * CalcLimit without limits holds two null pointers and a flag.
 *
 * All comparisons are strict, so a value equal to a setpoint is inside it; NaN is inside
 * every limit. The possible setpoints are judged first, and the warning and emergency
 * setpoints are consulted only when the possible-limits block exists.
 *
 * Copies are deep: a copy owns blocks of its own.
 */
class TELORPARAMS5_EXPORT CalcLimit
{
public:
    /** Limits without blocks: no setpoint is in force and checkValue() gives 8. */
    CalcLimit();
    /** A deep copy: the copy owns blocks of its own with the same setpoints and changed flag. */
    CalcLimit(const CalcLimit &other);
    /** Replaces these limits by a deep copy of @p other, changed flag included. */
    CalcLimit &operator=(const CalcLimit &other);
    /** Frees the blocks it allocated. */
    virtual ~CalcLimit();

    /**
     * Setters take the flag first, then the value. Each allocates its block if needed,
     * raises the changed flag when flag or value differ from what is stored (a NaN on
     * either side counts as differing), and stores both in every case. A setter never
     * lowers the changed flag.
     */
    ///@{
    void setLowPossibleSetpoint(bool set, double value);
    void setHiPossibleSetpoint(bool set, double value);
    void setLowEmergencySetpoint(bool set, double value);
    void setLowWarningSetpoint(bool set, double value);
    void setHiWarningSetpoint(bool set, double value);
    void setHiEmergencySetpoint(bool set, double value);
    ///@}

    /**
     * Getters return the stored value and store its flag in @p set. On a block that does
     * not exist they store false and return 0.0.
     */
    ///@{
    double lowPossibleSetpoint(bool &set) const;
    double hiPossibleSetpoint(bool &set) const;
    double lowEmergencySetpoint(bool &set) const;
    double lowWarningSetpoint(bool &set) const;
    double hiWarningSetpoint(bool &set) const;
    double hiEmergencySetpoint(bool &set) const;
    ///@}

    /**
     * The state code of @p value: 8 when there is no possible-limits block; otherwise
     * that block's answer if it is not 8, else the answer of the warning and emergency
     * block if it exists, else 8.
     */
    int checkValue(double value) const;
    /** True if at least one of the six flags is set; an existing block without flags does not count. */
    bool hasLimits() const;
    /** Always true. */
    bool isValid() const;

    /** Whether the limits differ from what was last sent or taken as known. */
    bool changed() const;
    /** Raises the changed flag, so that the next write carries the blocks. */
    void upFlag() const;
    /** Lowers the changed flag. */
    void dropFlag();

    /**
     * Writes the wire form: the changed flag as one byte; if it is set, then for each block
     * a byte 1 and the block, or a byte 0 when the block does not exist. Leaves the
     * changed flag as it is.
     */
    void write(QDataStream &stream) const;
    /**
     * Reads the wire form. The first byte sets the changed flag; a zero byte ends the
     * record and leaves the blocks untouched. A block marked absent keeps what it held.
     * Returns false only if a block's read does, which never happens; a truncated stream
     * reads as zeros.
     */
    bool read(QDataStream &stream);

private:
    BaseLimits &base();
    FullLimits &full();
    void assign(bool &storedSet, double &storedValue, bool set, double value);

    std::unique_ptr<BaseLimits> baseLimits;
    std::unique_ptr<FullLimits> fullLimits;
    mutable bool limitsChanged = false;
};

#endif // CALCLIMIT_H

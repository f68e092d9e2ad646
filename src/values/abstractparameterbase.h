#ifndef ABSTRACTPARAMETERBASE_H
#define ABSTRACTPARAMETERBASE_H

#include <QtCore/QList>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include "calclimit.h"
#include "telorparams5_export.h"

class ParamBasePtr;
class ParamInfo;
class QContainerPacket;

/**
 * @brief Base of every parameter object: identifier, state, change flags, computed
 * limits, the wire record and the list of client handles.
 *
 * Parameter objects are shared through QSharedPointer<AbstractParameterBase> between the
 * application and the exchange classes. Each client looks at a parameter through its own
 * ParamBasePtr, which registers itself here; the parameter lists its handles without
 * owning them, and every handle must be destroyed before its parameter.
 *
 * Change tracking: upFlag() raises the parameter's flag and every handle's flag;
 * dropFlag() lowers only the parameter's own. setState() with the state the parameter
 * already has only refreshes the handles built with their refresh flag. Every pass over
 * the handles walks a copy of the list, so a handle that registers or unregisters during
 * the pass leaves the walk undisturbed.
 *
 * Wire record: identifier, value type and state as 32-bit integers, then the payload that
 * the kind writes in writePrivate().
 *
 * Parameters are not copyable: handles point at one particular object.
 */
class TELORPARAMS5_EXPORT AbstractParameterBase
{
public:
    /** A parameter with identifier 0, state 2 (no data) and no flag raised. */
    AbstractParameterBase();
    /** A parameter with identifier @p idParameter, state 2 and no flag raised. */
    explicit AbstractParameterBase(unsigned int idParameter);
    /** Does not touch the handles that are still registered. */
    virtual ~AbstractParameterBase();

    /**
     * Assigns a state. A state equal to the current one refreshes the handles and leaves
     * the parameter's own flag alone; a new state raises every flag through upFlag().
     * The state is stored after the handles have been told.
     *
     * BPVariant declares a setState(int) of its own beside this one, on purpose: a call
     * through a BPVariant judges its limits, a call through this base stores the state as
     * it is. GCC reports that hiding at this declaration, so the warning is silenced here.
     */
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
    virtual void setState(unsigned int newState);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
    /** The state code. */
    virtual unsigned int getState() const;
    /** Whether something changed since the flag was last dropped. */
    virtual bool changed() const;
    /**
     * The value as display text, with @p precision and @p format as for QString::number.
     * The base gives a null string.
     */
    virtual QString stringValue(int precision = 6, char format = 'g') const;
    /** The value as a number; the base gives 0.0. */
    virtual double floatValue() const;
    /** The value of one element as a number; the base gives 0.0 and leaves @p ok alone. */
    virtual double floatValue(int row, int column, bool *ok) const;
    /** The value as a QVariant; the base gives an invalid variant. */
    virtual QVariant variantValue() const;
    /** One element of a composite parameter; the base gives a null pointer. */
    virtual QSharedPointer<AbstractParameterBase> param(unsigned int row, unsigned int column) const;
    /** The description of one element of a composite parameter; the base gives null. */
    virtual const ParamInfo *info(unsigned int row, unsigned int column) const;
    /** The value type code: 1 double, 2 discrete, 3 string, 4 field, 5 variant, 6 list, 7 map. */
    virtual int valueType() const = 0;
    /** The value type of the elements of a composite parameter; the base gives 0. */
    virtual int elementType() const;
    /** Raises the parameter's flag and the flag of every handle. */
    virtual void upFlag();
    /** Lowers the parameter's flag only; the handles keep theirs. */
    virtual void dropFlag();
    /**
     * Sets the state 2 (no data) through the virtual setState(), raises the parameter's
     * flag and calls setNoData() of every handle. dataReceived() is not affected.
     */
    virtual void setNoData();
    /**
     * Sets the state 2 through the virtual setState() and passes setInvalid(depth + 1)
     * on to the parameter of every handle. Returns at once when @p depth is above 4, so
     * that from a depth of 0 there are at most five levels.
     */
    virtual void setInvalid(unsigned int depth = 0);
    /**
     * Writes the payload. @p full says that the reader through this handle has seen
     * nothing yet, so that a kind can send what it otherwise leaves out.
     */
    virtual void writePrivate(QContainerPacket &packet, bool full) const = 0;
    /** Reads the payload; returns whether it is acceptable. */
    virtual bool readPrivate(QContainerPacket &packet) = 0;

    /** The identifier. */
    unsigned int getIdParameter() const;

    /** Writes the wire record: identifier, value type, state, then the payload. */
    void write(QContainerPacket &packet, bool full) const;

    /**
     * Reads a wire record into this parameter.
     *
     * The state of the record is stored before the identifier is compared. A record for
     * another identifier returns false with the stream at the start of its payload, the
     * record's state stored, and no flag touched. Otherwise the parameter's own flag goes
     * up (the handles are not told), dataReceived() becomes true, and the result is that
     * of readPrivate(). The value type word is not compared with valueType().
     */
    bool read(QContainerPacket &packet);

    /** False for the states 0, 2 and 4, true for every other state. */
    static bool isValid(unsigned int state);

    /** Whether a record has ever been read into this parameter. */
    bool dataReceived() const;
    /** Calls the virtual dropFlag(). */
    void cleanChanged();

    /**
     * The client's wish to be refreshed on every delivery. The parameter itself ignores
     * it; a client subscription reads it when it builds its query.
     */
    void setRefreshAnyway(bool refreshAnyway);
    /** The wish set by setRefreshAnyway(); false for a new parameter. */
    bool isRefreshAnyway() const;

    /** Read access to the computed limits. */
    const CalcLimit &limits() const;

    /** Lists a handle; duplicates are not prevented. The parameter does not own it. */
    void registerRelatedValue(ParamBasePtr *handle);
    /** Removes the first occurrence of a handle; does nothing if it is not listed. */
    void unregisterRelatedValue(ParamBasePtr *handle);

protected:
    /** Calls refresh() of every handle, over a copy of the list. */
    void refreshHandles() const;

    /** The identifier, fixed by the constructor; compared with every record read. */
    unsigned int idParameter;
    /** The state code; 2 (no data) until something assigns or reads one. */
    unsigned int state;
    /** The parameter's own change flag, apart from the flags of its handles. */
    bool changedFlag;
    /** The client's wish to be refreshed on every delivery; see setRefreshAnyway(). */
    bool refreshAnyway;
    /** True until a record for this identifier has been read; dataReceived() is its negation. */
    bool noDataYet;
    /**
     * Raised by read() when a valid state without the good bit (8) arrives while
     * abnormalWatch is raised and abnormalHeld is not. Nothing in the library lowers it.
     */
    bool abnormalLatched;
    /** Lowered by read() on every state with the good bit; nothing in the library raises it. */
    bool abnormalHeld;
    /** Arms abnormalLatched; false from the constructors, and nothing in the library raises it. */
    bool abnormalWatch;
    /** The computed limits; read through limits(), judged only by kinds that use them. */
    CalcLimit limitsStore;
    /** The registered handles, not owned, in the order of registration; may hold duplicates. */
    QList<ParamBasePtr *> relatedValues;

private:
    Q_DISABLE_COPY(AbstractParameterBase)
};

#endif // ABSTRACTPARAMETERBASE_H

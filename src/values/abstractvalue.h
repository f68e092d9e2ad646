#ifndef ABSTRACTVALUE_H
#define ABSTRACTVALUE_H

#include <QtCore/QVariant>

#include "telorparams5_export.h"

/**
 * @brief A small base for an identified value with a state, for applications.
 *
 * Unrelated to AbstractParameterBase and unused by the library itself. Both
 * constructors give the state 2 (no data); only the second sets the identifier, which
 * is otherwise 0.
 */
class TELORPARAMS5_EXPORT AbstractValue
{
public:
    /** A value with the identifier 0 and the state 2 (no data). */
    AbstractValue();
    /** A value with the identifier @p id and the state 2 (no data). */
    explicit AbstractValue(unsigned int id);
    virtual ~AbstractValue();

    /** The value that a subclass holds, as a QVariant. */
    virtual QVariant toVariant() const = 0;

    /** The identifier; 0 unless the constructor was given one. */
    unsigned int id() const;
    /** The state code; 2 (no data) unless a subclass assigns m_state. */
    unsigned int state() const;

protected:
    /** The identifier that id() returns. */
    unsigned int m_id;
    /** The state code that state() returns; a subclass assigns it. */
    unsigned int m_state;
};

#endif // ABSTRACTVALUE_H

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
    AbstractValue();
    explicit AbstractValue(unsigned int id);
    virtual ~AbstractValue();

    /** The value that a subclass holds, as a QVariant. */
    virtual QVariant toVariant() const = 0;

    unsigned int id() const;
    unsigned int state() const;

protected:
    unsigned int m_id;
    unsigned int m_state;
};

#endif // ABSTRACTVALUE_H

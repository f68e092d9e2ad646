#include "abstractvalue.h"

AbstractValue::AbstractValue()
    : m_id(0)
    , m_state(2)
{
}

AbstractValue::AbstractValue(unsigned int id)
    : m_id(id)
    , m_state(2)
{
}

AbstractValue::~AbstractValue() = default;

unsigned int AbstractValue::id() const
{
    return m_id;
}

unsigned int AbstractValue::state() const
{
    return m_state;
}

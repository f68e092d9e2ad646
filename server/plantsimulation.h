#ifndef PLANTSIMULATION_H
#define PLANTSIMULATION_H

#include "archivestore.h"
#include "plant.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QSharedPointer>
#include <QtCore/QtGlobal>

#include <memory>
#include <vector>

class AbstractParameterBase;

/** What one step of the plant produced: the values that changed and the events it raised. */
struct PlantStep
{
    QList<StoredValue> values;
    QList<StoredEvent> events;
};

/**
 * @brief The running plant: one parameter object of the library per parameter and field
 * cell, moved by the drivers and judged by the library's own limits.
 *
 * step() moves every driver to a simulated time, gives each object its new value and
 * state, and reports what changed:
 *
 * - Values are judged with a CalcLimit built from the description: "lo" and "hi" are the
 *   possible limits, "les", "lws", "uws" and "ues" the emergency and warning setpoints. A
 *   variant parameter (and every field cell) carries these limits itself and judges its
 *   value through BPVariant::setState(8); a double or discrete parameter gets the state
 *   that CalcLimit::checkValue gives. A status word is 4096 (fault) while its word is a
 *   fault combination or has a set bit whose state for 1 is 4096, and 8 otherwise. Strings,
 *   lists and maps are always 8.
 * - A value is reported when its value or its state differs from the last step.
 * - A change between two of the judged states 8, 64, 128, 256, 512, 1024 and 2048 is an
 *   alarm transition: an event of the plant's alarm type whose message number tells the new
 *   state (1 normal, 2 low warning, 3 high warning, 4 low emergency, 5 high emergency,
 *   6 low possible, 7 high possible), with the named values "#old_state", "#new_state" and
 *   "#value". Its `firstId` is the parameter, its `secondId` the event's number.
 * - A change of a status word after its first value is a bit-change event of the plant's
 *   bit type, message 1, with "#old_bit_value", "#new_bit_value", "#old_bit_state" and
 *   "#new_bit_state".
 *
 * Event numbers rise by one from the number given to setNextEventNumber().
 *
 * The simulation owns the parameter objects. Handles on them (ParamBasePtr) must be
 * destroyed before the simulation.
 */
class PlantSimulation
{
public:
    /** A simulation of @p plant, whose random walks are seeded from @p seed. */
    PlantSimulation(const Plant &plant, quint64 seed);
    ~PlantSimulation();
    PlantSimulation(const PlantSimulation &) = delete;
    PlantSimulation &operator=(const PlantSimulation &) = delete;

    /** Moves every parameter to the simulated time @p timeMs (ms since the epoch). */
    PlantStep step(qint64 timeMs);

    /** The object of a parameter or a field cell, or null. */
    QSharedPointer<AbstractParameterBase> object(unsigned int id) const;
    /** Whether @p id names a parameter or a field cell. */
    bool contains(unsigned int id) const { return m_objects.contains(id); }
    /** The value type of @p id (1 to 7), 0 for an unknown one. */
    int valueType(unsigned int id) const;
    /** The identifiers of all parameters and cells. */
    QList<unsigned int> ids() const { return m_objects.keys(); }

    /** Lowers the changed flag of every parameter object (fields count their drops). */
    void dropFlags();
    /** The number the next event gets. */
    void setNextEventNumber(qint64 number) { m_nextEvent = number; }
    qint64 nextEventNumber() const { return m_nextEvent; }

private:
    struct Cell;
    struct Runtime;

    void stepParameter(Runtime &runtime, qint64 timeMs, PlantStep &out);
    void report(unsigned int id, const QVariant &oldValue, unsigned int oldState, const QVariant &value,
                unsigned int state, qint64 timeMs, bool judged, PlantStep &out);
    void alarmEvent(unsigned int id, unsigned int oldState, unsigned int newState, const QVariant &value,
                    qint64 timeMs, PlantStep &out);
    void bitEvent(unsigned int id, quint32 oldWord, quint32 newWord, unsigned int oldState, unsigned int newState,
                  qint64 timeMs, PlantStep &out);

    const Plant &m_plant;
    std::vector<std::unique_ptr<Runtime>> m_runtime;
    QHash<unsigned int, QSharedPointer<AbstractParameterBase>> m_objects;
    qint64 m_nextEvent = 1;
};

#endif // PLANTSIMULATION_H

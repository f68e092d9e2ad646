#ifndef PLANTDRIVER_H
#define PLANTDRIVER_H

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QtGlobal>

#include <random>

/**
 * @brief What moves one simulated parameter: a function of simulated time, or for the
 * random walk a seeded sequence of steps.
 *
 * Every kind but the random walk depends on the simulated time alone (milliseconds since
 * the epoch, plus the driver's phase), so a run with the same start time gives the same
 * values. The random walk takes one step per call of next(); seeded with the same number
 * and called for the same sequence of times it gives the same values.
 *
 * next() returns a double for the numeric kinds (sine, ramp, random walk), an unsigned
 * word for the bit pattern, and the text of the step or of the constant for the step
 * table and the constant; the plant turns that into the parameter's own kind of value.
 */
class PlantDriver
{
public:
    enum Kind {
        Constant,   ///< `value`, always
        Sine,       ///< mean + amplitude * sin(2 pi (t + phase) / period)
        Ramp,       ///< from to `to` over a period, then back to `from`
        RandomWalk, ///< from `start`, each tick a uniform step of at most `step`, kept in [min, max]
        Steps,      ///< a table of (offset in the period, value), repeated every period
        Bits,       ///< a list of words, each held for one period, repeated
    };

    Kind kind = Constant;
    QString constant;
    double mean = 0.0;
    double amplitude = 0.0;
    double from = 0.0;
    double to = 0.0;
    double start = 0.0;
    double step = 0.0;
    double minimum = 0.0;
    double maximum = 0.0;
    qint64 periodMs = 60000;
    qint64 phaseMs = 0;
    /** Step table, ascending offsets within the period. */
    QList<QPair<qint64, QString>> steps;
    /** Bit pattern words. */
    QList<quint32> words;

    /** Starts the random walk afresh from `start` with a generator seeded by @p seed. */
    void reset(quint64 seed);
    /** The value at simulated time @p timeMs; see the class description. */
    QVariant next(qint64 timeMs);

    /** The name of @p kind as the plant file writes it ("constant", "sine", ...). */
    static QString kindName(Kind kind);
    /** The kind named @p name; false for an unknown name. */
    static bool kindFromName(const QString &name, Kind *kind);

private:
    qint64 positionInPeriod(qint64 timeMs) const;

    double m_walk = 0.0;
    std::mt19937_64 m_random;
};

#endif // PLANTDRIVER_H

#include "plantdriver.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <cmath>

void PlantDriver::reset(quint64 seed)
{
    m_walk = start;
    m_random.seed(seed);
}

qint64 PlantDriver::positionInPeriod(qint64 timeMs) const
{
    const qint64 period = std::max<qint64>(periodMs, 1);
    qint64 position = (timeMs + phaseMs) % period;
    if (position < 0)
        position += period;
    return position;
}

QVariant PlantDriver::next(qint64 timeMs)
{
    switch (kind) {
    case Constant:
        return constant;
    case Sine: {
        const double turn = double(positionInPeriod(timeMs)) / double(std::max<qint64>(periodMs, 1));
        return mean + amplitude * std::sin(2.0 * M_PI * turn);
    }
    case Ramp: {
        const double part = double(positionInPeriod(timeMs)) / double(std::max<qint64>(periodMs, 1));
        return from + (to - from) * part;
    }
    case RandomWalk: {
        // A uniform step from 53 random bits, so that the sequence is the same on every
        // platform (std::uniform_real_distribution is not).
        const double unit = double(m_random() >> 11) / double(quint64(1) << 53);
        m_walk += step * (2.0 * unit - 1.0);
        if (maximum > minimum)
            m_walk = std::min(std::max(m_walk, minimum), maximum);
        return m_walk;
    }
    case Steps: {
        if (steps.isEmpty())
            return QString();
        const qint64 position = positionInPeriod(timeMs);
        QString value = steps.first().second;
        for (const auto &entry : steps) {
            if (entry.first <= position)
                value = entry.second;
        }
        return value;
    }
    case Bits: {
        if (words.isEmpty())
            return 0u;
        const qint64 period = std::max<qint64>(periodMs, 1);
        const qint64 t = timeMs + phaseMs;
        qint64 index = t >= 0 ? t / period : -((-t + period - 1) / period); // rounded down
        index %= words.size();
        if (index < 0)
            index += words.size();
        return words.at(int(index));
    }
    }
    return QVariant();
}

namespace {
const char *const kindNames[] = {"constant", "sine", "ramp", "randomwalk", "steps", "bits"};
}

QString PlantDriver::kindName(Kind kind)
{
    return QString::fromLatin1(kindNames[kind]);
}

bool PlantDriver::kindFromName(const QString &name, Kind *kind)
{
    for (int i = 0; i < 6; ++i) {
        if (name == QLatin1String(kindNames[i])) {
            *kind = Kind(i);
            return true;
        }
    }
    return false;
}

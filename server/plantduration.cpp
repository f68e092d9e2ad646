#include "plantduration.h"

qint64 parsePlantDuration(const QString &text)
{
    const QString trimmed = text.trimmed();
    int digits = 0;
    while (digits < trimmed.size() && trimmed.at(digits).isDigit())
        ++digits;
    if (digits == 0 || digits > 12)
        return -1;
    bool ok = false;
    const qint64 number = trimmed.leftRef(digits).toLongLong(&ok);
    if (!ok)
        return -1;
    const QStringRef unit = trimmed.midRef(digits);
    qint64 factor = 0;
    if (unit.isEmpty() || unit == QLatin1String("ms"))
        factor = 1;
    else if (unit == QLatin1String("s"))
        factor = 1000;
    else if (unit == QLatin1String("m"))
        factor = 60 * 1000;
    else if (unit == QLatin1String("h"))
        factor = 3600 * 1000;
    else if (unit == QLatin1String("d"))
        factor = 24 * 3600 * 1000;
    else
        return -1;
    constexpr qint64 tenYears = qint64(3660) * 24 * 3600 * 1000;
    if (number > tenYears / factor)
        return -1;
    return number * factor;
}

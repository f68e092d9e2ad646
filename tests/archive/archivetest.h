#ifndef ARCHIVETEST_H
#define ARCHIVETEST_H

// Helpers shared by the archive tests: the token's wire word and points and series
// written by plain QDataStream writes, independently of the library's writers.

#include "messageheader.h"
#include "telortest.h"

#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QVariant>

class QObject;

namespace archivetest {

/** The token as it travels: the pointer's value as a signed 64-bit integer. */
inline qint64 tokenOf(const QObject *token)
{
    return static_cast<qint64>(reinterpret_cast<quintptr>(token));
}

/** One point as plain writes put it: time, value, state. */
struct Point
{
    QDateTime dateTime;
    QVariant value;
    quint32 state;
};

/** Writes a series: id, auxValue, count, the points, id again (or @p closing if given). */
inline void writeSeries(QDataStream &s, qint32 id, qint32 auxValue, const QList<Point> &points)
{
    s << id << auxValue << qint32(points.size());
    for (const Point &p : points)
        s << p.dateTime << p.value << p.state;
    s << id;
}

inline QDateTime utc(int year, int month, int day, int h, int m, int sec, int ms = 0)
{
    return QDateTime(QDate(year, month, day), QTime(h, m, sec, ms), Qt::UTC);
}

} // namespace archivetest

#endif // ARCHIVETEST_H

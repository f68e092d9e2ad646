#ifndef PLANTDURATION_H
#define PLANTDURATION_H

#include <QtCore/QString>
#include <QtCore/QtGlobal>

/**
 * Parses a duration as the plant file and the command line write it: a whole number
 * followed by one unit, "ms", "s", "m", "h" or "d" ("250ms", "30m", "7d"). A bare number
 * counts as milliseconds. Returns the duration in milliseconds, or -1 for text that is
 * no such duration (negative, empty, unknown unit, or beyond ten years).
 */
qint64 parsePlantDuration(const QString &text);

#endif // PLANTDURATION_H

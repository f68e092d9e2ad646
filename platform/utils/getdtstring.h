#ifndef GETDTSTRING_H
#define GETDTSTRING_H

/**
 * @file getdtstring.h
 * @brief getDTstring(): the one display form of a date and time in log and event texts.
 */

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include "utils5_export.h"

/**
 * The display form of a date and time: "dd.MM.yyyy hh:mm:ss.zzz", for example
 * "05.03.2026 14:07:09.042". An invalid date and time gives an empty string.
 */
UTILS5_EXPORT QString getDTstring(const QDateTime &dateTime);

#endif // GETDTSTRING_H

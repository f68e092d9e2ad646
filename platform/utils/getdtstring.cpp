#include "getdtstring.h"

QString getDTstring(const QDateTime &dateTime)
{
    return dateTime.toString(QStringLiteral("dd.MM.yyyy hh:mm:ss.zzz"));
}

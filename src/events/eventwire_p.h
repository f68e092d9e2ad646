#ifndef EVENTWIRE_P_H
#define EVENTWIRE_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5. It is shared by
// the event messages and may change from one version to the next.
//

#include <QtCore/QDataStream>
#include <QtCore/QList>

#include "wirestream_p.h"

namespace TelorEvents {

/** A list of records in Qt's sequential form: a 32-bit count, then each in its stream form. */
template<typename T>
void writeList(QDataStream &stream, const QList<T> &list)
{
    stream << qint32(list.size());
    for (const T &element : list)
        stream << element;
}

/**
 * Reads a list written by writeList() as Qt's operator>> reads it: the list is replaced,
 * and a stream that goes bad leaves it empty. Room is reserved only for as many elements
 * as the bytes left can hold.
 */
template<typename T>
void readList(QDataStream &stream, QList<T> &list)
{
    TelorWire::readList(stream, list);
}

} // namespace TelorEvents

#endif // EVENTWIRE_P_H

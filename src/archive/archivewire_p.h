#ifndef ARCHIVEWIRE_P_H
#define ARCHIVEWIRE_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5. It is shared by
// the archive messages and their tests and may change from one version to the next.
//

#include <QtCore/QDataStream>
#include <QtCore/QSet>
#include <QtCore/QtGlobal>

#include "wirestream_p.h"

class QObject;

namespace ArchiveWire {

/** A client token on the wire: a signed 64-bit integer holding the pointer's value. */
inline qint64 tokenToWire(const QObject *token)
{
    return static_cast<qint64>(reinterpret_cast<quintptr>(token));
}

/** The token that a signed 64-bit wire word stands for. It is never dereferenced. */
inline QObject *tokenFromWire(qint64 wire)
{
    return reinterpret_cast<QObject *>(static_cast<quintptr>(wire));
}

/**
 * Reads a QSet in Qt's stream form (32-bit count, then the elements) exactly as Qt's
 * operator>> reads it: the set is emptied first, and it is left empty if the stream's
 * status is no longer good after an element. The status of the stream is reset on entry
 * and a former bad status is put back on exit, as Qt does.
 *
 * Unlike Qt's operator, it never reserves room for more elements than the bytes left in
 * the stream can describe, so a count of 0x7FFFFFFF costs nothing.
 */
template<typename T>
QDataStream &readSet(QDataStream &stream, QSet<T> &set)
{
    TelorWire::Detail::StatusKeeper keeper(stream);
    set.clear();
    quint32 count = 0;
    stream >> count;
    set.reserve(TelorWire::Detail::plausibleReserve(stream, count, sizeof(T)));
    for (quint32 i = 0; i < count; ++i) {
        T element;
        TelorWire::readValue(stream, element);
        if (stream.status() != QDataStream::Ok) {
            set.clear();
            break;
        }
        set.insert(element);
    }
    return stream;
}

} // namespace ArchiveWire

#endif // ARCHIVEWIRE_P_H

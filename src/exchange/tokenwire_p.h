#ifndef TOKENWIRE_P_H
#define TOKENWIRE_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5.
//

#include <QtCore/QtGlobal>

class QObject;

/**
 * A client token travels as a signed 64-bit integer holding the pointer's value. The
 * token routes answers and is never dereferenced, so the round trip is a plain change of
 * representation.
 */
namespace TelorToken {

inline qint64 toWire(const QObject *token)
{
    return static_cast<qint64>(reinterpret_cast<quintptr>(token));
}

inline const QObject *fromWire(qint64 wire)
{
    return reinterpret_cast<const QObject *>(static_cast<quintptr>(wire));
}

} // namespace TelorToken

#endif // TOKENWIRE_P_H

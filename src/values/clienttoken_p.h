#ifndef CLIENTTOKEN_P_H
#define CLIENTTOKEN_P_H

//
//  W A R N I N G
//  -------------
//
// This header is not part of the public interface of libTELORParams5. It is shared by
// every message that carries a client token and may change from one version to the next.
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

/** The token that a wire word stands for; it converts to `const QObject*` where needed. */
inline QObject *fromWire(qint64 wire)
{
    return reinterpret_cast<QObject *>(static_cast<quintptr>(wire));
}

} // namespace TelorToken

#endif // CLIENTTOKEN_P_H

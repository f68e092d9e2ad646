#ifndef REQUESTSTREAM_H
#define REQUESTSTREAM_H

// The input of the server request fuzz target: a run of steps, each one byte of kind,
// two bytes of length (big-endian) and that many bytes.
//
// kind % 4 == 0: a frame on connection (kind / 4) % 3, made of a served message identity
//                (picked by the first byte of the step's bytes) and the rest as body;
// kind % 4 == 1: the step's bytes as a whole frame, header included, on that connection;
// kind % 4 == 2: one tick;
// kind % 4 == 3: that connection closes.

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

namespace requeststream {

struct Identity
{
    qint32 service;
    qint32 message;
};

/** Every identity the server serves, so that fuzzed bodies reach every reader. */
constexpr Identity served[] = {
    {2, 1},  {2, 8},  {2, 10}, {2, 11}, {2, 12}, {2, 13}, {2, 14}, {3, 1},  {3, 7},  {3, 8},
    {3, 10}, {3, 12}, {3, 15}, {3, 16}, {3, 18}, {3, 19}, {3, 20}, {3, 21}, {3, 22},
};
constexpr int servedCount = int(sizeof(served) / sizeof(served[0]));

/** One step of the input. */
inline QByteArray step(quint8 kind, const QByteArray &bytes)
{
    QByteArray out;
    out.append(char(kind));
    out.append(char((bytes.size() >> 8) & 0xFF));
    out.append(char(bytes.size() & 0xFF));
    return out + bytes.left(0xFFFF);
}

/** A step that sends the body of @p packet under the identity numbered @p index. */
inline QByteArray request(int connection, int index, const QByteArray &packet)
{
    return step(quint8(connection * 4), QByteArray(1, char(index)) + packet.mid(32));
}

} // namespace requeststream

#endif // REQUESTSTREAM_H

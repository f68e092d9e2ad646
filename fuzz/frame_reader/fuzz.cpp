// Feeds arbitrary bytes to TELORFrameReader in pieces of arbitrary sizes, with a limit the
// input picks, and checks every frame, the fault and what the reader holds against a plain
// walk over the same bytes in one piece. A difference traps.
//
// Input: byte 0 picks the body limit, byte 1 the sizes of the pieces, the rest is the
// stream.

#include "fuzztarget.h"

#include "telorframereader.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

using fuzz::check;

namespace {

/** What the stream holds, walked in one go: its whole frames, and its fault if any. */
struct Walk
{
    QList<QByteArray> frames;
    QString error;
    int rest = 0; // bytes after the last whole frame
};

Walk walk(const QByteArray &stream, qint64 limit)
{
    Walk w;
    int at = 0;
    while (stream.size() - at >= 32) {
        const qint32 length = qFromBigEndian<qint32>(stream.constData() + at + 16);
        if (length < 0) {
            w.error = QStringLiteral("body length %1 is negative").arg(length);
            break;
        }
        if (length > limit) {
            w.error = QStringLiteral("body length %1 above the limit %2").arg(length).arg(limit);
            break;
        }
        if (stream.size() - at - 32 < length)
            break;
        w.frames.append(stream.mid(at, 32 + length));
        at += 32 + length;
    }
    w.rest = stream.size() - at;
    return w;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2 || size > (1u << 20))
        return 0;
    static const qint64 limits[] = {TELORFrameReader::DefaultMaxBodyLength, 0, 1, 4, 16, 100, 1000, 65536};
    const qint64 limit = limits[data[0] % 8];
    static const int longestPieces[] = {1, 2, 3, 7, 31, 32, 33, 100, 1000, 1 << 20};
    const int longest = longestPieces[(data[1] >> 4) % 10];
    quint32 random = 0x9E3779B9u ^ (quint32(data[1]) * 0x01000193u) ^ quint32(size);

    const QByteArray stream(reinterpret_cast<const char *>(data + 2), static_cast<int>(size - 2));
    const Walk expected = walk(stream, limit);

    TELORFrameReader reader;
    reader.setMaxBodyLength(limit);
    check(reader.maxBodyLength() == limit);
    int taken = 0;
    for (int at = 0; at < stream.size();) {
        random ^= random << 13;
        random ^= random >> 17;
        random ^= random << 5;
        const int piece = qMin(stream.size() - at, 1 + int(random % quint32(longest)));
        const bool ok = reader.append(stream.mid(at, piece));
        at += piece;
        check(ok == !reader.hasError());
        while (reader.hasFrame()) {
            const QByteArray frame = reader.takeFrame();
            check(taken < expected.frames.size() && frame == expected.frames.at(taken));
            ++taken;
        }
        // Bounded: without a fault, what is held is one unfinished frame at most.
        if (ok)
            check(reader.bufferedBytes() < 32 + limit);
        if (!ok)
            break;
    }
    check(taken == expected.frames.size());
    check(reader.errorString() == expected.error);
    if (expected.error.isEmpty())
        check(reader.bufferedBytes() == expected.rest);
    check(reader.takeFrame().isEmpty());
    return 0;
}

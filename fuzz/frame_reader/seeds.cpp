// Writes streams of frames as the seed corpus of the frame reader fuzz target: messages
// written by the library, cut and joined in various ways, with a bad length word here and
// there. Each seed starts with the two bytes that pick the limit and the piece sizes.

#include "seedwriter.h"

#include "archivequery.h"
#include "paramvaluesquery.h"
#include "qprotocolstruct.h"

#include <QtCore/QtEndian>

namespace {

QByteArray seed(quint8 limit, quint8 pieces, const QByteArray &stream)
{
    return QByteArray(1, char(limit)) + QByteArray(1, char(pieces)) + stream;
}

QByteArray withLength(QByteArray frame, qint32 length)
{
    qToBigEndian<qint32>(length, frame.data() + 16);
    return frame;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    QProtocolStruct bare;
    const QByteArray empty = bare.write();
    ParamValuesQuery values;
    values.ids = {1, 2, 3, 42, 4096};
    values.setRoute(7, 8, 9);
    const QByteArray valuesFrame = values.write();
    ArchiveQuery archive(nullptr);
    const QByteArray archiveFrame = archive.write();
    const QByteArray three = empty + valuesFrame + archiveFrame;

    seeds.add(QStringLiteral("one-frame"), seed(0, 0x90, valuesFrame));
    seeds.add(QStringLiteral("three-frames-byte-by-byte"), seed(0, 0x00, three));
    seeds.add(QStringLiteral("three-frames-in-pieces"), seed(0, 0x40, three));
    seeds.add(QStringLiteral("cut-in-the-body"), seed(0, 0x70, three + valuesFrame.left(40)));
    seeds.add(QStringLiteral("cut-in-the-header"), seed(0, 0x30, three + valuesFrame.left(20)));
    seeds.add(QStringLiteral("negative-length"), seed(0, 0x80, empty + withLength(empty, -1) + three));
    seeds.add(QStringLiteral("oversized-length"), seed(0, 0x90, valuesFrame + withLength(empty, 0x7FFFFFFF)));
    seeds.add(QStringLiteral("small-limit"), seed(5, 0x50, three));
    seeds.add(QStringLiteral("zero-limit"), seed(1, 0x20, empty + empty + valuesFrame));
    seeds.add(QStringLiteral("many-frames"), seed(7, 0x60, three.repeated(40)));
    seeds.add(QStringLiteral("no-stream"), seed(0, 0, QByteArray()));
    return seeds.finish();
}

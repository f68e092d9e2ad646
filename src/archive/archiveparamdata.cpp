#include "archiveparamdata.h"

#include <QtCore/QDataStream>

#include "wirestream_p.h"

namespace {

// The smallest point on the wire: a QDateTime (8-byte day, 4-byte time, 1-byte kind of
// time), a QVariant (4-byte type, 1-byte null flag) and the 4-byte state.
constexpr qint64 MinPointBytes = 13 + 5 + 4;

} // namespace

ArchiveParamData::ArchiveParamData()
    : id(0)
    , auxValue(0)
{
}

ArchiveParamData::~ArchiveParamData() = default;

bool ArchiveParamData::read(QDataStream &stream)
{
    if (id != 0 || auxValue != 0)
        return false;

    qint32 count = 0;
    stream >> id >> auxValue >> count;
    if (count > 0) {
        // Room for no more points than the bytes left can hold, at MinPointBytes each.
        const qint64 fits = TelorWire::bytesLeft(stream) / MinPointBytes;
        data.reserve(data.size() + static_cast<int>(qMin<qint64>(count, fits)));
    }
    for (qint32 i = 0; i < count; ++i) {
        // Once the bytes have run out, every further point would read from nothing: stop
        // rather than append a count's worth of empty points.
        if (stream.atEnd())
            break;
        data.append(ArchiveValue(stream));
    }

    qint32 closing = 0;
    stream >> closing;
    return closing == id;
}

void ArchiveParamData::write(QDataStream &stream) const
{
    stream << qint32(id) << qint32(auxValue) << qint32(data.size());
    for (const ArchiveValue &point : data)
        stream << point.dateTime << point.value << quint32(point.state);
    stream << qint32(id);
}

void ArchiveParamData::clear()
{
    data.clear();
}

const QList<ArchiveValue> &ArchiveParamData::getData() const
{
    return data;
}

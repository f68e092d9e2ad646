#include "abstractvaluestruct.h"

#include "telorstream.h"

#include <cstring>
#include <optional>

namespace {

constexpr int Marker = int(0xAA55AA55);

/** The side stream: on the caller's array if one is named, otherwise on storage of its own. */
void buildSideStream(std::optional<TELORDataStream> &stream, QByteArray *sideArray)
{
    if (sideArray)
        stream.emplace(sideArray);
    else
        stream.emplace();
}

} // namespace

AbstractValueStruct::AbstractValueStruct()
    : checkSize(true)
{
}

AbstractValueStruct::AbstractValueStruct(const AbstractValueStruct &other)
    : checkSize(true)
{
    Q_UNUSED(other)
}

AbstractValueStruct &AbstractValueStruct::operator=(const AbstractValueStruct &other)
{
    Q_UNUSED(other)
    return *this;
}

AbstractValueStruct::~AbstractValueStruct() = default;

void AbstractValueStruct::setCheckSize(bool check)
{
    checkSize = check;
}

QByteArray AbstractValueStruct::toByteArray(QByteArray *sideArray) const
{
    std::optional<TELORDataStream> stream;
    buildSideStream(stream, sideArray);
    stream->openToWrite();
    *stream << Marker;

    QByteArray record(qMax(0, size()), '\0');
    char *cursor = record.data();
    writeBuffer(cursor, *stream);

    stream->close();
    return record;
}

bool AbstractValueStruct::fromByteArray(const QByteArray &bytes, QByteArray *sideArray)
{
    std::optional<TELORDataStream> stream;
    buildSideStream(stream, sideArray);
    stream->openToRead();

    const int length = size();
    if (bytes.size() != length && checkSize)
        return false;

    // readBuffer() reads size() bytes whatever the caller hands in. It reads from a copy
    // of exactly that length, so that a record shorter than size() (possible only with
    // checkSize off) reads its missing tail as zeros instead of running past the caller's
    // bytes, and the caller's shared bytes cannot be written through the cursor.
    QByteArray record(qMax(0, length), '\0');
    std::memcpy(record.data(), bytes.constData(), size_t(qMin(bytes.size(), record.size())));
    char *cursor = record.data();
    readBuffer(cursor, *stream);
    return true;
}

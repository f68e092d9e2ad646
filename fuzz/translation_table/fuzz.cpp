// Feeds arbitrary bytes to the reader of a table of texts by number, once into an empty
// table and once into a used one, which must come out alike; what was read is written
// again.

#include "translationtable.h"

#include <QtCore/QDataStream>

#include <cstdint>

namespace {

QDataStream::Status readInto(const QByteArray &bytes, QHash<int, TranslationItemNew> &table)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    readTranslationTable(stream, table);
    return stream.status();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));

    QHash<int, TranslationItemNew> fresh;
    const QDataStream::Status status = readInto(bytes, fresh);

    QHash<int, TranslationItemNew> used;
    used.insert(1, TranslationItemNew(QStringLiteral("ru"), QStringLiteral("old")));
    if (readInto(bytes, used) != status || used.size() != fresh.size())
        __builtin_trap();
    if (status != QDataStream::Ok && !fresh.isEmpty())
        __builtin_trap();

    QByteArray out;
    QDataStream writer(&out, QIODevice::WriteOnly);
    writer.setVersion(QDataStream::Qt_5_15);
    writeTranslationTable(writer, fresh);
    return 0;
}

// Writes tables of texts by number, built with the library's own writer, as the seed
// corpus of the translation table fuzz target.

#include "seedwriter.h"
#include "translationtable.h"

#include <QtCore/QDataStream>

namespace {

QByteArray tableBytes(const QHash<int, TranslationItemNew> &table)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    writeTranslationTable(stream, table);
    return bytes;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    QHash<int, TranslationItemNew> table;
    seeds.add(QStringLiteral("empty"), tableBytes(table));

    table.insert(1, TranslationItemNew(QStringLiteral("ru"), QStringLiteral("Davlenie")));
    seeds.add(QStringLiteral("one"), tableBytes(table));

    TranslationItemNew two(QStringLiteral("en"), QStringLiteral("Temperature"));
    two.insert(QStringLiteral("ru"), QStringLiteral("Temperatura"));
    two.insert(QStringLiteral("de"), QString());
    table.insert(-7, two);
    table.insert(0x7fffffff, TranslationItemNew());
    seeds.add(QStringLiteral("several"), tableBytes(table));

    // One number and one language that arrive twice.
    QHash<int, TranslationItemNew> repeated;
    TranslationItemNew item(QStringLiteral("ru"), QStringLiteral("first"));
    static_cast<QMultiHash<QString, QString> &>(static_cast<QHash<QString, QString> &>(item))
        .insert(QStringLiteral("ru"), QStringLiteral("second"));
    repeated.insert(5, item);
    static_cast<QMultiHash<int, TranslationItemNew> &>(repeated).insert(5, TranslationItemNew());
    seeds.add(QStringLiteral("repeated"), tableBytes(repeated));
    return seeds.finish();
}

// Writes tag blocks as the seed corpus of the tag block fuzz target. The library reads
// tag blocks but has no writer for them, so the blocks are streamed here the way a server
// holding the three tables in QHash and QSet streams them.

#include "seedwriter.h"

#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QSet>

namespace {

using Texts = QHash<QString, QHash<QString, QString>>;
using Params = QHash<unsigned int, QHash<QString, QString>>;
using TagParams = QHash<QString, QHash<QString, QSet<unsigned int>>>;

QByteArray block(const Texts &texts, const Params &params, const TagParams &tagParams)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << texts << params << tagParams;
    return bytes;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    const Texts texts{
        {QStringLiteral("unit"), {{QStringLiteral("en"), QStringLiteral("Unit")}, {QStringLiteral("ru"), QStringLiteral("Blok")}}},
        {QStringLiteral("area"), {{QStringLiteral("en"), QStringLiteral("Area")}}},
        {QStringLiteral("bare"), {}}};
    Params params;
    TagParams tagParams;
    for (unsigned int id = 1; id <= 6; ++id) {
        const QString unit = QStringLiteral("U%1").arg(id % 3);
        params[id].insert(QStringLiteral("unit"), unit);
        tagParams[QStringLiteral("unit")][unit].insert(id);
        if (id % 2) {
            params[id].insert(QStringLiteral("area"), QStringLiteral("North"));
            tagParams[QStringLiteral("area")][QStringLiteral("North")].insert(id);
        }
    }

    seeds.add(QStringLiteral("full"), block(texts, params, tagParams));
    seeds.add(QStringLiteral("no-params"), block(texts, {}, tagParams));
    seeds.add(QStringLiteral("no-tag-params"), block(texts, params, {}));
    seeds.add(QStringLiteral("cut"), block(texts, params, tagParams).left(70));
    seeds.add(QStringLiteral("null-strings"),
              block({{QString(), {{QString(), QString()}}}}, {{0xFFFFFFFFu, {{QString(), QLatin1String("")}}}},
                    {{QString(), {{QString(), {0u, 0xFFFFFFFFu}}}}}));
    // Repeated keys, as Qt's multi-hash form carries them.
    QMultiHash<unsigned int, QHash<QString, QString>> repeated;
    repeated.insert(7u, {{QStringLiteral("unit"), QStringLiteral("old")}});
    repeated.insert(7u, {{QStringLiteral("unit"), QStringLiteral("new")}});
    QByteArray repeatedBlock;
    {
        QDataStream stream(&repeatedBlock, QIODevice::WriteOnly);
        stream.setVersion(QDataStream::Qt_5_15);
        stream << texts << static_cast<const QHash<unsigned int, QHash<QString, QString>> &>(repeated) << tagParams;
    }
    seeds.add(QStringLiteral("repeated-keys"), repeatedBlock);
    seeds.add(QStringLiteral("empty"), QByteArray());
    return seeds.finish();
}

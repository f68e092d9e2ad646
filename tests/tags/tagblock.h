#ifndef TAGBLOCK_H
#define TAGBLOCK_H

// Tag blocks built the way a server builds them, with plain QDataStream writes in the
// order of the block: for each of the three tables a 32-bit count, then its entries. The
// tables are ordered lists, so that a test can put a key twice or choose the order in
// which entries arrive.

#include "telortest.h"

#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QString>

namespace tagtest {

using Pairs = QList<QPair<QString, QString>>;
/** Tag type key, then its texts as (text key, text). */
using TextTable = QList<QPair<QString, Pairs>>;
/** Parameter identifier, then its tags as (tag type key, value). */
using ParamTable = QList<QPair<quint32, Pairs>>;
/** Tag type key, then its values, each with the identifiers that carry it. */
using ParamsTable = QList<QPair<QString, QList<QPair<QString, QList<quint32>>>>>;

inline void writePairs(QDataStream &s, const Pairs &pairs)
{
    s << quint32(pairs.size());
    for (const auto &pair : pairs)
        s << pair.first << pair.second;
}

inline void writeTexts(QDataStream &s, const TextTable &table)
{
    s << quint32(table.size());
    for (const auto &type : table) {
        s << type.first;
        writePairs(s, type.second);
    }
}

inline void writeParams(QDataStream &s, const ParamTable &table)
{
    s << quint32(table.size());
    for (const auto &param : table) {
        s << param.first;
        writePairs(s, param.second);
    }
}

inline void writeTagParams(QDataStream &s, const ParamsTable &table)
{
    s << quint32(table.size());
    for (const auto &type : table) {
        s << type.first << quint32(type.second.size());
        for (const auto &value : type.second) {
            s << value.first << quint32(value.second.size());
            for (quint32 id : value.second)
                s << id;
        }
    }
}

inline QByteArray textsBytes(const TextTable &table)
{
    return telortest::plainBytes([&](QDataStream &s) { writeTexts(s, table); });
}

inline QByteArray paramsBytes(const ParamTable &table)
{
    return telortest::plainBytes([&](QDataStream &s) { writeParams(s, table); });
}

inline QByteArray tagParamsBytes(const ParamsTable &table)
{
    return telortest::plainBytes([&](QDataStream &s) { writeTagParams(s, table); });
}

inline QByteArray block(const TextTable &texts, const ParamTable &params, const ParamsTable &tagParams)
{
    return textsBytes(texts) + paramsBytes(params) + tagParamsBytes(tagParams);
}

/** Two tag types with English and Russian texts. */
inline TextTable sampleTexts()
{
    return {
        {QStringLiteral("unit"), {{QStringLiteral("en"), QStringLiteral("Unit")}, {QStringLiteral("ru"), QStringLiteral("Blok")}}},
        {QStringLiteral("area"), {{QStringLiteral("en"), QStringLiteral("Area")}, {QStringLiteral("ru"), QStringLiteral("Zona")}}},
    };
}

/** Parameter 10 with both tags, parameter 11 with one. */
inline ParamTable sampleParams()
{
    return {
        {10u, {{QStringLiteral("unit"), QStringLiteral("U1")}, {QStringLiteral("area"), QStringLiteral("North")}}},
        {11u, {{QStringLiteral("unit"), QStringLiteral("U2")}}},
    };
}

/** The inverse of sampleParams(). */
inline ParamsTable sampleTagParams()
{
    return {
        {QStringLiteral("unit"), {{QStringLiteral("U1"), {10u}}, {QStringLiteral("U2"), {11u}}}},
        {QStringLiteral("area"), {{QStringLiteral("North"), {10u}}}},
    };
}

inline QByteArray sampleBlock()
{
    return block(sampleTexts(), sampleParams(), sampleTagParams());
}

/** The three tables as Qt's own QDataStream operators read them from @p bytes. */
struct QtTables
{
    QHash<QString, QHash<QString, QString>> tagTexts;
    QHash<unsigned int, QHash<QString, QString>> paramTags;
    QHash<QString, QHash<QString, QSet<unsigned int>>> tagParams;
};

inline QtTables readWithQt(const QByteArray &bytes)
{
    QtTables tables;
    QDataStream s(bytes);
    s.setVersion(QDataStream::Qt_5_15);
    s >> tables.tagTexts >> tables.paramTags >> tables.tagParams;
    return tables;
}

} // namespace tagtest

#endif // TAGBLOCK_H

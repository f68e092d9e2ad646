// Writes valid list and map parameter records, built with the library's own writers, as
// the seed corpus of the list and map record fuzz target. Each seed starts with the byte
// that selects the kind: 0 for a list, 1 for a map.

#include "bplist.h"
#include "bpmap.h"
#include "recordfuzzing.h"
#include "seedwriter.h"

#include <QtCore/QDateTime>
#include <QtCore/QVariantMap>

using recordfuzz::withKind;

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    BPList empty(61);
    seeds.add(QStringLiteral("list-empty"), withKind(0, empty));

    BPList list(62);
    QVariantMap nested;
    nested.insert(QStringLiteral("flow"), 12.5);
    nested.insert(QStringLiteral("names"), QStringList{QStringLiteral("a"), QStringLiteral("b")});
    list.setList(QVariantList{1, QStringLiteral("two"), 3.25, QVariant(), nested, QVariantList{4, QVariantList{5}},
                              QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::UTC), QByteArray("raw")});
    list.setState(8);
    seeds.add(QStringLiteral("list-mixed"), withKind(0, list));
    seeds.add(QStringLiteral("list-twice"), withKind(0, list, 2));

    BPMap emptyMap(71);
    seeds.add(QStringLiteral("map-empty"), withKind(1, emptyMap));

    BPMap map(72);
    QMap<double, QVariant> m;
    m.insert(-1.5, QStringLiteral("below"));
    m.insert(1.0, 1);
    m.insert(1.0000001, 2);
    m.insert(1000000.0, QVariantList{1, 2});
    m.insert(2.0, nested);
    map.setMap(m);
    map.setState(4096);
    seeds.add(QStringLiteral("map-mixed"), withKind(1, map));
    seeds.add(QStringLiteral("map-twice"), withKind(1, map, 2));

    return seeds.finish();
}

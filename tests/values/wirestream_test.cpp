// The bounded readers of Qt's stream forms: same result as Qt's own operators on
// well-formed and truncated input, and no huge allocation for a hostile count.

#include "wirestream_p.h"
#include "telortest.h"

#include <gtest/gtest.h>

#include <QtCore/QDateTime>

using telortest::plainBytes;

namespace {

QVariant sampleVariant()
{
    QVariantMap inner;
    inner.insert(QStringLiteral("pressure"), 4.5);
    inner.insert(QStringLiteral("names"), QStringList{QStringLiteral("a"), QStringLiteral("b")});
    QVariantList list{1, QStringLiteral("two"), 3.0, QVariant(), QVariant(QVariant::Double), inner,
                      QVariant::fromValue(QByteArrayList{"x", "yz"})};
    QVariantHash hash;
    hash.insert(QStringLiteral("list"), list);
    hash.insert(QStringLiteral("when"), QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::UTC));
    return QVariant(hash);
}

QVariant qtRead(const QByteArray &bytes, QDataStream::Status *status = nullptr, qint64 *pos = nullptr)
{
    QDataStream in(bytes);
    QVariant v;
    in >> v;
    if (status)
        *status = in.status();
    if (pos)
        *pos = in.device()->pos();
    return v;
}

QVariant ourRead(const QByteArray &bytes, QDataStream::Status *status = nullptr, qint64 *pos = nullptr)
{
    QDataStream in(bytes);
    QVariant v;
    TelorWire::readVariant(in, v);
    if (status)
        *status = in.status();
    if (pos)
        *pos = in.device()->pos();
    return v;
}

} // namespace

TEST(WireStream, VariantsReadAsQtReadsThem)
{
    const QVariant values[] = {QVariant(), QVariant(3.25), QVariant(QStringLiteral("text")), QVariant(true),
                               QVariant(QVariant::Double), QVariant(QVariantList()), QVariant(QStringList()),
                               QVariant::fromValue(QVariant(7)), sampleVariant()};
    for (const QVariant &value : values) {
        const QByteArray bytes = plainBytes([&](QDataStream &s) { s << value << qint32(0x5A5A5A5A); });
        QDataStream::Status qs, os;
        qint64 qp, op;
        const QVariant fromQt = qtRead(bytes, &qs, &qp);
        const QVariant ours = ourRead(bytes, &os, &op);
        EXPECT_EQ(ours, fromQt) << value.typeName();
        EXPECT_EQ(ours.isNull(), fromQt.isNull());
        EXPECT_EQ(ours.userType(), fromQt.userType());
        EXPECT_EQ(os, qs);
        EXPECT_EQ(op, qp);
    }
}

TEST(WireStream, TruncatedVariantsReadAsQtReadsThem)
{
    const QByteArray whole = plainBytes([&](QDataStream &s) { s << sampleVariant(); });
    for (int cut = 0; cut < whole.size(); ++cut) {
        const QByteArray bytes = whole.left(cut);
        QDataStream::Status qs, os;
        qint64 qp, op;
        const QVariant fromQt = qtRead(bytes, &qs, &qp);
        const QVariant ours = ourRead(bytes, &os, &op);
        EXPECT_EQ(ours, fromQt) << cut;
        EXPECT_EQ(os, qs) << cut;
        EXPECT_EQ(op, qp) << cut;
    }
}

TEST(WireStream, HostileListCountIsRefused)
{
    // A QVariantList that announces 0x7FFFFFFF elements and holds one.
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(QMetaType::QVariantList) << qint8(0) << quint32(0x7FFFFFFF) << QVariant(1);
    });
    QDataStream::Status status;
    qint64 pos;
    const QVariant v = ourRead(bytes, &status, &pos);
    EXPECT_FALSE(v.isValid());
    EXPECT_EQ(status, QDataStream::ReadCorruptData);
    EXPECT_EQ(pos, bytes.size());
}

TEST(WireStream, HostileCountInsideAMapIsRefused)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(QMetaType::QVariantMap) << qint8(0) << quint32(1) << QStringLiteral("k")
          << quint32(QMetaType::QStringList) << qint8(0) << quint32(0x40000000);
    });
    EXPECT_FALSE(ourRead(bytes).isValid());
}

TEST(WireStream, DeepNestingIsRefusedAndShallowNestingIsRead)
{
    auto nested = [](int depth) {
        QVariant v(1);
        for (int i = 0; i < depth; ++i)
            v = QVariant(QVariantList{v});
        return v;
    };
    const QVariant shallow = nested(TelorWire::MaxVariantDepth);
    const QByteArray shallowBytes = plainBytes([&](QDataStream &s) { s << shallow; });
    EXPECT_EQ(ourRead(shallowBytes), shallow);

    const QByteArray deepBytes = plainBytes([&](QDataStream &s) { s << nested(TelorWire::MaxVariantDepth + 2); });
    QDataStream::Status status;
    EXPECT_FALSE(ourRead(deepBytes, &status).isValid());
    EXPECT_EQ(status, QDataStream::ReadCorruptData);

    // A chain of variants inside variants is nesting too.
    QByteArray chain;
    {
        QDataStream s(&chain, QIODevice::WriteOnly);
        for (int i = 0; i < 10000; ++i)
            s << quint32(QMetaType::QVariant) << qint8(0);
        s << QVariant(5);
    }
    EXPECT_FALSE(ourRead(chain).isValid());
}

TEST(WireStream, ListsReadAsQtReadsThem)
{
    const QList<unsigned int> ids{1, 2, 3, 0xFFFFFFFF};
    const QByteArray whole = plainBytes([&](QDataStream &s) { s << ids; });
    for (int cut = 0; cut <= whole.size(); ++cut) {
        const QByteArray bytes = whole.left(cut);
        QList<unsigned int> fromQt{9}, ours{9};
        QDataStream a(bytes), b(bytes);
        a >> fromQt;
        TelorWire::readList(b, ours);
        EXPECT_EQ(ours, fromQt) << cut;
        EXPECT_EQ(b.status(), a.status()) << cut;
        EXPECT_EQ(b.device()->pos(), a.device()->pos()) << cut;
    }
}

TEST(WireStream, HostileListCountReadsEmptyWithoutReserving)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << quint32(0xFFFFFFF0) << quint32(1) << quint32(2); });
    QList<unsigned int> list;
    QDataStream in(bytes);
    TelorWire::readList(in, list);
    EXPECT_TRUE(list.isEmpty());
    EXPECT_EQ(in.status(), QDataStream::ReadPastEnd);

    QVector<QVariant> vector;
    QDataStream in2(bytes);
    TelorWire::readVector(in2, vector);
    EXPECT_TRUE(vector.isEmpty());
}

TEST(WireStream, ContainersOfVariantsGoThroughTheVariantReader)
{
    QMap<QString, QVariant> map;
    map.insert(QStringLiteral("a"), sampleVariant());
    map.insert(QStringLiteral("b"), 2);
    const QByteArray bytes = plainBytes([&](QDataStream &s) { s << map; });
    QMap<QString, QVariant> back;
    QDataStream in(bytes);
    TelorWire::readMap(in, back);
    EXPECT_EQ(back, map);

    QHash<int, QList<QVariant>> hash;
    hash.insert(1, QList<QVariant>{1, 2});
    hash.insert(2, QList<QVariant>{});
    const QByteArray hashBytes = plainBytes([&](QDataStream &s) { s << hash; });
    QHash<int, QList<QVariant>> hashBack;
    QDataStream in2(hashBytes);
    TelorWire::readValue(in2, hashBack);
    EXPECT_EQ(hashBack, hash);

    // A repeated key is kept twice, as Qt keeps it.
    const QByteArray twice = plainBytes([](QDataStream &s) { s << quint32(2) << qint32(1) << 1.0 << qint32(1) << 2.0; });
    QHash<int, double> multi;
    QDataStream in3(twice);
    TelorWire::readHash(in3, multi);
    EXPECT_EQ(multi.size(), 2);
    EXPECT_EQ(multi.value(1), 2.0); // Qt's form lists the newest first: the entry read last wins
}

TEST(WireStream, BytesLeft)
{
    const QByteArray bytes(10, 'x');
    QDataStream in(bytes);
    EXPECT_EQ(TelorWire::bytesLeft(in), 10);
    qint32 v;
    in >> v;
    EXPECT_EQ(TelorWire::bytesLeft(in), 6);
    QDataStream none;
    EXPECT_EQ(TelorWire::bytesLeft(none), 0);
}

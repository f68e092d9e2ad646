// The bounded readers of Qt's stream forms: same result as Qt's own operators on
// well-formed and truncated input, and no huge allocation for a hostile count.

#include "wirestream_p.h"
#include "telortest.h"

#include <gtest/gtest.h>

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>

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

TEST(WireStream, BoundsHoldOnAStreamThatIsAlreadyBad)
{
    // A string of odd length ahead of the value leaves the stream corrupt with the value's
    // bytes still to come; Qt reads them all the same, so the bounds must hold as well.
    auto readAfterBadString = [](const QByteArray &valueBytes, QDataStream::Status *status) {
        const QByteArray bytes = plainBytes([](QDataStream &s) { s << quint32(3); }) + valueBytes;
        QDataStream in(bytes);
        QString broken;
        in >> broken;
        EXPECT_EQ(in.status(), QDataStream::ReadCorruptData);
        QVariant v;
        TelorWire::readVariant(in, v);
        *status = in.status();
        return v;
    };
    QDataStream::Status status;

    const QByteArray hostile = plainBytes([](QDataStream &s) {
        s << quint32(QMetaType::QVariantList) << qint8(0) << quint32(0x00100000) << QVariant(1);
    });
    EXPECT_FALSE(readAfterBadString(hostile, &status).isValid());
    EXPECT_EQ(status, QDataStream::ReadCorruptData);

    QByteArray chain;
    {
        QDataStream s(&chain, QIODevice::WriteOnly);
        for (int i = 0; i < 1000; ++i)
            s << quint32(QMetaType::QVariant) << qint8(0);
        s << QVariant(5);
    }
    EXPECT_FALSE(readAfterBadString(chain, &status).isValid());

    // A well-formed value still reads as Qt reads it, and the bad status stays.
    const QByteArray good = plainBytes([](QDataStream &s) { s << sampleVariant(); });
    EXPECT_EQ(readAfterBadString(good, &status), sampleVariant());
    EXPECT_EQ(status, QDataStream::ReadCorruptData);
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

// --- times ------------------------------------------------------------------------

namespace {

/** A QDateTime in Qt's stream form, of the kind Qt::TimeZone, in the zone @p name. */
void writeZonedTime(QDataStream &s, const QString &name)
{
    s << QDate(2025, 6, 1) << QTime(12, 30, 0) << qint8(Qt::TimeZone) << name;
}

/** A zone name that leads from the zone directory back into it: Qt finds the file. */
const QString climbingName = QStringLiteral("../zoneinfo/Europe/Berlin");

QDateTime readTime(const QByteArray &bytes, QDataStream::Status *status, qint64 *pos, bool ours)
{
    QDataStream in(bytes);
    QDateTime time;
    if (ours)
        TelorWire::readDateTime(in, time);
    else
        in >> time;
    *status = in.status();
    *pos = in.device()->pos();
    return time;
}

/** Writing the time again must not crash, and reading it back gives it again. */
void expectWritable(const QDateTime &time)
{
    const QByteArray bytes = plainBytes([&](QDataStream &s) { s << time; });
    QDataStream in(bytes);
    QDateTime back;
    in >> back;
    EXPECT_EQ(back, time);
    EXPECT_EQ(back.isNull(), time.isNull());
}

} // namespace

TEST(WireStream, TimesReadAsQtReadsThem)
{
    QList<QDateTime> times{QDateTime(),
                           QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6), Qt::UTC),
                           QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6), Qt::LocalTime),
                           QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6), Qt::OffsetFromUTC, -5400),
                           QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6), QTimeZone(3600)),
                           QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 6),
                                     QTimeZone("Plant/Site", 9000, QStringLiteral("Plant"), QStringLiteral("PT"),
                                               QLocale::AnyCountry, QStringLiteral("site time")))};
    if (QTimeZone(QByteArrayLiteral("Europe/Berlin")).isValid())
        times.append(QDateTime(QDate(2026, 7, 2), QTime(3, 4, 5), QTimeZone(QByteArrayLiteral("Europe/Berlin"))));
    for (const QDateTime &time : times) {
        const QByteArray whole = plainBytes([&](QDataStream &s) { s << time << qint32(0x5A5A5A5A); });
        for (int cut : {whole.size(), whole.size() - 4, whole.size() - 6, 9, 0}) {
            const QByteArray bytes = whole.left(cut);
            QDataStream::Status qs, os;
            qint64 qp, op;
            const QDateTime fromQt = readTime(bytes, &qs, &qp, false);
            const QDateTime ours = readTime(bytes, &os, &op, true);
            EXPECT_EQ(ours, fromQt) << time.toString().toStdString() << " cut " << cut;
            EXPECT_EQ(ours.timeSpec(), fromQt.timeSpec()) << cut;
            EXPECT_EQ(ours.timeZone(), fromQt.timeZone()) << cut;
            EXPECT_EQ(ours.isNull(), fromQt.isNull()) << cut;
            EXPECT_EQ(os, qs) << cut;
            EXPECT_EQ(op, qp) << cut;
        }
    }
}

TEST(WireStream, TimeInAnUnknownZoneReadsAsNullAndCanBeWrittenAgain)
{
    for (qint8 kind : {qint8(Qt::TimeZone), qint8(7), qint8(-1)}) {
        const QByteArray bytes = plainBytes([&](QDataStream &s) {
            s << QDate(2025, 6, 1) << QTime(12, 30, 0) << kind << QStringLiteral("Nowhere/Nothing") << qint32(9);
        });
        QDataStream::Status qs, os;
        qint64 qp, op;
        const QDateTime fromQt = readTime(bytes, &qs, &qp, false);
        ASSERT_FALSE(fromQt.isValid()) << int(kind); // and Qt's operator<< would crash on it
        const QDateTime ours = readTime(bytes, &os, &op, true);
        EXPECT_TRUE(ours.isNull()) << int(kind);
        EXPECT_EQ(os, qs);
        EXPECT_EQ(op, qp);
        expectWritable(ours);
    }
}

TEST(WireStream, ZoneNameOutsideTheZoneDirectoryIsNotLookedUp)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        writeZonedTime(s, climbingName);
        s << qint32(0x5A5A5A5A);
    });
    QDataStream::Status qs, os;
    qint64 qp, op;
    const QDateTime fromQt = readTime(bytes, &qs, &qp, false);
    if (!fromQt.isValid())
        GTEST_SKIP() << "no zone database on this machine";
    // Qt followed the name out of its directory and back; ours never opens that file.
    const QDateTime ours = readTime(bytes, &os, &op, true);
    EXPECT_TRUE(ours.isNull());
    EXPECT_EQ(os, qs);
    EXPECT_EQ(op, qp);

    // The same name behind the name of a custom zone.
    const QByteArray custom = plainBytes([](QDataStream &s) {
        s << QDate(2025, 6, 1) << QTime(12, 30, 0) << qint8(Qt::TimeZone) << QStringLiteral("OffsetFromUtc")
          << climbingName << qint32(3600) << QStringLiteral("n") << QStringLiteral("a") << qint32(0)
          << QStringLiteral("c") << qint32(0x5A5A5A5A);
    });
    readTime(custom, &qs, &qp, false);
    EXPECT_TRUE(readTime(custom, &os, &op, true).isNull());
    EXPECT_EQ(os, qs);
    EXPECT_EQ(op, qp);
}

TEST(WireStream, VariantWithATimeWhoseZoneNameClimbsOutIsRefused)
{
    const QByteArray plain = plainBytes([](QDataStream &s) {
        s << quint32(QMetaType::QDateTime) << qint8(0);
        writeZonedTime(s, climbingName);
    });
    QDataStream::Status status;
    qint64 pos;
    EXPECT_FALSE(ourRead(plain, &status, &pos).isValid());
    EXPECT_EQ(status, QDataStream::ReadCorruptData);
    EXPECT_EQ(pos, plain.size());

    const QByteArray nested = plainBytes([](QDataStream &s) {
        s << quint32(QMetaType::QVariantMap) << qint8(0) << quint32(2);
        s << QStringLiteral("a") << QVariant(1.0);
        s << QStringLiteral("b") << quint32(QMetaType::QVariantList) << qint8(0) << quint32(1);
        s << quint32(QMetaType::QDateTime) << qint8(0);
        writeZonedTime(s, QStringLiteral("Europe/../../zoneinfo/UTC"));
    });
    EXPECT_FALSE(ourRead(nested, &status).isValid());
    EXPECT_EQ(status, QDataStream::ReadCorruptData);

    // A name that stays in the directory is read as Qt reads it, known or not.
    const QByteArray unknown = plainBytes([](QDataStream &s) {
        s << quint32(QMetaType::QVariantList) << qint8(0) << quint32(2) << QVariant(1);
        s << quint32(QMetaType::QDateTime) << qint8(0);
        writeZonedTime(s, QStringLiteral("Nowhere/..Nothing"));
    });
    QDataStream::Status qs;
    qint64 qp;
    const QVariant fromQt = qtRead(unknown, &qs, &qp);
    const QVariant ours = ourRead(unknown, &status, &pos);
    ASSERT_EQ(ours.userType(), QMetaType::QVariantList);
    EXPECT_EQ(ours.toList().size(), 2);
    EXPECT_EQ(ours, fromQt);
    EXPECT_EQ(status, qs);
    EXPECT_EQ(pos, qp);
}

TEST(WireStream, ForgettingUnknownZones)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(QMetaType::QVariantMap) << qint8(0) << quint32(3);
        s << QStringLiteral("k") << quint32(QMetaType::QDateTime) << qint8(0);
        writeZonedTime(s, QStringLiteral("Nowhere/One"));
        s << QStringLiteral("k") << QVariant(QDateTime(QDate(2025, 1, 1), QTime(1, 0), Qt::UTC));
        s << QStringLiteral("list") << quint32(QMetaType::QVariantList) << qint8(0) << quint32(3) << QVariant(7);
        s << quint32(QMetaType::QVariant) << qint8(0) << quint32(QMetaType::QDateTime) << qint8(0);
        writeZonedTime(s, QStringLiteral("Nowhere/Two"));
        s << QVariant(QStringLiteral("x"));
    });
    QVariant value = ourRead(bytes);
    ASSERT_EQ(value.userType(), QMetaType::QVariantMap);
    EXPECT_TRUE(TelorWire::forgetUnknownZones(value));

    const QMultiMap<QString, QVariant> map(value.toMap());
    const QVariantList times = map.values(QStringLiteral("k"));
    ASSERT_EQ(times.size(), 2); // both entries of the repeated key stay
    EXPECT_TRUE(times.contains(QVariant(QDateTime(QDate(2025, 1, 1), QTime(1, 0), Qt::UTC))));
    int nullTimes = 0;
    for (const QVariant &time : times)
        nullTimes += time.userType() == QMetaType::QDateTime && time.toDateTime().isNull();
    EXPECT_EQ(nullTimes, 1);
    const QVariantList list = map.value(QStringLiteral("list")).toList();
    ASSERT_EQ(list.size(), 3);
    EXPECT_EQ(list.at(0), QVariant(7));
    ASSERT_EQ(list.at(1).userType(), QMetaType::QVariant);
    EXPECT_TRUE(qvariant_cast<QVariant>(list.at(1)).toDateTime().isNull());
    EXPECT_EQ(list.at(2), QVariant(QStringLiteral("x")));

    // The value can be written again, and nothing is left to forget.
    const QByteArray again = plainBytes([&](QDataStream &s) { s << value; });
    EXPECT_EQ(ourRead(again), value);
    EXPECT_FALSE(TelorWire::forgetUnknownZones(value));

    QVariant plain(QVariantList{1, QDateTime(QDate(2025, 1, 1), QTime(1, 0), Qt::UTC)});
    const QVariant before = plain;
    EXPECT_FALSE(TelorWire::forgetUnknownZones(plain));
    EXPECT_EQ(plain, before);
}

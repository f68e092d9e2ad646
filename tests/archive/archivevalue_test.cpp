// Points and series of the archive: ArchiveValue and ArchiveParamData, their defaults,
// their stream forms and how a series checks that its reader kept in step.

#include "archivetest.h"

#include "archiveparamdata.h"
#include "archivevalue.h"

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QTimeZone>

using archivetest::Point;
using archivetest::utc;
using archivetest::writeSeries;
using telortest::plainBytes;

namespace {

/** A stream that reads @p bytes as the library's packets do. */
class Reader
{
public:
    explicit Reader(const QByteArray &bytes)
        : m_bytes(bytes)
        , m_stream(m_bytes)
    {
        m_stream.setVersion(QDataStream::Qt_5_15);
    }
    QDataStream &stream() { return m_stream; }
    qint64 position() const { return m_stream.device()->pos(); }

private:
    QByteArray m_bytes;
    QDataStream m_stream;
};

QByteArray writtenBy(const ArchiveParamData &series)
{
    return plainBytes([&](QDataStream &s) { series.write(s); });
}

} // namespace

// --- ArchiveValue ---------------------------------------------------------------------

TEST(ArchiveValue, DefaultHasNullDateInvalidValueAndNoDataState)
{
    const ArchiveValue point;
    EXPECT_TRUE(point.dateTime.isNull());
    EXPECT_FALSE(point.value.isValid());
    EXPECT_EQ(point.state, 2u);
}

TEST(ArchiveValue, ConstructorsHoldTheirValueKinds)
{
    const QDateTime when = utc(2025, 1, 2, 3, 4, 5, 678);

    const ArchiveValue fromVariant(when, QVariant(QStringLiteral("v")), 8);
    EXPECT_EQ(fromVariant.dateTime, when);
    EXPECT_EQ(fromVariant.value, QVariant(QStringLiteral("v")));
    EXPECT_EQ(fromVariant.state, 8u);

    const ArchiveValue fromDouble(when, 2.5, 64);
    EXPECT_EQ(fromDouble.value.userType(), int(QMetaType::Double));
    EXPECT_EQ(fromDouble.value.toDouble(), 2.5);
    EXPECT_EQ(fromDouble.state, 64u);

    const ArchiveValue fromUnsigned(when, 7u, 128);
    EXPECT_EQ(fromUnsigned.value.userType(), int(QMetaType::UInt));
    EXPECT_EQ(fromUnsigned.value.toUInt(), 7u);
    EXPECT_EQ(fromUnsigned.state, 128u);

    const ArchiveValue fromString(when, QStringLiteral("text"), 4096);
    EXPECT_EQ(fromString.value.userType(), int(QMetaType::QString));
    EXPECT_EQ(fromString.value.toString(), QStringLiteral("text"));

    const ArchiveValue fromBytes(when, QByteArray("\x01\x02", 2), 8);
    EXPECT_EQ(fromBytes.value.userType(), int(QMetaType::QByteArray));
    EXPECT_EQ(fromBytes.value.toByteArray(), QByteArray("\x01\x02", 2));
}

TEST(ArchiveValue, ReadsTimeValueAndStateInThisOrder)
{
    const QDateTime when = utc(2024, 2, 29, 23, 59, 58, 999);
    Reader in(plainBytes([&](QDataStream &s) { s << when << QVariant(21.25) << quint32(512) << qint32(77); }));
    const ArchiveValue point(in.stream());
    EXPECT_EQ(point.dateTime, when);
    EXPECT_EQ(point.value, QVariant(21.25));
    EXPECT_EQ(point.state, 512u);
    qint32 next = 0;
    in.stream() >> next;
    EXPECT_EQ(next, 77);
}

TEST(ArchiveValue, StateComesFromTheStreamNotTheDefault)
{
    Reader in(plainBytes([](QDataStream &s) { s << QDateTime() << QVariant() << quint32(0); }));
    const ArchiveValue point(in.stream());
    EXPECT_EQ(point.state, 0u);
    EXPECT_TRUE(point.dateTime.isNull());
    EXPECT_FALSE(point.value.isValid());
}

TEST(ArchiveValue, HugeListInsideTheValueReadsAsInvalid)
{
    // A QVariantList that announces 0x7FFFFFFF elements in a few bytes.
    Reader in(plainBytes([](QDataStream &s) {
        s << utc(2025, 5, 5, 5, 5, 5) << quint32(QMetaType::QVariantList) << qint8(0) << quint32(0x7FFFFFFF)
          << quint32(QMetaType::Int) << qint8(0) << qint32(1);
    }));
    const ArchiveValue point(in.stream());
    EXPECT_EQ(point.dateTime, utc(2025, 5, 5, 5, 5, 5));
    EXPECT_FALSE(point.value.isValid());
    EXPECT_EQ(point.state, 0u);
}

TEST(ArchiveValue, HugeListBehindABadStatusReadsAsInvalid)
{
    // A string of odd length leaves the stream's status bad without consuming its bytes;
    // the point behind it is read all the same, and its list is still judged by its size.
    Reader in(plainBytes([](QDataStream &s) {
        s << quint32(3) << utc(2025, 5, 5, 5, 5, 5) << quint32(QMetaType::QVariantList) << qint8(0)
          << quint32(0x7FFFFFFF) << quint32(QMetaType::Int) << qint8(0) << qint32(1);
    }));
    QString odd;
    in.stream() >> odd;
    ASSERT_EQ(in.stream().status(), QDataStream::ReadCorruptData);
    const ArchiveValue point(in.stream());
    EXPECT_EQ(point.dateTime, utc(2025, 5, 5, 5, 5, 5));
    EXPECT_FALSE(point.value.isValid());
    EXPECT_EQ(in.stream().status(), QDataStream::ReadCorruptData);
}

TEST(ArchiveValue, ValueBehindABadStatusReadsAsQtReadsIt)
{
    const QVariantList list{1, QStringLiteral("two"), 3.5};
    Reader in(plainBytes([&](QDataStream &s) { s << quint32(3) << utc(2025, 5, 5, 5, 5, 5) << QVariant(list) << quint32(8); }));
    QString odd;
    in.stream() >> odd;
    ASSERT_EQ(in.stream().status(), QDataStream::ReadCorruptData);
    const ArchiveValue point(in.stream());
    EXPECT_EQ(point.value, QVariant(list));
    EXPECT_EQ(point.state, 8u);
    EXPECT_EQ(in.stream().status(), QDataStream::ReadCorruptData);
}

// --- ArchiveParamData -------------------------------------------------------------------

TEST(ArchiveParamData, NewRecordIsEmpty)
{
    const ArchiveParamData series;
    EXPECT_EQ(series.id, 0);
    EXPECT_EQ(series.auxValue, 0);
    EXPECT_TRUE(series.data.isEmpty());
    EXPECT_TRUE(series.getData().isEmpty());
}

TEST(ArchiveParamData, WireFormMatchesPlainWrites)
{
    const QList<Point> points = {
        {utc(2025, 3, 1, 10, 0, 0, 250), QVariant(1.5), 8},
        {utc(2025, 3, 1, 10, 0, 1), QVariant(QStringLiteral("off")), 64},
        {QDateTime(), QVariant(), 2},
        {utc(2025, 3, 1, 10, 0, 2), QVariant(4294967295u), 4096},
    };
    ArchiveParamData series;
    series.id = 41;
    series.auxValue = -3;
    for (const Point &p : points)
        series.data.append(ArchiveValue(p.dateTime, p.value, p.state));

    const QByteArray expected = plainBytes([&](QDataStream &s) { writeSeries(s, 41, -3, points); });
    EXPECT_EQ(writtenBy(series), expected);
}

TEST(ArchiveParamData, RoundTrip)
{
    ArchiveParamData series;
    series.id = -7;
    series.auxValue = 0x10203040;
    series.data.append(ArchiveValue(utc(2020, 1, 1, 0, 0, 0, 1), 3.25, 8));
    series.data.append(ArchiveValue(utc(2020, 1, 1, 0, 0, 1), QByteArray("raw"), 256));
    series.data.append(ArchiveValue(utc(2020, 1, 1, 0, 0, 2), QVariant(QVariantList{1, QStringLiteral("x")}), 2048));

    Reader in(writtenBy(series));
    ArchiveParamData copy;
    ASSERT_TRUE(copy.read(in.stream()));
    EXPECT_EQ(copy.id, -7);
    EXPECT_EQ(copy.auxValue, 0x10203040);
    ASSERT_EQ(copy.data.size(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(copy.data.at(i).dateTime, series.data.at(i).dateTime);
        EXPECT_EQ(copy.data.at(i).value, series.data.at(i).value);
        EXPECT_EQ(copy.data.at(i).state, series.data.at(i).state);
    }
    EXPECT_TRUE(in.stream().atEnd());
}

TEST(ArchiveParamData, ZeroPointsAreFourWordsWithIdFirstAndLast)
{
    ArchiveParamData series;
    series.id = 0x01020304;
    series.auxValue = 9;
    const QByteArray bytes = writtenBy(series);
    EXPECT_EQ(bytes, plainBytes([](QDataStream &s) { s << qint32(0x01020304) << qint32(9) << qint32(0) << qint32(0x01020304); }));
    EXPECT_EQ(bytes.size(), 16);

    Reader in(bytes);
    ArchiveParamData copy;
    EXPECT_TRUE(copy.read(in.stream()));
    EXPECT_EQ(copy.id, 0x01020304);
    EXPECT_EQ(copy.auxValue, 9);
    EXPECT_TRUE(copy.data.isEmpty());
    EXPECT_EQ(in.position(), 16);
}

TEST(ArchiveParamData, NegativeCountStandsForNoPoints)
{
    Reader in(plainBytes([](QDataStream &s) { s << qint32(5) << qint32(0) << qint32(-3) << qint32(5) << qint32(99); }));
    ArchiveParamData series;
    EXPECT_TRUE(series.read(in.stream()));
    EXPECT_TRUE(series.data.isEmpty());
    EXPECT_EQ(in.position(), 16);
}

TEST(ArchiveParamData, WrongClosingWordKeepsEverythingRead)
{
    const QList<Point> points = {
        {utc(2025, 1, 1, 0, 0, 0), QVariant(1.0), 8},
        {utc(2025, 1, 1, 0, 0, 1), QVariant(2.0), 128},
    };
    Reader in(plainBytes([&](QDataStream &s) {
        s << qint32(12) << qint32(34) << qint32(2);
        for (const Point &p : points)
            s << p.dateTime << p.value << p.state;
        s << qint32(13);
    }));
    ArchiveParamData series;
    EXPECT_FALSE(series.read(in.stream()));
    EXPECT_EQ(series.id, 12);
    EXPECT_EQ(series.auxValue, 34);
    ASSERT_EQ(series.data.size(), 2);
    EXPECT_EQ(series.data.at(0).value, QVariant(1.0));
    EXPECT_EQ(series.data.at(1).value, QVariant(2.0));
    EXPECT_EQ(series.data.at(1).state, 128u);
}

TEST(ArchiveParamData, RecordThatIsNotFreshRefusesAndDoesNotMoveTheStream)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint32(1) << qint32(0) << qint32(0) << qint32(1); });
    {
        Reader in(bytes);
        ArchiveParamData withId;
        withId.id = 1;
        EXPECT_FALSE(withId.read(in.stream()));
        EXPECT_EQ(in.position(), 0);
    }
    {
        Reader in(bytes);
        ArchiveParamData withAux;
        withAux.auxValue = -1;
        EXPECT_FALSE(withAux.read(in.stream()));
        EXPECT_EQ(in.position(), 0);
        EXPECT_EQ(withAux.id, 0);
    }
}

TEST(ArchiveParamData, ClearDoesNotMakeARecordWithAnIdFresh)
{
    const QList<Point> one = {{utc(2025, 1, 1, 0, 0, 0), QVariant(1.0), 8}};
    const QByteArray bytes = plainBytes([&](QDataStream &s) { writeSeries(s, 3, 0, one); writeSeries(s, 3, 0, one); });
    Reader in(bytes);
    ArchiveParamData series;
    ASSERT_TRUE(series.read(in.stream()));
    series.clear();
    EXPECT_TRUE(series.data.isEmpty());
    EXPECT_EQ(series.id, 3);
    const qint64 before = in.position();
    EXPECT_FALSE(series.read(in.stream()));
    EXPECT_EQ(in.position(), before);
    EXPECT_TRUE(series.data.isEmpty());
}

TEST(ArchiveParamData, RecordWithZeroIdAndAuxReadsAgainAndAppends)
{
    const QList<Point> first = {{utc(2025, 1, 1, 0, 0, 0), QVariant(1.0), 8}};
    const QList<Point> second = {{utc(2025, 1, 1, 0, 0, 1), QVariant(2.0), 64},
                                 {utc(2025, 1, 1, 0, 0, 2), QVariant(3.0), 128}};
    Reader in(plainBytes([&](QDataStream &s) { writeSeries(s, 0, 0, first); writeSeries(s, 0, 0, second); }));
    ArchiveParamData series;
    ASSERT_TRUE(series.read(in.stream()));
    ASSERT_EQ(series.data.size(), 1);

    // Without clear the record is still "fresh", since id and auxValue are zero.
    ASSERT_TRUE(series.read(in.stream()));
    ASSERT_EQ(series.data.size(), 3);
    EXPECT_EQ(series.data.at(0).value, QVariant(1.0));
    EXPECT_EQ(series.data.at(2).value, QVariant(3.0));

    series.clear();
    EXPECT_TRUE(series.getData().isEmpty());
}

TEST(ArchiveParamData, ClearedRecordWithZeroIdReadsAgain)
{
    const QList<Point> first = {{utc(2025, 1, 1, 0, 0, 0), QVariant(1.0), 8}};
    const QList<Point> second = {{utc(2025, 1, 1, 0, 0, 1), QVariant(2.0), 64}};
    Reader in(plainBytes([&](QDataStream &s) { writeSeries(s, 0, 0, first); writeSeries(s, 0, 0, second); }));
    ArchiveParamData series;
    ASSERT_TRUE(series.read(in.stream()));
    series.clear();
    ASSERT_TRUE(series.read(in.stream()));
    ASSERT_EQ(series.data.size(), 1);
    EXPECT_EQ(series.data.at(0).value, QVariant(2.0));
}

TEST(ArchiveParamData, GetDataDoesNotCopy)
{
    ArchiveParamData series;
    series.data.append(ArchiveValue());
    EXPECT_EQ(&series.getData(), &series.data);
}

TEST(ArchiveParamData, TruncatedSeriesStopsAtTheEndWithoutCheckingTheStatus)
{
    // One point of three, then the bytes end: the closing word reads as 0, and no point
    // is made up from nothing.
    const QList<Point> one = {{utc(2025, 1, 1, 0, 0, 0), QVariant(1.0), 8}};
    const QByteArray full = plainBytes([&](QDataStream &s) { writeSeries(s, 0, 0, one); });
    QByteArray bytes = full.left(full.size() - 4);
    bytes.replace(8, 4, plainBytes([](QDataStream &s) { s << qint32(3); }));

    Reader in(bytes);
    ArchiveParamData series;
    EXPECT_TRUE(series.read(in.stream())); // the closing word reads as 0, which is the id
    ASSERT_EQ(series.data.size(), 1);
    EXPECT_EQ(series.data.at(0).value, QVariant(1.0));
}

TEST(ArchiveParamData, HugeCountDoesNotAllocateForIt)
{
    const QList<Point> one = {{utc(2025, 1, 1, 0, 0, 0), QVariant(1.0), 8}};
    QByteArray bytes = plainBytes([&](QDataStream &s) { writeSeries(s, 5, 0, one); });
    bytes.replace(8, 4, plainBytes([](QDataStream &s) { s << qint32(0x7FFFFFFF); }));

    Reader in(bytes);
    ArchiveParamData series;
    // The last four bytes are read as part of a second point; the closing word then
    // reads past the end as 0, which is not the id.
    EXPECT_FALSE(series.read(in.stream()));
    EXPECT_EQ(series.id, 5);
    ASSERT_EQ(series.data.size(), 2);
    EXPECT_EQ(series.data.at(0).value, QVariant(1.0));
}

// --- times in a zone that the receiver doesn't know ----------------------------------

namespace {

/** A QDateTime in Qt's stream form, in the named zone @p zoneId (Qt::TimeZone). */
void writeZonedTime(QDataStream &s, const QString &zoneId)
{
    s << QDate(2025, 3, 30) << QTime(2, 30, 0) << qint8(Qt::TimeZone) << zoneId;
}

} // namespace

TEST(ArchiveValue, TimeInAnUnknownZoneReadsAsNullAndCanBeWrittenAgain)
{
    Reader in(plainBytes([](QDataStream &s) {
        s << qint32(0) << qint32(0) << qint32(1);
        writeZonedTime(s, QStringLiteral("Nowhere/Nothing"));
        s << quint32(QMetaType::QDateTime) << qint8(0);
        writeZonedTime(s, QStringLiteral("Nowhere/Else"));
        s << quint32(8) << qint32(0);
    }));
    ArchiveParamData series;
    ASSERT_TRUE(series.read(in.stream()));
    ASSERT_EQ(series.data.size(), 1);
    const ArchiveValue &point = series.data.at(0);
    EXPECT_TRUE(point.dateTime.isNull());
    EXPECT_EQ(point.value.userType(), int(QMetaType::QDateTime));
    EXPECT_TRUE(point.value.toDateTime().isNull());
    EXPECT_EQ(point.state, 8u);

    // Written again as null times.
    EXPECT_EQ(writtenBy(series), plainBytes([](QDataStream &s) {
                  s << qint32(0) << qint32(0) << qint32(1) << QDateTime() << QVariant(QDateTime()) << quint32(8)
                    << qint32(0);
              }));
}

TEST(ArchiveValue, UnknownZonesInsideContainersReadAsNullTimes)
{
    const QDateTime known(QDate(2025, 3, 30), QTime(2, 30, 0), QTimeZone(7200));
    Reader in(plainBytes([&](QDataStream &s) {
        s << QDateTime();
        // A list of [known time, unknown time, {"t": unknown time}, QVariant(unknown time)]
        s << quint32(QMetaType::QVariantList) << qint8(0) << quint32(4);
        s << QVariant(known);
        s << quint32(QMetaType::QDateTime) << qint8(0);
        writeZonedTime(s, QStringLiteral("Nowhere/One"));
        s << quint32(QMetaType::QVariantMap) << qint8(0) << quint32(1) << QStringLiteral("t");
        s << quint32(QMetaType::QDateTime) << qint8(0);
        writeZonedTime(s, QStringLiteral("Nowhere/Two"));
        s << quint32(QMetaType::QVariant) << qint8(0);
        s << quint32(QMetaType::QDateTime) << qint8(0);
        writeZonedTime(s, QStringLiteral("Nowhere/Three"));
        s << quint32(64);
    }));
    const ArchiveValue point(in.stream());
    EXPECT_EQ(point.state, 64u);
    ASSERT_EQ(point.value.userType(), int(QMetaType::QVariantList));
    const QVariantList list = point.value.toList();
    ASSERT_EQ(list.size(), 4);
    EXPECT_EQ(list.at(0).toDateTime(), known);
    EXPECT_EQ(list.at(0).toDateTime().timeZone(), QTimeZone(7200));
    EXPECT_TRUE(list.at(1).toDateTime().isNull());
    EXPECT_TRUE(list.at(2).toMap().value(QStringLiteral("t")).toDateTime().isNull());
    EXPECT_EQ(list.at(3).userType(), int(QMetaType::QVariant));
    EXPECT_TRUE(qvariant_cast<QVariant>(list.at(3)).toDateTime().isNull());

    // The whole value can be written again.
    const QByteArray again = plainBytes([&](QDataStream &s) { s << point.value; });
    EXPECT_FALSE(again.isEmpty());
}

TEST(ArchiveValue, TimesInKnownZonesReadAsQtReadsThem)
{
    const QDateTime zoned(QDate(2025, 6, 1), QTime(12, 0, 0, 5), QTimeZone(-3 * 3600));
    const QDateTime offset(QDate(2025, 6, 1), QTime(12, 0, 0), Qt::OffsetFromUTC, 5400);
    const QDateTime local(QDate(2025, 6, 1), QTime(12, 0, 0), Qt::LocalTime);
    for (const QDateTime &when : {zoned, offset, local}) {
        Reader in(plainBytes([&](QDataStream &s) { s << when << QVariant(when) << quint32(8); }));
        const ArchiveValue point(in.stream());
        EXPECT_EQ(point.dateTime, when);
        EXPECT_EQ(point.dateTime.timeSpec(), when.timeSpec());
        EXPECT_EQ(point.dateTime.offsetFromUtc(), when.offsetFromUtc());
        EXPECT_EQ(point.value.toDateTime(), when);
    }
}

TEST(ArchiveValue, ZoneNameOutsideTheZoneDirectoryIsNotLookedUp)
{
    Reader in(plainBytes([](QDataStream &s) {
        writeZonedTime(s, QStringLiteral("../../../dev/stdin"));
        s << QVariant(2.0) << quint32(8);
    }));
    const ArchiveValue point(in.stream());
    EXPECT_TRUE(point.dateTime.isNull());
    EXPECT_EQ(point.value, QVariant(2.0));
    EXPECT_EQ(point.state, 8u);
}

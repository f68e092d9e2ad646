// Archive results: the series of several parameters as one piece of an answer, read as a
// client receives it and written as a server sends it; ownership of the series.

#include "archivetest.h"

#include "archiveresult.h"

#include <gtest/gtest.h>

#include <QtCore/QObject>

using archivetest::Point;
using archivetest::tokenOf;
using archivetest::utc;
using archivetest::writeSeries;
using telortest::bodyOf;
using telortest::identityOf;
using telortest::packetBytes;
using telortest::plainBytes;

namespace {

struct Fixed
{
    qint64 token = 0;
    qint32 piecesCount = 0;
    qint32 pieceNumber = 0;
    QString fileName;
    qint32 auxId = 0;
    qint32 idQuery = 0;
};

/** The fixed part of a result body, behind the number of entries. */
void writeFixed(QDataStream &s, qint32 entries, const Fixed &f)
{
    s << entries << f.token << f.piecesCount << f.pieceNumber << f.fileName << f.auxId << f.idQuery;
}

/** An entry that holds a series: its key, the flag 1, then the series under the key as its id. */
void writeEntry(QDataStream &s, qint32 key, qint32 auxValue, const QList<Point> &points)
{
    s << key << quint8(1);
    writeSeries(s, key, auxValue, points);
}

/** Reads @p body into @p result as a client does with a server's packet. */
bool readInto(ArchiveResult &result, const QByteArray &body)
{
    result.setPacket(packetBytes(3, 7, 1, body));
    return result.read();
}

ArchiveParamData *series(int id, int auxValue, const QList<Point> &points)
{
    auto *data = new ArchiveParamData;
    data->id = id;
    data->auxValue = auxValue;
    for (const Point &p : points)
        data->data.append(ArchiveValue(p.dateTime, p.value, p.state));
    return data;
}

/** A series that counts its destructions. */
class CountedSeries : public ArchiveParamData
{
public:
    explicit CountedSeries(int *deaths)
        : m_deaths(deaths)
    {
    }
    ~CountedSeries() override { ++*m_deaths; }

private:
    int *m_deaths;
};

const QList<Point> twoPoints = {
    {utc(2025, 9, 1, 0, 0, 0), QVariant(1.25), 8},
    {utc(2025, 9, 1, 0, 0, 1, 500), QVariant(2.5), 128},
};
const QList<Point> onePoint = {{utc(2025, 9, 1, 0, 0, 2), QVariant(QStringLiteral("on")), 8}};

} // namespace

TEST(ArchiveResult, NewResultIsEmptyAndHasNoIdentity)
{
    const ArchiveResult result;
    EXPECT_EQ(identityOf(result), (QList<qint32>{0, 0, 0}));
    EXPECT_TRUE(result.params.isEmpty());
    EXPECT_EQ(result.parent(), nullptr);
    EXPECT_EQ(result.piecesCount(), 0);
    EXPECT_EQ(result.pieceNumber(), 0);
    EXPECT_TRUE(result.fileName().isNull());
    EXPECT_EQ(result.auxId, 0);
    EXPECT_EQ(result.idQuery(), 0);
}

TEST(ArchiveResult, BodyMatchesPlainWritesWithEntriesByAscendingKey)
{
    QObject client;
    ArchiveResult result;
    result.setParent(&client);
    result.setPiecesCount(3);
    result.setPieceNumber(2);
    result.setFileName(QStringLiteral("/archive/piece-2.dat"));
    result.auxId = -9;
    result.setIdQuery(77);
    result.setParam(20, series(20, 1, twoPoints));
    result.setParam(-5, series(-5, 0, onePoint));
    result.setParam(7, series(7, 2, {}));

    Fixed fixed;
    fixed.token = tokenOf(&client);
    fixed.piecesCount = 3;
    fixed.pieceNumber = 2;
    fixed.fileName = QStringLiteral("/archive/piece-2.dat");
    fixed.auxId = -9;
    fixed.idQuery = 77;
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        writeFixed(s, 3, fixed);
        writeEntry(s, -5, 0, onePoint);
        writeEntry(s, 7, 2, {});
        writeEntry(s, 20, 1, twoPoints);
    });
    const QByteArray packet = result.write();
    EXPECT_EQ(bodyOf(packet), expected);
    EXPECT_EQ(packet, packetBytes(0, 0, 0, expected));
}

TEST(ArchiveResult, NullEntryIsWrittenAsItsKeyAndFlagZero)
{
    ArchiveResult result;
    result.setParam(4, nullptr);
    result.setParam(5, series(5, 0, onePoint));
    const QByteArray expected = plainBytes([](QDataStream &s) {
        writeFixed(s, 2, Fixed());
        s << qint32(4) << quint8(0);
        writeEntry(s, 5, 0, onePoint);
    });
    EXPECT_EQ(bodyOf(result.write()), expected);
}

TEST(ArchiveResult, RoundTrip)
{
    QObject client;
    ArchiveResult result;
    result.setParent(&client);
    result.setPiecesCount(1);
    result.setPieceNumber(0);
    result.setFileName(QStringLiteral("answer"));
    result.auxId = 12;
    result.setIdQuery(5);
    result.setParam(1, series(1, 0, twoPoints));
    result.setParam(2, nullptr);
    result.setParam(3, series(3, 99, onePoint));
    result.write();

    ArchiveResult copy;
    copy.setPacket(result);
    ASSERT_TRUE(copy.read());
    EXPECT_EQ(copy.parent(), &client);
    EXPECT_EQ(copy.piecesCount(), 1);
    EXPECT_EQ(copy.pieceNumber(), 0);
    EXPECT_EQ(copy.fileName(), QStringLiteral("answer"));
    EXPECT_EQ(copy.auxId, 12);
    EXPECT_EQ(copy.idQuery(), 5);
    EXPECT_EQ(copy.params.keys(), (QList<int>{1, 3})); // the null entry leaves no trace
    ASSERT_NE(copy.getParam(1), nullptr);
    ASSERT_EQ(copy.getParam(1)->getData().size(), 2);
    EXPECT_EQ(copy.getParam(1)->getData().at(1).dateTime, utc(2025, 9, 1, 0, 0, 1, 500));
    EXPECT_EQ(copy.getParam(1)->getData().at(1).value, QVariant(2.5));
    EXPECT_EQ(copy.getParam(1)->getData().at(1).state, 128u);
    EXPECT_EQ(copy.getParam(3)->auxValue, 99);
    EXPECT_EQ(copy.getParam(3)->getData().at(0).value, QVariant(QStringLiteral("on")));
    EXPECT_EQ(copy.getParam(2), nullptr);
}

TEST(ArchiveResult, ServerPacketReadsFixedFieldsAndSeries)
{
    Fixed fixed;
    fixed.token = 0x7766554433221100LL;
    fixed.piecesCount = 4;
    fixed.pieceNumber = 3;
    fixed.fileName = QStringLiteral("f");
    fixed.auxId = 0x0BADF00D;
    fixed.idQuery = -1;
    ArchiveResult result;
    ASSERT_TRUE(readInto(result, plainBytes([&](QDataStream &s) {
        writeFixed(s, 2, fixed);
        writeEntry(s, 11, 0, twoPoints);
        writeEntry(s, 12, 0, onePoint);
    })));
    EXPECT_EQ(tokenOf(result.parent()), 0x7766554433221100LL);
    EXPECT_EQ(result.piecesCount(), 4);
    EXPECT_EQ(result.pieceNumber(), 3);
    EXPECT_EQ(result.fileName(), QStringLiteral("f"));
    EXPECT_EQ(result.auxId, 0x0BADF00D);
    EXPECT_EQ(result.idQuery(), -1);
    ASSERT_NE(result.getParam(11), nullptr);
    EXPECT_EQ(result.getParam(11)->id, 11);
    EXPECT_EQ(result.getParam(11)->getData().size(), 2);
    ASSERT_NE(result.getParam(12), nullptr);
    EXPECT_EQ(result.getParam(12)->getData().size(), 1);
    const QProtocolHeader header = result.getHeader();
    EXPECT_EQ(header.serviceId, 3); // from the packet
    EXPECT_EQ(header.messageId, 7);
}

TEST(ArchiveResult, NoEntriesReadsTrueAndFindsNothing)
{
    ArchiveResult result;
    Fixed fixed;
    fixed.token = 5;
    fixed.idQuery = 8;
    ASSERT_TRUE(readInto(result, plainBytes([&](QDataStream &s) { writeFixed(s, 0, fixed); })));
    EXPECT_TRUE(result.params.isEmpty());
    for (unsigned int id : {0u, 1u, 8u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu})
        EXPECT_EQ(result.getParam(id), nullptr);
    EXPECT_EQ(result.idQuery(), 8);
}

TEST(ArchiveResult, NegativeCountReadsTheFixedFieldsAndNoEntry)
{
    ArchiveResult result;
    Fixed fixed;
    fixed.pieceNumber = 6;
    ASSERT_TRUE(readInto(result, plainBytes([&](QDataStream &s) {
        writeFixed(s, -1, fixed);
        writeEntry(s, 1, 0, onePoint);
    })));
    EXPECT_EQ(result.pieceNumber(), 6);
    EXPECT_TRUE(result.params.isEmpty());
}

TEST(ArchiveResult, EntryWithFlagZeroLeavesNoTrace)
{
    ArchiveResult result;
    ASSERT_TRUE(readInto(result, plainBytes([](QDataStream &s) {
        writeFixed(s, 3, Fixed());
        s << qint32(1) << quint8(0);
        writeEntry(s, 2, 0, onePoint);
        s << qint32(3) << quint8(0);
    })));
    EXPECT_EQ(result.params.keys(), (QList<int>{2}));
    EXPECT_FALSE(result.params.contains(1));
    EXPECT_EQ(result.getParam(1), nullptr);
    EXPECT_EQ(result.getParam(3), nullptr);
    EXPECT_NE(result.getParam(2), nullptr);
}

TEST(ArchiveResult, AnyFlagOtherThanZeroIsFollowedByASeries)
{
    ArchiveResult result;
    ASSERT_TRUE(readInto(result, plainBytes([](QDataStream &s) {
        writeFixed(s, 1, Fixed());
        s << qint32(9) << quint8(0xFE);
        writeSeries(s, 9, 0, onePoint);
    })));
    ASSERT_NE(result.getParam(9), nullptr);
    EXPECT_EQ(result.getParam(9)->getData().size(), 1);
}

TEST(ArchiveResult, SeriesWithAWrongClosingWordFailsAndEarlierSeriesStay)
{
    ArchiveResult result;
    EXPECT_FALSE(readInto(result, plainBytes([](QDataStream &s) {
        writeFixed(s, 3, Fixed());
        writeEntry(s, 1, 0, onePoint);
        s << qint32(2) << quint8(1) << qint32(2) << qint32(0) << qint32(0) << qint32(3); // closes with 3
        writeEntry(s, 4, 0, onePoint);
    })));
    ASSERT_NE(result.getParam(1), nullptr);
    EXPECT_EQ(result.getParam(1)->getData().size(), 1);
    EXPECT_EQ(result.getParam(2), nullptr); // dropped
    EXPECT_EQ(result.getParam(4), nullptr); // never read
    EXPECT_EQ(result.params.size(), 1);
}

TEST(ArchiveResult, NullParentIsNoFailure)
{
    ArchiveResult result;
    EXPECT_TRUE(readInto(result, plainBytes([](QDataStream &s) {
        writeFixed(s, 1, Fixed());
        writeEntry(s, 1, 0, onePoint);
    })));
    EXPECT_EQ(result.parent(), nullptr);
    EXPECT_NE(result.getParam(1), nullptr);
}

TEST(ArchiveResult, IdentifierAboveIntRangeIsLookedUpAsTheNegativeKey)
{
    ArchiveResult result;
    ASSERT_TRUE(readInto(result, plainBytes([](QDataStream &s) {
        writeFixed(s, 2, Fixed());
        writeEntry(s, -2, 0, onePoint);
        writeEntry(s, 0x7FFFFFFF, 0, twoPoints);
    })));
    ASSERT_NE(result.getParam(0xFFFFFFFEu), nullptr);
    EXPECT_EQ(result.getParam(0xFFFFFFFEu), result.params.value(-2));
    EXPECT_EQ(result.getParam(0xFFFFFFFEu)->id, -2);
    EXPECT_EQ(result.getParam(0x7FFFFFFFu)->getData().size(), 2);
    EXPECT_EQ(result.getParam(0x80000000u), nullptr);
}

TEST(ArchiveResult, RepeatedKeyTakesThePlaceOfTheOldSeries)
{
    ArchiveResult result;
    ASSERT_TRUE(readInto(result, plainBytes([](QDataStream &s) {
        writeFixed(s, 2, Fixed());
        writeEntry(s, 6, 0, twoPoints);
        s << qint32(6) << quint8(1);
        writeSeries(s, 60, 1, onePoint);
    })));
    EXPECT_EQ(result.params.size(), 1);
    ASSERT_NE(result.getParam(6), nullptr);
    EXPECT_EQ(result.getParam(6)->id, 60);
    EXPECT_EQ(result.getParam(6)->getData().size(), 1);
}

TEST(ArchiveResult, ReadingAddsToWhatTheResultHolds)
{
    int deaths = 0;
    ArchiveResult result;
    result.setParam(1, new CountedSeries(&deaths));
    result.setParam(2, new CountedSeries(&deaths));
    ASSERT_TRUE(readInto(result, plainBytes([](QDataStream &s) {
        writeFixed(s, 2, Fixed());
        writeEntry(s, 2, 0, onePoint);
        writeEntry(s, 3, 0, onePoint);
    })));
    EXPECT_EQ(result.params.keys(), (QList<int>{1, 2, 3}));
    EXPECT_EQ(deaths, 1); // the series under 2 was replaced and freed
    EXPECT_EQ(result.getParam(2)->getData().size(), 1);
}

TEST(ArchiveResult, OwnsItsSeries)
{
    int deaths = 0;
    {
        ArchiveResult result;
        result.setParam(1, new CountedSeries(&deaths));
        result.setParam(2, new CountedSeries(&deaths));
        result.setParam(1, new CountedSeries(&deaths)); // replaces and frees the first
        EXPECT_EQ(deaths, 1);
        result.setParam(3, nullptr);
        result.params.insert(4, new CountedSeries(&deaths)); // handed over through the field
        EXPECT_EQ(deaths, 1);
    }
    EXPECT_EQ(deaths, 4);
}

TEST(ArchiveResult, SettingTheSameSeriesAgainKeepsIt)
{
    int deaths = 0;
    ArchiveResult result;
    auto *kept = new CountedSeries(&deaths);
    result.setParam(1, kept);
    result.setParam(1, kept);
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(result.getParam(1), kept);
}

TEST(ArchiveResult, IsNotCopyable)
{
    EXPECT_FALSE(std::is_copy_constructible<ArchiveResult>::value);
    EXPECT_FALSE(std::is_copy_assignable<ArchiveResult>::value);
}

TEST(ArchiveResult, HugeEntryCountEndsWithTheBody)
{
    ArchiveResult result;
    EXPECT_TRUE(readInto(result, plainBytes([](QDataStream &s) {
        writeFixed(s, 0x7FFFFFFF, Fixed());
        writeEntry(s, 1, 0, onePoint);
    })));
    EXPECT_EQ(result.params.keys(), (QList<int>{1}));
}

TEST(ArchiveResult, HugePointCountEndsWithTheBody)
{
    ArchiveResult result;
    EXPECT_FALSE(readInto(result, plainBytes([](QDataStream &s) {
        writeFixed(s, 1, Fixed());
        s << qint32(1) << quint8(1) << qint32(1) << qint32(0) << qint32(0x7FFFFFFF);
    })));
    EXPECT_TRUE(result.params.isEmpty());
}

TEST(ArchiveResult, TruncatedFixedFieldsReadTrue)
{
    ArchiveResult result;
    EXPECT_TRUE(readInto(result, plainBytes([](QDataStream &s) { s << qint32(2) << qint64(3) << qint32(1); })));
    EXPECT_EQ(tokenOf(result.parent()), 3);
    EXPECT_EQ(result.piecesCount(), 1);
    EXPECT_EQ(result.pieceNumber(), 0);
    EXPECT_TRUE(result.params.isEmpty());
}

// Archive queries: the time span and its tests, identifiers, last values, sections,
// copies and the body on the wire.

#include "archivetest.h"

#include "archivequery.h"
#include "bpdouble.h"

#include <gtest/gtest.h>

#include <QtCore/QObject>
#include <QtCore/QTimeZone>

using archivetest::tokenOf;
using archivetest::utc;
using telortest::bodyOf;
using telortest::identityOf;
using telortest::packetBytes;
using telortest::plainBytes;
using telortest::routeOf;

namespace {

/** A query read from a server's packet, as the receiving side reads it. */
bool readInto(ArchiveQuery &query, const QByteArray &body, qint32 serviceId = 3, qint32 messageId = 7,
              qint32 messageType = 1)
{
    query.setPacket(packetBytes(serviceId, messageId, messageType, body));
    return query.read();
}

/** The body of a valid query with both points, built by plain writes. */
QByteArray validBody(qint64 token, const QDateTime &begin, const QDateTime &end, const QList<quint32> &ids,
                     qint32 idEventQuery, bool restoreAperture)
{
    return plainBytes([&](QDataStream &s) {
        s << true << token << false << begin << false << end << quint32(ids.size());
        for (quint32 id : ids)
            s << id;
        s << idEventQuery << restoreAperture;
    });
}

} // namespace

// --- construction and identity ----------------------------------------------------------

TEST(ArchiveQuery, NewQueryHasIdentityAndDefaults)
{
    QObject client;
    const ArchiveQuery query(&client);
    EXPECT_EQ(identityOf(query), (QList<qint32>{3, 7, 1}));
    EXPECT_EQ(query.parent(), &client);
    EXPECT_TRUE(query.beginTime.isNull());
    EXPECT_TRUE(query.endTime.isNull());
    EXPECT_FALSE(query.fromBegin);
    EXPECT_FALSE(query.toEnd);
    EXPECT_TRUE(query.getIds().isEmpty());
    EXPECT_TRUE(query.lastValueMap().isEmpty());
    EXPECT_EQ(query.idArchive(), 0);
    EXPECT_EQ(query.idSection(), 0);
    EXPECT_EQ(query.sectionCount(), 0);
    EXPECT_EQ(query.idQuery(), 0);
    EXPECT_EQ(query.idEventQuery(), 0);
    EXPECT_FALSE(query.restoreAperture());
}

TEST(ArchiveQuery, NewQueryIsNotValid)
{
    const ArchiveQuery query(nullptr);
    EXPECT_FALSE(query.isValid());
}

// --- the span -----------------------------------------------------------------------------

TEST(ArchiveQuery, OpenSpanWithOneIdentifierIsValidWithoutDates)
{
    ArchiveQuery query(nullptr);
    query.setFromBegin();
    query.setToEnd();
    EXPECT_FALSE(query.isValid()); // no identifier yet
    query.appendById(4);
    EXPECT_TRUE(query.isValid());
    EXPECT_TRUE(query.getBeginTime().isNull());
    EXPECT_TRUE(query.getEndTime().isNull());
}

TEST(ArchiveQuery, SetIntervalStoresBothPointsInUtc)
{
    ArchiveQuery query(nullptr);
    const QDateTime begin(QDate(2025, 6, 1), QTime(12, 0, 0, 125), QTimeZone(3 * 3600));
    const QDateTime end(QDate(2025, 6, 1), QTime(13, 30, 0), Qt::LocalTime);
    ASSERT_TRUE(query.setInterval(begin, end));
    EXPECT_EQ(query.getBeginTime().timeSpec(), Qt::UTC);
    EXPECT_EQ(query.getEndTime().timeSpec(), Qt::UTC);
    EXPECT_EQ(query.getBeginTime(), begin);
    EXPECT_EQ(query.getBeginTime().time(), QTime(9, 0, 0, 125));
    EXPECT_EQ(query.getEndTime(), end);
    EXPECT_FALSE(query.fromBegin);
    EXPECT_FALSE(query.toEnd);
}

TEST(ArchiveQuery, SetIntervalAcceptsAnEqualEnd)
{
    ArchiveQuery query(nullptr);
    const QDateTime when = utc(2025, 6, 1, 12, 0, 0);
    EXPECT_TRUE(query.setInterval(when, when));
    query.appendById(1);
    EXPECT_TRUE(query.isValid());
}

TEST(ArchiveQuery, SetIntervalWithEndBeforeBeginKeepsTheFormerPointsAndFlags)
{
    ArchiveQuery query(nullptr);
    const QDateTime begin = utc(2025, 1, 1, 0, 0, 0);
    const QDateTime end = utc(2025, 1, 2, 0, 0, 0);
    ASSERT_TRUE(query.setInterval(begin, end));
    EXPECT_FALSE(query.setInterval(utc(2025, 3, 2, 0, 0, 0), utc(2025, 3, 1, 0, 0, 0)));
    EXPECT_EQ(query.getBeginTime(), begin);
    EXPECT_EQ(query.getEndTime(), end);

    ArchiveQuery open(nullptr);
    open.setFromBegin();
    open.setToEnd();
    EXPECT_FALSE(open.setInterval(utc(2025, 3, 2, 0, 0, 0), utc(2025, 3, 1, 0, 0, 0)));
    EXPECT_TRUE(open.fromBegin);
    EXPECT_TRUE(open.toEnd);
    EXPECT_TRUE(open.getBeginTime().isNull());
}

TEST(ArchiveQuery, SetIntervalRefusesInvalidPoints)
{
    ArchiveQuery query(nullptr);
    query.setFromBegin();
    EXPECT_FALSE(query.setInterval(QDateTime(), utc(2025, 1, 1, 0, 0, 0)));
    EXPECT_FALSE(query.setInterval(utc(2025, 1, 1, 0, 0, 0), QDateTime()));
    EXPECT_FALSE(query.setInterval(QDateTime(QDate(2025, 2, 30), QTime(0, 0), Qt::UTC), utc(2025, 3, 1, 0, 0, 0)));
    EXPECT_TRUE(query.fromBegin);
    EXPECT_TRUE(query.getEndTime().isNull());
}

TEST(ArchiveQuery, SetIntervalClearsFromBegin)
{
    ArchiveQuery query(nullptr);
    query.setFromBegin();
    query.setToEnd();
    ASSERT_TRUE(query.setInterval(utc(2025, 1, 1, 0, 0, 0), utc(2025, 1, 2, 0, 0, 0)));
    EXPECT_FALSE(query.fromBegin);
    EXPECT_FALSE(query.toEnd);
}

TEST(ArchiveQuery, SetFromBeginAfterSetBeginPointForgetsThePoint)
{
    ArchiveQuery query(nullptr);
    EXPECT_TRUE(query.setBeginPoint(utc(2025, 1, 1, 0, 0, 0)));
    EXPECT_FALSE(query.fromBegin);
    query.setFromBegin();
    EXPECT_TRUE(query.fromBegin);
    EXPECT_TRUE(query.getBeginTime().isNull());

    EXPECT_TRUE(query.setEndPoint(utc(2025, 1, 2, 0, 0, 0)));
    query.setToEnd();
    EXPECT_TRUE(query.toEnd);
    EXPECT_TRUE(query.getEndTime().isNull());
}

TEST(ArchiveQuery, SetBeginPointClearsFromBeginAndStoresUtc)
{
    ArchiveQuery query(nullptr);
    query.setFromBegin();
    query.setToEnd();
    const QDateTime local(QDate(2025, 7, 7), QTime(7, 7, 7, 7), QTimeZone(-5 * 3600));
    EXPECT_TRUE(query.setBeginPoint(local));
    EXPECT_FALSE(query.fromBegin);
    EXPECT_TRUE(query.toEnd);
    EXPECT_EQ(query.getBeginTime().timeSpec(), Qt::UTC);
    EXPECT_EQ(query.getBeginTime(), local);

    EXPECT_TRUE(query.setEndPoint(local));
    EXPECT_FALSE(query.toEnd);
    EXPECT_EQ(query.getEndTime().timeSpec(), Qt::UTC);
}

TEST(ArchiveQuery, SetBeginPointWithAnInvalidDateReturnsTrueAndTheQueryIsNotValid)
{
    ArchiveQuery query(nullptr);
    query.setToEnd();
    query.appendById(1);
    ASSERT_TRUE(query.setBeginPoint(utc(2025, 1, 1, 0, 0, 0)));
    ASSERT_TRUE(query.isValid());
    EXPECT_TRUE(query.setBeginPoint(QDateTime()));
    EXPECT_FALSE(query.isValid());
}

TEST(ArchiveQuery, SetEndPointBeforeTheBeginPointReturnsTrueAndTheQueryIsNotValid)
{
    ArchiveQuery query(nullptr);
    query.appendById(1);
    ASSERT_TRUE(query.setBeginPoint(utc(2025, 1, 2, 0, 0, 0)));
    EXPECT_TRUE(query.setEndPoint(utc(2025, 1, 1, 0, 0, 0)));
    EXPECT_EQ(query.getEndTime(), utc(2025, 1, 1, 0, 0, 0));
    EXPECT_FALSE(query.isValid());
    EXPECT_TRUE(query.setEndPoint(utc(2025, 1, 2, 0, 0, 0)));
    EXPECT_TRUE(query.isValid());
}

TEST(ArchiveQuery, ValidityCases)
{
    ArchiveQuery query(nullptr);
    query.appendById(9);
    query.setToEnd();
    EXPECT_FALSE(query.isValid()); // fromBegin false and no begin point
    query.setFromBegin();
    EXPECT_TRUE(query.isValid());
    query.toEnd = false;
    EXPECT_FALSE(query.isValid()); // toEnd false and no end point
    query.endTime = utc(2025, 1, 1, 0, 0, 0);
    EXPECT_TRUE(query.isValid());

    // Both times valid and the end before the begin: not valid, whatever the flags say.
    query.beginTime = utc(2025, 1, 2, 0, 0, 0);
    EXPECT_TRUE(query.fromBegin);
    EXPECT_FALSE(query.isValid());

    query.beginTime = utc(2024, 1, 2, 0, 0, 0);
    EXPECT_TRUE(query.isValid());
    query.clearIdentifiers();
    EXPECT_FALSE(query.isValid());
}

// --- identifiers and last values ------------------------------------------------------

TEST(ArchiveQuery, AppendByIdTwiceLeavesOneEntry)
{
    ArchiveQuery query(nullptr);
    query.appendById(17);
    query.appendById(17);
    EXPECT_EQ(query.getIds(), (QSet<unsigned int>{17u}));
}

TEST(ArchiveQuery, AppendParamAddsItsIdentifier)
{
    ArchiveQuery query(nullptr);
    BPDouble p(0xFFFFFFF0u);
    query.appendParam(&p);
    query.appendParam(&p);
    query.appendParam(nullptr);
    EXPECT_EQ(query.getIds(), (QSet<unsigned int>{0xFFFFFFF0u}));
}

TEST(ArchiveQuery, RemoveAndClearIdentifiers)
{
    ArchiveQuery query(nullptr);
    query.appendById(1);
    query.appendById(2);
    query.appendById(0xFFFFFFFFu);
    query.removeIdentifier(5); // absent: passed over
    EXPECT_EQ(query.getIds().size(), 3);
    query.removeIdentifier(2);
    query.removeIdentifier(-1); // the same 32 bits as 0xFFFFFFFF
    EXPECT_EQ(query.getIds(), (QSet<unsigned int>{1u}));
    query.clearIdentifiers();
    EXPECT_TRUE(query.getIds().isEmpty());
}

TEST(ArchiveQuery, GetIdsDoesNotCopy)
{
    ArchiveQuery query(nullptr);
    EXPECT_EQ(&query.getIds(), &query.ids);
}

TEST(ArchiveQuery, LastValueWithoutAnEntryHasNoDataState)
{
    const ArchiveQuery query(nullptr);
    const ArchiveValue value = query.lastValue(3);
    EXPECT_EQ(value.state, 2u);
    EXPECT_TRUE(value.dateTime.isNull());
    EXPECT_FALSE(value.value.isValid());
}

TEST(ArchiveQuery, LastValuesAreCreatedOverwrittenAndReplaced)
{
    ArchiveQuery query(nullptr);
    query.setLastValue(3, ArchiveValue(utc(2025, 1, 1, 0, 0, 0), 1.0, 8));
    query.setLastValue(3, ArchiveValue(utc(2025, 1, 1, 0, 0, 1), 2.0, 64));
    query.setLastValue(4, ArchiveValue(utc(2025, 1, 1, 0, 0, 2), 3.0, 128));
    EXPECT_EQ(query.lastValue(3).value, QVariant(2.0));
    EXPECT_EQ(query.lastValue(3).state, 64u);
    EXPECT_EQ(query.lastValueMap().size(), 2);

    QMap<unsigned int, ArchiveValue> copy = query.lastValueMap();
    copy.insert(9, ArchiveValue());
    EXPECT_EQ(query.lastValueMap().size(), 2); // a copy

    QMap<unsigned int, ArchiveValue> replacement;
    replacement.insert(7, ArchiveValue(utc(2025, 2, 2, 0, 0, 0), QStringLiteral("x"), 8));
    query.setLastValueMap(replacement);
    EXPECT_EQ(query.lastValueMap().keys(), (QList<unsigned int>{7u}));
    EXPECT_EQ(query.lastValue(3).state, 2u);
}

TEST(ArchiveQuery, RestoreApertureOption)
{
    ArchiveQuery query(nullptr);
    query.setRestoreAperture(true);
    EXPECT_TRUE(query.restoreAperture());
    query.setRestoreAperture(false);
    EXPECT_FALSE(query.restoreAperture());
}

// --- copies and sections ------------------------------------------------------------------

TEST(ArchiveQuery, CopyHasTimesIdsAndLastValuesOfTheSource)
{
    QObject client;
    ArchiveQuery query(&client);
    ASSERT_TRUE(query.setInterval(utc(2025, 1, 1, 0, 0, 0, 5), utc(2025, 1, 2, 0, 0, 0)));
    query.appendById(1);
    query.appendById(2);
    query.setLastValue(1, ArchiveValue(utc(2024, 12, 31, 23, 0, 0), 4.0, 8));
    query.setRestoreAperture(true);

    const ArchiveQuery copy(query);
    EXPECT_EQ(copy.getBeginTime(), query.getBeginTime());
    EXPECT_EQ(copy.getEndTime(), query.getEndTime());
    EXPECT_EQ(copy.getIds(), query.getIds());
    EXPECT_EQ(copy.lastValueMap().keys(), query.lastValueMap().keys());
    EXPECT_EQ(copy.lastValue(1).value, QVariant(4.0));
    EXPECT_EQ(copy.parent(), &client);
    EXPECT_TRUE(copy.restoreAperture());
    EXPECT_TRUE(copy.isValid());
}

TEST(ArchiveQuery, CopyConstructorCopiesTheHeader)
{
    ArchiveQuery received(nullptr);
    ASSERT_TRUE(readInto(received, plainBytes([](QDataStream &s) { s << false << qint64(0); }), 5, 70, 9));
    received.setRoute(11, 22, 33);

    const ArchiveQuery copy(received);
    EXPECT_EQ(identityOf(copy), (QList<qint32>{5, 70, 9}));
    EXPECT_EQ(routeOf(copy), (QList<qint32>{11, 22, 33}));
}

TEST(ArchiveQuery, SectionConstructorCopiesTheHeader)
{
    ArchiveQuery received(nullptr);
    ASSERT_TRUE(readInto(received, plainBytes([](QDataStream &s) { s << false << qint64(0); }), 6, 71, 8));
    received.setRoute(-1, 2, -3);

    const ArchiveQuery section(received, 1, 2, 3, {4}, 5);
    EXPECT_EQ(identityOf(section), (QList<qint32>{6, 71, 8}));
    EXPECT_EQ(routeOf(section), (QList<qint32>{-1, 2, -3}));
}

TEST(ArchiveQuery, SectionTakesFlagsTokenAndOptionsButNoTimesIdsOrLastValues)
{
    QObject client;
    ArchiveQuery query(&client);
    ASSERT_TRUE(query.setInterval(utc(2025, 1, 1, 0, 0, 0), utc(2025, 1, 2, 0, 0, 0)));
    query.appendById(100);
    query.setLastValue(100, ArchiveValue(utc(2024, 1, 1, 0, 0, 0), 1.0, 8));
    query.setRestoreAperture(true);

    const ArchiveQuery section(query, 2, 3, 4, {7, 8, 7, -1}, 9);
    EXPECT_EQ(section.parent(), &client);
    EXPECT_EQ(section.idArchive(), 2);
    EXPECT_EQ(section.idSection(), 3);
    EXPECT_EQ(section.sectionCount(), 4);
    EXPECT_EQ(section.idQuery(), 9);
    EXPECT_EQ(section.idEventQuery(), query.idEventQuery());
    EXPECT_TRUE(section.restoreAperture());
    EXPECT_FALSE(section.fromBegin);
    EXPECT_FALSE(section.toEnd);
    EXPECT_TRUE(section.getBeginTime().isNull());
    EXPECT_TRUE(section.getEndTime().isNull());
    EXPECT_TRUE(section.lastValueMap().isEmpty());
    EXPECT_EQ(section.getIds(), (QSet<unsigned int>{7u, 8u, 0xFFFFFFFFu}));
    EXPECT_FALSE(section.isValid()); // its flags are false and it has no points

    ArchiveQuery given(section);
    ASSERT_TRUE(given.setInterval(utc(2025, 1, 1, 0, 0, 0), utc(2025, 1, 1, 6, 0, 0)));
    EXPECT_TRUE(given.isValid());
}

TEST(ArchiveQuery, SectionOfAnOpenQueryIsValidAsSoonAsItsListIsNotEmpty)
{
    ArchiveQuery query(nullptr);
    query.setFromBegin();
    query.setToEnd();
    query.appendById(1);
    ASSERT_TRUE(query.isValid());

    const ArchiveQuery section(query, 1, 0, 2, {5, 6}, 1);
    EXPECT_TRUE(section.fromBegin);
    EXPECT_TRUE(section.toEnd);
    EXPECT_TRUE(section.isValid());

    const ArchiveQuery empty(query, 1, 1, 2, {}, 1);
    EXPECT_FALSE(empty.isValid());
}

TEST(ArchiveQuery, SectionTakesTheEventQueryNumberOfItsQuery)
{
    ArchiveQuery received(nullptr);
    ASSERT_TRUE(readInto(received, plainBytes([](QDataStream &s) {
        s << true << qint64(0x55) << true << true << quint32(1) << quint32(3) << qint32(321) << false;
    })));
    ASSERT_EQ(received.idEventQuery(), 321);
    const ArchiveQuery section(received, 0, 0, 1, {3}, 0);
    EXPECT_EQ(section.idEventQuery(), 321);
}

// --- the body on the wire --------------------------------------------------------------

TEST(ArchiveQuery, ValidQueryBodyMatchesPlainWrites)
{
    QObject client;
    ArchiveQuery query(&client);
    const QDateTime begin = utc(2025, 4, 1, 8, 0, 0, 250);
    const QDateTime end = utc(2025, 4, 1, 9, 0, 0, 999);
    ASSERT_TRUE(query.setInterval(begin, end));
    query.appendById(30);
    query.appendById(10);
    query.appendById(20);
    query.setRestoreAperture(true);

    QList<quint32> order;
    for (unsigned int id : query.getIds()) // the set's own iteration order
        order.append(id);
    const QByteArray expected = validBody(tokenOf(&client), begin, end, order, 0, true);
    const QByteArray packet = query.write();
    EXPECT_EQ(bodyOf(packet), expected);
    EXPECT_EQ(packet, packetBytes(3, 7, 1, expected));
}

TEST(ArchiveQuery, OpenSidesLeaveTheirTimesOut)
{
    ArchiveQuery query(nullptr);
    query.setFromBegin();
    query.setToEnd();
    query.appendById(5);
    EXPECT_EQ(bodyOf(query.write()), plainBytes([](QDataStream &s) {
                  s << true << qint64(0) << true << true << quint32(1) << quint32(5) << qint32(0) << false;
              }));

    ArchiveQuery fromStart(nullptr);
    fromStart.setFromBegin();
    fromStart.setEndPoint(utc(2025, 1, 1, 0, 0, 0));
    fromStart.appendById(5);
    EXPECT_EQ(bodyOf(fromStart.write()), plainBytes([](QDataStream &s) {
                  s << true << qint64(0) << true << false << utc(2025, 1, 1, 0, 0, 0) << quint32(1) << quint32(5)
                    << qint32(0) << false;
              }));

    ArchiveQuery toEnd(nullptr);
    toEnd.setBeginPoint(utc(2025, 1, 1, 0, 0, 0));
    toEnd.setToEnd();
    toEnd.appendById(5);
    EXPECT_EQ(bodyOf(toEnd.write()), plainBytes([](QDataStream &s) {
                  s << true << qint64(0) << false << utc(2025, 1, 1, 0, 0, 0) << true << quint32(1) << quint32(5)
                    << qint32(0) << false;
              }));
}

TEST(ArchiveQuery, InvalidQueryWritesItsFlagAndTokenOnly)
{
    QObject client;
    ArchiveQuery query(&client);
    query.setFromBegin();
    query.setToEnd(); // no identifier: not valid
    query.setRestoreAperture(true);
    query.setLastValue(1, ArchiveValue(utc(2025, 1, 1, 0, 0, 0), 1.0, 8));
    const QByteArray body = bodyOf(query.write());
    EXPECT_EQ(body, plainBytes([&](QDataStream &s) { s << false << tokenOf(&client); }));
    EXPECT_EQ(body.size(), 9);
}

TEST(ArchiveQuery, InvalidQueryReadsWithEverythingElseAsItWas)
{
    QObject client;
    ArchiveQuery receiver(nullptr);
    ASSERT_TRUE(receiver.setInterval(utc(2025, 1, 1, 0, 0, 0, 500), utc(2025, 1, 2, 0, 0, 0, 500)));
    receiver.appendById(8);
    receiver.setRestoreAperture(true);

    EXPECT_TRUE(readInto(receiver, plainBytes([&](QDataStream &s) { s << false << tokenOf(&client); })));
    EXPECT_EQ(receiver.parent(), &client);
    EXPECT_EQ(receiver.getBeginTime(), utc(2025, 1, 1, 0, 0, 0, 500)); // not even the milliseconds cut
    EXPECT_EQ(receiver.getEndTime(), utc(2025, 1, 2, 0, 0, 0, 500));
    EXPECT_EQ(receiver.getIds(), (QSet<unsigned int>{8u}));
    EXPECT_TRUE(receiver.restoreAperture());
    EXPECT_FALSE(receiver.fromBegin);
}

TEST(ArchiveQuery, RoundTrip)
{
    QObject client;
    ArchiveQuery query(&client);
    ASSERT_TRUE(query.setInterval(utc(2025, 4, 1, 8, 0, 0), utc(2025, 4, 1, 9, 0, 0)));
    for (unsigned int id : {1u, 2u, 3u, 0x80000000u})
        query.appendById(id);
    query.setRestoreAperture(true);
    query.write();

    ArchiveQuery copy(nullptr);
    copy.setPacket(query);
    ASSERT_TRUE(copy.read());
    EXPECT_EQ(copy.parent(), &client);
    EXPECT_EQ(copy.getBeginTime(), query.getBeginTime());
    EXPECT_EQ(copy.getEndTime(), query.getEndTime());
    EXPECT_FALSE(copy.fromBegin);
    EXPECT_FALSE(copy.toEnd);
    EXPECT_EQ(copy.getIds(), query.getIds());
    EXPECT_TRUE(copy.restoreAperture());
    EXPECT_EQ(copy.idEventQuery(), 0);
    EXPECT_TRUE(copy.isValid());
}

TEST(ArchiveQuery, ServerPacketReadsEveryTravellingField)
{
    const QDateTime begin = utc(2025, 8, 1, 0, 0, 0);
    const QDateTime end = utc(2025, 8, 2, 0, 0, 0);
    ArchiveQuery query(nullptr);
    ASSERT_TRUE(readInto(query, validBody(0x1234567890LL, begin, end, {4, 5, 4}, -77, true)));
    EXPECT_EQ(tokenOf(query.parent()), 0x1234567890LL);
    EXPECT_EQ(query.getBeginTime(), begin);
    EXPECT_EQ(query.getEndTime(), end);
    EXPECT_EQ(query.getIds(), (QSet<unsigned int>{4u, 5u}));
    EXPECT_EQ(query.idEventQuery(), -77);
    EXPECT_TRUE(query.restoreAperture());
    // What never travels stays as it was.
    EXPECT_EQ(query.idArchive(), 0);
    EXPECT_EQ(query.idQuery(), 0);
    EXPECT_TRUE(query.lastValueMap().isEmpty());

    // Written again, the query carries what it read, the event query number included.
    QList<quint32> order;
    for (unsigned int id : query.getIds())
        order.append(id);
    EXPECT_EQ(bodyOf(query.write()), validBody(0x1234567890LL, begin, end, order, -77, true));
}

TEST(ArchiveQuery, SettersKeepMillisecondsAndTheReaderCutsThem)
{
    ArchiveQuery query(nullptr);
    const QDateTime begin = utc(2025, 4, 1, 8, 0, 0, 250);
    const QDateTime end = utc(2025, 4, 1, 9, 0, 0, 999);
    ASSERT_TRUE(query.setInterval(begin, end));
    EXPECT_EQ(query.getBeginTime().time().msec(), 250);
    EXPECT_EQ(query.getEndTime().time().msec(), 999);
    query.appendById(1);

    // The sender's stream carries the milliseconds ...
    const QByteArray body = bodyOf(query.write());
    EXPECT_EQ(body, validBody(0, begin, end, {1}, 0, false));

    // ... and the receiver has whole seconds.
    ArchiveQuery received(nullptr);
    ASSERT_TRUE(readInto(received, body));
    EXPECT_EQ(received.getBeginTime(), utc(2025, 4, 1, 8, 0, 0));
    EXPECT_EQ(received.getEndTime(), utc(2025, 4, 1, 9, 0, 0));
}

TEST(ArchiveQuery, ReaderCutsMillisecondsOfLocalTimes)
{
    const QDateTime begin(QDate(2025, 1, 15), QTime(10, 20, 30, 456), Qt::LocalTime);
    const QDateTime end(QDate(2025, 1, 15), QTime(11, 0, 0, 1), QTimeZone(3600));
    ArchiveQuery received(nullptr);
    ASSERT_TRUE(readInto(received, validBody(0, begin, end, {1}, 0, false)));
    EXPECT_EQ(received.getBeginTime(), begin.addMSecs(-456));
    EXPECT_EQ(received.getBeginTime().timeSpec(), Qt::LocalTime);
    EXPECT_EQ(received.getEndTime(), end.addMSecs(-1));
}

TEST(ArchiveQuery, TimeThatIsNotReadKeepsItsFormerValue)
{
    ArchiveQuery receiver(nullptr);
    receiver.beginTime = utc(2020, 1, 1, 0, 0, 0, 700);
    receiver.endTime = utc(2020, 1, 2, 0, 0, 0);
    ASSERT_TRUE(readInto(receiver, plainBytes([](QDataStream &s) {
        s << true << qint64(1) << true << true << quint32(1) << quint32(3) << qint32(0) << false;
    })));
    EXPECT_TRUE(receiver.fromBegin);
    EXPECT_TRUE(receiver.toEnd);
    // Kept, and like every valid time cut to whole seconds.
    EXPECT_EQ(receiver.getBeginTime(), utc(2020, 1, 1, 0, 0, 0));
    EXPECT_EQ(receiver.getEndTime(), utc(2020, 1, 2, 0, 0, 0));
}

TEST(ArchiveQuery, ReadingIdsReplacesTheFormerSet)
{
    ArchiveQuery receiver(nullptr);
    receiver.appendById(1);
    receiver.appendById(2);
    ASSERT_TRUE(readInto(receiver, plainBytes([](QDataStream &s) {
        s << true << qint64(1) << true << true << quint32(1) << quint32(3) << qint32(0) << false;
    })));
    EXPECT_EQ(receiver.getIds(), (QSet<unsigned int>{3u}));
}

TEST(ArchiveQuery, IdsCutShortReadAsAnEmptySet)
{
    ArchiveQuery receiver(nullptr);
    receiver.appendById(1);
    EXPECT_TRUE(readInto(receiver, plainBytes([](QDataStream &s) {
        s << true << qint64(1) << true << true << quint32(3) << quint32(3) << quint32(4);
    })));
    EXPECT_TRUE(receiver.getIds().isEmpty());
    EXPECT_EQ(receiver.idEventQuery(), 0);
}

TEST(ArchiveQuery, HugeIdCountDoesNotAllocateForIt)
{
    ArchiveQuery receiver(nullptr);
    EXPECT_TRUE(readInto(receiver, plainBytes([](QDataStream &s) {
        s << true << qint64(1) << true << true << quint32(0x7FFFFFFF) << quint32(3) << quint32(4);
    })));
    EXPECT_TRUE(receiver.getIds().isEmpty());
}

TEST(ArchiveQuery, TruncatedBodyReadsTrue)
{
    ArchiveQuery receiver(nullptr);
    EXPECT_TRUE(readInto(receiver, plainBytes([](QDataStream &s) { s << true << qint64(9) << false; })));
    EXPECT_EQ(tokenOf(receiver.parent()), 9);
    EXPECT_TRUE(receiver.getIds().isEmpty());

    ArchiveQuery empty(nullptr);
    EXPECT_TRUE(readInto(empty, QByteArray()));
    EXPECT_EQ(empty.parent(), nullptr);
}

TEST(ArchiveQuery, PointInAnUnknownZoneReadsAsNullAndTheQueryCanBeWrittenAgain)
{
    ArchiveQuery received(nullptr);
    ASSERT_TRUE(readInto(received, plainBytes([](QDataStream &s) {
        s << true << qint64(1) << false << QDate(2025, 1, 1) << QTime(0, 0) << qint8(Qt::TimeZone)
          << QStringLiteral("Nowhere/Nothing") << false << utc(2025, 1, 2, 0, 0, 0) << quint32(1) << quint32(3)
          << qint32(0) << false;
    })));
    EXPECT_TRUE(received.getBeginTime().isNull());
    EXPECT_EQ(received.getEndTime(), utc(2025, 1, 2, 0, 0, 0));
    EXPECT_EQ(received.getIds(), (QSet<unsigned int>{3u}));
    EXPECT_FALSE(received.isValid());
    EXPECT_EQ(bodyOf(received.write()), plainBytes([](QDataStream &s) { s << false << qint64(1); }));
}

TEST(ArchiveQuery, PointWithAZoneNameOutsideTheZoneDirectoryReadsAsNull)
{
    ArchiveQuery received(nullptr);
    ASSERT_TRUE(readInto(received, plainBytes([](QDataStream &s) {
        s << true << qint64(1) << false << utc(2025, 1, 1, 0, 0, 0) << false << QDate(2025, 1, 2) << QTime(0, 0)
          << qint8(Qt::TimeZone) << QStringLiteral("../../../dev/stdin") << quint32(1) << quint32(3) << qint32(4)
          << false;
    })));
    EXPECT_EQ(received.getBeginTime(), utc(2025, 1, 1, 0, 0, 0));
    EXPECT_TRUE(received.getEndTime().isNull());
    EXPECT_EQ(received.getIds(), (QSet<unsigned int>{3u}));
    EXPECT_EQ(received.idEventQuery(), 4);
}

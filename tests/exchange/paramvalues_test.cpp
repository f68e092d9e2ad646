// One-shot value requests: the request and result messages on the wire, and the
// structure that builds requests and applies results to its parameter objects.

#include "exchangetest.h"

#include "bpdouble.h"
#include "bpstring.h"
#include "bpvariant.h"
#include "paramvaluesquery.h"
#include "paramvaluesresult.h"
#include "paramvaluesstruct.h"
#include "qcontainerpacket.h"

#include <QtCore/QObject>

#include <gtest/gtest.h>

using namespace exchangetest;
using telortest::bodyOf;
using telortest::packetBytes;

namespace {

using ParamPtr = QSharedPointer<AbstractParameterBase>;

/** A values result read from a server's packet, as the application receives it. */
ParamValuesResult receivedValues(const QByteArray &body)
{
    ParamValuesResult result;
    result.setPacket(packetBytes(3, 8, 1, body));
    result.read();
    return result;
}

QByteArray doubleEntry(qint32 id, qint32 state, double value)
{
    return leadingId(id) + doubleRecord(id, state, value);
}

/** A values result for @p client as the application receives it: identifiers, data, time and token. */
ParamValuesResult valuesAnswer(const QObject *client, const QList<quint32> &ids, const QByteArray &data,
                               const QDateTime &when = answerTime())
{
    return receivedValues(valuesResultBody(ids, data, when, tokenOf(client)));
}

/** A structure of one client's parameter objects, empty at the start. */
class ValuesStruct : public ::testing::Test
{
protected:
    QObject client;
    ParamValuesStruct values{&client};
};

} // namespace

// --- ParamValuesQuery ---------------------------------------------------------------

TEST(ValuesQuery, IdentityAndDefaults)
{
    ParamValuesQuery query;
    EXPECT_EQ(identityOf(query), (QList<qint32>{3, 8, 1}));
    EXPECT_EQ(query.parent, nullptr);
    EXPECT_TRUE(query.ids.isEmpty());
}

TEST(ValuesQuery, BodyLeadsWithTheToken)
{
    QObject client;
    ParamValuesQuery query;
    query.parent = &client;
    query.ids = {7u, 3u, 7u, 0xFFFFFFFEu};
    const QByteArray expected = telortest::plainBytes([&](QDataStream &s) {
        s << tokenOf(&client) << quint32(4) << quint32(7) << quint32(3) << quint32(7) << quint32(0xFFFFFFFE);
    });
    const QByteArray packet = query.write();
    EXPECT_EQ(bodyOf(packet), expected);
    EXPECT_EQ(packet, packetBytes(3, 8, 1, expected));
}

TEST(ValuesQuery, RoundTrip)
{
    QObject client;
    ParamValuesQuery query;
    query.parent = &client;
    query.ids = {1u, 2u, 2u};
    query.write();

    ParamValuesQuery copy;
    copy.setPacket(query);
    ASSERT_TRUE(copy.read());
    EXPECT_EQ(copy.parent, &client);
    EXPECT_EQ(copy.ids, query.ids);
}

TEST(ValuesQuery, NullTokenDoesNotRead)
{
    const QByteArray body = telortest::plainBytes([](QDataStream &s) {
        s << qint64(0) << quint32(2) << quint32(5) << quint32(6);
    });
    ParamValuesQuery query;
    query.setPacket(packetBytes(3, 8, 1, body));
    EXPECT_FALSE(query.read());
    EXPECT_EQ(query.ids, (QList<unsigned int>{5u, 6u})); // read all the same
}

TEST(ValuesQuery, HugeCountReadsAsEmpty)
{
    const QByteArray body = telortest::plainBytes([](QDataStream &s) {
        s << qint64(0x1234) << quint32(0x7FFFFFFF) << quint32(5);
    });
    ParamValuesQuery query;
    query.setPacket(packetBytes(3, 8, 1, body));
    EXPECT_TRUE(query.read());
    EXPECT_TRUE(query.ids.isEmpty());
}

// --- ParamValuesResult --------------------------------------------------------------

TEST(ValuesResult, HeaderIsNotStamped)
{
    ParamValuesResult result;
    EXPECT_EQ(identityOf(result), (QList<qint32>{0, 0, 0}));
    EXPECT_TRUE(result.ids.isEmpty());
    EXPECT_TRUE(result.data.isEmpty());
    EXPECT_TRUE(result.dateTime.isNull());
    EXPECT_EQ(result.parent, nullptr);
    EXPECT_EQ(result.getQObject(), nullptr);
}

TEST(ValuesResult, BodyClosesWithTheToken)
{
    QObject client;
    ParamValuesResult result;
    result.ids = {4u, 9u};
    result.data = QByteArray("\x01\x02\x03", 3);
    result.dateTime = answerTime();
    result.parent = &client;
    const QByteArray expected = valuesResultBody({4u, 9u}, QByteArray("\x01\x02\x03", 3), answerTime(),
                                                 tokenOf(&client));
    EXPECT_EQ(bodyOf(result.write()), expected);
}

TEST(ValuesResult, TakesItsIdentityFromThePacket)
{
    QObject client;
    const ParamValuesResult result = valuesAnswer(&client, {}, QByteArray());
    EXPECT_EQ(identityOf(result), (QList<qint32>{3, 8, 1}));
    EXPECT_EQ(result.getQObject(), &client);
    EXPECT_EQ(result.dateTime, answerTime());
}

TEST(ValuesResult, RoundTrip)
{
    QObject client;
    ParamValuesResult result;
    result.ids = {1u, 2u};
    result.data = doubleEntry(1, 8, 1.5) + doubleEntry(2, 8, 2.5);
    result.dateTime = answerTime(3);
    result.parent = &client;
    result.write();

    ParamValuesResult copy;
    copy.setPacket(result);
    ASSERT_TRUE(copy.read());
    EXPECT_EQ(copy.ids, result.ids);
    EXPECT_EQ(copy.data, result.data);
    EXPECT_EQ(copy.dateTime, result.dateTime);
    EXPECT_EQ(copy.parent, &client);
}

TEST(ValuesResult, NullTokenDoesNotReadAlthoughAllFieldsWereRead)
{
    ParamValuesResult result;
    result.setPacket(packetBytes(3, 8, 1, valuesResultBody({6u}, QByteArray("ab"), answerTime(), 0)));
    EXPECT_FALSE(result.read());
    EXPECT_EQ(result.ids, (QList<unsigned int>{6u}));
    EXPECT_EQ(result.data, QByteArray("ab"));
    EXPECT_EQ(result.dateTime, answerTime());
}

TEST(ValuesResult, TimeInAnUnknownZoneReadsAsNullAndTheResultCanBeWrittenAgain)
{
    QObject client;
    // A zone that doesn't exist, and a name that would lead out of the zone directory.
    for (const QString &zone : {QStringLiteral("Nowhere/Nothing"), QStringLiteral("../zoneinfo/UTC")}) {
        const QByteArray body =
            resultBodyWithRawTime({4}, doubleEntry(4, 8, 1.0), zonedTimeBytes(zone), tokenOf(&client));
        ParamValuesResult result;
        result.setPacket(packetBytes(3, 8, 1, body));
        ASSERT_TRUE(result.read()) << zone.toStdString();
        EXPECT_TRUE(result.dateTime.isNull());
        EXPECT_EQ(result.parent, &client); // the token behind the time is read where it stands
        EXPECT_EQ(result.ids, (QList<unsigned int>{4u}));
        EXPECT_EQ(bodyOf(result.write()), valuesResultBody({4u}, doubleEntry(4, 8, 1.0), QDateTime(), tokenOf(&client)));
    }
}

// --- ParamValuesStruct --------------------------------------------------------------

TEST_F(ValuesStruct, EmptyStructure)
{
    EXPECT_TRUE(values.dateTime().isNull());
    const ParamValuesQuery query = values.query();
    EXPECT_EQ(query.parent, &client);
    EXPECT_TRUE(query.ids.isEmpty());
}

TEST_F(ValuesStruct, QueryListsEveryEntry)
{
    const ParamPtr a(new BPDouble(5));
    const ParamPtr b(new BPDouble(5));
    values.append(a);
    values.append(b);
    values.append(a); // the same object again
    values.append(ParamPtr(new BPString(9)));
    QList<unsigned int> ids = values.query().ids;
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(ids, (QList<unsigned int>{5u, 5u, 5u, 9u}));

    const QByteArray packet = values.query().write();
    EXPECT_EQ(packet.mid(0, 12), packetBytes(3, 8, 1, QByteArray()).mid(0, 12));
}

TEST_F(ValuesStruct, QueryFollowsTheOrderOfTheParameterTable)
{
    // The identifiers come in the iteration order of the multi-hash of parameters, which a
    // hash with the same keys inserted in the same order shares: repeats stand together.
    QMultiHash<unsigned int, int> sameKeys;
    for (unsigned int id : {40u, 7u, 123456u, 7u, 0u, 99u, 40u, 3u, 65536u, 7u, 12u, 5u}) {
        values.append(ParamPtr(new BPDouble(id)));
        sameKeys.insert(id, 0);
    }
    EXPECT_EQ(values.query().ids, sameKeys.keys());
}

TEST_F(ValuesStruct, ClearKeepsTokenAndTime)
{
    values.append(ParamPtr(new BPDouble(1)));
    ASSERT_TRUE(values.newDataSlot(valuesAnswer(&client, {1u}, doubleEntry(1, 8, 2.0), answerTime(1))));
    values.clear();
    const ParamValuesQuery query = values.query();
    EXPECT_EQ(query.parent, &client);
    EXPECT_TRUE(query.ids.isEmpty());
    EXPECT_EQ(values.dateTime(), answerTime(1));

    // Refilled after clear.
    values.append(ParamPtr(new BPDouble(4)));
    EXPECT_EQ(values.query().ids, (QList<unsigned int>{4u}));
}

TEST_F(ValuesStruct, NullAppendAddsNothing)
{
    values.append(ParamPtr());
    EXPECT_TRUE(values.query().ids.isEmpty());
}

TEST_F(ValuesStruct, AppliesRecordsOfMixedKinds)
{
    const QSharedPointer<BPDouble> d(new BPDouble(1));
    const QSharedPointer<BPString> s(new BPString(2));
    const QSharedPointer<BPVariant> v(new BPVariant(3));
    values.append(d);
    values.append(s);
    values.append(v);

    const QByteArray data = doubleEntry(1, 64, -3.25) + leadingId(2) + stringRecord(2, 8, QStringLiteral("auto")) +
                            leadingId(3) + variantRecordWithLimits(3, 128, QVariant(85.0));
    ASSERT_TRUE(values.newDataSlot(valuesAnswer(&client, {1u, 2u, 3u}, data)));
    EXPECT_EQ(d->getValue(), -3.25);
    EXPECT_EQ(d->getState(), 64u);
    EXPECT_TRUE(d->changed());
    EXPECT_EQ(s->getValue(), QStringLiteral("auto"));
    EXPECT_EQ(v->getValue(), QVariant(85.0));
    EXPECT_EQ(v->getState(), 128u);
    EXPECT_EQ(v->limits().checkValue(96.0), 512);
    EXPECT_EQ(values.dateTime(), answerTime());
}

TEST_F(ValuesStruct, WrongTokenChangesNothing)
{
    QObject other;
    const QSharedPointer<BPDouble> d(new BPDouble(1));
    values.append(d);
    EXPECT_FALSE(values.newDataSlot(valuesAnswer(&other, {1u}, doubleEntry(1, 8, 2.0))));
    EXPECT_TRUE(values.dateTime().isNull());
    EXPECT_EQ(d->getValue(), 0.0);
    EXPECT_FALSE(d->changed());
}

TEST_F(ValuesStruct, EmptyIdsUpdatesTheTime)
{
    EXPECT_TRUE(values.newDataSlot(valuesAnswer(&client, {}, QByteArray(), answerTime(7))));
    EXPECT_EQ(values.dateTime(), answerTime(7));
}

TEST_F(ValuesStruct, TimeOfTheResultIsTakenAsItIsEvenWhenNull)
{
    ASSERT_TRUE(values.newDataSlot(valuesAnswer(&client, {}, QByteArray(), answerTime(1))));
    ASSERT_EQ(values.dateTime(), answerTime(1));
    EXPECT_TRUE(values.newDataSlot(valuesAnswer(&client, {}, QByteArray(), QDateTime())));
    EXPECT_TRUE(values.dateTime().isNull());

    // A time in an unknown zone arrives as a null time, and is taken as such.
    values.newDataSlot(valuesAnswer(&client, {}, QByteArray(), answerTime(2)));
    ASSERT_EQ(values.dateTime(), answerTime(2));
    EXPECT_TRUE(values.newDataSlot(receivedValues(
        resultBodyWithRawTime({}, QByteArray(), zonedTimeBytes(QStringLiteral("Nowhere/Nothing")), tokenOf(&client)))));
    EXPECT_TRUE(values.dateTime().isNull());
}

TEST_F(ValuesStruct, UnregisteredIdentifierBeforeAnotherFails)
{
    const QSharedPointer<BPDouble> two(new BPDouble(2));
    values.append(two);
    // Nothing stands under 1: its record is not skipped, so the next comparison reads
    // the record's own identifier 1 where 2 is expected.
    const QByteArray data = doubleEntry(1, 8, 1.0) + doubleEntry(2, 8, 2.0);
    EXPECT_FALSE(values.newDataSlot(valuesAnswer(&client, {1u, 2u}, data, answerTime(2))));
    EXPECT_EQ(two->getValue(), 0.0);
    EXPECT_EQ(values.dateTime(), answerTime(2)); // taken before the walk
}

TEST_F(ValuesStruct, UnregisteredIdentifierMeetsItsOwnRecordAtTheNextComparison)
{
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    values.append(one);
    // Nothing under 7, named twice: the second comparison reads the first word of the
    // record that was not skipped, the record's own identifier 7, and so matches.
    const QByteArray data = leadingId(7) + doubleRecord(7, 8, 7.0);
    EXPECT_TRUE(values.newDataSlot(valuesAnswer(&client, {7u, 7u}, data)));
    EXPECT_FALSE(one->changed());
}

TEST_F(ValuesStruct, UnregisteredLastIdentifierSucceeds)
{
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    values.append(one);
    const QByteArray data = doubleEntry(1, 8, 1.0) + doubleEntry(5, 8, 5.0);
    EXPECT_TRUE(values.newDataSlot(valuesAnswer(&client, {1u, 5u}, data)));
    EXPECT_EQ(one->getValue(), 1.0);
}

TEST_F(ValuesStruct, LeadingIdentifierMismatchFails)
{
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    values.append(one);
    const QByteArray data = leadingId(2) + doubleRecord(1, 8, 1.0);
    EXPECT_FALSE(values.newDataSlot(valuesAnswer(&client, {1u}, data)));
    EXPECT_FALSE(one->changed());
}

TEST_F(ValuesStruct, TwoObjectsUnderOneIdentifierBothRead)
{
    const QSharedPointer<BPDouble> first(new BPDouble(3));
    const QSharedPointer<BPDouble> second(new BPDouble(3));
    const QSharedPointer<BPDouble> four(new BPDouble(4));
    values.append(first);
    values.append(second);
    values.append(four);
    const QByteArray data = doubleEntry(3, 128, 33.0) + doubleEntry(4, 8, 44.0);
    ASSERT_TRUE(values.newDataSlot(valuesAnswer(&client, {3u, 4u}, data)));
    EXPECT_EQ(first->getValue(), 33.0);
    EXPECT_EQ(second->getValue(), 33.0);
    EXPECT_EQ(first->getState(), 128u);
    EXPECT_EQ(second->getState(), 128u);
    EXPECT_EQ(four->getValue(), 44.0); // the stream stood behind the record
}

TEST_F(ValuesStruct, SameObjectTwiceReadsTwice)
{
    const QSharedPointer<ProbeDouble> d(new ProbeDouble(3));
    values.append(d);
    values.append(d);
    ASSERT_TRUE(values.newDataSlot(valuesAnswer(&client, {3u}, doubleEntry(3, 8, 1.0))));
    EXPECT_EQ(d->reads, 2);
}

TEST_F(ValuesStruct, LatestAppendedReadsFirstAndARefusalStopsTheRest)
{
    const QSharedPointer<BPDouble> early(new BPDouble(3));
    const QSharedPointer<ProbeDouble> late(new ProbeDouble(3));
    late->refuses = true;
    values.append(early);
    values.append(late);
    EXPECT_FALSE(values.newDataSlot(valuesAnswer(&client, {3u}, doubleEntry(3, 8, 9.0))));
    EXPECT_EQ(late->getValue(), 9.0);
    EXPECT_EQ(early->getValue(), 0.0); // never reached
}

TEST_F(ValuesStruct, ObjectThatClearsTheStructureWhileReadingDoesNotDisturbTheWalk)
{
    class ClearingDouble : public BPDouble
    {
    public:
        ClearingDouble(unsigned int id, ParamValuesStruct *owner)
            : BPDouble(id)
            , owner(owner)
        {
        }
        bool readPrivate(QContainerPacket &packet) override
        {
            owner->clear();
            return BPDouble::readPrivate(packet);
        }
        ParamValuesStruct *owner;
    };
    QWeakPointer<BPDouble> watchOther;
    {
        const QSharedPointer<ClearingDouble> clearing(new ClearingDouble(3, &values));
        const QSharedPointer<BPDouble> other(new BPDouble(3));
        values.append(other);
        values.append(clearing); // read first
        watchOther = other;
    }
    // Only the structure holds the objects now; the first read drops them all.
    EXPECT_TRUE(values.newDataSlot(valuesAnswer(&client, {3u}, doubleEntry(3, 8, 5.0))));
    EXPECT_TRUE(watchOther.isNull()); // released once the walk let go
}

TEST_F(ValuesStruct, WrongKindOfRecordIsReadByTheObjectsOwnPayload)
{
    // A string record for a double object: the identifier matches, the type word is not
    // compared, and the double reads the first eight bytes of the text.
    const QSharedPointer<BPDouble> d(new BPDouble(1));
    values.append(d);
    const QByteArray data = leadingId(1) + stringRecord(1, 8, QStringLiteral("abcd"));
    EXPECT_TRUE(values.newDataSlot(valuesAnswer(&client, {1u}, data)));
    double expected = 0.0;
    QDataStream probe(stringRecord(1, 8, QStringLiteral("abcd")).mid(12));
    probe >> expected;
    EXPECT_EQ(d->getValue(), expected);
}

TEST_F(ValuesStruct, TruncatedRecordReadsAsZerosAndTheNextComparisonFails)
{
    const QSharedPointer<BPDouble> one(new BPDouble(1));
    const QSharedPointer<BPDouble> two(new BPDouble(2));
    values.append(one);
    values.append(two);
    const QByteArray data = doubleEntry(1, 8, 7.0).left(14);
    EXPECT_FALSE(values.newDataSlot(valuesAnswer(&client, {1u, 2u}, data)));
    EXPECT_EQ(one->getValue(), 0.0);
    EXPECT_TRUE(one->changed());
    EXPECT_FALSE(two->changed());
}

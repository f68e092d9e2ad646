// The small description messages: the request for the list, the notices of changed and
// added descriptions and of restored identifiers. Identities, bodies against plain
// stream writes, round trips, packets built as a server builds them, and the one log line.

#include "infotest.h"
#include "messageheader.h"

#include "paraminfoadded.h"
#include "paraminfochanged.h"
#include "paraminfoquery.h"
#include "paraminforestore.h"

#include <gtest/gtest.h>

using infotest::plainCountedInfos;
using infotest::readBody;
using infotest::receive;
using infotest::roundTrip;
using infotest::typeless;
using telortest::bodyOf;
using telortest::headerWords;
using telortest::identityOf;
using telortest::LogCapture;
using telortest::packetBytes;
using telortest::plainBytes;

namespace {

QList<ParamInfo> sampleInfos()
{
    return {desctest::sampleScalar(101), desctest::sampleStatusWord(102), desctest::sampleField(103, 1, 2)};
}

void expectSameInfos(const QList<ParamInfo> &got, const QList<ParamInfo> &expected)
{
    ASSERT_EQ(got.size(), expected.size());
    for (int i = 0; i < got.size(); ++i)
        EXPECT_TRUE(infotest::sameInfo(got.at(i), expected.at(i))) << "record " << i;
}

} // namespace

// --- ParamInfoQuery ------------------------------------------------------------------

TEST(ParamInfoQuery, IdentityIsTwoOneOne)
{
    ParamInfoQuery query;
    EXPECT_EQ(identityOf(query), (QList<qint32>{2, 1, 1}));
}

TEST(ParamInfoQuery, BodyIsEmpty)
{
    ParamInfoQuery query;
    const QByteArray packet = query.write();
    EXPECT_EQ(packet, packetBytes(2, 1, 1, QByteArray()));
    EXPECT_TRUE(bodyOf(packet).isEmpty());
}

TEST(ParamInfoQuery, ReadOfAnEmptyBodyIsTrue)
{
    ParamInfoQuery query;
    EXPECT_TRUE(receive(query, 2, 1, 1, QByteArray()));
    ParamInfoQuery back;
    EXPECT_TRUE(roundTrip(query, back));
    EXPECT_EQ(identityOf(back), (QList<qint32>{2, 1, 1}));
}

TEST(ParamInfoQuery, BodyBytesAreNotLookedAt)
{
    ParamInfoQuery query;
    EXPECT_TRUE(receive(query, 2, 1, 1, QByteArray("\xff\xff\xff\xff", 4)));
    unsigned int position = 99;
    EXPECT_TRUE(readBody(query, QByteArray("abc"), &position));
    EXPECT_EQ(position, 0u);
}

// --- ParamInfoChanged ----------------------------------------------------------------

TEST(ParamInfoChanged, IdentityIsTwoFiveFour)
{
    ParamInfoChanged changed;
    EXPECT_EQ(identityOf(changed), (QList<qint32>{2, 5, 4}));
    EXPECT_TRUE(changed.params.isEmpty());
}

TEST(ParamInfoChanged, SetMessageTypeChangesOnlyTheThirdWord)
{
    ParamInfoChanged changed;
    changed.setRoute(21, 22, 23);
    const QList<qint32> before = headerWords(changed);
    changed.setMessageType(9);
    // Version and body length as they were.
    EXPECT_EQ(headerWords(changed), (QList<qint32>{2, 5, 9, before.at(3), before.at(4), 21, 22, 23}));
    // And it travels.
    EXPECT_EQ(changed.write().left(12), packetBytes(2, 5, 9, QByteArray()).left(12));
}

TEST(ParamInfoChanged, BodyIsTheCountThenEachRecord)
{
    ParamInfoChanged changed;
    changed.params = sampleInfos();
    const QByteArray body = plainCountedInfos(sampleInfos());
    const QByteArray packet = changed.write();
    EXPECT_EQ(bodyOf(packet), body);
    EXPECT_EQ(packet, packetBytes(2, 5, 4, body));
}

TEST(ParamInfoChanged, RoundTrip)
{
    ParamInfoChanged out;
    out.params = sampleInfos();
    ParamInfoChanged in;
    EXPECT_TRUE(roundTrip(out, in));
    expectSameInfos(in.params, sampleInfos());
    EXPECT_EQ(identityOf(in), (QList<qint32>{2, 5, 4}));
}

TEST(ParamInfoChanged, FromAServer)
{
    const QByteArray body = plainCountedInfos({desctest::sampleStatusWord(7), desctest::sampleScalar(8)});
    ParamInfoChanged changed;
    LogCapture log;
    EXPECT_TRUE(receive(changed, 2, 5, 4, body));
    EXPECT_TRUE(log.captured().isEmpty());
    expectSameInfos(changed.params, {desctest::sampleStatusWord(7), desctest::sampleScalar(8)});
    EXPECT_EQ(changed.getHeader().sequence, 13);
}

TEST(ParamInfoChanged, EmptyNoticeIsWrittenButRefusedWithoutALogLine)
{
    ParamInfoChanged changed;
    const QByteArray packet = changed.write();
    EXPECT_EQ(bodyOf(packet), plainBytes([](QDataStream &s) { s << qint32(0); }));
    ParamInfoChanged in;
    LogCapture log;
    in.setPacket(packet);
    EXPECT_FALSE(in.read());
    EXPECT_TRUE(log.captured().isEmpty());
}

TEST(ParamInfoChanged, NegativeCountIsRefusedWithoutALogLine)
{
    ParamInfoChanged changed;
    LogCapture log;
    const QByteArray body = plainCountedInfos(-1, {desctest::sampleScalar(1)});
    unsigned int position = 0;
    EXPECT_FALSE(readBody(changed, body, &position));
    EXPECT_EQ(position, 4u);
    EXPECT_TRUE(changed.params.isEmpty());
    EXPECT_TRUE(log.captured().isEmpty());
}

TEST(ParamInfoChanged, EmptyBodyIsRefused)
{
    ParamInfoChanged changed;
    LogCapture log;
    EXPECT_FALSE(receive(changed, 2, 5, 4, QByteArray()));
    EXPECT_TRUE(log.captured().isEmpty());
}

TEST(ParamInfoChanged, SecondRecordWithoutTypeKeepsTheFirstAndLogsOneLine)
{
    const QByteArray body = plainCountedInfos({desctest::sampleScalar(1), typeless(2)});
    ParamInfoChanged changed;
    LogCapture log;
    EXPECT_FALSE(receive(changed, 2, 5, 4, body));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("Error reading ParamInfo")});
    expectSameInfos(changed.params, {desctest::sampleScalar(1)});
}

TEST(ParamInfoChanged, FirstBadRecordEndsTheMessage)
{
    // The second of three records fails; the third, although well formed, is not read.
    const QByteArray body = plainCountedInfos({desctest::sampleScalar(1), typeless(2), desctest::sampleScalar(3)});
    ParamInfoChanged changed;
    LogCapture log;
    EXPECT_FALSE(readBody(changed, body));
    EXPECT_EQ(log.captured().size(), 1);
    ASSERT_EQ(changed.params.size(), 1);
    EXPECT_EQ(changed.params.first().id, 1u);
}

TEST(ParamInfoChanged, RecordRefusedInsideIsLoggedToo)
{
    // A bit field flag of 2 makes the record refuse its data halfway.
    ParamInfo broken = desctest::sampleScalar(2);
    broken.bitField.enabled = 2;
    const QByteArray body = plainCountedInfos({broken});
    ParamInfoChanged changed;
    LogCapture log;
    EXPECT_FALSE(readBody(changed, body));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("Error reading ParamInfo")});
    EXPECT_TRUE(changed.params.isEmpty());
}

TEST(ParamInfoChanged, MoreRecordsAnnouncedThanSentFailsAtTheFirstMissingOne)
{
    const QByteArray body = plainCountedInfos(3, {desctest::sampleScalar(1), desctest::sampleScalar(2)});
    ParamInfoChanged changed;
    LogCapture log;
    EXPECT_FALSE(readBody(changed, body));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("Error reading ParamInfo")});
    EXPECT_EQ(changed.params.size(), 2);
}

TEST(ParamInfoChanged, ReadingIntoAUsedMessageAppends)
{
    ParamInfoChanged changed;
    changed.params.append(desctest::sampleScalar(1));
    const QByteArray body = plainCountedInfos({desctest::sampleScalar(2)});
    EXPECT_TRUE(readBody(changed, body));
    ASSERT_EQ(changed.params.size(), 2);
    EXPECT_EQ(changed.params.at(0).id, 1u);
    EXPECT_EQ(changed.params.at(1).id, 2u);
}

TEST(ParamInfoChanged, LogLineIsOnTheDefaultCategory)
{
    struct Seen {
        static QStringList &lines()
        {
            static QStringList all;
            return all;
        }
        static void handler(QtMsgType type, const QMessageLogContext &context, const QString &message)
        {
            lines().append(QStringLiteral("%1|%2|%3")
                               .arg(int(type))
                               .arg(QString::fromLatin1(context.category ? context.category : "(none)"), message));
        }
    };
    Seen::lines().clear();
    const QtMessageHandler previous = qInstallMessageHandler(&Seen::handler);
    const QByteArray body = plainCountedInfos({typeless(1)});
    ParamInfoChanged changed;
    const bool result = readBody(changed, body);
    qInstallMessageHandler(previous);
    EXPECT_FALSE(result);
    EXPECT_EQ(Seen::lines(), QStringList{QStringLiteral("%1|default|Error reading ParamInfo").arg(int(QtDebugMsg))});
}

// --- ParamInfoAdded ------------------------------------------------------------------

TEST(ParamInfoAdded, IdentityIsTwoSevenFourNeverThatOfItsBase)
{
    ParamInfoAdded added;
    EXPECT_EQ(identityOf(added), (QList<qint32>{2, 7, 4}));
    EXPECT_EQ(added.write(), packetBytes(2, 7, 4, plainBytes([](QDataStream &s) { s << qint32(0); })));
}

TEST(ParamInfoAdded, SetMessageTypeKeepsServiceAndMessage)
{
    ParamInfoAdded added;
    added.setMessageType(1);
    EXPECT_EQ(identityOf(added), (QList<qint32>{2, 7, 1}));
    ParamInfoChanged &asBase = added;
    asBase.setMessageType(4);
    EXPECT_EQ(identityOf(added), (QList<qint32>{2, 7, 4}));
}

TEST(ParamInfoAdded, BodyIsThatOfAChangeNotice)
{
    ParamInfoAdded added;
    added.params = sampleInfos();
    ParamInfoChanged changed;
    changed.params = sampleInfos();
    const QByteArray addedPacket = added.write();
    const QByteArray changedPacket = changed.write();
    EXPECT_EQ(bodyOf(addedPacket), bodyOf(changedPacket));
    EXPECT_NE(addedPacket.left(12), changedPacket.left(12));
    EXPECT_EQ(addedPacket, packetBytes(2, 7, 4, bodyOf(changedPacket)));
}

TEST(ParamInfoAdded, RoundTripAndServerPacket)
{
    ParamInfoAdded out;
    out.params = sampleInfos();
    ParamInfoAdded in;
    EXPECT_TRUE(roundTrip(out, in));
    expectSameInfos(in.params, sampleInfos());
    EXPECT_EQ(identityOf(in), (QList<qint32>{2, 7, 4}));

    const QByteArray body = plainCountedInfos({desctest::sampleScalar(9)});
    ParamInfoAdded fromServer;
    EXPECT_TRUE(receive(fromServer, 2, 7, 4, body));
    expectSameInfos(fromServer.params, {desctest::sampleScalar(9)});
}

TEST(ParamInfoAdded, RefusesAsAChangeNoticeDoes)
{
    ParamInfoAdded added;
    LogCapture log;
    EXPECT_FALSE(receive(added, 2, 7, 4, plainBytes([](QDataStream &s) { s << qint32(0); })));
    EXPECT_TRUE(log.captured().isEmpty());
    ParamInfoAdded second;
    EXPECT_FALSE(receive(second, 2, 7, 4, plainCountedInfos({desctest::sampleScalar(1), typeless(2)})));
    EXPECT_EQ(log.captured(), QStringList{QStringLiteral("Error reading ParamInfo")});
    EXPECT_EQ(second.params.size(), 1);
}

TEST(ParamInfoAdded, ReadThroughTheBaseIsTheBaseReader)
{
    ParamInfoAdded added;
    QProtocolStruct &message = added;
    const QByteArray body = plainCountedInfos({desctest::sampleScalar(4)});
    message.setPacket(packetBytes(2, 7, 4, body));
    EXPECT_TRUE(message.read());
    EXPECT_EQ(added.params.size(), 1);
}

// --- ParamInfoRestore ----------------------------------------------------------------

TEST(ParamInfoRestore, IdentityIsTwoSixFour)
{
    ParamInfoRestore restore;
    EXPECT_EQ(identityOf(restore), (QList<qint32>{2, 6, 4}));
    EXPECT_TRUE(restore.ids.isEmpty());
}

TEST(ParamInfoRestore, BodyIsTheListOfIdentifiers)
{
    ParamInfoRestore restore;
    restore.ids << 5 << 0 << 0xFFFFFFFFu << 5;
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint32(4) << quint32(5) << quint32(0) << quint32(0xFFFFFFFFu) << quint32(5);
    });
    EXPECT_EQ(restore.write(), packetBytes(2, 6, 4, body));
}

TEST(ParamInfoRestore, RoundTripAndServerPacket)
{
    ParamInfoRestore out;
    out.ids << 1 << 2 << 3;
    ParamInfoRestore in;
    EXPECT_TRUE(roundTrip(out, in));
    EXPECT_EQ(in.ids, (QList<unsigned int>{1, 2, 3}));

    ParamInfoRestore fromServer;
    EXPECT_TRUE(receive(fromServer, 2, 6, 4, plainBytes([](QDataStream &s) { s << QList<quint32>{7, 8}; })));
    EXPECT_EQ(fromServer.ids, (QList<unsigned int>{7, 8}));
}

TEST(ParamInfoRestore, EmptyListReadsBackAsTrue)
{
    ParamInfoRestore out;
    EXPECT_EQ(bodyOf(out.write()), plainBytes([](QDataStream &s) { s << quint32(0); }));
    ParamInfoRestore in;
    EXPECT_TRUE(roundTrip(out, in));
    EXPECT_TRUE(in.ids.isEmpty());
}

TEST(ParamInfoRestore, ReadReplacesTheList)
{
    ParamInfoRestore restore;
    restore.ids << 9 << 9;
    EXPECT_TRUE(readBody(restore, plainBytes([](QDataStream &s) { s << quint32(1) << quint32(4); })));
    EXPECT_EQ(restore.ids, (QList<unsigned int>{4}));
}

TEST(ParamInfoRestore, AnyBodyReadsAsTrue)
{
    ParamInfoRestore restore;
    restore.ids << 9;
    // The list runs out: Qt's reader leaves it empty, and the message is still accepted.
    EXPECT_TRUE(readBody(restore, plainBytes([](QDataStream &s) { s << quint32(3) << quint32(4); })));
    EXPECT_TRUE(restore.ids.isEmpty());
    ParamInfoRestore empty;
    EXPECT_TRUE(receive(empty, 2, 6, 4, QByteArray()));
    EXPECT_TRUE(empty.ids.isEmpty());
}

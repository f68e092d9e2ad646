// Calling an archive query off: the two ways to build the cancel, its header and its body.

#include "archivetest.h"

#include "archivequery.h"
#include "archivequerycancel.h"

#include <gtest/gtest.h>

#include <QtCore/QObject>

using archivetest::tokenOf;
using telortest::bodyOf;
using telortest::identityOf;
using telortest::packetBytes;
using telortest::plainBytes;
using telortest::routeOf;

TEST(ArchiveQueryCancel, FromASenderHasItsOwnIdentity)
{
    QObject client;
    const ArchiveQueryCancel cancel(&client);
    EXPECT_EQ(identityOf(cancel), (QList<qint32>{3, 10, 1}));
    EXPECT_EQ(cancel.sender(), &client);
}

TEST(ArchiveQueryCancel, FromAQueryHasMessageId10)
{
    QObject client;
    const ArchiveQuery query(&client);
    const ArchiveQueryCancel cancel(query);
    EXPECT_EQ(identityOf(cancel), (QList<qint32>{3, 10, 1}));
    EXPECT_EQ(cancel.sender(), &client);
}

TEST(ArchiveQueryCancel, FromAQueryKeepsWhatReplyToGaveTheOtherWords)
{
    // A query as a server received it, with an identity and routing words of its own.
    ArchiveQuery query(nullptr);
    query.setPacket(packetBytes(4, 77, 6, plainBytes([](QDataStream &s) { s << false << qint64(0x4242); }), 101, 202, 303));
    ASSERT_TRUE(query.read());

    const ArchiveQueryCancel cancel(query);
    EXPECT_EQ(identityOf(cancel), (QList<qint32>{4, 10, 6}));
    EXPECT_EQ(routeOf(cancel), (QList<qint32>{101, 202, 303}));
    EXPECT_EQ(tokenOf(cancel.sender()), 0x4242);
}

TEST(ArchiveQueryCancel, BodyIsTheToken)
{
    QObject client;
    ArchiveQueryCancel cancel(&client);
    const QByteArray expected = plainBytes([&](QDataStream &s) { s << tokenOf(&client); });
    const QByteArray packet = cancel.write();
    EXPECT_EQ(bodyOf(packet), expected);
    EXPECT_EQ(packet, packetBytes(3, 10, 1, expected));
}

TEST(ArchiveQueryCancel, RoundTrip)
{
    QObject client;
    ArchiveQueryCancel cancel(&client);
    cancel.write();

    ArchiveQueryCancel copy(nullptr);
    copy.setPacket(cancel);
    EXPECT_TRUE(copy.read());
    EXPECT_EQ(copy.sender(), &client);
}

TEST(ArchiveQueryCancel, ReaderReturnsTrueForEveryToken)
{
    ArchiveQueryCancel nullToken(reinterpret_cast<const QObject *>(quintptr(8)));
    nullToken.setPacket(packetBytes(3, 10, 1, plainBytes([](QDataStream &s) { s << qint64(0); })));
    EXPECT_TRUE(nullToken.read());
    EXPECT_EQ(nullToken.sender(), nullptr);

    ArchiveQueryCancel negative(nullptr);
    negative.setPacket(packetBytes(3, 10, 1, plainBytes([](QDataStream &s) { s << qint64(-2); })));
    EXPECT_TRUE(negative.read());
    EXPECT_EQ(tokenOf(negative.sender()), -2);

    ArchiveQueryCancel truncated(nullptr);
    truncated.setPacket(packetBytes(3, 10, 1, QByteArray("\x01\x02", 2)));
    EXPECT_TRUE(truncated.read());
    EXPECT_EQ(truncated.sender(), nullptr);
}

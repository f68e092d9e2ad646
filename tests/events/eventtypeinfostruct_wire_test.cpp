// Event type descriptions in their packet form: bytes, round trips, repeated message
// numbers and streams that run out.

#include "telortest.h"

#include "eventtypeinfostruct.h"
#include "qcontainerpacket.h"

#include <QtCore/QDataStream>

#include <gtest/gtest.h>

#include <algorithm>

using telortest::plainBytes;
using telortest::valuesOf;

namespace {

QByteArray writtenBy(const EventTypeInfoStruct &event)
{
    QByteArray bytes;
    QContainerPacket packet(&bytes);
    event.write(packet);
    return bytes;
}

EventTypeInfoStruct readFrom(const QByteArray &bytes)
{
    QContainerPacket packet(bytes);
    return EventTypeInfoStruct(packet);
}

QXmlTranslation translation(const QString &english, const QString &language = QString(),
                            const QString &text = QString())
{
    QXmlTranslation t(english);
    if (!language.isEmpty())
        t.setTranslation(text, language);
    return t;
}

/** A translatable text with at most one translation, written field by field. */
void writeText(QDataStream &s, const QString &english, const QString &language = QString(),
               const QString &text = QString())
{
    s << english;
    if (language.isEmpty()) {
        s << quint32(0);
    } else {
        s << quint32(1) << language << text;
    }
}

/** One entry of the message table, written field by field: its number, then its text. */
void writeMessage(QDataStream &s, quint8 number, const QString &english, const QString &language = QString(),
                  const QString &text = QString())
{
    s << number;
    writeText(s, english, language, text);
}

EventTypeInfoStruct pump()
{
    EventTypeInfoStruct event;
    event.setEngName(QStringLiteral("Pump"));
    event.setTranslation(QStringLiteral("Nasos"), QStringLiteral("ru"));
    event.id = 65535;
    event.messages.insert(44, translation(QStringLiteral("Started"), QStringLiteral("de"), QStringLiteral("An")));
    return event;
}

void expectSame(const EventTypeInfoStruct &a, const EventTypeInfoStruct &b)
{
    EXPECT_EQ(static_cast<const QXmlTranslation &>(a), static_cast<const QXmlTranslation &>(b));
    EXPECT_EQ(a.id, b.id);
    EXPECT_EQ(a.messages, b.messages);
}

} // namespace

TEST(EventTypeWire, DefaultIsEmpty)
{
    const EventTypeInfoStruct event;
    EXPECT_EQ(event.id, 0);
    EXPECT_TRUE(event.isEmpty());
    EXPECT_TRUE(event.messages.isEmpty());
}

TEST(EventTypeWire, EmptyDescriptionBytes)
{
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << QString() << quint32(0); // the name: no English text, no translations
        s << quint16(0);              // id
        s << quint32(0);              // no messages
    });
    EXPECT_EQ(writtenBy(EventTypeInfoStruct()), expected);
}

TEST(EventTypeWire, BytesAreNameIdCountAndMessages)
{
    const QByteArray expected = plainBytes([](QDataStream &s) {
        writeText(s, QStringLiteral("Pump"), QStringLiteral("ru"), QStringLiteral("Nasos"));
        s << quint16(65535);
        s << quint32(1);
        writeMessage(s, 44, QStringLiteral("Started"), QStringLiteral("de"), QStringLiteral("An"));
    });
    const QByteArray bytes = writtenBy(pump());
    EXPECT_EQ(bytes, expected) << telortest::hex(bytes);
    // 16 bits of id right after the name.
    const int idAt = 4 + 8 + 4 + 4 + 4 + 4 + 10;
    EXPECT_EQ(bytes.mid(idAt, 2), QByteArray("\xff\xff", 2));
}

TEST(EventTypeWire, MessagesGoOutFromTheLastEntryToTheFirst)
{
    EventTypeInfoStruct event;
    event.id = 3;
    for (int number : {1, 200, 7, 255, 0, 90})
        event.messages.insert(static_cast<unsigned char>(number), translation(QString::number(number)));

    QList<unsigned char> order = event.messages.keys();
    std::reverse(order.begin(), order.end());
    const QByteArray expected = plainBytes([&order](QDataStream &s) {
        writeText(s, QString());
        s << quint16(3) << quint32(order.size());
        for (unsigned char number : order) {
            writeMessage(s, number, QString::number(number));
        }
    });
    EXPECT_EQ(writtenBy(event), expected);
}

TEST(EventTypeWire, RoundTrip)
{
    EventTypeInfoStruct event = pump();
    event.setTranslation(QStringLiteral("Pumpe"), QStringLiteral("de"));
    event.messages.insert(0, translation(QStringLiteral("Stopped"), QStringLiteral("ru"), QStringLiteral("Stop")));
    event.messages.insert(255, QXmlTranslation());
    const EventTypeInfoStruct back = readFrom(writtenBy(event));
    expectSame(back, event);
}

TEST(EventTypeWire, ReadsPlainBytes)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        writeText(s, QStringLiteral("Valve"), QStringLiteral("ru"), QStringLiteral("Klapan"));
        s << quint16(4464) << quint32(2);
        writeMessage(s, 1, QStringLiteral("Open"));
        writeMessage(s, 2, QStringLiteral("Closed"), QStringLiteral("de"), QStringLiteral("Zu"));
    });
    const EventTypeInfoStruct event = readFrom(bytes);
    EXPECT_EQ(event.engName(), QStringLiteral("Valve"));
    EXPECT_EQ(event.translate(QStringLiteral("ru"), false), QStringLiteral("Klapan"));
    EXPECT_EQ(event.id, 4464);
    EXPECT_EQ(event.messages.size(), 2);
    EXPECT_EQ(event.messages.value(1), translation(QStringLiteral("Open")));
    EXPECT_EQ(event.messages.value(2), translation(QStringLiteral("Closed"), QStringLiteral("de"), QStringLiteral("Zu")));
}

TEST(EventTypeWire, RepeatedMessageNumberKeepsBothEntries)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        writeText(s, QStringLiteral("Valve"));
        s << quint16(1) << quint32(2);
        writeMessage(s, 7, QStringLiteral("first"));
        writeMessage(s, 7, QStringLiteral("second"));
    });
    const EventTypeInfoStruct event = readFrom(bytes);
    EXPECT_EQ(event.messages.size(), 2);
    EXPECT_EQ(event.messages.count(7), 2);
    // A lookup finds the entry read last.
    EXPECT_EQ(event.messages.value(7).engName(), QStringLiteral("second"));
    EXPECT_EQ((valuesOf<unsigned char, QXmlTranslation>(event.messages, 7)),
              (QList<QXmlTranslation>{translation(QStringLiteral("second")), translation(QStringLiteral("first"))}));
}

TEST(EventTypeWire, RepeatedMessageNumberSurvivesARoundTrip)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        writeText(s, QString());
        s << quint16(1) << quint32(2);
        writeMessage(s, 7, QStringLiteral("first"));
        writeMessage(s, 7, QStringLiteral("second"));
    });
    const EventTypeInfoStruct event = readFrom(bytes);
    EXPECT_EQ(writtenBy(event), bytes);
    const EventTypeInfoStruct back = readFrom(writtenBy(event));
    EXPECT_EQ((valuesOf<unsigned char, QXmlTranslation>(back.messages, 7)),
              (valuesOf<unsigned char, QXmlTranslation>(event.messages, 7)));
}

TEST(EventTypeWire, ReadReplacesEverything)
{
    EventTypeInfoStruct event = pump();
    event.messages.insert(1, translation(QStringLiteral("old")));
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        writeText(s, QStringLiteral("New"), QStringLiteral("de"), QStringLiteral("Neu"));
        s << quint16(9) << quint32(1) << quint8(3);
        writeText(s, QStringLiteral("three"));
    });
    QContainerPacket packet(bytes);
    event.read(packet);
    EXPECT_EQ(event.engName(), QStringLiteral("New"));
    EXPECT_EQ(event.translations(), (QHash<QString, QString>{{QStringLiteral("de"), QStringLiteral("Neu")}}));
    EXPECT_EQ(event.id, 9);
    EXPECT_EQ(event.messages.keys(), QList<unsigned char>{3});
}

TEST(EventTypeWire, ReadOfNoMessagesEmptiesTheTable)
{
    EventTypeInfoStruct event = pump();
    QContainerPacket packet(writtenBy(EventTypeInfoStruct()));
    event.read(packet);
    EXPECT_TRUE(event.messages.isEmpty());
    EXPECT_EQ(event.id, 0);
    EXPECT_TRUE(event.isEmpty());
}

TEST(EventTypeWire, StreamRunningOutInAMessageLeavesNoMessages)
{
    QByteArray bytes = plainBytes([](QDataStream &s) {
        writeText(s, QStringLiteral("Valve"));
        s << quint16(12) << quint32(2);
        writeMessage(s, 1, QStringLiteral("Open"));
        writeMessage(s, 2, QStringLiteral("Closed"));
    });
    bytes.chop(6); // into the English text of the second message
    QContainerPacket packet(bytes);
    EventTypeInfoStruct event(packet);
    EXPECT_EQ(event.engName(), QStringLiteral("Valve"));
    EXPECT_EQ(event.id, 12);
    EXPECT_TRUE(event.messages.isEmpty());
    EXPECT_NE(packet.status(), QDataStream::Ok);
}

TEST(EventTypeWire, CountAboveTheMessagesLeavesNoMessages)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        writeText(s, QStringLiteral("Valve"));
        s << quint16(12) << quint32(0x7fffffff);
        writeMessage(s, 1, QStringLiteral("Open"));
    });
    const EventTypeInfoStruct event = readFrom(bytes);
    EXPECT_EQ(event.id, 12);
    EXPECT_TRUE(event.messages.isEmpty());
}

TEST(EventTypeWire, TruncatedBeforeTheIdReadsZeros)
{
    QByteArray bytes = writtenBy(pump());
    bytes.truncate(4 + 8 + 4 + 4 + 4 + 4 + 10); // the name only
    const EventTypeInfoStruct event = readFrom(bytes);
    EXPECT_EQ(event.engName(), QStringLiteral("Pump"));
    EXPECT_EQ(event.id, 0);
    EXPECT_TRUE(event.messages.isEmpty());
}

TEST(EventTypeWire, StatusIsHandledAsQtsContainerReaderDoes)
{
    // The English name has an odd byte count, which flags the stream as corrupt after
    // its length word; Qt's container reader for the messages resets the status, reads,
    // and puts the old status back.
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(3);               // a corrupt string length: nothing more is read of it
        s << quint32(0);               // no translations
        s << quint16(5) << quint32(1) << quint8(8);
        writeText(s, QStringLiteral("eight"));
    });

    QContainerPacket packet(bytes);
    const EventTypeInfoStruct event(packet);

    QDataStream plain(bytes);
    plain.setVersion(QDataStream::Qt_5_15);
    QXmlTranslation name;
    quint16 id = 0;
    QHash<quint8, QXmlTranslation> messages;
    plain >> name >> id >> messages;

    EXPECT_EQ(event.id, id);
    EXPECT_EQ(event.messages, messages);
    EXPECT_EQ(event.messages.value(8).engName(), QStringLiteral("eight"));
    EXPECT_EQ(packet.status(), plain.status());
    EXPECT_EQ(packet.status(), QDataStream::ReadCorruptData);
}

TEST(EventTypeWire, SeveralDescriptionsReadFromOnePacket)
{
    EventTypeInfoStruct second;
    second.id = 2;
    second.setEngName(QStringLiteral("Second"));
    QByteArray bytes;
    {
        QContainerPacket out(&bytes);
        pump().write(out);
        second.write(out);
    }
    QContainerPacket in(bytes);
    const EventTypeInfoStruct a(in);
    const EventTypeInfoStruct b(in);
    expectSame(a, pump());
    expectSame(b, second);
    EXPECT_EQ(in.bytesLeft(), 0);
    EXPECT_EQ(in.status(), QDataStream::Ok);
}

TEST(EventTypeWire, CopiesAreValues)
{
    EventTypeInfoStruct a = pump();
    EventTypeInfoStruct b = a;
    b.messages.clear();
    b.id = 1;
    b.setEngName(QStringLiteral("Other"));
    EXPECT_EQ(a.messages.size(), 1);
    EXPECT_EQ(a.id, 65535);
    EXPECT_EQ(a.engName(), QStringLiteral("Pump"));
}

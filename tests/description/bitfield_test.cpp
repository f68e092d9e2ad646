// The description of a status word: its records, their wire forms and the flag byte.

#include "descriptiontest.h"
#include "telortest.h"

#include "parambitfield.h"

#include <gtest/gtest.h>

#include <limits>

using desctest::bytesOf;
using desctest::readFrom;
using telortest::plainBytes;

namespace {

using Attributes = ParamBitField::ParamBitAttributes;
using BitState = ParamBitField::ParamBitAttributes::ParamBitState;

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

QHash<QString, QString> texts(const QString &language, const QString &text)
{
    QHash<QString, QString> h;
    h.insert(language, text);
    return h;
}

BitState bitState(int state, const QString &text)
{
    BitState s;
    s.state = state;
    s.text.insert(En, text);
    return s;
}

// The plain form of a bit description whose states table has at most one entry.
void writeAttributes(QDataStream &s, const QHash<QString, QString> &name, const QList<QPair<qint32, BitState>> &states)
{
    s << name << qint32(states.size());
    for (const auto &entry : states)
        s << entry.first << qint32(entry.second.state) << QHash<QString, QString>(entry.second.text);
}

} // namespace

// --- ParamBitState -----------------------------------------------------------------------

TEST(BitState, DefaultIsZeroWithoutText)
{
    const BitState s;
    EXPECT_EQ(s.state, 0);
    EXPECT_TRUE(s.text.isEmpty());
}

TEST(BitState, WritesStateThenTexts)
{
    const BitState s = bitState(16, QStringLiteral("Door open"));
    const QByteArray expected = plainBytes([](QDataStream &st) {
        st << qint32(16) << texts(QStringLiteral("en"), QStringLiteral("Door open"));
    });
    EXPECT_EQ(bytesOf(s), expected);
}

TEST(BitState, ReadsWhatWasWrittenAndReplaces)
{
    BitState received = bitState(1, QStringLiteral("old"));
    received.text.insert(Ru, QStringLiteral("старое"));
    const QByteArray bytes = bytesOf(bitState(4096, QStringLiteral("Fault")));
    const auto outcome = readFrom(bytes, received);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    EXPECT_EQ(received.state, 4096);
    EXPECT_EQ(received.text.size(), 1);
    EXPECT_EQ(received.text.value(En), QStringLiteral("Fault"));
}

// --- ParamBitAttributes ------------------------------------------------------------------

TEST(BitAttributes, WritesNameCountThenEntries)
{
    Attributes a;
    a.name.insert(En, QStringLiteral("Pump running"));
    a.states.insert(1, bitState(16, QStringLiteral("Running")));
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        writeAttributes(s, texts(En, QStringLiteral("Pump running")), {qMakePair(qint32(1), a.states.value(1))});
    });
    EXPECT_EQ(bytesOf(a), expected);
}

TEST(BitAttributes, EntriesGoOutInKeysOrder)
{
    Attributes a;
    a.states.insert(0, bitState(8, QStringLiteral("Stopped")));
    a.states.insert(1, bitState(16, QStringLiteral("Running")));
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << QHash<QString, QString>() << qint32(2);
        const QList<int> keys = a.states.keys();
        for (int key : keys)
            s << qint32(key) << qint32(a.states.value(key).state) << QHash<QString, QString>(a.states.value(key).text);
    });
    EXPECT_EQ(bytesOf(a), expected);
}

TEST(BitAttributes, ReadsWhatWasWritten)
{
    Attributes sent;
    sent.name.insert(Ru, QStringLiteral("Насос"));
    sent.states.insert(0, bitState(8, QStringLiteral("Stopped")));
    sent.states.insert(1, bitState(4096, QStringLiteral("Running")));
    const QByteArray bytes = bytesOf(sent);
    Attributes received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    EXPECT_EQ(received.name, sent.name);
    ASSERT_EQ(received.states.size(), 2);
    EXPECT_EQ(received.states.value(1).state, 4096);
    EXPECT_EQ(received.states.value(0).text.value(En), QStringLiteral("Stopped"));
}

TEST(BitAttributes, CountZeroReadsNoEntryButReplacesTheName)
{
    Attributes a;
    a.name.insert(En, QStringLiteral("old"));
    a.states.insert(1, bitState(16, QStringLiteral("kept")));
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << texts(QStringLiteral("ru"), QStringLiteral("новое")) << qint32(0);
    });
    const auto outcome = readFrom(bytes, a);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    EXPECT_EQ(a.name.size(), 1);
    EXPECT_EQ(a.name.value(Ru), QStringLiteral("новое"));
    EXPECT_EQ(a.states.size(), 1);
}

TEST(BitAttributes, NegativeCountReadsNoEntry)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << texts(QStringLiteral("en"), QStringLiteral("Bit")) << qint32(-3) << qint32(1) << qint32(16)
          << QHash<QString, QString>();
    });
    Attributes a;
    const auto outcome = readFrom(bytes, a);
    EXPECT_TRUE(outcome.result);
    EXPECT_TRUE(a.states.isEmpty());
    EXPECT_EQ(a.name.value(En), QStringLiteral("Bit"));
    // Right behind the count: nothing more was read.
    EXPECT_EQ(outcome.position, unsigned(bytes.size() - 12));
}

TEST(BitAttributes, RepeatedStateKeyKeepsTheLastEntry)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << QHash<QString, QString>() << qint32(2)
          << qint32(1) << qint32(16) << texts(QStringLiteral("en"), QStringLiteral("first"))
          << qint32(1) << qint32(4096) << texts(QStringLiteral("en"), QStringLiteral("second"));
    });
    Attributes a;
    EXPECT_TRUE(readFrom(bytes, a).result);
    ASSERT_EQ(a.states.size(), 1);
    EXPECT_EQ(a.states.value(1).state, 4096);
    EXPECT_EQ(a.states.value(1).text.value(En), QStringLiteral("second"));
}

TEST(BitAttributes, HugeCountStopsAtTheEndOfTheData)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << QHash<QString, QString>() << std::numeric_limits<qint32>::max()
          << qint32(1) << qint32(16) << texts(QStringLiteral("en"), QStringLiteral("set"));
    });
    Attributes a;
    EXPECT_TRUE(readFrom(bytes, a).result);
    // The entry that is there, and the one key 0 that every further entry would give.
    ASSERT_EQ(a.states.size(), 2);
    EXPECT_EQ(a.states.value(1).state, 16);
    EXPECT_EQ(a.states.value(0).state, 0);
    EXPECT_TRUE(a.states.value(0).text.isEmpty());
}

// --- ParamBitField -----------------------------------------------------------------------

TEST(BitField, DefaultWritesTwoZeroBytes)
{
    const ParamBitField f;
    EXPECT_EQ(f.enabled, 0);
    EXPECT_EQ(f.reserved, 0);
    EXPECT_TRUE(f.attributes.isEmpty());
    EXPECT_TRUE(f.combinations.isEmpty());
    EXPECT_EQ(bytesOf(f), QByteArray::fromHex("0000"));
}

TEST(BitField, DisabledWritesNoTablesEvenWhenItHasThem)
{
    ParamBitField f;
    f.reserved = 0x5a;
    f.attributes.insert(0, Attributes());
    EXPECT_EQ(bytesOf(f), QByteArray::fromHex("005a"));
}

TEST(BitField, EnabledWithEmptyTablesWritesTwoZeroCounts)
{
    ParamBitField f;
    f.enabled = 1;
    const QByteArray expected = plainBytes([](QDataStream &s) { s << qint8(1) << qint8(0) << qint32(0) << qint32(0); });
    EXPECT_EQ(bytesOf(f), expected);
    EXPECT_EQ(expected.size(), 10);
}

TEST(BitField, WritesBitsThenCombinations)
{
    ParamBitField f;
    f.enabled = 1;
    f.reserved = 7;
    Attributes bit;
    bit.name.insert(En, QStringLiteral("Overload"));
    bit.states.insert(1, bitState(4096, QStringLiteral("Overloaded")));
    f.attributes.insert(3, bit);
    ParamBitCombination c;
    c.sign = QStringLiteral("==");
    c.state = 4096;
    c.value = 5;
    c.shortText.insert(En, QStringLiteral("Trip"));
    f.combinations.insert(9, c);
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << qint8(1) << qint8(7) << qint32(1) << qint32(3);
        writeAttributes(s, texts(En, QStringLiteral("Overload")), {qMakePair(qint32(1), bit.states.value(1))});
        s << qint32(1) << qint32(9) << qint64(5) << qint32(4096) << texts(En, QStringLiteral("Trip"))
          << QHash<QString, QString>() << QStringLiteral("==");
    });
    EXPECT_EQ(bytesOf(f), expected);
}

TEST(BitField, EntriesGoOutInKeysOrder)
{
    ParamBitField f;
    f.enabled = 1;
    for (int bit = 0; bit < 5; ++bit) {
        Attributes a;
        a.name.insert(En, QStringLiteral("bit %1").arg(bit));
        f.attributes.insert(bit * 7, a);
    }
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << qint8(1) << qint8(0) << qint32(5);
        const QList<int> keys = f.attributes.keys();
        for (int key : keys)
            s << qint32(key) << QHash<QString, QString>(f.attributes.value(key).name) << qint32(0);
        s << qint32(0);
    });
    EXPECT_EQ(bytesOf(f), expected);
}

TEST(BitField, ReadsWhatWasWritten)
{
    ParamBitField sent;
    sent.enabled = 1;
    sent.reserved = -2;
    for (int bit = 0; bit < 16; ++bit) {
        Attributes a;
        a.name.insert(En, QStringLiteral("Bit %1").arg(bit));
        a.name.insert(Ru, QStringLiteral("Бит %1").arg(bit));
        a.states.insert(0, bitState(8, QStringLiteral("Off")));
        a.states.insert(1, bitState(bit % 2 ? 4096 : 16, QStringLiteral("On")));
        sent.attributes.insert(bit, a);
    }
    ParamBitCombination c;
    c.sign = QStringLiteral("==");
    c.state = 4096;
    c.shortText.insert(En, QStringLiteral("Trip"));
    sent.combinations.insert(0x30, c);
    sent.combinations.insert(-1, c);
    const QByteArray bytes = bytesOf(sent);
    ParamBitField received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    EXPECT_EQ(received.enabled, 1);
    EXPECT_EQ(received.reserved, -2);
    ASSERT_EQ(received.attributes.size(), 16);
    EXPECT_EQ(received.attributes.value(13).name.value(Ru), QStringLiteral("Бит 13"));
    EXPECT_EQ(received.attributes.value(13).states.value(1).state, 4096);
    EXPECT_EQ(received.attributes.value(12).states.value(1).state, 16);
    ASSERT_EQ(received.combinations.size(), 2);
    EXPECT_EQ(received.combinations.value(-1).shortText.value(En), QStringLiteral("Trip"));
    EXPECT_EQ(received.combinations.value(0x30).state, 4096);
}

TEST(BitField, FlagTwoFailsAfterTwoBytes)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint8(2) << qint8(0) << qint32(0) << qint32(0); });
    ParamBitField f;
    const auto outcome = readFrom(bytes, f);
    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(outcome.position, 2u);
    EXPECT_EQ(f.enabled, 2);
}

TEST(BitField, NegativeFlagCountsAsAboveOne)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint8(-128) << qint8(3) << qint32(0) << qint32(0); });
    ParamBitField f;
    const auto outcome = readFrom(bytes, f);
    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(outcome.position, 2u);
    EXPECT_EQ(f.reserved, 3);
}

TEST(BitField, FlagAboveOneIsWrittenWithTablesAndRefusedOnReading)
{
    ParamBitField sent;
    sent.enabled = 2;
    const QByteArray expected = plainBytes([](QDataStream &s) { s << qint8(2) << qint8(0) << qint32(0) << qint32(0); });
    EXPECT_EQ(bytesOf(sent), expected);
    ParamBitField received;
    EXPECT_FALSE(readFrom(expected, received).result);
}

TEST(BitField, DisabledOnTheWireKeepsTheTablesOfAUsedObject)
{
    ParamBitField f;
    f.enabled = 1;
    f.attributes.insert(2, Attributes());
    f.combinations.insert(4, ParamBitCombination());
    const auto outcome = readFrom(QByteArray::fromHex("0009" "00000001"), f);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, 2u);
    EXPECT_EQ(f.enabled, 0);
    EXPECT_EQ(f.reserved, 9);
    EXPECT_EQ(f.attributes.size(), 1);
    EXPECT_EQ(f.combinations.size(), 1);
}

TEST(BitField, ReadingAddsToTablesWithoutClearing)
{
    ParamBitField f;
    f.attributes.insert(30, Attributes());
    ParamBitField sent;
    sent.enabled = 1;
    sent.attributes.insert(1, Attributes());
    EXPECT_TRUE(readFrom(bytesOf(sent), f).result);
    EXPECT_EQ(f.attributes.size(), 2);
    EXPECT_TRUE(f.attributes.contains(30));
    EXPECT_TRUE(f.attributes.contains(1));
}

TEST(BitField, RepeatedBitKeepsTheLastEntry)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint8(0) << qint32(2);
        s << qint32(5) << texts(QStringLiteral("en"), QStringLiteral("first")) << qint32(0);
        s << qint32(5) << texts(QStringLiteral("en"), QStringLiteral("second")) << qint32(0);
        s << qint32(0);
    });
    ParamBitField f;
    const auto outcome = readFrom(bytes, f);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    ASSERT_EQ(f.attributes.size(), 1);
    EXPECT_EQ(f.attributes.value(5).name.value(En), QStringLiteral("second"));
}

TEST(BitField, RepeatedCombinationKeepsTheLastEntry)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint8(0) << qint32(0) << qint32(2);
        s << qint32(16) << qint64(1) << qint32(4096) << texts(QStringLiteral("en"), QStringLiteral("first"))
          << QHash<QString, QString>() << QStringLiteral("==");
        s << qint32(16) << qint64(2) << qint32(8) << texts(QStringLiteral("en"), QStringLiteral("second"))
          << QHash<QString, QString>() << QStringLiteral("!=");
    });
    ParamBitField f;
    EXPECT_TRUE(readFrom(bytes, f).result);
    ASSERT_EQ(f.combinations.size(), 1);
    EXPECT_EQ(f.combinations.value(16).value, 2);
    EXPECT_EQ(f.combinations.value(16).state, 8);
    EXPECT_EQ(f.combinations.value(16).sign, QStringLiteral("!="));
    EXPECT_EQ(f.combinations.value(16).shortText.value(En), QStringLiteral("second"));
}

TEST(BitField, NegativeTableCountsReadNoEntry)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << qint8(1) << qint8(0) << qint32(-1) << qint32(-5); });
    ParamBitField f;
    const auto outcome = readFrom(bytes, f);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, 10u);
    EXPECT_TRUE(f.attributes.isEmpty());
    EXPECT_TRUE(f.combinations.isEmpty());
}

TEST(BitField, HugeCountsStopAtTheEndOfTheData)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint8(0) << std::numeric_limits<qint32>::max();
        s << qint32(4) << texts(QStringLiteral("en"), QStringLiteral("four")) << qint32(0);
    });
    ParamBitField f;
    EXPECT_TRUE(readFrom(bytes, f).result);
    // Bit 4 as sent, and the key 0 that every entry read from beyond the end gives.
    ASSERT_EQ(f.attributes.size(), 2);
    EXPECT_EQ(f.attributes.value(4).name.value(En), QStringLiteral("four"));
    EXPECT_TRUE(f.attributes.value(0).name.isEmpty());
    // The combinations count is read from beyond the end too, as 0.
    EXPECT_TRUE(f.combinations.isEmpty());
}

TEST(BitField, TruncatedAfterTheFlagStillSucceeds)
{
    ParamBitField f;
    const auto outcome = readFrom(QByteArray::fromHex("01"), f);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(f.enabled, 1);
    EXPECT_TRUE(f.attributes.isEmpty());
    EXPECT_TRUE(f.combinations.isEmpty());
}

TEST(BitField, CopiesAreIndependentValues)
{
    ParamBitField a;
    a.enabled = 1;
    a.attributes.insert(1, Attributes());
    ParamBitField b = a;
    b.attributes.insert(2, Attributes());
    b.reserved = 4;
    EXPECT_EQ(a.attributes.size(), 1);
    EXPECT_EQ(a.reserved, 0);
    EXPECT_EQ(b.enabled, 1);
}

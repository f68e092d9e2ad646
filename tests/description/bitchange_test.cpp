// What a bit-change event shows: ended and begun fault combinations, bits that changed
// value, and the special treatment of an old word without data.

#include "telortest.h"

#include "eventstruct.h"
#include "parambitfield.h"
#include "paraminfo.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <gtest/gtest.h>

#include <algorithm>

using telortest::packetBytes;
using telortest::plainBytes;

namespace {

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

using Result = QHash<unsigned int, ParamBitInfo>;

ParamBitField::ParamBitAttributes::ParamBitState bitState(int state, const QString &english)
{
    ParamBitField::ParamBitAttributes::ParamBitState s;
    s.state = state;
    if (!english.isNull())
        s.text.insert(En, english);
    return s;
}

ParamBitCombination combination(const QString &sign, int state, const QString &english)
{
    ParamBitCombination c;
    c.sign = sign;
    c.state = state;
    c.shortText.insert(En, english);
    c.shortText.insert(Ru, english.toUpper());
    return c;
}

/**
 * A pump's status word:
 * - bit 0 "Running": no configured states, so 8 at 0 and 4096 at 1;
 * - bit 1 "Remote": 1 is a plain state 8 ("Remote"), 0 has no entry;
 * - bit 2 "Warning": 1 has state 16 ("Warm");
 * - bit 5 "Oil": 0 has state 4096 ("Low oil"), 1 has state 8 ("Oil OK").
 * Fault combinations: 0x30 "Trip", 0x40 "Overload". Not fault combinations: 0x03 with
 * state 8, and 0x07 with the sign "!=".
 */
ParamInfo pump()
{
    ParamInfo info;
    info.id = 42;
    info.code = QStringLiteral("PUMP1.STATUS");
    info.type = 2;
    ParamBitField &f = info.bitField;
    f.enabled = 1;

    ParamBitField::ParamBitAttributes running;
    running.name.insert(En, QStringLiteral("Running"));
    running.name.insert(Ru, QStringLiteral("Работа"));
    f.attributes.insert(0, running);

    ParamBitField::ParamBitAttributes remote;
    remote.name.insert(En, QStringLiteral("Remote"));
    remote.states.insert(1, bitState(8, QStringLiteral("Remote")));
    f.attributes.insert(1, remote);

    ParamBitField::ParamBitAttributes warning;
    warning.name.insert(En, QStringLiteral("Warning"));
    warning.states.insert(1, bitState(16, QStringLiteral("Warm")));
    f.attributes.insert(2, warning);

    ParamBitField::ParamBitAttributes oil;
    oil.name.insert(En, QStringLiteral("Oil"));
    oil.states.insert(0, bitState(4096, QStringLiteral("Low oil")));
    oil.states.insert(1, bitState(8, QStringLiteral("Oil OK")));
    f.attributes.insert(5, oil);

    f.combinations.insert(0x30, combination(QStringLiteral("=="), 4096, QStringLiteral("Trip")));
    f.combinations.insert(0x40, combination(QStringLiteral("=="), 4096, QStringLiteral("Overload")));
    f.combinations.insert(0x03, combination(QStringLiteral("=="), 8, QStringLiteral("Not a fault")));
    f.combinations.insert(0x07, combination(QStringLiteral("!="), 4096, QStringLiteral("Wrong sign")));
    return info;
}

/** A bit-change event with the four named values. */
EventStruct change(const QVariant &oldWord, const QVariant &newWord, const QVariant &oldState, const QVariant &newState)
{
    EventStruct event;
    event.typeId = 7;
    event.eventMessage = 1;
    event.firstId = 42;
    event.secondId = 1;
    event.parameters.insert(QStringLiteral("#old_bit_value"), oldWord);
    event.parameters.insert(QStringLiteral("#new_bit_value"), newWord);
    event.parameters.insert(QStringLiteral("#old_bit_state"), oldState);
    event.parameters.insert(QStringLiteral("#new_bit_state"), newState);
    return event;
}

EventStruct change(unsigned int oldWord, unsigned int newWord, int oldState = 8, int newState = 8)
{
    return change(QVariant(oldWord), QVariant(newWord), QVariant(oldState), QVariant(newState));
}

QList<unsigned int> sortedKeys(const Result &result)
{
    QList<unsigned int> keys = result.keys();
    std::sort(keys.begin(), keys.end());
    return keys;
}

void expectRecord(const ParamBitInfo &info, int value, int state, const QString &name, const QString &text)
{
    EXPECT_EQ(info.value, value);
    EXPECT_EQ(info.state, state);
    EXPECT_EQ(info.name, name);
    EXPECT_EQ(info.text, text);
}

} // namespace

TEST(BitChange, SameFaultCombinationOnBothSidesShowsNothing)
{
    const ParamInfo info = pump();
    EXPECT_TRUE(ParamBitField::getNewBitWord(change(0x30, 0x30), &info, En).isEmpty());
    EXPECT_TRUE(ParamBitField::getNewBitWord(change(0x30, 0x30, 2, 2), &info, En).isEmpty());
}

TEST(BitChange, OneFaultCombinationReplacedByAnother)
{
    const ParamInfo info = pump();
    const Result result = ParamBitField::getNewBitWord(change(0x30, 0x40), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0x30, 0x40}));
    // The old one shows as finished, the new one as the fault it is.
    expectRecord(result.value(0x30), 0x30, 8, QStringLiteral("Trip"), QString());
    expectRecord(result.value(0x40), 0x40, 4096, QStringLiteral("Overload"), QString());
}

TEST(BitChange, CombinationNamesInTheLanguageAskedFor)
{
    const ParamInfo info = pump();
    const Result result = ParamBitField::getNewBitWord(change(0x40, 0x30), &info, Ru);
    EXPECT_EQ(result.value(0x40).name, QStringLiteral("OVERLOAD"));
    EXPECT_EQ(result.value(0x40).state, 8);
    EXPECT_EQ(result.value(0x30).name, QStringLiteral("TRIP"));
    EXPECT_EQ(result.value(0x30).state, 4096);
}

TEST(BitChange, EndingCombinationListsTheBitsThatAreNotGood)
{
    const ParamInfo info = pump();
    // From the trip to bits 0 and 2 set: bit 0 is a fault, bit 1 is good at 0, bit 2 is
    // warm (16), and bit 5 at 0 is low oil (4096).
    const Result result = ParamBitField::getNewBitWord(change(0x30, 0x05, 8, 8), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0, 2, 5, 0x30}));
    expectRecord(result.value(0x30), 0x30, 8, QStringLiteral("Trip"), QString());
    expectRecord(result.value(0), 1, 4096, QStringLiteral("Running"), QObject::tr("Fault"));
    expectRecord(result.value(2), 1, 16, QStringLiteral("Warning"), QStringLiteral("Warm"));
    expectRecord(result.value(5), 0, 4096, QStringLiteral("Oil"), QStringLiteral("Low oil"));
}

TEST(BitChange, EndingCombinationIntoAGoodWordShowsOnlyTheCombination)
{
    const ParamInfo info = pump();
    // Bit 5 set (oil OK, 8), every other described bit at 0 with state 8.
    const Result result = ParamBitField::getNewBitWord(change(0x30, 0x20), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0x30}));
    EXPECT_EQ(result.value(0x30).state, 8);
}

TEST(BitChange, EndingCombinationUsesTheNewStateRaisedToGood)
{
    const ParamInfo info = pump();
    // A new state of 0 or 2 would give "Unknown" or "Invalid" for every bit; it is raised
    // to 8, so the bits tell their own state and text.
    for (int newState : {0, 2, -5}) {
        const Result result = ParamBitField::getNewBitWord(change(0x30, 0x05, 8, newState), &info, En);
        EXPECT_EQ(sortedKeys(result), (QList<unsigned int>{0, 2, 5, 0x30})) << newState;
        EXPECT_EQ(result.value(2).text, QStringLiteral("Warm")) << newState;
    }
    // A higher state passes through to the word unchanged: the bits are the same.
    const Result high = ParamBitField::getNewBitWord(change(0x30, 0x05, 8, 4096), &info, En);
    EXPECT_EQ(sortedKeys(high), (QList<unsigned int>{0, 2, 5, 0x30}));
}

TEST(BitChange, BitOfTheSameNumberReplacesTheEndedCombination)
{
    ParamInfo info = pump();
    // A fault combination under the key 5, the number of the oil bit.
    info.bitField.combinations.insert(5, combination(QStringLiteral("=="), 4096, QStringLiteral("Five")));
    const Result result = ParamBitField::getNewBitWord(change(5, 0x01), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0, 5}));
    // Bit 5 is at 0, low oil: its record took the place of the finished combination.
    expectRecord(result.value(5), 0, 4096, QStringLiteral("Oil"), QStringLiteral("Low oil"));
}

TEST(BitChange, BeginningCombinationIsOneRecordWithoutBits)
{
    const ParamInfo info = pump();
    const Result result = ParamBitField::getNewBitWord(change(0x05, 0x40), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0x40}));
    expectRecord(result.value(0x40), 0x40, 4096, QStringLiteral("Overload"), QString());
}

TEST(BitChange, SingleBitFlippingIsOneRecordFromTheNewWord)
{
    const ParamInfo info = pump();
    // Bit 1 goes from 0 to 1.
    Result result = ParamBitField::getNewBitWord(change(0x21, 0x23), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{1}));
    expectRecord(result.value(1), 1, 8, QStringLiteral("Remote"), QStringLiteral("Remote"));
    // And back: the record is that of the new word, with its value 0.
    result = ParamBitField::getNewBitWord(change(0x23, 0x21), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{1}));
    expectRecord(result.value(1), 0, 8, QStringLiteral("Remote"), QObject::tr("OK"));
}

TEST(BitChange, BitsThatDoNotChangeAreAbsentWhateverTheirState)
{
    const ParamInfo info = pump();
    // Bit 0 stays at 1 (4096), bit 2 stays at 1 (16), bit 5 stays at 0 (4096); only bit 1
    // changes.
    const Result result = ParamBitField::getNewBitWord(change(0x05, 0x07), &info, En);
    EXPECT_EQ(sortedKeys(result), (QList<unsigned int>{1}));
    // Nothing changes at all: nothing to show.
    EXPECT_TRUE(ParamBitField::getNewBitWord(change(0x05, 0x05), &info, En).isEmpty());
}

TEST(BitChange, SeveralBitsChangingAreAllListed)
{
    const ParamInfo info = pump();
    const Result result = ParamBitField::getNewBitWord(change(0x00, 0x27), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0, 1, 2, 5}));
    expectRecord(result.value(0), 1, 4096, QStringLiteral("Running"), QObject::tr("Fault"));
    expectRecord(result.value(5), 1, 8, QStringLiteral("Oil"), QStringLiteral("Oil OK"));
}

TEST(BitChange, UndescribedBitsAreNeverListed)
{
    const ParamInfo info = pump();
    EXPECT_TRUE(ParamBitField::getNewBitWord(change(0x00, 0x80000100u), &info, En).isEmpty());
}

TEST(BitChange, OldWordWithoutDataListsBitsByTheirNewStateAlone)
{
    const ParamInfo info = pump();
    // Old state 2. Bit 0 stays at 1 (4096): listed although it did not change. Bit 1 goes
    // from 0 to 1 with state 8: not listed although it changed. Bit 2 stays at 0 (8): not
    // listed. Bit 5 stays at 0 (4096, low oil): listed.
    const Result result = ParamBitField::getNewBitWord(change(0x01, 0x03, 2, 8), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0, 5}));
    expectRecord(result.value(0), 1, 4096, QStringLiteral("Running"), QObject::tr("Fault"));
    expectRecord(result.value(5), 0, 4096, QStringLiteral("Oil"), QStringLiteral("Low oil"));
}

TEST(BitChange, OldWordWithoutDataListsBitsWithTheSetState)
{
    const ParamInfo info = pump();
    // Bit 2 at 1 has state 16, and counts as set; bit 5 at 1 is oil OK (8).
    const Result result = ParamBitField::getNewBitWord(change(0x24, 0x24, 2, 8), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{2}));
    expectRecord(result.value(2), 1, 16, QStringLiteral("Warning"), QStringLiteral("Warm"));
}

TEST(BitChange, OldStateZeroFollowsTheOrdinaryRule)
{
    const ParamInfo info = pump();
    // Raised to 8 for the text, but not 2: a changed bit is listed, an unchanged fault is not.
    const Result result = ParamBitField::getNewBitWord(change(0x01, 0x03, 0, 8), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{1}));
    expectRecord(result.value(1), 1, 8, QStringLiteral("Remote"), QStringLiteral("Remote"));
}

TEST(BitChange, OtherOldStatesFollowTheOrdinaryRule)
{
    const ParamInfo info = pump();
    for (int oldState : {-1, 1, 4, 16, 4096}) {
        const Result result = ParamBitField::getNewBitWord(change(0x01, 0x03, oldState, 8), &info, En);
        EXPECT_EQ(sortedKeys(result), (QList<unsigned int>{1})) << oldState;
    }
}

TEST(BitChange, NewStateWithoutDataIsRaisedSoTheBitsKeepTheirText)
{
    const ParamInfo info = pump();
    const Result result = ParamBitField::getNewBitWord(change(0x00, 0x04, 8, 2), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{2}));
    expectRecord(result.value(2), 1, 16, QStringLiteral("Warning"), QStringLiteral("Warm"));
    EXPECT_NE(result.value(2).text, QObject::tr("Invalid"));
    // The same for an unknown new state.
    const Result unknown = ParamBitField::getNewBitWord(change(0x00, 0x04, 8, 0), &info, En);
    EXPECT_EQ(unknown.value(2).text, QStringLiteral("Warm"));
}

TEST(BitChange, BothStatesWithoutDataStillShowTheBits)
{
    const ParamInfo info = pump();
    const Result result = ParamBitField::getNewBitWord(change(0x00, 0x04, 2, 2), &info, En);
    // Bit 2 at 1 is set (16), bit 5 at 0 is low oil (4096).
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{2, 5}));
    EXPECT_EQ(result.value(2).text, QStringLiteral("Warm"));
}

TEST(BitChange, EventWithoutTheNamedValuesShowsNothing)
{
    const ParamInfo info = pump();
    EventStruct event;
    event.parameters.insert(QStringLiteral("other"), 5);
    EXPECT_TRUE(ParamBitField::getNewBitWord(event, &info, En).isEmpty());
}

TEST(BitChange, EventWithoutTheNamedValuesAndAFaultCombinationAtZero)
{
    ParamInfo info = pump();
    info.bitField.combinations.insert(0, combination(QStringLiteral("=="), 4096, QStringLiteral("Dead")));
    // Both missing words read as 0, which is the same combination: nothing to show.
    EXPECT_TRUE(ParamBitField::getNewBitWord(EventStruct(), &info, En).isEmpty());
    // Only the old word missing: the combination at 0 ends.
    EventStruct event;
    event.parameters.insert(QStringLiteral("#new_bit_value"), 0x40u);
    const Result result = ParamBitField::getNewBitWord(event, &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0, 0x40}));
    EXPECT_EQ(result.value(0).state, 8);
    EXPECT_EQ(result.value(0).name, QStringLiteral("Dead"));
}

TEST(BitChange, MissingStatesReadAsZero)
{
    const ParamInfo info = pump();
    EventStruct event;
    event.parameters.insert(QStringLiteral("#old_bit_value"), 0x01u);
    event.parameters.insert(QStringLiteral("#new_bit_value"), 0x03u);
    // Old state 0, not 2: the ordinary rule.
    EXPECT_EQ(sortedKeys(ParamBitField::getNewBitWord(event, &info, En)), (QList<unsigned int>{1}));
}

TEST(BitChange, NamedValuesAreConvertedAsQVariantConvertsThem)
{
    const ParamInfo info = pump();
    // Words and states as text, as a wider integer and as a double.
    EventStruct text = change(QVariant(QStringLiteral("48")), QVariant(QStringLiteral("64")), QVariant(QStringLiteral("8")),
                              QVariant(QStringLiteral("8")));
    EXPECT_EQ(sortedKeys(ParamBitField::getNewBitWord(text, &info, En)), (QList<unsigned int>{0x30, 0x40}));
    EventStruct wide = change(QVariant(qulonglong(1)), QVariant(qlonglong(3)), QVariant(2.0), QVariant(8.0));
    // An old state of 2 from a double: bit 0 at 1 (4096) and bit 5 at 0 (4096).
    EXPECT_EQ(sortedKeys(ParamBitField::getNewBitWord(wide, &info, En)), (QList<unsigned int>{0, 5}));
    // Text that is not a number reads as 0.
    EventStruct junk = change(QVariant(QStringLiteral("x")), QVariant(0x02u), QVariant(), QVariant());
    EXPECT_EQ(sortedKeys(ParamBitField::getNewBitWord(junk, &info, En)), (QList<unsigned int>{1}));
}

TEST(BitChange, TextsInTheLanguageAskedFor)
{
    const ParamInfo info = pump();
    const Result result = ParamBitField::getNewBitWord(change(0x00, 0x01), &info, Ru);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0}));
    EXPECT_EQ(result.value(0).name, QStringLiteral("Работа"));
    // A bit without a name in the language.
    const Result other = ParamBitField::getNewBitWord(change(0x00, 0x02), &info, Ru);
    EXPECT_EQ(other.value(1).name, QStringLiteral("No translation"));
}

TEST(BitChange, NullDescriptionShowsNothing)
{
    EXPECT_TRUE(ParamBitField::getNewBitWord(change(0x30, 0x40), nullptr, En).isEmpty());
    EXPECT_TRUE(ParamBitField::getNewBitWord(change(0x00, 0x07, 2, 2), nullptr, En).isEmpty());
}

TEST(BitChange, DescriptionWithoutBitsShowsOnlyCombinations)
{
    ParamInfo info = pump();
    info.bitField.attributes.clear();
    EXPECT_TRUE(ParamBitField::getNewBitWord(change(0x00, 0x07), &info, En).isEmpty());
    EXPECT_EQ(sortedKeys(ParamBitField::getNewBitWord(change(0x30, 0x07), &info, En)), (QList<unsigned int>{0x30}));
}

TEST(BitChange, HighWordValuesAreKeyedUnsigned)
{
    ParamInfo info = pump();
    info.bitField.combinations.insert(int(0x80000001u), combination(QStringLiteral("=="), 4096, QStringLiteral("High")));
    const Result result = ParamBitField::getNewBitWord(change(0x00, 0x80000001u), &info, En);
    ASSERT_EQ(sortedKeys(result), (QList<unsigned int>{0x80000001u}));
    EXPECT_EQ(result.value(0x80000001u).name, QStringLiteral("High"));
}

TEST(BitChange, EventReceivedFromAServer)
{
    // The event as a server sends it alone: the message form, with the named values.
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(7) << quint8(1) << quint32(42);
        s << QDateTime(QDate(2026, 3, 1), QTime(10, 15), Qt::UTC);
        s << quint32(2) << QStringLiteral("#new_bit_value") << QVariant(uint(0x40)) << QStringLiteral("#old_bit_value")
          << QVariant(uint(0x30));
        s << quint32(1);
    });
    EventStruct event;
    event.setPacket(packetBytes(3, 17, 3, body));
    ASSERT_TRUE(event.read());
    const ParamInfo info = pump();
    const Result result = ParamBitField::getNewBitWord(event, &info, En);
    EXPECT_EQ(sortedKeys(result), (QList<unsigned int>{0x30, 0x40}));
}

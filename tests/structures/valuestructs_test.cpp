// What every packed record shares: its length, zeroed start, round trip, side stream,
// length check and the copy rules of checkSize.

#include "structurestest.h"
#include "telortest.h"

#include "azcoord.h"
#include "datetimestruct.h"
#include "sevenfloat.h"
#include "sevenuint.h"
#include "telorstream.h"
#include "validitydouble.h"
#include "validityfloat.h"

#include <gtest/gtest.h>

#include <cstring>

using structtest::machineBytes;

namespace {

template<typename Record>
struct Traits;

template<>
struct Traits<DateTimeStruct>
{
    static constexpr int size = 8;
    static void fill(DateTimeStruct &r)
    {
        r.first = -123456;
        r.second = 0x7FFFFFFE;
    }
    static bool same(const DateTimeStruct &a, const DateTimeStruct &b)
    {
        return a.first == b.first && a.second == b.second;
    }
    static bool zero(const DateTimeStruct &r) { return r.first == 0 && r.second == 0; }
    static QByteArray bytesOf(const DateTimeStruct &r)
    {
        return machineBytes([&](QDataStream &s) { s << r.first << r.second; });
    }
};

template<>
struct Traits<SevenFloat>
{
    static constexpr int size = 28;
    static void fill(SevenFloat &r)
    {
        const float values[7] = {1.5f, -2.25f, 3.0e10f, -0.0f, 1.0e-30f, 7.0f, 65504.0f};
        std::memcpy(r.values, values, sizeof values);
    }
    static bool same(const SevenFloat &a, const SevenFloat &b) { return std::memcmp(a.values, b.values, sizeof a.values) == 0; }
    static bool zero(const SevenFloat &r)
    {
        for (float v : r.values) {
            if (v != 0.0f)
                return false;
        }
        return true;
    }
    static QByteArray bytesOf(const SevenFloat &r)
    {
        return machineBytes([&](QDataStream &s) {
            for (float v : r.values)
                s << v;
        });
    }
};

template<>
struct Traits<SevenUInt>
{
    static constexpr int size = 28;
    static void fill(SevenUInt &r)
    {
        for (int i = 0; i < 7; ++i)
            r.values[i] = 0x01020304u * quint32(i + 1) + 0xF0000000u * quint32(i % 2);
    }
    static bool same(const SevenUInt &a, const SevenUInt &b) { return std::memcmp(a.values, b.values, sizeof a.values) == 0; }
    static bool zero(const SevenUInt &r)
    {
        for (quint32 v : r.values) {
            if (v != 0)
                return false;
        }
        return true;
    }
    static QByteArray bytesOf(const SevenUInt &r)
    {
        return machineBytes([&](QDataStream &s) {
            for (quint32 v : r.values)
                s << v;
        });
    }
};

template<>
struct Traits<AZCoord>
{
    static constexpr int size = 2;
    static void fill(AZCoord &r)
    {
        r.first = -7;
        r.second = 120;
    }
    static bool same(const AZCoord &a, const AZCoord &b) { return a.first == b.first && a.second == b.second; }
    static bool zero(const AZCoord &r) { return r.first == 0 && r.second == 0; }
    static QByteArray bytesOf(const AZCoord &r)
    {
        return machineBytes([&](QDataStream &s) { s << r.first << r.second; });
    }
};

template<>
struct Traits<ValidityFloat>
{
    static constexpr int size = 8;
    static void fill(ValidityFloat &r)
    {
        r.value = -273.15f;
        r.validity = -2;
    }
    static bool same(const ValidityFloat &a, const ValidityFloat &b)
    {
        return std::memcmp(&a.value, &b.value, sizeof a.value) == 0 && a.validity == b.validity;
    }
    static bool zero(const ValidityFloat &r) { return r.value == 0.0f && r.validity == 0; }
    static QByteArray bytesOf(const ValidityFloat &r)
    {
        return machineBytes([&](QDataStream &s) { s << r.value << r.validity; });
    }
};

template<>
struct Traits<ValidityDouble>
{
    static constexpr int size = 12;
    static void fill(ValidityDouble &r)
    {
        r.value = 6.02214076e23;
        r.validity = 3;
    }
    static bool same(const ValidityDouble &a, const ValidityDouble &b)
    {
        return std::memcmp(&a.value, &b.value, sizeof a.value) == 0 && a.validity == b.validity;
    }
    static bool zero(const ValidityDouble &r) { return r.value == 0.0 && r.validity == 0; }
    static QByteArray bytesOf(const ValidityDouble &r)
    {
        return machineBytes([&](QDataStream &s) { s << r.value << r.validity; }, QDataStream::DoublePrecision);
    }
};

const QByteArray Marker = QByteArray::fromHex("aa55aa55");

template<typename Record>
class PackedRecord : public testing::Test
{
protected:
    using T = Traits<Record>;
    static Record filled()
    {
        Record r;
        T::fill(r);
        return r;
    }
};

using Records = testing::Types<DateTimeStruct, SevenFloat, SevenUInt, AZCoord, ValidityFloat, ValidityDouble>;
TYPED_TEST_SUITE(PackedRecord, Records);

} // namespace

TYPED_TEST(PackedRecord, SizeIsTheRecordLength)
{
    TypeParam record;
    EXPECT_EQ(record.size(), TestFixture::T::size);
    const AbstractValueStruct &base = record;
    EXPECT_EQ(base.size(), TestFixture::T::size);
}

TYPED_TEST(PackedRecord, NewRecordIsZeroAndGivesZeroBytes)
{
    TypeParam record;
    EXPECT_TRUE(TestFixture::T::zero(record));
    EXPECT_TRUE(record.checkSize);
    EXPECT_EQ(record.toByteArray(), QByteArray(TestFixture::T::size, '\0'));
}

TYPED_TEST(PackedRecord, BytesAreTheFieldsInMachineOrder)
{
    const TypeParam record = TestFixture::filled();
    const QByteArray expected = TestFixture::T::bytesOf(record);
    ASSERT_EQ(expected.size(), TestFixture::T::size);
    EXPECT_EQ(record.toByteArray(), expected);
}

TYPED_TEST(PackedRecord, IndependentBytesFillTheFields)
{
    const TypeParam source = TestFixture::filled();
    TypeParam record;
    EXPECT_TRUE(record.fromByteArray(TestFixture::T::bytesOf(source)));
    EXPECT_TRUE(TestFixture::T::same(record, source));
}

TYPED_TEST(PackedRecord, RoundTripRestoresEveryField)
{
    const TypeParam source = TestFixture::filled();
    TypeParam record;
    ASSERT_FALSE(TestFixture::T::same(record, source));
    EXPECT_TRUE(record.fromByteArray(source.toByteArray()));
    EXPECT_TRUE(TestFixture::T::same(record, source));
}

TYPED_TEST(PackedRecord, ConversionThroughTheBaseUsesTheRecord)
{
    const TypeParam source = TestFixture::filled();
    TypeParam record;
    AbstractValueStruct &base = record;
    const AbstractValueStruct &sourceBase = source;
    EXPECT_TRUE(base.fromByteArray(sourceBase.toByteArray()));
    EXPECT_TRUE(TestFixture::T::same(record, source));
}

TYPED_TEST(PackedRecord, SideArrayReceivesExactlyTheMarker)
{
    const TypeParam record = TestFixture::filled();
    QByteArray side;
    const QByteArray bytes = record.toByteArray(&side);
    EXPECT_EQ(side, Marker);
    EXPECT_EQ(bytes, TestFixture::T::bytesOf(record));

    // What the side array held already stays in front.
    QByteArray used("xy");
    record.toByteArray(&used);
    EXPECT_EQ(used, QByteArray("xy") + Marker);
}

TYPED_TEST(PackedRecord, ReadingNeitherNeedsNorTouchesTheSideArray)
{
    const TypeParam source = TestFixture::filled();
    QByteArray side("no marker here");
    TypeParam record;
    EXPECT_TRUE(record.fromByteArray(source.toByteArray(), &side));
    EXPECT_EQ(side, QByteArray("no marker here"));
    EXPECT_TRUE(TestFixture::T::same(record, source));
    // The record itself never holds the marker.
    EXPECT_FALSE(source.toByteArray().contains(Marker));
}

TYPED_TEST(PackedRecord, WrongLengthIsRefusedAndFieldsStay)
{
    const TypeParam source = TestFixture::filled();
    const QByteArray bytes = source.toByteArray();
    TypeParam record;
    EXPECT_FALSE(record.fromByteArray(bytes.left(bytes.size() - 1)));
    EXPECT_FALSE(record.fromByteArray(bytes + '\x01'));
    EXPECT_FALSE(record.fromByteArray(QByteArray()));
    EXPECT_TRUE(TestFixture::T::zero(record));

    TypeParam other = TestFixture::filled();
    EXPECT_FALSE(other.fromByteArray(QByteArray(TestFixture::T::size + 5, '\0')));
    EXPECT_TRUE(TestFixture::T::same(other, source));
}

TYPED_TEST(PackedRecord, WithoutTheCheckLongerBytesAreCutToTheRecord)
{
    const TypeParam source = TestFixture::filled();
    TypeParam record;
    record.setCheckSize(false);
    EXPECT_FALSE(record.checkSize);
    EXPECT_TRUE(record.fromByteArray(source.toByteArray() + QByteArray(3, '\x7F')));
    EXPECT_TRUE(TestFixture::T::same(record, source));
}

TYPED_TEST(PackedRecord, WithoutTheCheckShorterBytesReadAsZeroPadded)
{
    const TypeParam source = TestFixture::filled();
    const QByteArray bytes = source.toByteArray();
    TypeParam record = TestFixture::filled();
    record.setCheckSize(false);
    EXPECT_TRUE(record.fromByteArray(bytes.left(1)));
    TypeParam expected;
    ASSERT_TRUE(expected.fromByteArray(bytes.left(1) + QByteArray(bytes.size() - 1, '\0')));
    EXPECT_TRUE(TestFixture::T::same(record, expected));
    EXPECT_TRUE(record.fromByteArray(QByteArray()));
    EXPECT_TRUE(TestFixture::T::zero(record));
}

TYPED_TEST(PackedRecord, CopyHasCheckSizeTrue)
{
    TypeParam source = TestFixture::filled();
    source.setCheckSize(false);
    const TypeParam copy(source);
    EXPECT_TRUE(copy.checkSize);
    EXPECT_TRUE(TestFixture::T::same(copy, source));
}

TYPED_TEST(PackedRecord, AssignmentCopiesFieldsAndKeepsCheckSize)
{
    const TypeParam source = TestFixture::filled();
    TypeParam target;
    target.setCheckSize(false);
    target = source;
    EXPECT_FALSE(target.checkSize);
    EXPECT_TRUE(TestFixture::T::same(target, source));

    TypeParam unchecked = TestFixture::filled();
    unchecked.setCheckSize(false);
    TypeParam checked;
    checked = unchecked;
    EXPECT_TRUE(checked.checkSize);
}

TEST(PackedRecords, SizesAreAsListed)
{
    EXPECT_EQ(DateTimeStruct().size(), 8);
    EXPECT_EQ(SevenFloat().size(), 28);
    EXPECT_EQ(SevenUInt().size(), 28);
    EXPECT_EQ(AZCoord().size(), 2);
    EXPECT_EQ(ValidityFloat().size(), 8);
    EXPECT_EQ(ValidityDouble().size(), 12);
}

TEST(PackedRecords, DateTimeStructRefusesSevenBytesAndTakesNineUnchecked)
{
    DateTimeStruct record;
    record.first = 11;
    record.second = 22;
    EXPECT_FALSE(record.fromByteArray(QByteArray(7, '\x01')));
    EXPECT_EQ(record.first, 11);
    EXPECT_EQ(record.second, 22);

    record.setCheckSize(false);
    const QByteArray nine = machineBytes([](QDataStream &s) { s << qint32(5) << qint32(-6) << qint8(99); });
    ASSERT_EQ(nine.size(), 9);
    EXPECT_TRUE(record.fromByteArray(nine));
    EXPECT_EQ(record.first, 5);
    EXPECT_EQ(record.second, -6);
}

namespace {

/** An application's record that also streams to the side stream. */
class TaggedRecord : public AbstractValueStruct
{
public:
    int size() const override { return 4; }
    void writeBuffer(char *&buffer, TELORDataStream &stream) const override
    {
        zeroedOnEntry = buffer[0] == 0 && buffer[1] == 0 && buffer[2] == 0 && buffer[3] == 0;
        std::memcpy(buffer, &value, 4);
        buffer += 4;
        stream << QStringLiteral("tag");
    }
    void readBuffer(char *&buffer, TELORDataStream &stream) override
    {
        std::memcpy(&value, buffer, 4);
        buffer += 4;
        stream >> sideInt;
    }

    qint32 value = 0;
    qint32 sideInt = 0;
    mutable bool zeroedOnEntry = false;
};

} // namespace

TEST(PackedRecords, SubclassStreamsAfterTheMarkerOnTheSideArray)
{
    TaggedRecord record;
    record.value = 0x01020304;
    QByteArray side;
    const QByteArray bytes = record.toByteArray(&side);
    EXPECT_TRUE(record.zeroedOnEntry);
    EXPECT_EQ(bytes, machineBytes([](QDataStream &s) { s << qint32(0x01020304); }));
    EXPECT_EQ(side, Marker + telortest::plainBytes([](QDataStream &s) { s << QStringLiteral("tag"); }));
}

TEST(PackedRecords, SubclassReadsTheSideArrayFromItsStart)
{
    TaggedRecord record;
    QByteArray side = Marker;
    EXPECT_TRUE(record.fromByteArray(QByteArray(4, '\x01'), &side));
    EXPECT_EQ(record.sideInt, qint32(0xAA55AA55));
    EXPECT_EQ(record.value, 0x01010101);
    EXPECT_EQ(side, Marker);
}

// Packed records byte for byte: known patterns, and floating-point values whose bits must
// survive unchanged.

#include "structurestest.h"
#include "telortest.h"

#include "azcoord.h"
#include "datetimestruct.h"
#include "sevenfloat.h"
#include "sevenuint.h"
#include "validitydouble.h"
#include "validityfloat.h"

#include <gtest/gtest.h>

#include <QtCore/QtEndian>

#include <cstring>
#include <limits>

using structtest::machineBytes;

TEST(PackedBytes, ValidityDoubleOneAndOne)
{
    ValidityDouble record;
    record.value = 1.0;
    record.validity = 1;
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    EXPECT_EQ(record.toByteArray(), QByteArray::fromHex("000000000000f03f01000000"));
#else
    EXPECT_EQ(record.toByteArray(), QByteArray::fromHex("3ff000000000000000000001"));
#endif
}

TEST(PackedBytes, DateTimeStructFieldsAtTheirOffsets)
{
    DateTimeStruct record;
    record.first = 0x11223344;
    record.second = -2;
    const QByteArray bytes = record.toByteArray();
    ASSERT_EQ(bytes.size(), 8);
    EXPECT_EQ(qFromUnaligned<qint32>(bytes.constData()), 0x11223344);
    EXPECT_EQ(qFromUnaligned<qint32>(bytes.constData() + 4), -2);
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    EXPECT_EQ(bytes, QByteArray::fromHex("44332211feffffff"));
#endif
}

TEST(PackedBytes, AZCoordIsTwoSignedBytes)
{
    AZCoord record;
    record.first = -1;
    record.second = 127;
    EXPECT_EQ(record.toByteArray(), QByteArray::fromHex("ff7f"));

    AZCoord back;
    ASSERT_TRUE(back.fromByteArray(QByteArray::fromHex("80ff")));
    EXPECT_EQ(back.first, -128);
    EXPECT_EQ(back.second, -1);
}

TEST(PackedBytes, SevenUIntEntriesAtEveryFourthByte)
{
    SevenUInt record;
    for (int i = 0; i < 7; ++i)
        record.values[i] = 0xA0000000u + quint32(i);
    const QByteArray bytes = record.toByteArray();
    ASSERT_EQ(bytes.size(), 28);
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(qFromUnaligned<quint32>(bytes.constData() + 4 * i), 0xA0000000u + quint32(i));
}

TEST(PackedBytes, SevenFloatEntriesAtEveryFourthByte)
{
    SevenFloat record;
    for (int i = 0; i < 7; ++i)
        record.values[i] = 0.5f * float(i + 1);
    const QByteArray bytes = record.toByteArray();
    ASSERT_EQ(bytes.size(), 28);
    for (int i = 0; i < 7; ++i) {
        float v = 0.0f;
        std::memcpy(&v, bytes.constData() + 4 * i, 4);
        EXPECT_EQ(v, 0.5f * float(i + 1));
    }
    EXPECT_EQ(bytes, machineBytes([&](QDataStream &s) {
                  for (float v : record.values)
                      s << v;
              }));
}

TEST(PackedBytes, ValidityFloatValueThenValidity)
{
    ValidityFloat record;
    record.value = 1.0f;
    record.validity = 0x0A0B0C0D;
    EXPECT_EQ(record.toByteArray(), machineBytes([](QDataStream &s) { s << 1.0f << qint32(0x0A0B0C0D); }));
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    EXPECT_EQ(record.toByteArray(), QByteArray::fromHex("0000803f0d0c0b0a"));
#endif
}

TEST(PackedBytes, FloatingPointBitsSurviveTheRoundTrip)
{
    const double doubles[] = {std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity(),
                              -0.0, std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max()};
    for (double special : doubles) {
        ValidityDouble record;
        record.value = special;
        ValidityDouble back;
        ASSERT_TRUE(back.fromByteArray(record.toByteArray()));
        EXPECT_EQ(std::memcmp(&back.value, &record.value, sizeof(double)), 0);
    }

    const float floats[] = {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), -0.0f,
                            std::numeric_limits<float>::denorm_min(), std::numeric_limits<float>::lowest()};
    for (float special : floats) {
        SevenFloat record;
        record.values[3] = special;
        SevenFloat back;
        ASSERT_TRUE(back.fromByteArray(record.toByteArray()));
        EXPECT_EQ(std::memcmp(back.values, record.values, sizeof record.values), 0);

        ValidityFloat single;
        single.value = special;
        ValidityFloat singleBack;
        ASSERT_TRUE(singleBack.fromByteArray(single.toByteArray()));
        EXPECT_EQ(std::memcmp(&singleBack.value, &single.value, sizeof(float)), 0);
    }
}

// The parameter record: its wire order, its recursive cells, equality and validity, the
// text getters, and what read() makes of good and bad records.

#include "descriptiontest.h"
#include "plaininfo.h"
#include "telortest.h"

#include "paraminfo.h"

#include <gtest/gtest.h>

using desctest::bytesOf;
using desctest::readFrom;
using desctest::roundTrip;
using desctest::plainInfo;
using desctest::sampleField;
using desctest::sampleScalar;
using desctest::sampleStatusWord;
using telortest::plainBytes;

namespace {

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

ParamInfo minimalInfo(unsigned int id, int type)
{
    ParamInfo i;
    i.id = id;
    i.code = QStringLiteral("P%1").arg(id);
    i.type = type;
    return i;
}

// Everything the record carries, compared field by field.
void expectSameRecord(const ParamInfo &a, const ParamInfo &b)
{
    EXPECT_EQ(a.id, b.id);
    EXPECT_EQ(a.code, b.code);
    EXPECT_EQ(a.code2, b.code2);
    EXPECT_EQ(a.code3, b.code3);
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.type, b.type);
    EXPECT_EQ(a.limits.enabled, b.limits.enabled);
    EXPECT_EQ(a.limits.lo, b.limits.lo);
    EXPECT_EQ(a.limits.hi, b.limits.hi);
    EXPECT_EQ(a.unit, b.unit);
    EXPECT_EQ(a.unitX, b.unitX);
    EXPECT_EQ(a.enumeration.combinations.size(), b.enumeration.combinations.size());
    EXPECT_EQ(a.enumeration.hasCombinations, b.enumeration.hasCombinations);
    EXPECT_EQ(a.bitField.enabled, b.bitField.enabled);
    EXPECT_EQ(a.bitField.reserved, b.bitField.reserved);
    EXPECT_EQ(a.bitField.attributes.keys().size(), b.bitField.attributes.keys().size());
    EXPECT_EQ(a.bitField.combinations.keys().size(), b.bitField.combinations.keys().size());
    EXPECT_EQ(a.rows, b.rows);
    EXPECT_EQ(a.columns, b.columns);
    EXPECT_EQ(a.valueTable, b.valueTable);
    bool okA = false, okB = false;
    EXPECT_EQ(a.setpoints.getLowEmergencySetpoint(&okA), b.setpoints.getLowEmergencySetpoint(&okB));
    EXPECT_EQ(okA, okB);
    EXPECT_EQ(a.setpoints.getLowWarningSetpoint(&okA), b.setpoints.getLowWarningSetpoint(&okB));
    EXPECT_EQ(okA, okB);
    EXPECT_EQ(a.setpoints.getUpWarningSetpoint(&okA), b.setpoints.getUpWarningSetpoint(&okB));
    EXPECT_EQ(okA, okB);
    EXPECT_EQ(a.setpoints.getUpEmergencySetpoint(&okA), b.setpoints.getUpEmergencySetpoint(&okB));
    EXPECT_EQ(okA, okB);
    EXPECT_EQ(a.option, b.option);
    EXPECT_EQ(a.precision, b.precision);
    EXPECT_EQ(a.format, b.format);
    EXPECT_EQ(a.idList, b.idList);
    EXPECT_EQ(a.extraText, b.extraText);
    ASSERT_EQ(a.elements.size(), b.elements.size());
    for (int k = 0; k < a.elements.size(); ++k) {
        EXPECT_EQ(a.elements[k].row, b.elements[k].row);
        EXPECT_EQ(a.elements[k].column, b.elements[k].column);
        expectSameRecord(a.elements[k].info, b.elements[k].info);
    }
}

} // namespace

// --- defaults, equality, validity, texts -------------------------------------------------

TEST(ParamInfo, DefaultIsInvalidWithFormatF)
{
    const ParamInfo i;
    EXPECT_FALSE(i.isValid());
    EXPECT_EQ(i.format, 'f');
    EXPECT_EQ(i.id, 0u);
    EXPECT_TRUE(i.code.isNull());
    EXPECT_EQ(i.type, 0);
    EXPECT_EQ(i.rows, 0);
    EXPECT_EQ(i.columns, 0);
    EXPECT_FALSE(i.option);
    EXPECT_EQ(i.precision, 0);
    EXPECT_EQ(i.limits.enabled, 0);
    EXPECT_FALSE(i.enumeration.hasCombinations);
    EXPECT_EQ(i.bitField.enabled, 0);
    EXPECT_FALSE(i.setpoints.enabled());
    EXPECT_TRUE(i.elements.isEmpty());
    EXPECT_TRUE(i.valueTable.isEmpty());
    EXPECT_TRUE(i.idList.isEmpty());
    EXPECT_TRUE(i.extraText.isNull());
}

TEST(ParamInfo, DefaultWrittenAndReadBackFailsBecauseItsTypeIsZero)
{
    const QByteArray bytes = bytesOf(ParamInfo());
    ParamInfo received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_FALSE(outcome.result);
    // Read to its end all the same.
    EXPECT_EQ(outcome.position, unsigned(bytes.size()));
    EXPECT_EQ(received.format, 'f');
}

TEST(ParamInfo, ValidityNeedsCodeIdAndType)
{
    ParamInfo i = minimalInfo(5, 1);
    EXPECT_TRUE(i.isValid());
    i.code = QString();
    EXPECT_FALSE(i.isValid());
    i.code = QLatin1String("");
    EXPECT_FALSE(i.isValid());
    i = minimalInfo(0, 1);
    EXPECT_FALSE(i.isValid());
    i = minimalInfo(5, 0);
    EXPECT_FALSE(i.isValid());
}

TEST(ParamInfo, EqualityLooksAtIdCodeAndTypeOnly)
{
    ParamInfo a = minimalInfo(7, 1);
    ParamInfo b = minimalInfo(7, 1);
    a.unit = QXmlTranslation(QStringLiteral("bar"));
    b.unit = QXmlTranslation(QStringLiteral("Pa"));
    b.limits.enabled = 1;
    b.name = QXmlTranslation(QStringLiteral("other"));
    b.setpoints.setUpWarningSetpoint(3.0);
    EXPECT_TRUE(a == b);
    b.type = 2;
    EXPECT_FALSE(a == b);
    b = minimalInfo(7, 1);
    b.code = QStringLiteral("X");
    EXPECT_FALSE(a == b);
    b = minimalInfo(8, 1);
    b.code = a.code;
    EXPECT_FALSE(a == b);
}

TEST(ParamInfo, TextGettersFallBackToEnglish)
{
    ParamInfo i;
    i.name = desctest::translation(QStringLiteral("Pressure"), QStringLiteral("Давление"));
    i.unit = desctest::translation(QStringLiteral("bar"), QStringLiteral("бар"));
    i.unitX = desctest::translation(QStringLiteral("s"), QStringLiteral("с"));
    EXPECT_EQ(i.getName(Ru), QStringLiteral("Давление"));
    EXPECT_EQ(i.getUnit(Ru), QStringLiteral("бар"));
    EXPECT_EQ(i.getUnitX(Ru), QStringLiteral("с"));
    EXPECT_EQ(i.getName(QStringLiteral("de")), QStringLiteral("Pressure"));
    EXPECT_EQ(i.getUnit(En), QStringLiteral("bar"));
    EXPECT_EQ(i.getUnitX(QString()), QStringLiteral("s"));
}

TEST(ParamInfo, CopyThenSetpointOnTheCopyLeavesTheFirstUnchanged)
{
    ParamInfo a = minimalInfo(1, 1);
    a.setpoints.setLowWarningSetpoint(1.0);
    ParamInfo b(a);
    b.setpoints.setLowWarningSetpoint(2.0);
    b.setpoints.setUpWarningSetpoint(3.0);
    EXPECT_EQ(a.setpoints.getLowWarningSetpoint(), 1.0);
    bool ok = true;
    a.setpoints.getUpWarningSetpoint(&ok);
    EXPECT_FALSE(ok);

    ParamInfo c;
    c = a;
    c.setpoints.setLowWarningSetpoint(9.0);
    EXPECT_EQ(a.setpoints.getLowWarningSetpoint(), 1.0);
    EXPECT_EQ(c.setpoints.getLowWarningSetpoint(), 9.0);
}

TEST(ParamInfo, CopyCarriesEveryPart)
{
    const ParamInfo a = sampleScalar(3);
    ParamInfo b;
    b = a;
    expectSameRecord(a, b);
    const ParamInfo c(sampleField(4, 2, 2));
    expectSameRecord(sampleField(4, 2, 2), c);
}

// --- wire form ---------------------------------------------------------------------------

TEST(ParamInfoWire, FieldsTravelInWireOrder)
{
    ParamInfo i;
    i.id = 0x01020304;
    i.code = QStringLiteral("code");
    i.code2 = QStringLiteral("c2");
    i.code3 = QStringLiteral("c3");
    i.type = 1;
    i.name = QXmlTranslation(QStringLiteral("Name"));
    i.unit = QXmlTranslation(QStringLiteral("U"));
    i.unitX = QXmlTranslation(QStringLiteral("X"));
    i.rows = 3;
    i.columns = 4;
    i.option = true;
    i.precision = -3;
    i.format = 'e';
    i.limits.enabled = 1;
    i.limits.lo = -1.0;
    i.limits.hi = 1.0;
    i.valueTable.insert(1.5, 2u);
    i.setpoints.setUpEmergencySetpoint(8.0);
    i.idList << 1u << 2u;
    i.extraText = QStringLiteral("tail");
    // Built item by item, literally in the order of the wire.
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << qint32(0x01020304) << QStringLiteral("code") << QStringLiteral("c2") << QStringLiteral("c3");
        s << qint32(1);
        s << QStringLiteral("Name") << QHash<QString, QString>();
        s << QStringLiteral("X") << QHash<QString, QString>();
        s << QStringLiteral("U") << QHash<QString, QString>();
        s << qint32(3) << qint32(4);
        s << qint8(1) << qint8(-3) << qint8('e');
        s << qint8(1) << -1.0 << 1.0;
        s << qint32(0);
        s << qint8(0) << qint8(0);
        s << qint32(0);
        s << qint32(1) << 1.5 << qint32(2);
        s << qint8(0) << qint8(0) << qint8(0) << qint8(1) << 8.0;
        s << quint32(2) << quint32(1) << quint32(2);
        s << QStringLiteral("tail");
    });
    EXPECT_EQ(bytesOf(i), expected);
}

TEST(ParamInfoWire, ScalarWithEveryPartMatchesPlainBytes)
{
    const ParamInfo i = sampleScalar(42);
    EXPECT_EQ(bytesOf(i), plainBytes([&](QDataStream &s) { plainInfo(s, i); }));
}

TEST(ParamInfoWire, StatusWordMatchesPlainBytes)
{
    const ParamInfo i = sampleStatusWord(43);
    EXPECT_EQ(bytesOf(i), plainBytes([&](QDataStream &s) { plainInfo(s, i); }));
}

TEST(ParamInfoWire, FieldWithCellsMatchesPlainBytes)
{
    ParamInfo i = sampleField(44, 2, 3);
    i.elements[4].info = sampleScalar(4404);
    const QByteArray bytes = bytesOf(i);
    EXPECT_EQ(bytes, plainBytes([&](QDataStream &s) { plainInfo(s, i); }));
}

TEST(ParamInfoWire, EmptyFieldCostsThreeZeroCounts)
{
    const ParamInfo i = minimalInfo(1, 4);
    const QByteArray bytes = bytesOf(i);
    // id 4, code "P1" 4+4, two null codes 4+4, type 4, three empty translations 3 x 8:
    // rows and columns stand at offset 48, the element count after the three one-byte
    // fields, the limits flag, the enumeration count and the two bit field bytes.
    QDataStream in(bytes);
    in.skipRawData(48);
    qint32 rows = -1, columns = -1;
    in >> rows >> columns;
    EXPECT_EQ(rows, 0);
    EXPECT_EQ(columns, 0);
    in.skipRawData(3 + 1 + 4 + 2);
    qint32 elementCount = -1;
    in >> elementCount;
    EXPECT_EQ(elementCount, 0);
    EXPECT_EQ(bytes.mid(48, 8), QByteArray(8, '\0'));
    EXPECT_EQ(bytes.mid(66, 4), QByteArray(4, '\0'));
}

TEST(ParamInfoWire, ValueTableGoesOutSortedByKey)
{
    ParamInfo i = minimalInfo(1, 1);
    i.valueTable.insert(30.0, 3);
    i.valueTable.insert(-10.0, 1);
    i.valueTable.insert(20.0, 2);
    i.valueTable.insert(0.5, 0xFFFFFFFFu);
    const QByteArray bytes = bytesOf(i);
    const QByteArray table = plainBytes([](QDataStream &s) {
        s << qint32(4) << -10.0 << qint32(1) << 0.5 << qint32(-1) << 20.0 << qint32(2) << 30.0 << qint32(3);
    });
    EXPECT_NE(bytes.indexOf(table), -1);
    EXPECT_EQ(bytes, plainBytes([&](QDataStream &s) { plainInfo(s, i); }));
}

TEST(ParamInfoWire, OptionIsWrittenAsOneAndPrecisionAndFormatKeepTheirBytes)
{
    QByteArray bytes = bytesOf(minimalInfo(1, 1));
    // option, precision and format stand at offset 56, 57 and 58 of this record.
    ASSERT_EQ(bytes.at(56), '\0');
    ASSERT_EQ(bytes.at(58), 'f');
    bytes[56] = char(0x80);
    bytes[57] = char(0xFE);
    bytes[58] = char(0xC3);
    ParamInfo received;
    EXPECT_TRUE(readFrom(bytes, received).result);
    EXPECT_TRUE(received.option);
    EXPECT_EQ(received.precision, -2);
    EXPECT_EQ(received.format, char(0xC3));
    const QByteArray again = bytesOf(received);
    EXPECT_EQ(again.at(56), '\x01');
    EXPECT_EQ(again.at(57), char(0xFE));
    EXPECT_EQ(again.at(58), char(0xC3));
    bytes[56] = '\x01';
    EXPECT_EQ(again, bytes);
}

// --- round trips -------------------------------------------------------------------------

TEST(ParamInfoRoundTrip, ScalarWithEnumerationSetpointsAndValueTable)
{
    const ParamInfo sent = sampleScalar(100);
    ParamInfo received;
    ASSERT_TRUE(roundTrip(sent, received));
    expectSameRecord(sent, received);
    EXPECT_EQ(received.enumeration.shortValue(0, Ru), QStringLiteral("Закрыт"));
    EXPECT_EQ(received.enumeration.shortValue(12, En), QStringLiteral("Open"));
    EXPECT_EQ(received.setpoints.getUpEmergencySetpoint(), 95.0);
    EXPECT_EQ(received.valueTable.value(-1.0), 3u);
}

TEST(ParamInfoRoundTrip, StatusWord)
{
    const ParamInfo sent = sampleStatusWord(101);
    ParamInfo received;
    ASSERT_TRUE(roundTrip(sent, received));
    expectSameRecord(sent, received);
    EXPECT_EQ(received.bitField.attributes.value(5).name.value(En), QStringLiteral("Bit 5"));
    EXPECT_EQ(received.bitField.combinations.value(0x21).shortText.value(En), QStringLiteral("Trip"));
}

TEST(ParamInfoRoundTrip, FieldWithCellsOfEveryKind)
{
    ParamInfo sent = sampleField(102, 2, 2);
    sent.elements[0].info = sampleScalar(10201);
    sent.elements[1].info = sampleStatusWord(10202);
    sent.elements[3].row = 5; // outside the array: carried all the same
    ParamInfo received;
    ASSERT_TRUE(roundTrip(sent, received));
    expectSameRecord(sent, received);
    EXPECT_EQ(received.elements[0].info.enumeration.shortValue(3, En), QStringLiteral("Open"));
    EXPECT_EQ(received.elements[1].info.bitField.attributes.size(), 2);
    EXPECT_EQ(received.elements[3].row, 5);
}

TEST(ParamInfoRoundTrip, BytesOfTheMessageBodyAreTheRecord)
{
    desctest::InfoCarrier carrier;
    carrier.info = sampleField(103, 1, 2);
    const QByteArray packet = carrier.write();
    EXPECT_EQ(telortest::bodyOf(packet), plainBytes([&](QDataStream &s) { plainInfo(s, carrier.info); }));
}

TEST(ParamInfoRoundTrip, FromServerBytes)
{
    const ParamInfo described = sampleScalar(104);
    const QByteArray body = plainBytes([&](QDataStream &s) { plainInfo(s, described); });
    desctest::InfoCarrier received;
    received.setPacket(telortest::packetBytes(2, 99, 4, body));
    ASSERT_TRUE(received.read());
    expectSameRecord(described, received.info);
}

// --- the reader's early returns ----------------------------------------------------------

TEST(ParamInfoRead, CellOfTypeZeroEndsTheRecordAfterThatCell)
{
    ParamInfo sent = sampleField(200, 1, 3);
    sent.elements[1].info.type = 0;
    sent.valueTable.insert(1.0, 1);
    sent.setpoints.setLowWarningSetpoint(1.0);
    sent.extraText = QStringLiteral("never read");
    const QByteArray bytes = bytesOf(sent);

    // Where the second cell ends in the bytes.
    ParamInfo upToCell = sent;
    upToCell.elements = sent.elements.mid(0, 2);
    upToCell.valueTable.clear();
    upToCell.setpoints = ParamSetpoints();
    upToCell.idList.clear();
    upToCell.extraText.clear();
    const QByteArray head = bytesOf(upToCell);
    // head ends with the empty tail: value table count, four setpoint flags, list count, null string.
    const int cellEnd = head.size() - (4 + 4 + 4 + 4);

    ParamInfo received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(cellEnd));
    ASSERT_EQ(received.elements.size(), 1);
    EXPECT_EQ(received.elements[0].info.id, sent.elements[0].info.id);
    EXPECT_TRUE(received.valueTable.isEmpty());
    EXPECT_FALSE(received.setpoints.enabled());
    EXPECT_TRUE(received.extraText.isNull());
    EXPECT_EQ(received.type, 4);
}

TEST(ParamInfoRead, BadLimitsFlagStopsRightBehindIt)
{
    ParamInfo sent = minimalInfo(1, 1);
    sent.limits.enabled = 2;
    sent.extraText = QStringLiteral("never read");
    ParamInfo received;
    const auto outcome = readFrom(bytesOf(sent), received);
    EXPECT_FALSE(outcome.result);
    // The limits flag of this record stands at offset 59.
    EXPECT_EQ(outcome.position, 60u);
    EXPECT_EQ(received.id, 1u);
    EXPECT_EQ(received.limits.enabled, 2);
    EXPECT_TRUE(received.extraText.isNull());
}

TEST(ParamInfoRead, BadBitFieldFlagStopsRightBehindItsTwoBytes)
{
    ParamInfo sent = minimalInfo(1, 1);
    sent.bitField.enabled = 5;
    sent.enumeration.combinations.append(ParamBitCombination());
    ParamInfo received;
    const auto outcome = readFrom(bytesOf(sent), received);
    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(received.bitField.enabled, 5);
    EXPECT_EQ(received.enumeration.combinations.size(), 1);
    EXPECT_TRUE(received.enumeration.hasCombinations);
    // The limits flag at offset 59, the enumeration count, one empty rule (8+4+4+4+4),
    // then the two bytes of the bit field.
    EXPECT_EQ(outcome.position, 59u + 1 + 4 + 24 + 2);
}

TEST(ParamInfoRead, TypeZeroIsReadWholeAndThenRefused)
{
    ParamInfo sent = sampleScalar(9);
    sent.type = 0;
    const QByteArray bytes = bytesOf(sent) + QByteArray("next");
    ParamInfo received;
    const auto outcome = readFrom(bytes, received);
    EXPECT_FALSE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(bytes.size() - 4));
    EXPECT_EQ(received.extraText, QStringLiteral("extra"));
}

TEST(ParamInfoRead, IdAndCodeAreNotTestedByRead)
{
    ParamInfo sent;
    sent.type = 3;
    ParamInfo received;
    EXPECT_TRUE(readFrom(bytesOf(sent), received).result);
    EXPECT_FALSE(received.isValid());
}

TEST(ParamInfoRead, RepeatedValueTableKeyKeepsTheLaterValue)
{
    const ParamInfo head = minimalInfo(1, 1);
    QByteArray bytes = bytesOf(head);
    // Replace the empty tail (table count, setpoints, id list, text) by a table with a
    // repeated key.
    bytes.chop(4 + 4 + 4 + 4);
    bytes += plainBytes([](QDataStream &s) {
        s << quint32(3) << 1.0 << quint32(10) << 2.0 << quint32(20) << 1.0 << quint32(30);
        s << qint8(0) << qint8(0) << qint8(0) << qint8(0) << quint32(0) << QString();
    });
    ParamInfo received;
    EXPECT_TRUE(readFrom(bytes, received).result);
    EXPECT_EQ(received.valueTable.size(), 2);
    EXPECT_EQ(received.valueTable.value(1.0), 30u);
    EXPECT_EQ(received.valueTable.value(2.0), 20u);
}

TEST(ParamInfoRead, IdListIsReplaced)
{
    ParamInfo sent = minimalInfo(1, 1);
    sent.idList << 5u;
    ParamInfo received;
    received.idList << 1u << 2u << 3u;
    EXPECT_TRUE(readFrom(bytesOf(sent), received).result);
    EXPECT_EQ(received.idList, QList<unsigned int>() << 5u);
}

TEST(ParamInfoRead, SecondRecordFollowsTheFirst)
{
    QByteArray bytes = bytesOf(sampleScalar(1));
    bytes += bytesOf(sampleStatusWord(2));
    QContainerPacket packet(bytes);
    ParamInfo first, second;
    EXPECT_TRUE(first.read(packet));
    EXPECT_TRUE(second.read(packet));
    EXPECT_EQ(first.id, 1u);
    EXPECT_EQ(second.id, 2u);
    EXPECT_EQ(packet.bytesLeft(), 0);
}

// --- ParamFieldElementInfo ---------------------------------------------------------------

TEST(FieldElementInfo, DefaultIsOutsideEveryArray)
{
    const ParamFieldElementInfo e;
    EXPECT_EQ(e.row, -1);
    EXPECT_EQ(e.column, -1);
    EXPECT_EQ(e.info.id, 0u);
}

TEST(FieldElementInfo, WritesRowColumnThenInfo)
{
    ParamFieldElementInfo e;
    e.row = 2;
    e.column = 7;
    e.info = minimalInfo(3, 5);
    const QByteArray expected = plainBytes([&](QDataStream &s) {
        s << qint32(2) << qint32(7);
        plainInfo(s, e.info);
    });
    EXPECT_EQ(bytesOf(e), expected);
    ParamFieldElementInfo received;
    const auto outcome = readFrom(expected, received);
    EXPECT_TRUE(outcome.result);
    EXPECT_EQ(outcome.position, unsigned(expected.size()));
    EXPECT_EQ(received.row, 2);
    EXPECT_EQ(received.column, 7);
    EXPECT_TRUE(received.info == e.info);
}

TEST(FieldElementInfo, ReadGivesTheResultOfItsInfo)
{
    ParamFieldElementInfo e;
    e.info = minimalInfo(3, 0);
    ParamFieldElementInfo received;
    EXPECT_FALSE(readFrom(bytesOf(e), received).result);
    EXPECT_EQ(received.row, -1);
}

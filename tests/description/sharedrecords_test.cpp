// Descriptions that repeat one another (the same bits of a status word, the same rules of
// an enumeration, the same state texts) hold one copy of what repeats once read: the
// tables are shared through Qt's implicit sharing. Sharing never changes a value, and a
// description changed by the application stays apart from the others.

#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <gtest/gtest.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>

namespace {

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

/** A status word of four bits, each with a name and a text for its set state. */
ParamInfo statusWord(unsigned int id)
{
    ParamInfo info;
    info.id = id;
    info.type = 2;
    info.code = QStringLiteral("WORD%1").arg(id);
    info.bitField.enabled = 1;
    for (int bit = 0; bit < 4; ++bit) {
        ParamBitField::ParamBitAttributes attributes;
        attributes.name.insert(En, QStringLiteral("Condition %1").arg(bit));
        attributes.name.insert(Ru, QStringLiteral("Условие %1").arg(bit));
        ParamBitField::ParamBitAttributes::ParamBitState on;
        on.state = 4096;
        on.text.insert(En, QStringLiteral("Active"));
        attributes.states.insert(1, on);
        info.bitField.attributes.insert(bit, attributes);
    }
    ParamBitCombination rule;
    rule.value = 1;
    rule.sign = QStringLiteral("==");
    rule.shortText.insert(En, QStringLiteral("Running"));
    info.enumeration.combinations << rule;
    info.enumeration.hasCombinations = true;
    info.unit.setEngName(QStringLiteral("bar"));
    info.unit.setTranslation(QStringLiteral("бар"), Ru);
    return info;
}

/**
 * True when @p a and @p b hold the same code, unit, bits and rules. (Comparing their
 * wire forms would not do: Qt writes a hash in its own order, which for keys in one
 * bucket depends on the order they were stored in.)
 */
bool sameContent(const ParamInfo &a, const ParamInfo &b)
{
    if (a.code != b.code || a.unit != b.unit || a.bitField.attributes.size() != b.bitField.attributes.size())
        return false;
    for (auto it = a.bitField.attributes.cbegin(); it != a.bitField.attributes.cend(); ++it) {
        if (!b.bitField.attributes.contains(it.key()))
            return false;
        const ParamBitField::ParamBitAttributes other = b.bitField.attributes.value(it.key());
        if (it.value().name != other.name || it.value().states.size() != other.states.size())
            return false;
        for (auto state = it.value().states.cbegin(); state != it.value().states.cend(); ++state) {
            const auto otherState = other.states.value(state.key());
            if (state.value().state != otherState.state || state.value().text != otherState.text)
                return false;
        }
    }
    if (a.enumeration.combinations.size() != b.enumeration.combinations.size())
        return false;
    for (int i = 0; i < a.enumeration.combinations.size(); ++i) {
        const ParamBitCombination &x = a.enumeration.combinations.at(i);
        const ParamBitCombination &y = b.enumeration.combinations.at(i);
        if (x.value != y.value || x.sign != y.sign || x.shortText != y.shortText || x.fullText != y.fullText)
            return false;
    }
    return true;
}

QList<ParamInfo> readBack(const QByteArray &bytes, int count)
{
    QList<ParamInfo> read;
    QContainerPacket in(bytes);
    for (int i = 0; i < count; ++i) {
        ParamInfo info;
        EXPECT_TRUE(info.read(in));
        read << info;
    }
    EXPECT_EQ(in.bytesLeft(), 0);
    return read;
}

} // namespace

TEST(SharedRecords, RepeatedTablesOfDescriptionsAreOneCopy)
{
    QByteArray bytes;
    {
        QContainerPacket out(&bytes);
        statusWord(1).write(out);
        statusWord(2).write(out);
    }
    const QList<ParamInfo> read = readBack(bytes, 2);
    ASSERT_EQ(read.size(), 2);
    EXPECT_TRUE(sameContent(read.at(0), statusWord(1)));
    EXPECT_TRUE(sameContent(read.at(1), statusWord(2)));

    // One copy of the bits, of the rules and of the unit's texts.
    const auto &firstBits = read.at(0).bitField.attributes;
    const auto &secondBits = read.at(1).bitField.attributes;
    EXPECT_EQ(&firstBits.constBegin().value(), &secondBits.constBegin().value());
    EXPECT_EQ(&read.at(0).enumeration.combinations.first(), &read.at(1).enumeration.combinations.first());
    EXPECT_EQ(read.at(0).unit.engName().constData(), read.at(1).unit.engName().constData());
    // What differs is not shared.
    EXPECT_NE(read.at(0).code, read.at(1).code);
}

TEST(SharedRecords, ChangingOneDescriptionLeavesTheOtherAlone)
{
    QByteArray bytes;
    {
        QContainerPacket out(&bytes);
        statusWord(1).write(out);
        statusWord(1).write(out);
    }
    QList<ParamInfo> read = readBack(bytes, 2);
    ASSERT_EQ(read.size(), 2);
    read[1].bitField.attributes[0].name.insert(En, QStringLiteral("Changed"));
    read[1].enumeration.combinations[0].sign = QStringLiteral("!=");
    read[1].unit.setTranslation(QStringLiteral("Па"), Ru);
    EXPECT_TRUE(sameContent(read.at(0), statusWord(1)));
    EXPECT_EQ(read.at(1).bitField.attributes.value(0).name.value(En), QStringLiteral("Changed"));
    EXPECT_EQ(read.at(1).enumeration.combinations.at(0).sign, QStringLiteral("!="));
    EXPECT_EQ(read.at(1).unit.translate(Ru, false), QStringLiteral("Па"));
}

TEST(SharedRecords, ATableReadIntoANonEmptyDescriptionIsAddedToIt)
{
    // The reader adds to what a description already holds; such a table depends on more
    // than its bytes and is read exactly as before.
    QByteArray bytes;
    {
        QContainerPacket out(&bytes);
        statusWord(1).write(out);
        statusWord(1).write(out);
    }
    QContainerPacket in(bytes);
    ParamInfo first;
    ASSERT_TRUE(first.read(in));
    ParamInfo second;
    ParamBitCombination extra;
    extra.value = 9;
    second.enumeration.combinations << extra;
    ASSERT_TRUE(second.read(in));
    ASSERT_EQ(second.enumeration.combinations.size(), 2);
    EXPECT_EQ(second.enumeration.combinations.at(0).value, 9);
    EXPECT_EQ(second.enumeration.combinations.at(1).value, 1);
    EXPECT_EQ(second.enumeration.combinations.at(1).shortText, first.enumeration.combinations.at(0).shortText);
    EXPECT_EQ(first.enumeration.combinations.size(), 1);
}

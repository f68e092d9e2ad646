// The tag store: what read() keeps and answers, and what the getters give back.

#include "tagblock.h"
#include "telortest.h"

#include "telortagobject.h"

#include <gtest/gtest.h>

#include <QtCore/QMetaObject>
#include <QtCore/QPointer>

using namespace tagtest;

namespace {

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

QHash<QString, QString> hashOf(const Pairs &pairs)
{
    QHash<QString, QString> hash;
    for (const auto &pair : pairs)
        hash.insert(pair.first, pair.second);
    return hash;
}

} // namespace

TEST(TagObject, NewStoreIsEmpty)
{
    TELORTagObject tags(nullptr);
    EXPECT_TRUE(tags.getTagTypes(En).isEmpty());
    EXPECT_TRUE(tags.getParamTags(10, En).isEmpty());
    EXPECT_TRUE(tags.getParamTagValue(10, QStringLiteral("unit")).isNull());
}

TEST(TagObject, ParentIsPassedToQObject)
{
    QObject parent;
    QPointer<TELORTagObject> tags = new TELORTagObject(&parent);
    EXPECT_EQ(tags->parent(), &parent);
    EXPECT_TRUE(parent.children().contains(tags.data()));
    delete tags.data();
    EXPECT_TRUE(parent.children().isEmpty());

    // A child store goes with its parent.
    auto *owned = new TELORTagObject(&parent);
    QPointer<TELORTagObject> watch(owned);
    {
        QObject scopedParent;
        owned->setParent(&scopedParent);
    }
    EXPECT_TRUE(watch.isNull());
}

TEST(TagObject, MetaObjectDeclaresNothingOfItsOwn)
{
    const QMetaObject &meta = TELORTagObject::staticMetaObject;
    EXPECT_STREQ(meta.className(), "TELORTagObject");
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
    EXPECT_EQ(meta.methodCount(), QObject::staticMetaObject.methodCount());
    EXPECT_EQ(meta.methodOffset(), QObject::staticMetaObject.methodCount());
    EXPECT_EQ(meta.propertyCount(), QObject::staticMetaObject.propertyCount());
    EXPECT_EQ(meta.enumeratorCount(), QObject::staticMetaObject.enumeratorCount());
    EXPECT_EQ(meta.classInfoCount(), 0);
    EXPECT_EQ(meta.constructorCount(), 0);

    TELORTagObject tags(nullptr);
    EXPECT_EQ(tags.metaObject(), &meta);
    EXPECT_EQ(tags.qt_metacast("TELORTagObject"), static_cast<void *>(&tags));
    EXPECT_EQ(tags.qt_metacast("QObject"), static_cast<void *>(&tags));
    EXPECT_EQ(tags.qt_metacast("QTimer"), nullptr);
    QObject *asObject = &tags;
    EXPECT_EQ(qobject_cast<TELORTagObject *>(asObject), &tags);
    EXPECT_TRUE(tags.inherits("TELORTagObject"));
}

TEST(TagObject, FullBlockReadsTrueAndAnswers)
{
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(sampleBlock()));

    const QHash<QString, QString> types{{QStringLiteral("unit"), QStringLiteral("Unit")},
                                        {QStringLiteral("area"), QStringLiteral("Area")}};
    EXPECT_EQ(tags.getTagTypes(En), types);
    EXPECT_EQ(tags.getTagTypes(Ru).value(QStringLiteral("area")), QStringLiteral("Zona"));

    const QHash<QString, QString> param10{{QStringLiteral("Unit"), QStringLiteral("U1")},
                                          {QStringLiteral("Area"), QStringLiteral("North")}};
    EXPECT_EQ(tags.getParamTags(10, En), param10);
    const QHash<QString, QString> param11{{QStringLiteral("Blok"), QStringLiteral("U2")}};
    EXPECT_EQ(tags.getParamTags(11, Ru), param11);

    EXPECT_EQ(tags.getParamTagValue(10, QStringLiteral("area")), QStringLiteral("North"));
    EXPECT_EQ(tags.getParamTagValue(11, QStringLiteral("unit")), QStringLiteral("U2"));
}

TEST(TagObject, TagTypesAreKeyedByTypeKeyParamTagsByText)
{
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(sampleBlock()));
    EXPECT_TRUE(tags.getTagTypes(En).contains(QStringLiteral("unit")));
    EXPECT_FALSE(tags.getTagTypes(En).contains(QStringLiteral("Unit")));
    EXPECT_TRUE(tags.getParamTags(10, En).contains(QStringLiteral("Unit")));
    EXPECT_FALSE(tags.getParamTags(10, En).contains(QStringLiteral("unit")));
}

TEST(TagObject, EmptyByteArrayReadsFalseAndLeavesStoreEmpty)
{
    TELORTagObject tags(nullptr);
    EXPECT_FALSE(tags.read(QByteArray()));
    EXPECT_TRUE(tags.getTagTypes(En).isEmpty());
    EXPECT_TRUE(tags.getParamTags(10, En).isEmpty());
    EXPECT_TRUE(tags.getParamTagValue(10, QStringLiteral("unit")).isNull());
}

TEST(TagObject, EmptyByteArrayEmptiesAFilledStore)
{
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(sampleBlock()));
    EXPECT_FALSE(tags.read(QByteArray()));
    EXPECT_TRUE(tags.getTagTypes(En).isEmpty());
    EXPECT_TRUE(tags.getParamTags(10, En).isEmpty());
}

TEST(TagObject, SecondTableWithCountZeroReadsFalseFirstTableStillAnswers)
{
    TELORTagObject tags(nullptr);
    EXPECT_FALSE(tags.read(block(sampleTexts(), {}, sampleTagParams())));
    EXPECT_EQ(tags.getTagTypes(En).value(QStringLiteral("unit")), QStringLiteral("Unit"));
    EXPECT_EQ(tags.getTagTypes(En).size(), 2);
    EXPECT_TRUE(tags.getParamTags(10, En).isEmpty());
}

TEST(TagObject, FirstTableWithCountZeroReadsFalseOthersStillAnswer)
{
    TELORTagObject tags(nullptr);
    EXPECT_FALSE(tags.read(block({}, sampleParams(), sampleTagParams())));
    EXPECT_TRUE(tags.getTagTypes(En).isEmpty());
    EXPECT_EQ(tags.getParamTagValue(10, QStringLiteral("unit")), QStringLiteral("U1"));
    // Without texts every tag lands under the null string.
    const QHash<QString, QString> param11{{QString(), QStringLiteral("U2")}};
    EXPECT_EQ(tags.getParamTags(11, En), param11);
}

TEST(TagObject, ThirdTableWithCountZeroReadsFalseFirstTwoStillAnswer)
{
    TELORTagObject tags(nullptr);
    EXPECT_FALSE(tags.read(block(sampleTexts(), sampleParams(), {})));
    EXPECT_EQ(tags.getTagTypes(En).size(), 2);
    EXPECT_EQ(tags.getParamTagValue(10, QStringLiteral("area")), QStringLiteral("North"));
}

TEST(TagObject, ThirdTableDecidesTheResult)
{
    // The same first two tables read true or false by the third alone, although no getter
    // reaches it.
    const ParamsTable unrelated{{QStringLiteral("x"), {{QStringLiteral("y"), {}}}}};
    TELORTagObject tags(nullptr);
    EXPECT_TRUE(tags.read(block(sampleTexts(), sampleParams(), unrelated)));
    EXPECT_FALSE(tags.read(block(sampleTexts(), sampleParams(), {})));
}

TEST(TagObject, BlockCutInsideSecondTableKeepsOnlyTheFirst)
{
    const QByteArray whole = sampleBlock();
    const int firstTable = textsBytes(sampleTexts()).size();
    const int secondTable = paramsBytes(sampleParams()).size();
    // Cut after the first parameter's identifier, and then in the middle of a string.
    for (int cut : {firstTable + 2, firstTable + 8, firstTable + secondTable - 3}) {
        SCOPED_TRACE(cut);
        TELORTagObject tags(nullptr);
        EXPECT_FALSE(tags.read(whole.left(cut)));
        EXPECT_EQ(tags.getTagTypes(En).size(), 2);
        EXPECT_TRUE(tags.getParamTags(10, En).isEmpty());
        EXPECT_TRUE(tags.getParamTags(11, En).isEmpty());
        EXPECT_TRUE(tags.getParamTagValue(10, QStringLiteral("unit")).isNull());
    }
}

TEST(TagObject, SecondReadReplacesTheFirstInFull)
{
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(sampleBlock()));

    const TextTable texts{{QStringLiteral("line"), {{En, QStringLiteral("Line")}}}};
    const ParamTable params{{20u, {{QStringLiteral("line"), QStringLiteral("L7")}}}};
    const ParamsTable tagParams{{QStringLiteral("line"), {{QStringLiteral("L7"), {20u}}}}};
    ASSERT_TRUE(tags.read(block(texts, params, tagParams)));

    const QHash<QString, QString> types{{QStringLiteral("line"), QStringLiteral("Line")}};
    EXPECT_EQ(tags.getTagTypes(En), types);
    EXPECT_TRUE(tags.getParamTags(10, En).isEmpty());
    EXPECT_TRUE(tags.getParamTags(11, En).isEmpty());
    EXPECT_TRUE(tags.getParamTagValue(10, QStringLiteral("unit")).isNull());
    EXPECT_EQ(tags.getParamTagValue(20, QStringLiteral("line")), QStringLiteral("L7"));
}

TEST(TagObject, FalseReadStillReplacesTheTables)
{
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(sampleBlock()));
    const TextTable texts{{QStringLiteral("line"), {{En, QStringLiteral("Line")}}}};
    EXPECT_FALSE(tags.read(block(texts, {}, {})));
    EXPECT_EQ(tags.getTagTypes(En).size(), 1);
    EXPECT_TRUE(tags.getParamTags(10, En).isEmpty());
}

TEST(TagObject, UnknownTextKeyGivesEveryTagTypeWithNullValue)
{
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(sampleBlock()));
    const QHash<QString, QString> types = tags.getTagTypes(QStringLiteral("de"));
    EXPECT_EQ(types.size(), 2);
    for (const QString &key : {QStringLiteral("unit"), QStringLiteral("area")}) {
        ASSERT_TRUE(types.contains(key));
        EXPECT_TRUE(types.value(key).isNull());
    }
}

TEST(TagObject, TagTypeWithoutTheTextIsStillListed)
{
    const TextTable texts{{QStringLiteral("unit"), {{En, QStringLiteral("Unit")}}},
                          {QStringLiteral("bare"), {}}};
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(block(texts, sampleParams(), sampleTagParams())));
    const QHash<QString, QString> types = tags.getTagTypes(En);
    EXPECT_EQ(types.value(QStringLiteral("unit")), QStringLiteral("Unit"));
    ASSERT_TRUE(types.contains(QStringLiteral("bare")));
    EXPECT_TRUE(types.value(QStringLiteral("bare")).isNull());
}

TEST(TagObject, TwoTagsWithUnknownTextKeyCollapseUnderNullString)
{
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(sampleBlock()));
    const QHash<QString, QString> result = tags.getParamTags(10, QStringLiteral("de"));
    ASSERT_EQ(result.size(), 1);
    EXPECT_TRUE(result.cbegin().key().isNull());

    // The tag that comes last in the parameter's iteration order wins: the same entries,
    // read by Qt's own operator, show which one that is.
    const QHash<QString, QString> own = readWithQt(sampleBlock()).paramTags.value(10);
    ASSERT_EQ(own.size(), 2);
    QString last;
    for (auto it = own.cbegin(); it != own.cend(); ++it)
        last = it.value();
    EXPECT_EQ(result.cbegin().value(), last);
}

TEST(TagObject, TagsWithTheSameTextOverwriteEachOther)
{
    const TextTable texts{{QStringLiteral("a"), {{En, QStringLiteral("Same")}}},
                          {QStringLiteral("b"), {{En, QStringLiteral("Same")}}},
                          {QStringLiteral("c"), {{En, QStringLiteral("Other")}}}};
    const Pairs tags10{{QStringLiteral("a"), QStringLiteral("va")},
                       {QStringLiteral("b"), QStringLiteral("vb")},
                       {QStringLiteral("c"), QStringLiteral("vc")}};
    const ParamTable params{{10u, tags10}};
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(block(texts, params, sampleTagParams())));

    const QHash<QString, QString> result = tags.getParamTags(10, En);
    ASSERT_EQ(result.size(), 2);
    EXPECT_EQ(result.value(QStringLiteral("Other")), QStringLiteral("vc"));
    QString last;
    const QHash<QString, QString> own = hashOf(tags10);
    for (auto it = own.cbegin(); it != own.cend(); ++it) {
        if (it.key() != QLatin1String("c"))
            last = it.value();
    }
    EXPECT_EQ(result.value(QStringLiteral("Same")), last);
}

TEST(TagObject, UnknownIdentifierOrTagTypeGivesNullString)
{
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(sampleBlock()));
    EXPECT_TRUE(tags.getParamTagValue(99, QStringLiteral("unit")).isNull());
    EXPECT_TRUE(tags.getParamTagValue(11, QStringLiteral("area")).isNull());
    EXPECT_TRUE(tags.getParamTagValue(10, QString()).isNull());
    EXPECT_TRUE(tags.getParamTags(99, En).isEmpty());
}

TEST(TagObject, ParameterOnlyInThirdTableHasNoTags)
{
    const ParamsTable tagParams{{QStringLiteral("unit"), {{QStringLiteral("U9"), {10u, 42u}}}}};
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(block(sampleTexts(), sampleParams(), tagParams)));
    EXPECT_TRUE(tags.getParamTags(42, En).isEmpty());
    EXPECT_TRUE(tags.getParamTagValue(42, QStringLiteral("unit")).isNull());
    // And a parameter's own tags are not taken from the third table either.
    EXPECT_EQ(tags.getParamTagValue(10, QStringLiteral("unit")), QStringLiteral("U1"));
}

TEST(TagObject, TagTypeMissingFromFirstTableGivesNullKey)
{
    const ParamTable params{{10u, {{QStringLiteral("unit"), QStringLiteral("U1")},
                                   {QStringLiteral("ghost"), QStringLiteral("G")}}}};
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(block(sampleTexts(), params, sampleTagParams())));
    const QHash<QString, QString> expected{{QStringLiteral("Unit"), QStringLiteral("U1")}, {QString(), QStringLiteral("G")}};
    const QHash<QString, QString> result = tags.getParamTags(10, En);
    EXPECT_EQ(result, expected);
    EXPECT_TRUE(result.contains(QString()));
}

TEST(TagObject, RepeatedKeyIsFoundAsTheEntryThatArrivedLast)
{
    // Parameter 10 arrives twice, and inside the second entry the tag type "unit" twice.
    const ParamTable params{{10u, {{QStringLiteral("unit"), QStringLiteral("old")}}},
                            {10u, {{QStringLiteral("unit"), QStringLiteral("first")},
                                   {QStringLiteral("unit"), QStringLiteral("second")}}}};
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(block(sampleTexts(), params, sampleTagParams())));
    EXPECT_EQ(tags.getParamTagValue(10, QStringLiteral("unit")), QStringLiteral("second"));
    // Both tags of the later entry carry the text "Unit"; one of them stays in the result.
    const QHash<QString, QString> result = tags.getParamTags(10, En);
    ASSERT_EQ(result.size(), 1);
    EXPECT_NE(result.value(QStringLiteral("Unit")), QStringLiteral("old"));
}

TEST(TagObject, RepeatedTagTypeTextIsTheOneThatArrivedLast)
{
    const TextTable texts{{QStringLiteral("unit"), {{En, QStringLiteral("Early")}, {En, QStringLiteral("Late")}}}};
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(block(texts, sampleParams(), sampleTagParams())));
    EXPECT_EQ(tags.getTagTypes(En).value(QStringLiteral("unit")), QStringLiteral("Late"));
    EXPECT_EQ(tags.getParamTags(11, En).value(QStringLiteral("Late")), QStringLiteral("U2"));
}

TEST(TagObject, NullAndEmptyStringsTravelAsGiven)
{
    const TextTable texts{{QStringLiteral("unit"), {{En, QString()}}}};
    const ParamTable params{{10u, {{QStringLiteral("unit"), QLatin1String("")}}}};
    TELORTagObject tags(nullptr);
    ASSERT_TRUE(tags.read(block(texts, params, sampleTagParams())));
    const QString value = tags.getParamTagValue(10, QStringLiteral("unit"));
    EXPECT_FALSE(value.isNull());
    EXPECT_TRUE(value.isEmpty());
    EXPECT_TRUE(tags.getTagTypes(En).value(QStringLiteral("unit")).isNull());
}

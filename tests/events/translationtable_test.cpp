// Text items by language and the two-level table of them by number: bytes, round
// trips, repeated keys on both levels and streams that run out.

#include "telortest.h"

#include "translationtable.h"

#include <QtCore/QDataStream>

#include <gtest/gtest.h>

#include <algorithm>

using telortest::plainBytes;
using telortest::valuesOf;

namespace {

using Table = QHash<int, TranslationItemNew>;

QByteArray writtenBy(const Table &table)
{
    return plainBytes([&table](QDataStream &s) { writeTranslationTable(s, table); });
}

Table readFrom(const QByteArray &bytes, QDataStream::Status *status = nullptr)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    Table table;
    readTranslationTable(stream, table);
    if (status)
        *status = stream.status();
    return table;
}

/** The same bytes read by Qt's own operators into plain hashes. */
QHash<int, QHash<QString, QString>> readByQt(const QByteArray &bytes, QDataStream::Status *status = nullptr)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    QHash<int, QHash<QString, QString>> table;
    stream >> table;
    if (status)
        *status = stream.status();
    return table;
}

/**
 * Every entry of @p table, in iteration order, as plain pairs: for the library's table and
 * for the plain hashes Qt's own operators read.
 */
template<typename Item>
QList<QPair<int, QList<QPair<QString, QString>>>> entries(const QHash<int, Item> &table)
{
    QList<QPair<int, QList<QPair<QString, QString>>>> all;
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        QList<QPair<QString, QString>> pairs;
        for (auto pair = it.value().cbegin(); pair != it.value().cend(); ++pair)
            pairs.append(qMakePair(pair.key(), pair.value()));
        all.append(qMakePair(it.key(), pairs));
    }
    return all;
}

const QString Ru = QStringLiteral("ru");
const QString En = QStringLiteral("en");

} // namespace

TEST(TranslationItem, ConstructorStoresOnePair)
{
    const TranslationItemNew item(Ru, QStringLiteral("Davlenie"));
    EXPECT_EQ(item.size(), 1);
    EXPECT_EQ(item.value(Ru), QStringLiteral("Davlenie"));
    EXPECT_TRUE(TranslationItemNew().isEmpty());
}

TEST(TranslationItem, IsAPlainHashByLanguage)
{
    TranslationItemNew item(Ru, QStringLiteral("a"));
    item.insert(En, QStringLiteral("b"));
    const QHash<QString, QString> &hash = item;
    EXPECT_EQ(hash.value(En), QStringLiteral("b"));
    EXPECT_TRUE(hash.value(QStringLiteral("de")).isNull());
}

TEST(TranslationTable, EmptyTableIsACountOfZero)
{
    const QByteArray expected = plainBytes([](QDataStream &s) { s << quint32(0); });
    EXPECT_EQ(writtenBy(Table()), expected);
    QDataStream::Status status;
    EXPECT_TRUE(readFrom(expected, &status).isEmpty());
    EXPECT_EQ(status, QDataStream::Ok);
}

TEST(TranslationTable, OneEntryBytes)
{
    Table table;
    table.insert(-5, TranslationItemNew(Ru, QStringLiteral("Davlenie")));
    const QByteArray expected = plainBytes([](QDataStream &s) {
        s << quint32(1);
        s << qint32(-5) << quint32(1) << QStringLiteral("ru") << QStringLiteral("Davlenie");
    });
    EXPECT_EQ(writtenBy(table), expected);
}

TEST(TranslationTable, BothLevelsGoOutFromTheLastEntryToTheFirst)
{
    Table table;
    for (int key : {3, 1000, -1, 42, 7}) {
        TranslationItemNew item;
        for (const char *language : {"ru", "en", "de", "fr"})
            item.insert(QLatin1String(language), QString::number(key) + QLatin1String(language));
        table.insert(key, item);
    }
    table.insert(8, TranslationItemNew());

    const QByteArray expected = plainBytes([&table](QDataStream &s) {
        QList<int> keys = table.keys();
        std::reverse(keys.begin(), keys.end());
        s << quint32(keys.size());
        for (int key : keys) {
            const TranslationItemNew item = table.value(key);
            QList<QString> languages = item.keys();
            std::reverse(languages.begin(), languages.end());
            s << qint32(key) << quint32(languages.size());
            for (const QString &language : languages)
                s << language << item.value(language);
        }
    });
    EXPECT_EQ(writtenBy(table), expected);
}

TEST(TranslationTable, RoundTrip)
{
    Table table;
    table.insert(1, TranslationItemNew(Ru, QStringLiteral("odin")));
    TranslationItemNew two(En, QStringLiteral("two"));
    two.insert(Ru, QStringLiteral("dva"));
    two.insert(QStringLiteral("de"), QString());
    table.insert(2, two);
    table.insert(0x7fffffff, TranslationItemNew());
    table.insert(-2147483647 - 1, TranslationItemNew(QString(), QStringLiteral("no language")));

    const Table back = readFrom(writtenBy(table));
    EXPECT_EQ(back.size(), table.size());
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        ASSERT_TRUE(back.contains(it.key()));
        const QHash<QString, QString> &expected = it.value();
        const QHash<QString, QString> actual = back.value(it.key());
        EXPECT_EQ(actual, expected);
    }
}

TEST(TranslationTable, ReadsPlainBytes)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(2);
        s << qint32(10) << quint32(2) << QStringLiteral("ru") << QStringLiteral("desyat") << QStringLiteral("en")
          << QStringLiteral("ten");
        s << qint32(20) << quint32(0);
    });
    const Table table = readFrom(bytes);
    EXPECT_EQ(table.size(), 2);
    EXPECT_EQ(table.value(10).value(Ru), QStringLiteral("desyat"));
    EXPECT_EQ(table.value(10).value(En), QStringLiteral("ten"));
    EXPECT_TRUE(table.contains(20));
    EXPECT_TRUE(table.value(20).isEmpty());
}

TEST(TranslationTable, ReadingEmptiesTheTableFirst)
{
    Table table;
    table.insert(1, TranslationItemNew(Ru, QStringLiteral("old")));
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(1) << qint32(2) << quint32(1) << QStringLiteral("ru") << QStringLiteral("new");
    });
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    readTranslationTable(stream, table);
    EXPECT_EQ(table.keys(), QList<int>{2});
    EXPECT_EQ(table.value(2).value(Ru), QStringLiteral("new"));
}

TEST(TranslationTable, RepeatedNumberKeepsBothEntries)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(2);
        s << qint32(5) << quint32(1) << QStringLiteral("ru") << QStringLiteral("first");
        s << qint32(5) << quint32(1) << QStringLiteral("ru") << QStringLiteral("second");
    });
    const Table table = readFrom(bytes);
    EXPECT_EQ(table.size(), 2);
    EXPECT_EQ(table.count(5), 2);
    EXPECT_EQ(table.value(5).value(Ru), QStringLiteral("second"));
    const QList<TranslationItemNew> both = valuesOf(table, 5);
    ASSERT_EQ(both.size(), 2);
    EXPECT_EQ(both.at(1).value(Ru), QStringLiteral("first"));
    // Written back, the two entries come out in the order they arrived.
    EXPECT_EQ(writtenBy(table), bytes);
}

TEST(TranslationTable, RepeatedLanguageKeepsBothPairs)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(1);
        s << qint32(5) << quint32(2) << QStringLiteral("ru") << QStringLiteral("first") << QStringLiteral("ru")
          << QStringLiteral("second");
    });
    const Table table = readFrom(bytes);
    const TranslationItemNew item = table.value(5);
    EXPECT_EQ(item.size(), 2);
    EXPECT_EQ(item.value(Ru), QStringLiteral("second"));
    EXPECT_EQ((valuesOf<QString, QString>(item, Ru)), (QList<QString>{QStringLiteral("second"), QStringLiteral("first")}));
    EXPECT_EQ(writtenBy(table), bytes);
}

TEST(TranslationTable, StreamRunningOutInAnItemLeavesTheWholeTableEmpty)
{
    QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(2);
        s << qint32(1) << quint32(1) << QStringLiteral("ru") << QStringLiteral("odin");
        s << qint32(2) << quint32(2) << QStringLiteral("ru") << QStringLiteral("dva") << QStringLiteral("en")
          << QStringLiteral("two");
    });
    bytes.chop(3);
    QDataStream::Status status;
    EXPECT_TRUE(readFrom(bytes, &status).isEmpty());
    EXPECT_EQ(status, QDataStream::ReadPastEnd);
}

TEST(TranslationTable, StreamRunningOutBetweenEntriesLeavesTheWholeTableEmpty)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(3);
        s << qint32(1) << quint32(1) << QStringLiteral("ru") << QStringLiteral("odin");
    });
    QDataStream::Status status;
    EXPECT_TRUE(readFrom(bytes, &status).isEmpty());
    EXPECT_EQ(status, QDataStream::ReadPastEnd);
}

TEST(TranslationTable, HugeCountsOnEitherLevelReadNothing)
{
    const QByteArray outer = plainBytes([](QDataStream &s) { s << quint32(0xffffffff); });
    EXPECT_TRUE(readFrom(outer).isEmpty());
    const QByteArray inner = plainBytes([](QDataStream &s) {
        s << quint32(1) << qint32(1) << quint32(0x7fffffff) << QStringLiteral("ru");
    });
    EXPECT_TRUE(readFrom(inner).isEmpty());
}

TEST(TranslationTable, EmptyStreamReadsAnEmptyTable)
{
    Table table;
    table.insert(1, TranslationItemNew(Ru, QStringLiteral("old")));
    QDataStream stream(QByteArray{});
    readTranslationTable(stream, table);
    EXPECT_TRUE(table.isEmpty());
    EXPECT_EQ(stream.status(), QDataStream::ReadPastEnd);
}

TEST(TranslationTable, ReadsWhatQtsOwnOperatorsRead)
{
    const QByteArray whole = plainBytes([](QDataStream &s) {
        s << quint32(3);
        s << qint32(1) << quint32(2) << QStringLiteral("ru") << QStringLiteral("odin") << QStringLiteral("en")
          << QStringLiteral("one");
        s << qint32(1) << quint32(1) << QStringLiteral("ru") << QStringLiteral("raz");
        s << qint32(3) << quint32(0);
    });
    // Every prefix of the bytes, and the bytes with a corrupt string length spliced in.
    QList<QByteArray> inputs;
    for (int n = 0; n <= whole.size(); ++n)
        inputs.append(whole.left(n));
    QByteArray corrupt = whole;
    corrupt.replace(12, 4, QByteArray("\x00\x00\x00\x03", 4));
    inputs.append(corrupt);

    for (const QByteArray &bytes : inputs) {
        QDataStream::Status ours;
        QDataStream::Status qts;
        EXPECT_EQ(entries(readFrom(bytes, &ours)), entries(readByQt(bytes, &qts))) << telortest::hex(bytes);
        EXPECT_EQ(ours, qts) << telortest::hex(bytes);
    }
}

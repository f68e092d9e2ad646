// Translatable text keeps its translations in a compact list, not in a hash. These tests
// hold it against a plain QHash<QString, QString> doing the same thing: every table it
// hands out or writes must be the very hash, in the very order, that Qt builds, and every
// stream read must leave the same values, status and position as Qt's own operators.

#include "qxmltranslation.h"

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QDataStream>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QRandomGenerator>
#include <QtCore/QStringList>

namespace {

using Entries = QList<QPair<QString, QString>>;

/** The table's entries in its own iteration order: what Qt's writer walks. */
Entries inOrder(const QHash<QString, QString> &table)
{
    Entries entries;
    for (auto it = table.cbegin(); it != table.cend(); ++it)
        entries << qMakePair(it.key(), it.value());
    return entries;
}

QByteArray written(const std::function<void(QDataStream &)> &write)
{
    QByteArray bytes;
    QDataStream s(&bytes, QIODevice::WriteOnly);
    write(s);
    return bytes;
}

/** A language key out of a small set, so that keys collide and repeat. */
QString languageKey(QRandomGenerator &random)
{
    static const char *const keys[] = {"en", "ru", "de", "fr", "es", "it", "pl", "uk", "cs", "sk", "fi", "sv",
                                       "nb", "da", "nl", "pt", "ro", "hu", "bg", "el", "tr", "zh", "ja", "ko"};
    return QLatin1String(keys[random.bounded(int(sizeof keys / sizeof *keys))]);
}

/**
 * The stream form of a text with @p count entries, repeated keys included, written from a
 * multi-hash as a server's table of several entries for one key would be.
 */
QByteArray randomStreamForm(QRandomGenerator &random, int count)
{
    QMultiHash<QString, QString> table;
    for (int i = 0; i < count; ++i)
        table.insert(languageKey(random), QStringLiteral("text %1").arg(random.bounded(5)));
    return written([&](QDataStream &s) { s << QStringLiteral("English") << static_cast<QHash<QString, QString> &>(table); });
}

struct Outcome {
    QString english;
    Entries entries;
    QDataStream::Status status;
    qint64 position;
};

Outcome readOurs(const QByteArray &bytes, QDataStream::Status before = QDataStream::Ok)
{
    QDataStream in(bytes);
    in.setStatus(before);
    QXmlTranslation t(QStringLiteral("stale"));
    t.setTranslation(QStringLiteral("stale"), QStringLiteral("xx"));
    in >> t;
    return {t.engName(), inOrder(t.translations()), in.status(), in.device()->pos()};
}

Outcome readQts(const QByteArray &bytes, QDataStream::Status before = QDataStream::Ok)
{
    QDataStream in(bytes);
    in.setStatus(before);
    QString english = QStringLiteral("stale");
    QHash<QString, QString> table{{QStringLiteral("xx"), QStringLiteral("stale")}};
    in >> english >> table;
    return {english, inOrder(table), in.status(), in.device()->pos()};
}

void expectSame(const Outcome &ours, const Outcome &qts)
{
    EXPECT_EQ(ours.english, qts.english);
    EXPECT_EQ(ours.entries, qts.entries);
    EXPECT_EQ(ours.status, qts.status);
    EXPECT_EQ(ours.position, qts.position);
}

} // namespace

TEST(XmlTranslationCompact, ReadTableIsQtsHashInQtsOrder)
{
    QRandomGenerator random(20261125);
    for (int round = 0; round < 300; ++round) {
        const QByteArray bytes = randomStreamForm(random, random.bounded(0, 40));
        SCOPED_TRACE(round);
        expectSame(readOurs(bytes), readQts(bytes));

        // Lookups find the entry Qt's hash finds, and the text writes back as Qt writes
        // the hash it read.
        QDataStream in(bytes);
        QXmlTranslation ours;
        in >> ours;
        QDataStream again(bytes);
        QString english;
        QHash<QString, QString> table;
        again >> english >> table;
        QStringList keys = table.keys();
        keys << QStringLiteral("absent");
        for (const QString &key : qAsConst(keys))
            EXPECT_EQ(ours.translate(key, false), table.value(key)) << key.toStdString();
        EXPECT_EQ(written([&](QDataStream &s) { s << ours; }), written([&](QDataStream &s) { s << english << table; }));
        EXPECT_EQ(ours.translations(), table);
    }
}

TEST(XmlTranslationCompact, TruncatedFlippedAndFailedStreamsReadAsQtReadsThem)
{
    QRandomGenerator random(7);
    for (int round = 0; round < 40; ++round) {
        const QByteArray bytes = randomStreamForm(random, random.bounded(0, 6));
        for (int cut = 0; cut <= bytes.size(); ++cut) {
            SCOPED_TRACE(cut);
            expectSame(readOurs(bytes.left(cut)), readQts(bytes.left(cut)));
        }
        for (int flip = 0; flip < 20; ++flip) {
            QByteArray damaged = bytes;
            damaged[random.bounded(damaged.size())] = char(random.bounded(256));
            expectSame(readOurs(damaged), readQts(damaged));
        }
        // A stream that has already failed: Qt's table reader sets the failure aside
        // while it reads, and restores it afterwards.
        for (auto before : {QDataStream::ReadPastEnd, QDataStream::ReadCorruptData})
            expectSame(readOurs(bytes, before), readQts(bytes, before));
    }
}

TEST(XmlTranslationCompact, StoredTranslationsBuildQtsHash)
{
    QRandomGenerator random(99);
    for (int round = 0; round < 200; ++round) {
        QXmlTranslation ours(QStringLiteral("English"));
        QHash<QString, QString> table;
        const int count = random.bounded(0, 40);
        for (int i = 0; i < count; ++i) {
            const QString key = languageKey(random);
            const QString text = QStringLiteral("t%1").arg(i);
            ours.setTranslation(text, key);
            table.insert(key, text);
        }
        SCOPED_TRACE(round);
        EXPECT_EQ(inOrder(ours.translations()), inOrder(table));
        EXPECT_EQ(written([&](QDataStream &s) { s << ours; }),
                  written([&](QDataStream &s) { s << QStringLiteral("English") << table; }));
    }
}

TEST(XmlTranslationCompact, StoringOverARepeatedKeyReplacesTheEntryALookupFinds)
{
    // Two entries for "ru" arrive; the later one is what a lookup finds, and storing a new
    // text replaces exactly that one, as QHash::insert() does.
    QMultiHash<QString, QString> multi;
    multi.insert(QStringLiteral("ru"), QStringLiteral("first"));
    multi.insert(QStringLiteral("ru"), QStringLiteral("second"));
    QHash<QString, QString> table = multi;
    const QByteArray bytes = written([&](QDataStream &s) { s << QStringLiteral("E") << table; });

    QXmlTranslation ours;
    QDataStream in(bytes);
    in >> ours;
    EXPECT_EQ(ours.translate(QStringLiteral("ru"), false), QStringLiteral("second"));
    ours.setTranslation(QStringLiteral("third"), QStringLiteral("ru"));
    table.insert(QStringLiteral("ru"), QStringLiteral("third"));
    EXPECT_EQ(inOrder(ours.translations()), inOrder(table));
    const QMultiHash<QString, QString> oursMulti(ours.translations());
    const QMultiHash<QString, QString> tableMulti(table);
    EXPECT_EQ(oursMulti.values(QStringLiteral("ru")), tableMulti.values(QStringLiteral("ru")));
}

TEST(XmlTranslationCompact, TextsReadWithTheSameBytesShareTheirCharacters)
{
    QXmlTranslation unit(QStringLiteral("degC"));
    unit.setTranslation(QStringLiteral("°C"), QStringLiteral("ru"));
    const QByteArray bytes = written([&](QDataStream &s) { s << unit << unit; });

    QXmlTranslation first;
    QXmlTranslation second;
    QDataStream in(bytes);
    in >> first >> second;
    EXPECT_EQ(first, unit);
    EXPECT_EQ(second, unit);
    const QString a = first.engName();
    const QString b = second.engName();
    EXPECT_EQ(a.constData(), b.constData());

    // Each is still a value of its own.
    second.setTranslation(QStringLiteral("K"), QStringLiteral("ru"));
    second += QStringLiteral("!");
    EXPECT_EQ(first, unit);
    EXPECT_EQ(second.engName(), QStringLiteral("degC!"));
}

TEST(XmlTranslationCompact, EqualityIsThatOfQtsHash)
{
    // The same entries stored in another order are equal, as two QHash are.
    QXmlTranslation a(QStringLiteral("E"));
    a.setTranslation(QStringLiteral("1"), QStringLiteral("ru"));
    a.setTranslation(QStringLiteral("2"), QStringLiteral("de"));
    QXmlTranslation b(QStringLiteral("E"));
    b.setTranslation(QStringLiteral("2"), QStringLiteral("de"));
    b.setTranslation(QStringLiteral("1"), QStringLiteral("ru"));
    EXPECT_EQ(a, b);
    b.setTranslation(QStringLiteral("3"), QStringLiteral("de"));
    EXPECT_NE(a, b);
    QXmlTranslation c(QStringLiteral("E"));
    c.setTranslation(QStringLiteral("1"), QStringLiteral("ru"));
    EXPECT_NE(a, c);
}

// The value archive: SQLite in a temporary folder, backfill, archive queries in pieces,
// cancels, restarts.

#include "servertest.h"

#include "archiveparamdata.h"
#include "archivequery.h"
#include "archivequerycancel.h"
#include "archiveresult.h"
#include "sqlitearchivestore.h"

#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

using namespace servertest;

namespace {

/** Reads every frame as an ArchiveResult; the results are owned by the caller. */
std::vector<std::unique_ptr<ArchiveResult>> results(const QList<QByteArray> &frames)
{
    std::vector<std::unique_ptr<ArchiveResult>> all;
    for (const QByteArray &frame : frames) {
        std::unique_ptr<ArchiveResult> r(new ArchiveResult);
        r->setPacket(frame);
        EXPECT_TRUE(r->read());
        all.push_back(std::move(r));
    }
    return all;
}

QString archivePath(const QTemporaryDir &dir)
{
    return dir.filePath(QStringLiteral("archive.sqlite"));
}

} // namespace

TEST(ServerArchive, SqliteStoreKeepsValuesInTimeOrder)
{
    QTemporaryDir dir;
    SqliteArchiveStore store(archivePath(dir));
    QString error;
    ASSERT_TRUE(store.open(&error)) << qPrintable(error);
    EXPECT_EQ(store.lastTime(), -1);
    StoredValue a{7, 2000, 1.5, 8};
    StoredValue b{7, 1000, QStringLiteral("x"), 64};
    StoredValue c{8, 1500, QVariantList{1, QStringLiteral("y")}, 8};
    ASSERT_TRUE(store.append({a, b, c}, {}));
    EXPECT_EQ(store.countValues(7, 0, 5000), 2);
    const QList<ArchiveValue> values = store.values(7, 0, 5000, 0, 10);
    ASSERT_EQ(values.size(), 2);
    EXPECT_EQ(values.at(0).value, QVariant(QStringLiteral("x")));
    EXPECT_EQ(values.at(0).state, 64u);
    EXPECT_EQ(values.at(1).dateTime, QDateTime::fromMSecsSinceEpoch(2000, Qt::UTC));
    ArchiveValue before;
    EXPECT_TRUE(store.valueBefore(7, 1500, &before));
    EXPECT_EQ(before.value, QVariant(QStringLiteral("x")));
    EXPECT_FALSE(store.valueBefore(7, 1000, &before));
    EXPECT_EQ(store.values(8, 0, 5000, 0, 10).first().value, c.value);
    EXPECT_EQ(store.lastTime(), 2000);
    EXPECT_TRUE(store.prune(1600));
    EXPECT_EQ(store.countValues(7, 0, 5000), 1);
    EXPECT_TRUE(store.flush());
}

TEST(ServerArchive, QueryIsAnsweredInPiecesWithTheStoredSeries)
{
    QTemporaryDir dir;
    SqliteArchiveStore store(archivePath(dir));
    PlantServer::Options options;
    options.valuesPerPiece = 10;
    options.piecesPerTick = 2;
    Harness h(loadPlant(examplePlantPath()), &store, 10000, options);
    ASSERT_TRUE(h.started) << qPrintable(h.startError);

    QObject chart;
    ArchiveQuery query(&chart);
    query.setFromBegin();
    query.setToEnd();
    query.appendById(101); // a sine: a new value every tick of the 10 s history
    query.appendById(109); // a constant: one value
    query.appendById(77777); // unknown: left out
    query.setRoute(1, 2, 3);
    h.send(5, query);
    QList<QByteArray> frames = h.take(5);
    ASSERT_EQ(frames.size(), 1);
    // 41 values of 101 (ticks -40 to 0) and 1 of 109 in pieces of 10: 5 pieces.
    auto first = results(frames);
    EXPECT_EQ(first[0]->piecesCount(), 5);
    EXPECT_EQ(first[0]->pieceNumber(), 1);
    EXPECT_EQ(first[0]->parent(), &chart);
    ASSERT_TRUE(first[0]->getParam(101));
    ASSERT_TRUE(first[0]->getParam(109));
    EXPECT_FALSE(first[0]->getParam(77777));
    EXPECT_EQ(first[0]->getParam(101)->getData().size(), 10);
    EXPECT_EQ(first[0]->getParam(101)->getData().first().dateTime, testStart().addSecs(-10));

    h.ticks(1);
    frames = h.take(5);
    EXPECT_EQ(frames.size(), 2); // two pieces per tick
    h.ticks(1);
    frames += h.take(5);
    ASSERT_EQ(frames.size(), 4);
    auto rest = results(frames);
    QList<ArchiveValue> series = first[0]->getParam(101)->getData();
    for (const auto &r : rest) {
        if (r->getParam(101))
            series += r->getParam(101)->getData();
    }
    EXPECT_EQ(rest.back()->pieceNumber(), 5);
    ASSERT_EQ(series.size(), 41);
    for (int i = 1; i < series.size(); ++i)
        EXPECT_EQ(series.at(i).dateTime, series.at(i - 1).dateTime.addMSecs(250));
    EXPECT_EQ(series.last().dateTime, testStart()); // the span ended at the time of the query
    EXPECT_EQ(rest.back()->getParam(109)->getData().size(), 1);
    EXPECT_EQ(h.server->pendingAnswerCount(), 0);
}

TEST(ServerArchive, SpanStartsWithTheValueInForce)
{
    QTemporaryDir dir;
    SqliteArchiveStore store(archivePath(dir));
    Harness h(loadPlant(examplePlantPath()), &store, 10000);
    QObject chart;
    ArchiveQuery query(&chart);
    ASSERT_TRUE(query.setInterval(testStart().addSecs(-5), testStart().addSecs(-4)));
    query.appendById(109); // the constant was stored once, at -10 s
    query.appendById(101);
    h.send(1, query);
    auto all = results(h.take(1));
    ASSERT_EQ(all.size(), 1);
    ASSERT_EQ(all[0]->getParam(109)->getData().size(), 1);
    EXPECT_EQ(all[0]->getParam(109)->getData().first().dateTime, testStart().addSecs(-10));
    EXPECT_EQ(all[0]->getParam(109)->getData().first().value.toDouble(), 21.5);
    // 101: the value before -5 s, then -5 s to -4 s inclusive in steps of 250 ms.
    EXPECT_EQ(all[0]->getParam(101)->getData().size(), 1 + 5);
}

TEST(ServerArchive, CancelStopsTheRemainingPieces)
{
    PlantServer::Options options;
    options.valuesPerPiece = 5;
    options.piecesPerTick = 1;
    Harness h(loadPlant(examplePlantPath()), nullptr, 10000, options);
    QObject chart;
    ArchiveQuery query(&chart);
    query.setFromBegin();
    query.setToEnd();
    query.appendById(101);
    h.send(1, query);
    EXPECT_EQ(h.take(1).size(), 1);
    EXPECT_EQ(h.server->pendingAnswerCount(), 1);
    ArchiveQueryCancel cancel(query);
    h.send(1, cancel);
    EXPECT_EQ(h.server->pendingAnswerCount(), 0);
    h.ticks(3);
    EXPECT_TRUE(h.take(1).isEmpty());
    EXPECT_TRUE(h.log.contains(QStringLiteral("connection 1: archive query cancelled, 1 unfinished answers dropped")));
}

TEST(ServerArchive, InvalidQueryGetsOneEmptyPiece)
{
    Harness h(loadPlant(examplePlantPath()));
    QObject chart;
    ArchiveQuery query(&chart); // no span, no identifiers
    h.send(1, query);
    auto all = results(h.take(1));
    ASSERT_EQ(all.size(), 1);
    EXPECT_EQ(all[0]->piecesCount(), 1);
    EXPECT_FALSE(all[0]->getParam(101));
    EXPECT_TRUE(h.log.last().endsWith(QStringLiteral("is not valid; answered empty")));
}

TEST(ServerArchive, RestartKeepsTheArchiveAndBackfillsOnlyTheGap)
{
    QTemporaryDir dir;
    qint64 stored = 0;
    {
        SqliteArchiveStore store(archivePath(dir));
        Harness h(loadPlant(examplePlantPath()), &store, 10000);
        ASSERT_TRUE(h.started);
        h.ticks(8);
        stored = store.countValues(101, 0, testStart().addSecs(3600).toMSecsSinceEpoch());
        EXPECT_EQ(stored, 41 + 8);
        h.server->flush();
    }
    {
        SqliteArchiveStore store(archivePath(dir));
        // The same start: nothing before the newest stored time is stored again.
        Harness h(loadPlant(examplePlantPath()), &store, 10000);
        ASSERT_TRUE(h.started);
        EXPECT_TRUE(h.log.contains(QStringLiteral("archive: 0 values and 0 events backfilled")));
        EXPECT_EQ(store.countValues(101, 0, testStart().addSecs(3600).toMSecsSinceEpoch()),
                  stored);
        QObject chart;
        ArchiveQuery query(&chart);
        query.setFromBegin();
        query.setInterval(testStart().addSecs(1), testStart().addSecs(2));
        query.appendById(101);
        h.send(1, query);
        auto all = results(h.take(1));
        ASSERT_EQ(all.size(), 1);
        // The ticks of the first run: 1 s to 2 s, with the value before them.
        EXPECT_EQ(all[0]->getParam(101)->getData().size(), 1 + 5);
    }
}

TEST(ServerArchive, UnfinishedAnswersAreBoundedPerConnection)
{
    PlantServer::Options options;
    options.valuesPerPiece = 1;
    Harness h(loadPlant(examplePlantPath()), nullptr, 10000, options);
    QObject chart;
    for (int i = 0; i <= PlantServer::MaxPendingAnswers; ++i) {
        ArchiveQuery query(&chart);
        query.setFromBegin();
        query.setToEnd();
        query.appendById(101);
        h.send(1, query);
    }
    EXPECT_EQ(h.server->pendingAnswerCount(), PlantServer::MaxPendingAnswers);
    EXPECT_EQ(h.take(1).size(), PlantServer::MaxPendingAnswers); // the first piece of each
    EXPECT_EQ(h.log.last(), QStringLiteral("connection 1: refused a query beyond 16 unfinished answers"));
    h.server->connectionClosed(1);
    EXPECT_EQ(h.server->pendingAnswerCount(), 0);
}

TEST(ServerArchive, RetentionPrunesOlderRows)
{
    PlantServer::Options options;
    options.retainMs = 5000;
    Harness h(loadPlant(examplePlantPath()), nullptr, 10000, options);
    MemoryArchiveStore &store = *h.m_ownStore;
    const qint64 start = testStart().toMSecsSinceEpoch();
    // The sine stored a value every tick of the 10 s history; only the last 5 s stay.
    EXPECT_EQ(store.countValues(101, 0, start - 5001), 0);
    EXPECT_EQ(store.countValues(101, start - 5000, start), 21);
    // A minute of ticks later, the pruning has moved on with the simulated time.
    h.ticks(240);
    EXPECT_EQ(store.countValues(101, 0, start + 60000 - 5001), 0);
    EXPECT_EQ(store.countValues(101, start + 55000, start + 60000), 21);
}

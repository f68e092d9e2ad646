// Valid inputs for the archive answer fuzz target: a selector byte (0 a result body, 1 a
// run of series), then bytes written by the library's own writers.

#include "seedwriter.h"

#include "archiveresult.h"
#include "qcontainerpacket.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QTimeZone>

namespace {

QDateTime at(int second, int ms = 0)
{
    return QDateTime(QDate(2025, 11, 3), QTime(12, 0, second, ms), Qt::UTC);
}

ArchiveParamData *doubles(int id, int count)
{
    auto *series = new ArchiveParamData;
    series->id = id;
    for (int i = 0; i < count; ++i)
        series->data.append(ArchiveValue(at(i % 60, i), 0.5 * i, i % 2 ? 8u : 64u));
    return series;
}

ArchiveParamData *mixed(int id)
{
    auto *series = new ArchiveParamData;
    series->id = id;
    series->auxValue = 17;
    series->data.append(ArchiveValue(at(1), 7u, 8));
    series->data.append(ArchiveValue(at(2), QStringLiteral("open"), 8));
    series->data.append(ArchiveValue(at(3), QByteArray("\x00\x01\x02", 3), 4096));
    series->data.append(ArchiveValue(at(4), QVariant(QVariantList{1, 2.5, QStringLiteral("x")}), 8));
    series->data.append(ArchiveValue(QDateTime(QDate(2025, 1, 1), QTime(1, 2, 3), QTimeZone(7200)), QVariant(), 2));
    series->data.append(ArchiveValue(QDateTime(QDate(2025, 1, 1), QTime(1, 2, 3), Qt::LocalTime), QVariant(true), 8));
    series->data.append(ArchiveValue());
    return series;
}

QByteArray resultBody(ArchiveResult &result)
{
    return QByteArray(1, '\0') + result.write().mid(QProtocolStruct::HeaderSize);
}

QByteArray seriesRun(const QList<ArchiveParamData *> &run)
{
    QByteArray bytes;
    {
        QContainerPacket packet(&bytes);
        for (const ArchiveParamData *series : run)
            series->write(packet);
    }
    qDeleteAll(run);
    return QByteArray(1, '\1') + bytes;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter out(argc, argv);
    static QObject client;

    {
        ArchiveResult result;
        result.setParent(&client);
        result.setPiecesCount(2);
        result.setPieceNumber(1);
        result.setFileName(QStringLiteral("/var/archive/answer-1"));
        result.auxId = 3;
        result.setIdQuery(44);
        result.setParam(1, doubles(1, 20));
        result.setParam(2, mixed(2));
        result.setParam(3, nullptr);
        result.setParam(-4, doubles(-4, 0));
        out.add(QStringLiteral("result-mixed"), resultBody(result));
    }
    {
        ArchiveResult result;
        out.add(QStringLiteral("result-empty"), resultBody(result));
    }
    {
        ArchiveResult result;
        result.setParent(&client);
        result.setParam(10, doubles(10, 3));
        auto *broken = doubles(11, 2);
        result.setParam(11, broken);
        QByteArray body = resultBody(result);
        // The second series closes with a word other than its id.
        body[body.size() - 1] = char(body.at(body.size() - 1) ^ 1);
        out.add(QStringLiteral("result-broken-closing"), body);
    }
    out.add(QStringLiteral("series-run"), seriesRun({doubles(5, 4), mixed(6), doubles(0, 1), doubles(0, 0)}));
    return out.finish();
}

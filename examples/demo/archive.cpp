// Archive access: a client asks for the stored values of some parameters over a time
// span, the side that serves the archive divides the request into sections and answers
// piece by piece, and the client reads each piece and reaches the series by parameter.

#include "demosections.h"

#include "archivequery.h"
#include "archivequerycancel.h"
#include "archiveresult.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>

#include <algorithm>
#include <cmath>

namespace {

QString timeText(const QDateTime &t)
{
    return t.isValid() ? t.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz t")) : QStringLiteral("(none)");
}

QString idsText(const QSet<unsigned int> &ids)
{
    QList<unsigned int> sorted = ids.values();
    std::sort(sorted.begin(), sorted.end());
    QStringList parts;
    for (unsigned int id : sorted)
        parts << QString::number(id);
    return parts.join(QLatin1Char(','));
}

void printQuery(QTextStream &out, const QString &label, const ArchiveQuery &q)
{
    out << QStringLiteral("  %1: archive %2 section %3/%4 ids {%5} valid %6\n")
               .arg(label, -10)
               .arg(q.idArchive())
               .arg(q.idSection())
               .arg(q.sectionCount())
               .arg(idsText(q.getIds()))
               .arg(q.isValid() ? QStringLiteral("yes") : QStringLiteral("no"));
}

/** The series a server would take from its archive: one point a minute over the span. */
ArchiveParamData *seriesFor(unsigned int id, const QDateTime &begin, const QDateTime &end)
{
    auto *series = new ArchiveParamData;
    series->id = static_cast<int>(id);
    int minute = 0;
    for (QDateTime t = begin; t <= end; t = t.addSecs(60), ++minute) {
        if (id == 103) {
            // A valve: its position as text, with a fault in the middle of the span.
            const bool fault = minute == 4;
            series->data.append(ArchiveValue(t, minute % 3 ? QStringLiteral("open") : QStringLiteral("closed"),
                                             fault ? 4096u : 8u));
        } else {
            const double value = (id == 101 ? 4.2 : 18.0) + std::sin(minute / 2.0) * (id == 101 ? 0.3 : 2.5);
            series->data.append(ArchiveValue(t, value, value > 20.0 ? 128u : 8u));
        }
    }
    return series;
}

QString valueText(const QVariant &value)
{
    if (value.userType() == QMetaType::Double)
        return QString::number(value.toDouble(), 'f', 3);
    return value.toString();
}

} // namespace

void demoArchive(QTextStream &out)
{
    out << "== Archive access: queries, sections and results\n\n";

    QObject trendWindow;
    const QDateTime begin(QDate(2025, 11, 3), QTime(8, 0, 0, 250), Qt::UTC);
    const QDateTime end(QDate(2025, 11, 3), QTime(8, 10, 0), Qt::UTC);

    ArchiveQuery query(&trendWindow);
    out << "  A new query is valid: " << (query.isValid() ? "yes" : "no") << "\n";
    out << "  setInterval(end before begin): " << (query.setInterval(end, begin) ? "true" : "false") << "\n";
    query.setInterval(begin, end);
    for (unsigned int id : {101u, 102u, 103u, 104u})
        query.appendById(id);
    query.appendById(101); // a repeat changes nothing
    out << "  Span " << timeText(query.getBeginTime()) << " .. " << timeText(query.getEndTime()) << "\n";
    printQuery(out, QStringLiteral("query"), query);

    const QByteArray sent = query.write();
    out << "  On the wire: " << sent.size() << " bytes (32 header + " << sent.size() - 32 << " body)\n";

    // The serving side reads the request: it receives whole seconds.
    ArchiveQuery received(nullptr);
    received.setPacket(sent);
    received.read();
    out << "  The server reads the begin as " << timeText(received.getBeginTime()) << "\n\n";

    // It divides the request into sections, one per archive file here. A section takes
    // neither times nor identifiers from the query and needs its own span.
    out << "  Sections made by the server:\n";
    ArchiveQuery analog(received, 1, 0, 2, {101, 102}, 501);
    ArchiveQuery discrete(received, 2, 1, 2, {103, 104, 103}, 502);
    printQuery(out, QStringLiteral("analog"), analog);
    printQuery(out, QStringLiteral("discrete"), discrete);
    analog.setInterval(received.getBeginTime(), received.getEndTime());
    discrete.setInterval(received.getBeginTime(), received.getEndTime());
    out << "  ... after setInterval on each:\n";
    printQuery(out, QStringLiteral("analog"), analog);
    printQuery(out, QStringLiteral("discrete"), discrete);

    // The answer comes in two pieces, one per section.
    QList<QByteArray> pieces;
    const ArchiveQuery *sections[2] = {&analog, &discrete};
    for (int piece = 0; piece < 2; ++piece) {
        ArchiveResult result;
        result.replyTo(received);
        result.setParent(received.parent());
        result.setPiecesCount(2);
        result.setPieceNumber(piece);
        result.setIdQuery(sections[piece]->idQuery());
        for (unsigned int id : sections[piece]->getIds()) {
            // Parameter 104 has nothing in the archive: its entry travels as a null one.
            result.setParam(static_cast<int>(id),
                            id == 104 ? nullptr
                                      : seriesFor(id, sections[piece]->getBeginTime(), sections[piece]->getEndTime()));
        }
        pieces << result.write();
    }

    // The client reads each piece on its own and reaches the series by parameter.
    out << "\n  The client receives " << pieces.size() << " pieces:\n";
    for (const QByteArray &bytes : pieces) {
        ArchiveResult result;
        result.setPacket(bytes);
        const bool ok = result.read();
        out << QStringLiteral("  piece %1 of %2, query %3, for %4, read %5\n")
                   .arg(result.pieceNumber() + 1)
                   .arg(result.piecesCount())
                   .arg(result.idQuery())
                   .arg(result.parent() == &trendWindow ? QStringLiteral("the trend window") : QStringLiteral("?"))
                   .arg(ok ? QStringLiteral("ok") : QStringLiteral("failed"));
        for (unsigned int id : {101u, 102u, 103u, 104u}) {
            const ArchiveParamData *series = result.getParam(id);
            if (!series)
                continue;
            out << QStringLiteral("    parameter %1: %2 points\n").arg(id).arg(series->getData().size());
            const int shown = std::min(3, static_cast<int>(series->getData().size()));
            for (int i = 0; i < shown; ++i) {
                const ArchiveValue &point = series->getData().at(i);
                out << QStringLiteral("      %1  %2  state %3\n")
                           .arg(point.dateTime.toString(QStringLiteral("hh:mm:ss")))
                           .arg(valueText(point.value), 8)
                           .arg(point.state);
            }
        }
        if (!result.getParam(104) && result.pieceNumber() == 1)
            out << "    parameter 104: no series in this piece\n";
    }

    // A client that gives up calls its query off.
    ArchiveQueryCancel cancel(query);
    const QProtocolHeader header = cancel.getHeader();
    out << QStringLiteral("\n  Cancel of the query: identity %1, %2, %3, for %4\n\n")
               .arg(header.serviceId)
               .arg(header.messageId)
               .arg(header.messageType)
               .arg(cancel.sender() == &trendWindow ? QStringLiteral("the trend window") : QStringLiteral("?"));
}

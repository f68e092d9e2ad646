// Archives: a client asks for the stored values of a parameter over a time span, and
// reads the series out of the answer. The serving side is played by a few lines.
//
// Built and run by the tests (snippets.archive); the reference shows the marked part.
#include <TELORParams5.h>

#include <cstdio>

int main()
{
    QObject trendWindow; // the client's token
    const QDateTime begin(QDate(2026, 1, 1), QTime(8, 0), Qt::UTC);
    const QDateTime end = begin.addSecs(600);

    //! [query]
    ArchiveQuery query(&trendWindow);
    query.setInterval(begin, end); // false, and nothing changed, for an invalid span
    query.appendById(101);
    const QByteArray toServer = query.write();
    //! [query]

    ArchiveQuery asked(nullptr);
    asked.setPacket(toServer);
    asked.read();
    ArchiveResult answer;
    answer.replyTo(asked);
    answer.setParent(asked.parent());
    answer.setPiecesCount(1);
    auto *series = new ArchiveParamData; // the result owns it from setParam() on
    series->id = 101;
    series->data << ArchiveValue(asked.getBeginTime(), 4.25, 8u) << ArchiveValue(asked.getEndTime(), 4.5, 64u);
    answer.setParam(101, series);
    const QByteArray fromServer = answer.write();

    //! [result]
    ArchiveResult result; // owns the series it reads
    result.setPacket(fromServer);
    if (!result.read() || result.parent() != &trendWindow)
        return 1;
    const ArchiveParamData *points = result.getParam(101);
    for (const ArchiveValue &point : points->getData())
        std::printf("%s  %g  state %u\n", qPrintable(getDTstring(point.dateTime)), point.value.toDouble(),
                    point.state);
    //! [result]

    return points->getData().size() == 2 && points->getData().at(1).value.toDouble() == 4.5
                   && points->getData().at(1).state == 64 && points->getData().at(0).dateTime == begin
               ? 0
               : 1;
}

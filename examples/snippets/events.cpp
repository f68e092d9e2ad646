// Events: an event record with its named values travels in the stream form that event
// queries, results and subscriptions carry, and reads back equal.
//
// Built and run by the tests (snippets.events); the reference shows the marked part.
#include <TELORParams5.h>

#include <cstdio>

int main()
{
    //! [record]
    EventStruct event;
    event.typeId = 12;        // the type's number in the event type catalogue
    event.eventMessage = 1;   // one of that type's messages
    event.firstId = 101;      // what the two numbers denote is agreed with the server
    event.secondId = 1;
    event.dateTime = QDateTime(QDate(2026, 1, 1), QTime(8, 0, 5), Qt::UTC);
    event.parameters.insert(QStringLiteral("value"), 16.5);

    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out.setVersion(QDataStream::Qt_5_15);
        out << event; // the stream form
    }
    EventStruct received;
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_5_15);
    in >> received;
    std::printf("type %u message %u at %s: value %g\n", unsigned(received.typeId), unsigned(received.eventMessage),
                qPrintable(getDTstring(received.dateTime)),
                received.parameters.value(QStringLiteral("value")).toDouble());
    //! [record]

    // operator== compares the four numbers and the time; the named values are compared here.
    return received == event && received.isValid() && received.parameters == event.parameters ? 0 : 1;
}

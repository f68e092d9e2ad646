// The road of one value, from subscription to screen: a client subscribes through a
// ClientParamSubscription, the answer arrives as packet bytes and the parameter object
// the client holds shows the new value with its change flag up. The serving side is
// played by a few lines that build the result a server would send.
//
// Built and run by the tests (snippets.roadofavalue); the reference shows the marked part.
#include <TELORParams5.h>

#include <cstdio>

int main()
{
    //! [subscribe]
    QObject panel; // the client: its address is the token that routes answers
    QSharedPointer<AbstractParameterBase> pressure(new BPDouble(101));
    ClientParamSubscription subscription;
    subscription.append(pressure, &panel);
    ParamSubscriptionQuery query = subscription.query(&panel);
    const QByteArray toServer = query.write(); // the application sends these bytes
    //! [subscribe]

    // The server reads the query and answers with the records of what was asked.
    ParamSubscriptionQuery asked(nullptr);
    asked.setPacket(toServer);
    if (!asked.read() || !asked.ids.contains(101))
        return 1;
    BPDouble current(101);
    current.setValue(12.5);
    current.setState(8);
    ParamSubscriptionResult answer;
    answer.replyTo(asked);
    answer.setParent(asked.parent());
    answer.ids << 101;
    answer.dateTime = QDateTime(QDate(2026, 1, 1), QTime(8, 0), Qt::UTC);
    {
        QContainerPacket records(&answer.data);
        current.write(records, true);
    }
    const QByteArray fromServer = answer.write();

    //! [deliver]
    QProtocolStruct message; // as a transport hands it over: untyped
    message.setPacket(fromServer);
    subscription.newDataSlot(message);
    if (pressure->changed())
        std::printf("%g, state %u\n", pressure->floatValue(), pressure->getState());
    subscription.dropFlags(); // the screen has shown what changed
    //! [deliver]

    const bool ok = pressure->floatValue() == 12.5 && pressure->getState() == 8 && !pressure->changed()
        && subscription.dateTime() == answer.dateTime;
    subscription.remove(&panel); // before the client goes away
    return ok ? 0 : 1;
}

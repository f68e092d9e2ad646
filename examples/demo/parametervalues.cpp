// Section 1: parameter objects, client handles and change flags.
//
// A control-room application holds one object per parameter and gives each client (a
// window, a log, a trend) a handle of its own, so that every client can tell what changed
// since it last looked. A server writes parameter records; a receiver reads them into
// objects of its own.

#include "demosections.h"

#include "bpdiscrete.h"
#include "bpdouble.h"
#include "bpstring.h"
#include "parambaseptr.h"
#include "qcontainerpacket.h"

#include <memory>
#include <vector>

namespace {

/** A status word. BPDiscrete leaves the full write to the application's subclass. */
class StatusWord : public BPDiscrete
{
public:
    using BPDiscrete::BPDiscrete;
    void writePrivate(QContainerPacket &packet, bool) const override { BPDiscrete::writePrivate(packet); }
    using BPDiscrete::writePrivate;
};

QString yesNo(bool b)
{
    return b ? QStringLiteral("up") : QStringLiteral("--");
}

QString valueText(const AbstractParameterBase &p)
{
    if (const auto *s = dynamic_cast<const BPString *>(&p))
        return QLatin1Char('"') + s->getValue() + QLatin1Char('"');
    if (const auto *d = dynamic_cast<const BPDiscrete *>(&p))
        return QStringLiteral("0x%1").arg(static_cast<quint32>(d->getValue()), 4, 16, QLatin1Char('0'));
    return QString::number(p.floatValue(), 'f', 2);
}

void printFlags(QTextStream &out, const QString &step, const AbstractParameterBase &p, const ParamBasePtr &screen,
                const ParamBasePtr &log)
{
    out << QStringLiteral("  %1 %2  state %3  parameter %4  screen %5  log %6\n")
               .arg(step, -34)
               .arg(valueText(p), -14)
               .arg(p.getState(), 5)
               .arg(yesNo(p.changed()), yesNo(screen.changed()), yesNo(log.changed()));
}

} // namespace

void demoParameterValues(QTextStream &out)
{
    out << "== 1. Parameter objects, client handles and change flags\n\n";

    BPDouble pressure(101);
    // The screen wants to hear of every state assignment (refresh flag), the log only of changes.
    ParamBasePtr screen(&pressure, true);
    ParamBasePtr log(&pressure, false);
    printFlags(out, QStringLiteral("new parameter, new handles"), pressure, screen, log);

    screen.dropFlag();
    log.dropFlag();
    pressure.setValue(4.75);
    printFlags(out, QStringLiteral("setValue(4.75)"), pressure, screen, log);

    pressure.cleanChanged();
    screen.dropFlag();
    log.dropFlag();
    pressure.setState(8);
    printFlags(out, QStringLiteral("setState(8): a new state"), pressure, screen, log);

    pressure.cleanChanged();
    screen.dropFlag();
    log.dropFlag();
    pressure.setState(8);
    printFlags(out, QStringLiteral("setState(8) again: a refresh"), pressure, screen, log);

    screen.dropFlag();
    pressure.setNoData();
    printFlags(out, QStringLiteral("setNoData()"), pressure, screen, log);

    // The server side: three parameters written as records, back to back.
    out << "\n  A server writes three records; a receiver reads them into objects of its own:\n\n";
    BPDouble temperature(201);
    temperature.setValue(71.5);
    temperature.setState(128); // above the high warning setpoint
    StatusWord status(202);
    status.setValue(0x0105);
    status.setState(4096); // fault
    BPString mode(203);
    mode.setValue(QStringLiteral("automatic"));
    mode.setState(8);

    QByteArray records;
    {
        QContainerPacket packet(&records);
        temperature.write(packet, true);
        status.write(packet, true);
        mode.write(packet, true);
    }

    BPDouble temperatureIn(201);
    StatusWord statusIn(202);
    BPString modeIn(203);
    std::vector<AbstractParameterBase *> received{&temperatureIn, &statusIn, &modeIn};
    QContainerPacket packet(records);
    out << QStringLiteral("  %1 %2 %3 %4 %5\n").arg(QStringLiteral("id"), 5).arg(QStringLiteral("type"), 5)
               .arg(QStringLiteral("value"), -14).arg(QStringLiteral("state"), 6).arg(QStringLiteral("changed"));
    for (AbstractParameterBase *p : received) {
        const bool ok = p->read(packet);
        out << QStringLiteral("  %1 %2 %3 %4 %5%6\n")
                   .arg(p->getIdParameter(), 5)
                   .arg(p->valueType(), 5)
                   .arg(valueText(*p), -14)
                   .arg(p->getState(), 6)
                   .arg(yesNo(p->changed()), ok ? QString() : QStringLiteral("  (refused)"));
    }
    out << QStringLiteral("  %1 bytes for three records; a record for another identifier is refused:\n").arg(records.size());

    BPDouble wrongId(999);
    QContainerPacket again(records);
    out << QStringLiteral("  read of record 201 into parameter 999 -> %1, state now %2, data received %3\n\n")
               .arg(wrongId.read(again) ? QStringLiteral("true") : QStringLiteral("false"))
               .arg(wrongId.getState())
               .arg(wrongId.dataReceived() ? QStringLiteral("yes") : QStringLiteral("no"));
}

// Section: collection and field parameters.
//
// Some parameters hold more than one value. A list parameter holds an ordered list of
// values, a map parameter values keyed by a number; their text is the health of the
// parameter, not its content. A field parameter is a grid of parameters: the server
// side watches the parameters in its cells and sends only the cells that changed, and
// the client side builds its cells from the field's description and applies the records.

#include "demosections.h"

#include "bpfield.h"
#include "bpfieldclient.h"
#include "bplist.h"
#include "bpmap.h"
#include "bpvariant.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"

#include <memory>
#include <vector>

namespace {

ParamInfo cellDescription(unsigned int id, const QString &code)
{
    ParamInfo info;
    info.id = id;
    info.code = code;
    info.type = 1; // a number; a field cell receives it as a variant
    return info;
}

/** The description the client has of a 3 by 4 field of temperatures, one cell left out. */
ParamInfo gridDescription()
{
    ParamInfo info;
    info.id = 500;
    info.code = QStringLiteral("FURNACE.GRID");
    info.type = 4;
    info.rows = 3;
    info.columns = 4;
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) {
            if (r == 1 && c == 2)
                continue; // a thermocouple that is not fitted
            ParamFieldElementInfo element;
            element.row = r;
            element.column = c;
            element.info = cellDescription(501 + r * 4 + c, QStringLiteral("FURNACE.T%1%2").arg(r).arg(c));
            info.elements.append(element);
        }
    }
    return info;
}

void printGrid(QTextStream &out, const BPFieldClient &field, const QString &title)
{
    out << "  " << title << " (field state " << field.getState() << ", changed "
        << (field.changed() ? "yes" : "no") << ")\n";
    for (unsigned int r = 0; r < 3; ++r) {
        out << "   ";
        for (unsigned int c = 0; c < 4; ++c) {
            const QSharedPointer<AbstractParameterBase> cell = field.param(r, c);
            QString text = QStringLiteral("--");
            if (cell && cell->dataReceived())
                text = cell->stringValue(1, 'f') + (cell->changed() ? QStringLiteral("*") : QString());
            else if (cell)
                text = QStringLiteral("?");
            out << QStringLiteral("%1").arg(text, 9);
        }
        out << '\n';
    }
}

QString bytesText(const QByteArray &bytes)
{
    return QString::number(bytes.size()) + QStringLiteral(" bytes");
}

/**
 * The server writes the field's next record and the client reads it; returns the record.
 * @p accepted, when given, receives what the client's read() answered.
 */
QByteArray sendRecord(BPField &grid, BPFieldClient &client, bool *accepted = nullptr)
{
    QByteArray record;
    {
        QContainerPacket packet(&record);
        grid.writeField(packet);
    }
    QContainerPacket packet(record);
    const bool read = client.read(packet);
    if (accepted)
        *accepted = read;
    return record;
}

} // namespace

void demoFields(QTextStream &out)
{
    out << "\n== Collection and field parameters\n\n";

    // A list and a map: their text is the health word of their state.
    BPList recipe(401);
    recipe.setList(QVariantList{QStringLiteral("heat"), 850, QStringLiteral("hold"), 30.0});
    BPMap curve(402);
    QMap<double, QVariant> points;
    points.insert(0.0, 20.0);
    points.insert(10.0, 450.0);
    points.insert(1000000.0, 850.0);
    curve.setMap(points);
    out << "  A list of " << recipe.getList().size() << " steps and a curve of " << curve.getMap().size()
        << " points, by state:\n";
    for (unsigned int state : {2u, 8u, 128u, 4096u}) {
        recipe.setState(state);
        curve.setState(state);
        out << QStringLiteral("    state %1  list \"%2\"  map \"%3\"\n")
                   .arg(state, 4)
                   .arg(recipe.stringValue(), curve.stringValue());
    }
    const QVariantMap byText = curve.getValue().toMap();
    out << "  The curve keyed by text, as getValue() gives it:";
    for (auto it = byText.constBegin(); it != byText.constEnd(); ++it)
        out << ' ' << it.key() << '=' << it.value().toString();
    out << "\n\n";

    // The server side: a field over parameters that the server owns.
    std::vector<std::unique_ptr<BPVariant>> sensors;
    BPField grid(500);
    grid.setDim(3, 4);
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 4; ++c) {
            if (r == 1 && c == 2)
                continue;
            sensors.emplace_back(new BPVariant(501 + r * 4 + c));
            sensors.back()->setValue(600.0 + 10 * r + c);
            sensors.back()->setState(8);
            grid.setElement(r, c, sensors.back().get());
        }
    }

    // The client side: cells built from the description.
    BPFieldClient client(gridDescription());
    printGrid(out, client, QStringLiteral("Client before any record"));

    const QByteArray first = sendRecord(grid, client);
    out << "\n  The server sends every cell (" << bytesText(first) << "):\n";
    printGrid(out, client, QStringLiteral("Client after the first record"));

    client.dropFlag();
    sensors[5]->setValue(655.5); // the cell at row 1, column 1
    sensors[5]->setState(8);
    const QByteArray second = sendRecord(grid, client);
    out << "\n  One sensor changes, and only its cell goes out (" << bytesText(second) << "):\n";
    printGrid(out, client, QStringLiteral("Client after the second record (* changed)"));

    client.dropFlag();
    bool accepted = false;
    const QByteArray third = sendRecord(grid, client, &accepted);
    out << "\n  Nothing changed: a record of no cells (" << bytesText(third) << "), read "
        << (accepted ? "true" : "false") << ", field changed " << (client.changed() ? "yes" : "no") << "\n";
}

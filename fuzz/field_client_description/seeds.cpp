// Writes a field description followed by field records, both built with the library's
// own writers, as the seed corpus of the field description fuzz target. Each seed starts
// with the selector byte (0: the records' identifier is taken as written).

#include "bpfield.h"
#include "bplist.h"
#include "bpmap.h"
#include "bpvariant.h"
#include "describe.h"
#include "paraminfo.h"
#include "qcontainerpacket.h"
#include "seedwriter.h"

namespace {

ParamInfo cell(unsigned int id, int type)
{
    ParamInfo info = describe::described(id, QStringLiteral("cell%1").arg(id), type);
    info.name.setEngName(QStringLiteral("Cell %1").arg(id));
    return info;
}

QByteArray seed(const ParamInfo &description, const BPField *field)
{
    QByteArray bytes(1, '\0');
    QContainerPacket out(&bytes);
    description.write(out);
    if (field)
        field->writeField(out);
    return bytes;
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);

    ParamInfo description = describe::described(300, QStringLiteral("grid"), 4);
    description.rows = 2;
    description.columns = 2;
    describe::addCell(description, 0, 0, cell(301, 1));
    describe::addCell(description, 0, 1, cell(302, 6));
    describe::addCell(description, 1, 0, cell(303, 7));
    describe::addCell(description, 1, 1, cell(304, 4));

    BPVariant number(301);
    number.setValue(12.5);
    number.setState(8);
    BPList list(302);
    list.setList(QVariantList{1, QStringLiteral("two")});
    list.setState(8);
    BPMap map(303);
    QMap<double, QVariant> m;
    m.insert(1.0, QStringLiteral("one"));
    map.setMap(m);
    BPField field(300);
    field.setDim(2, 2);
    field.setElement(0, 0, &number);
    field.setElement(0, 1, &list);
    field.setElement(1, 0, &map);

    seeds.add(QStringLiteral("description-only"), seed(description, nullptr));
    seeds.add(QStringLiteral("description-and-record"), seed(description, &field));
    number.setValue(13.0);
    number.setState(128);
    seeds.add(QStringLiteral("description-and-change"), seed(description, &field));

    const ParamInfo empty = describe::described(310, QStringLiteral("empty"), 4);
    BPField nothing(310);
    nothing.setDim(0, 0);
    seeds.add(QStringLiteral("empty-field"), seed(empty, &nothing));
    return seeds.finish();
}

// Writes field records for each description of the field record fuzz target, built with
// the library's own writers: a BPField over parameters that match the cells writes its
// first record (every cell) and a later one (the changed cells only). Each seed starts
// with the byte that selects the description.

#include "fieldshapes.h"

#include "bpfield.h"
#include "bplist.h"
#include "bpmap.h"
#include "bpvariant.h"
#include "qcontainerpacket.h"
#include "seedwriter.h"

#include <memory>
#include <vector>

namespace {

/** The parameters of a sending field, owned here so that they outlive the field. */
struct Elements
{
    std::vector<std::unique_ptr<AbstractParameterBase>> owned;

    AbstractParameterBase *make(const ParamInfo &info, int serial)
    {
        switch (info.type) {
        case 6: {
            auto *list = new BPList(info.id);
            list->setList(QVariantList{serial, QStringLiteral("entry"), QVariantList{1.5}});
            list->setState(8);
            owned.emplace_back(list);
            break;
        }
        case 7: {
            auto *map = new BPMap(info.id);
            QMap<double, QVariant> m;
            m.insert(serial, QStringLiteral("value"));
            m.insert(-0.5, 3);
            map->setMap(m);
            map->setState(4096);
            owned.emplace_back(map);
            break;
        }
        default: {
            auto *variant = new BPVariant(info.id);
            if (serial % 2) {
                variant->limitsPrivate().setLowPossibleSetpoint(true, -10.0);
                variant->limitsPrivate().setHiWarningSetpoint(true, 10.0);
            }
            variant->setValue(serial * 1.25);
            variant->setState(8);
            owned.emplace_back(variant);
            break;
        }
        }
        return owned.back().get();
    }
};

QByteArray selected(fieldfuzz::Shape shape, const QByteArray &records)
{
    return QByteArray(1, char(shape)) + records;
}

/** The first record and a record after one element changed, for the cells in range. */
void addShape(SeedWriter &seeds, fieldfuzz::Shape shape, const QString &name, unsigned int rows,
              unsigned int columns)
{
    const ParamInfo description = fieldfuzz::description(shape);
    Elements elements;
    BPField field(description.id);
    field.setDim(rows, columns);
    int serial = 0;
    for (const ParamFieldElementInfo &entry : description.elements) {
        if (entry.info.type == 4)
            continue;
        field.setElement(entry.row, entry.column, elements.make(entry.info, ++serial));
    }
    QByteArray first;
    {
        QContainerPacket out(&first);
        field.writeField(out);
    }
    seeds.add(name + QStringLiteral("-first"), selected(shape, first));
    if (!elements.owned.empty())
        elements.owned.front()->setState(64);
    QByteArray later = first;
    {
        QContainerPacket out(&later); // appends behind the first record
        field.writeField(out);
    }
    seeds.add(name + QStringLiteral("-first-and-change"), selected(shape, later));
}

} // namespace

int main(int argc, char **argv)
{
    SeedWriter seeds(argc, argv);
    addShape(seeds, fieldfuzz::Mixed, QStringLiteral("mixed"), 2, 3);
    addShape(seeds, fieldfuzz::Grid, QStringLiteral("grid"), 16, 16);
    addShape(seeds, fieldfuzz::Huge, QStringLiteral("huge"), 65535, 65537);
    addShape(seeds, fieldfuzz::Negative, QStringLiteral("negative"), 1, 1);
    addShape(seeds, fieldfuzz::ZeroIdentity, QStringLiteral("zero-identity"), 1, 1);

    // A record without cells.
    BPField empty(fieldfuzz::FieldId);
    empty.setDim(2, 3);
    QByteArray none;
    {
        QContainerPacket out(&none);
        empty.writeField(out);
    }
    seeds.add(QStringLiteral("mixed-no-cells"), selected(fieldfuzz::Mixed, none));
    return seeds.finish();
}

#include "paraminfo.h"

#include "descriptionwire_p.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

namespace {

bool readInfo(ParamInfo &info, QContainerPacket &packet, int level);

// Reads one cell whose description stands at nesting level @p level.
bool readElement(ParamFieldElementInfo &element, QContainerPacket &packet, int level)
{
    packet >> element.row >> element.column;
    return readInfo(element.info, packet, level);
}

// Reads a description whose own cells are at nesting level @p level + 1.
bool readInfo(ParamInfo &info, QContainerPacket &packet, int level)
{
    qint8 option = 0;
    qint8 precision = 0;
    qint8 format = 0;
    packet >> info.id >> info.code >> info.code2 >> info.code3 >> info.type
           >> info.name >> info.unitX >> info.unit >> info.rows >> info.columns
           >> option >> precision >> format;
    RecentRecords::fit(info.code);
    RecentRecords::fit(info.code2);
    RecentRecords::fit(info.code3);
    info.option = option != 0;
    info.precision = static_cast<signed char>(precision);
    info.format = static_cast<char>(format);

    if (!info.limits.read(packet))
        return false;
    if (!info.enumeration.read(packet))
        return false;
    if (!info.bitField.read(packet))
        return false;

    // Every cell takes bytes, and a cell read where the data has ended has type 0 and
    // fails; so the count can't make this loop run beyond the data. Each cell is read in
    // place at the end of the list, which spares a copy of the whole description, and
    // taken out again when it fails.
    quint32 elementCount = 0;
    packet >> elementCount;
    for (quint32 i = 0; i < elementCount; ++i) {
        if (level + 1 > ParamInfo::MaxCellNesting)
            return false;
        info.elements.append(ParamFieldElementInfo());
        if (!readElement(info.elements.last(), packet, level + 1)) {
            info.elements.removeLast();
            return false;
        }
    }

    quint32 tableCount = 0;
    packet >> tableCount;
    DescriptionWire::readEntries(packet, tableCount, [&]() {
        double key = 0.0;
        quint32 value = 0;
        packet >> key >> value;
        info.valueTable.insert(key, value);
        return true;
    });

    info.setpoints.read(packet);
    TelorWire::readList(packet, info.idList);
    packet >> info.extraText;
    RecentRecords::fit(info.extraText);
    return info.type != 0;
}

} // namespace

ParamInfo::ParamInfo()
    : id(0)
    , type(0)
    , rows(0)
    , columns(0)
    , option(false)
    , precision(0)
    , format('f')
{
}

ParamInfo::ParamInfo(const ParamInfo &other) = default;
ParamInfo &ParamInfo::operator=(const ParamInfo &other) = default;
ParamInfo::~ParamInfo() = default;

bool ParamInfo::operator==(const ParamInfo &other) const
{
    return id == other.id && code == other.code && type == other.type;
}

bool ParamInfo::isValid() const
{
    return !code.isEmpty() && id != 0 && type != 0;
}

QString ParamInfo::getName(const QString &language) const
{
    return name.translate(language, true);
}

QString ParamInfo::getUnit(const QString &language) const
{
    return unit.translate(language, true);
}

QString ParamInfo::getUnitX(const QString &language) const
{
    return unitX.translate(language, true);
}

void ParamInfo::write(QContainerPacket &packet) const
{
    packet << quint32(id) << code << code2 << code3 << qint32(type)
           << name << unitX << unit << qint32(rows) << qint32(columns)
           << qint8(option ? 1 : 0) << qint8(precision) << qint8(format);
    limits.write(packet);
    enumeration.write(packet);
    bitField.write(packet);

    packet << qint32(elements.size());
    for (const ParamFieldElementInfo &element : elements)
        element.write(packet);

    packet << qint32(valueTable.size());
    for (auto it = valueTable.constBegin(); it != valueTable.constEnd(); ++it)
        packet << it.key() << quint32(it.value());

    setpoints.write(packet);
    packet << idList << extraText;
}

bool ParamInfo::read(QContainerPacket &packet)
{
    return readInfo(*this, packet, 0);
}

ParamFieldElementInfo::ParamFieldElementInfo()
    : row(-1)
    , column(-1)
{
}

void ParamFieldElementInfo::write(QContainerPacket &packet) const
{
    packet << qint32(row) << qint32(column);
    info.write(packet);
}

bool ParamFieldElementInfo::read(QContainerPacket &packet)
{
    return readElement(*this, packet, 0);
}

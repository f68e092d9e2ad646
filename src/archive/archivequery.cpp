#include "archivequery.h"

#include "abstractparameterbase.h"
#include "clienttoken_p.h"
#include "qcontainerpacket.h"
#include "wirestream_p.h"

namespace {

/** @p time without its millisecond part, if it is valid; otherwise as it is. */
QDateTime wholeSeconds(const QDateTime &time)
{
    if (!time.isValid())
        return time;
    return time.addMSecs(-time.time().msec());
}

} // namespace

ArchiveQuery::ArchiveQuery(QObject *parent)
    : fromBegin(false)
    , toEnd(false)
    , m_parent(parent)
    , m_idArchive(0)
    , m_idSection(0)
    , m_sectionCount(0)
    , m_idQuery(0)
    , m_idEventQuery(0)
    , m_restoreAperture(false)
{
    serviceId = 3;
    messageId = 7;
    messageType = 1;
}

ArchiveQuery::ArchiveQuery(const ArchiveQuery &other) = default;

ArchiveQuery::ArchiveQuery(const ArchiveQuery &query, int idArchive, int idSection, int sectionCount,
                           const QList<int> &ids, int idQuery)
    : QProtocolStruct(query)
    , fromBegin(query.fromBegin)
    , toEnd(query.toEnd)
    , m_parent(query.m_parent)
    , m_idArchive(idArchive)
    , m_idSection(idSection)
    , m_sectionCount(sectionCount)
    , m_idQuery(idQuery)
    , m_idEventQuery(query.m_idEventQuery)
    , m_restoreAperture(query.m_restoreAperture)
{
    for (int id : ids)
        this->ids.insert(static_cast<unsigned int>(id));
}

ArchiveQuery &ArchiveQuery::operator=(const ArchiveQuery &other) = default;

ArchiveQuery::~ArchiveQuery() = default;

void ArchiveQuery::writePrivate(QContainerPacket &packet) const
{
    const bool valid = isValid();
    packet << valid << TelorToken::toWire(m_parent);
    if (!valid)
        return;
    packet << fromBegin;
    if (!fromBegin)
        packet << beginTime;
    packet << toEnd;
    if (!toEnd)
        packet << endTime;
    packet << ids << qint32(m_idEventQuery) << m_restoreAperture;
}

bool ArchiveQuery::readPrivate(QContainerPacket &packet)
{
    bool valid = false;
    qint64 token = 0;
    packet >> valid >> token;
    m_parent = TelorToken::fromWire(token);
    if (!valid)
        return true;

    packet >> fromBegin;
    if (!fromBegin)
        TelorWire::readDateTime(packet, beginTime);
    packet >> toEnd;
    if (!toEnd)
        TelorWire::readDateTime(packet, endTime);
    TelorWire::readSet(packet, ids);
    packet >> m_idEventQuery >> m_restoreAperture;

    beginTime = wholeSeconds(beginTime);
    endTime = wholeSeconds(endTime);
    return true;
}

bool ArchiveQuery::setInterval(const QDateTime &begin, const QDateTime &end)
{
    if (!begin.isValid())
        return false;
    if (!end.isValid() || end < begin)
        return false;
    beginTime = begin.toTimeSpec(Qt::UTC);
    endTime = end.toTimeSpec(Qt::UTC);
    fromBegin = false;
    toEnd = false;
    return true;
}

bool ArchiveQuery::setBeginPoint(const QDateTime &begin)
{
    beginTime = begin.toTimeSpec(Qt::UTC);
    fromBegin = false;
    return true;
}

bool ArchiveQuery::setEndPoint(const QDateTime &end)
{
    endTime = end.toTimeSpec(Qt::UTC);
    toEnd = false;
    return true;
}

void ArchiveQuery::setFromBegin()
{
    fromBegin = true;
    beginTime = QDateTime();
}

void ArchiveQuery::setToEnd()
{
    toEnd = true;
    endTime = QDateTime();
}

QDateTime ArchiveQuery::getBeginTime() const
{
    return beginTime;
}

QDateTime ArchiveQuery::getEndTime() const
{
    return endTime;
}

bool ArchiveQuery::isValid() const
{
    if (!fromBegin && !beginTime.isValid())
        return false;
    if (!toEnd && !endTime.isValid())
        return false;
    if (beginTime.isValid() && endTime.isValid() && endTime < beginTime)
        return false;
    return !ids.isEmpty();
}

void ArchiveQuery::appendById(unsigned int id)
{
    ids.insert(id);
}

void ArchiveQuery::appendParam(AbstractParameterBase *param)
{
    if (param)
        ids.insert(param->getIdParameter());
}

void ArchiveQuery::removeIdentifier(int id)
{
    ids.remove(static_cast<unsigned int>(id));
}

void ArchiveQuery::clearIdentifiers()
{
    ids.clear();
}

const QSet<unsigned int> &ArchiveQuery::getIds() const
{
    return ids;
}

QObject *ArchiveQuery::parent() const
{
    return m_parent;
}

int ArchiveQuery::idArchive() const
{
    return m_idArchive;
}

int ArchiveQuery::idSection() const
{
    return m_idSection;
}

int ArchiveQuery::sectionCount() const
{
    return m_sectionCount;
}

int ArchiveQuery::idQuery() const
{
    return m_idQuery;
}

int ArchiveQuery::idEventQuery() const
{
    return m_idEventQuery;
}

ArchiveValue ArchiveQuery::lastValue(unsigned int id) const
{
    return lastValues.value(id);
}

void ArchiveQuery::setLastValue(unsigned int id, const ArchiveValue &value)
{
    lastValues.insert(id, value);
}

QMap<unsigned int, ArchiveValue> ArchiveQuery::lastValueMap() const
{
    return lastValues;
}

void ArchiveQuery::setLastValueMap(const QMap<unsigned int, ArchiveValue> &values)
{
    lastValues = values;
}

void ArchiveQuery::setRestoreAperture(bool restore)
{
    m_restoreAperture = restore;
}

bool ArchiveQuery::restoreAperture() const
{
    return m_restoreAperture;
}

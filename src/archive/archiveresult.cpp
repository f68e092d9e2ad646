#include "archiveresult.h"

#include <memory>

#include "clienttoken_p.h"
#include "qcontainerpacket.h"

ArchiveResult::ArchiveResult()
    : m_parent(nullptr)
    , m_piecesCount(0)
    , m_pieceNumber(0)
    , auxId(0)
    , m_idQuery(0)
{
}

ArchiveResult::~ArchiveResult()
{
    qDeleteAll(params);
}

void ArchiveResult::writePrivate(QContainerPacket &packet) const
{
    packet << qint32(params.size()) << TelorToken::toWire(m_parent) << qint32(m_piecesCount)
           << qint32(m_pieceNumber) << m_fileName << qint32(auxId) << qint32(m_idQuery);
    for (auto it = params.cbegin(); it != params.cend(); ++it) {
        packet << qint32(it.key());
        if (!it.value()) {
            packet << quint8(0);
            continue;
        }
        packet << quint8(1);
        it.value()->write(packet);
    }
}

bool ArchiveResult::readPrivate(QContainerPacket &packet)
{
    qint32 count = 0;
    qint64 token = 0;
    packet >> count >> token >> m_piecesCount >> m_pieceNumber >> m_fileName >> auxId >> m_idQuery;
    m_parent = TelorToken::fromWire(token);
    if (count < 1)
        return true;

    for (qint32 i = 0; i < count; ++i) {
        // An entry read from nothing has flag 0 and would leave no trace: once the bytes
        // have run out, the remaining entries can be passed over at once.
        if (packet.atEnd())
            break;
        qint32 key = 0;
        quint8 flag = 0;
        packet >> key >> flag;
        if (flag == 0)
            continue;
        std::unique_ptr<ArchiveParamData> series(new ArchiveParamData);
        if (!series->read(packet))
            return false;
        setParam(key, series.release());
    }
    return true;
}

ArchiveParamData *ArchiveResult::getParam(unsigned int id) const
{
    return params.value(static_cast<int>(id), nullptr);
}

const QObject *ArchiveResult::parent() const
{
    return m_parent;
}

int ArchiveResult::piecesCount() const
{
    return m_piecesCount;
}

int ArchiveResult::pieceNumber() const
{
    return m_pieceNumber;
}

QString ArchiveResult::fileName() const
{
    return m_fileName;
}

int ArchiveResult::idQuery() const
{
    return m_idQuery;
}

void ArchiveResult::setParam(int id, ArchiveParamData *series)
{
    auto it = params.find(id);
    if (it == params.end()) {
        params.insert(id, series);
        return;
    }
    // QMap::find gives the most recently inserted entry of a key, the one that insert()
    // would overwrite.
    if (it.value() != series)
        delete it.value();
    it.value() = series;
}

void ArchiveResult::setParent(const QObject *parent)
{
    m_parent = parent;
}

void ArchiveResult::setPiecesCount(int piecesCount)
{
    m_piecesCount = piecesCount;
}

void ArchiveResult::setPieceNumber(int pieceNumber)
{
    m_pieceNumber = pieceNumber;
}

void ArchiveResult::setFileName(const QString &fileName)
{
    m_fileName = fileName;
}

void ArchiveResult::setIdQuery(int idQuery)
{
    m_idQuery = idQuery;
}

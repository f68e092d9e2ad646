#include "archivequerycancel.h"

#include "archivequery.h"
#include "clienttoken_p.h"
#include "qcontainerpacket.h"

ArchiveQueryCancel::ArchiveQueryCancel(const QObject *sender)
    : m_sender(sender)
{
    serviceId = 3;
    messageId = 10;
    messageType = 1;
}

ArchiveQueryCancel::ArchiveQueryCancel(const ArchiveQuery &query)
    : m_sender(query.parent())
{
    replyTo(query);
    messageId = 10;
}

ArchiveQueryCancel::~ArchiveQueryCancel() = default;

void ArchiveQueryCancel::writePrivate(QContainerPacket &packet) const
{
    packet << TelorToken::toWire(m_sender);
}

bool ArchiveQueryCancel::readPrivate(QContainerPacket &packet)
{
    qint64 token = 0;
    packet >> token;
    m_sender = TelorToken::fromWire(token);
    return true;
}

const QObject *ArchiveQueryCancel::sender() const
{
    return m_sender;
}

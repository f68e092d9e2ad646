#include "qprotocolstruct.h"

#include "qcontainerpacket.h"

#include <QtCore/QtEndian>

namespace {

constexpr int HeaderWords = 8;
constexpr qint32 HeaderVersion = 1;

} // namespace

QProtocolStruct::QProtocolStruct()
    : serviceId(0)
    , messageId(0)
    , messageType(0)
    , m_version(HeaderVersion)
    , m_bodyLength(0)
    , m_source(0)
    , m_session(0)
    , m_sequence(0)
{
}

QProtocolStruct::QProtocolStruct(const QProtocolStruct &other) = default;
QProtocolStruct &QProtocolStruct::operator=(const QProtocolStruct &other) = default;
QProtocolStruct::~QProtocolStruct() = default;

QByteArray QProtocolStruct::headerBytes(qint32 bodyLength) const
{
    const qint32 words[HeaderWords] = {serviceId, messageId, messageType, m_version,
                                       bodyLength, m_source, m_session, m_sequence};
    QByteArray bytes(HeaderSize, Qt::Uninitialized);
    for (int i = 0; i < HeaderWords; ++i)
        qToBigEndian<qint32>(words[i], bytes.data() + 4 * i);
    return bytes;
}

QByteArray QProtocolStruct::write()
{
    QByteArray bytes = headerBytes(0);
    {
        QContainerPacket body(&bytes);
        writePrivate(body);
    }
    m_version = HeaderVersion;
    m_bodyLength = bytes.size() - HeaderSize;
    qToBigEndian<qint32>(m_bodyLength, bytes.data() + 16);
    m_packet = bytes;
    return bytes;
}

bool QProtocolStruct::read()
{
    if (m_packet.size() < HeaderSize)
        return false;
    const char *raw = m_packet.constData();
    qint32 words[HeaderWords];
    for (int i = 0; i < HeaderWords; ++i)
        words[i] = qFromBigEndian<qint32>(raw + 4 * i);
    serviceId = words[0];
    messageId = words[1];
    messageType = words[2];
    m_version = words[3];
    m_bodyLength = words[4];
    m_source = words[5];
    m_session = words[6];
    m_sequence = words[7];

    const int available = m_packet.size() - HeaderSize;
    const int length = (m_bodyLength >= 0 && m_bodyLength <= available) ? m_bodyLength : available;
    // The body is read in place: the kept packet outlives the read, and a message cannot
    // replace its own packet from within readPrivate().
    const QByteArray packetBytes = m_packet;
    QContainerPacket body(QByteArray::fromRawData(packetBytes.constData() + HeaderSize, length));
    return readPrivate(body);
}

void QProtocolStruct::rewriteHeader()
{
    if (m_packet.size() < HeaderSize)
        return;
    m_bodyLength = m_packet.size() - HeaderSize;
    m_packet.replace(0, HeaderSize, headerBytes(m_bodyLength));
}

QProtocolHeader QProtocolStruct::getHeader() const
{
    QProtocolHeader header;
    header.serviceId = serviceId;
    header.messageId = messageId;
    header.messageType = messageType;
    header.version = m_version;
    header.bodyLength = m_bodyLength;
    header.source = m_source;
    header.session = m_session;
    header.sequence = m_sequence;
    return header;
}

void QProtocolStruct::replyTo(const QProtocolStruct &query)
{
    serviceId = query.serviceId;
    messageId = query.messageId;
    messageType = query.messageType;
    m_source = query.m_source;
    m_session = query.m_session;
    m_sequence = query.m_sequence;
}

void QProtocolStruct::setRoute(qint32 source, qint32 session, qint32 sequence)
{
    m_source = source;
    m_session = session;
    m_sequence = sequence;
}

void QProtocolStruct::setPacket(const QProtocolStruct &other)
{
    m_packet = other.m_packet;
}

void QProtocolStruct::setPacket(const QByteArray &bytes)
{
    m_packet = bytes;
}

QByteArray QProtocolStruct::packet() const
{
    return m_packet;
}

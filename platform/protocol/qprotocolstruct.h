#ifndef QPROTOCOLSTRUCT_H
#define QPROTOCOLSTRUCT_H

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include "telorprotocol5_export.h"

class QContainerPacket;

/**
 * @brief The eight 32-bit words in front of every message body.
 *
 * On the wire each word is big-endian, in the order of the members. `serviceId`,
 * `messageId` and `messageType` are the message identity; `version` is always 1 when
 * written; `bodyLength` counts the bytes after the header; `source`, `session` and
 * `sequence` identify the query that a message belongs to.
 */
struct QProtocolHeader
{
    /** Word 1: the service of the message identity. */
    qint32 serviceId = 0;
    /** Word 2: the message within its service. */
    qint32 messageId = 0;
    /** Word 3: the kind of message (query, answer, ...), the third part of the identity. */
    qint32 messageType = 0;
    /** Word 4: the header version, 1 in every header this library writes. */
    qint32 version = 1;
    /** Word 5: the number of body bytes that follow the header. */
    qint32 bodyLength = 0;
    /** Word 6: the sender of the query that the message belongs to. */
    qint32 source = 0;
    /** Word 7: the session of that query. */
    qint32 session = 0;
    /** Word 8: the sequence number of that query within its session. */
    qint32 sequence = 0;
};

/**
 * @brief Base of every message: the header, the kept packet and the two body hooks.
 *
 * A derived message stamps its identity in its constructor by assigning `serviceId`,
 * `messageId` and `messageType`, and streams its body in writePrivate() and
 * readPrivate(). The base frames the body:
 *
 * - write() serialises the header and the body, keeps the result as the message's packet
 *   and returns it.
 * - setPacket() takes bytes from a transport or another message; read() then parses the
 *   header into this message and runs readPrivate() on the body. A packet shorter than a
 *   header reads as `false` and leaves the message untouched.
 *
 * Copies share the packet bytes (implicitly shared) and copy the whole header.
 */
class TELORPROTOCOL5_EXPORT QProtocolStruct
{
public:
    /** Size of the header on the wire, in bytes. */
    static constexpr int HeaderSize = 32;

    /** A header of zeros, apart from the version 1, and no packet. */
    QProtocolStruct();
    /** Copies the whole header and shares the kept packet bytes. */
    QProtocolStruct(const QProtocolStruct &other);
    /** Copies the whole header and shares the kept packet bytes. */
    QProtocolStruct &operator=(const QProtocolStruct &other);
    virtual ~QProtocolStruct();

    /**
     * Serialises header and body, keeps the bytes as this message's packet and returns
     * them. The body-length word is that of the body just written.
     */
    virtual QByteArray write();

    /**
     * Parses the header of the kept packet into this message and runs readPrivate() on
     * the body. Returns `false` for a packet shorter than a header, otherwise what
     * readPrivate() returns. The body is the bytes after the header, cut to the body
     * length word when that word is not larger than what is there.
     */
    virtual bool read();

    /**
     * Re-serialises the header words into the kept packet, with the body length of the
     * body that the packet holds. Does nothing when no packet is kept.
     */
    virtual void rewriteHeader();

    /** Streams the body. The base writes nothing. */
    virtual void writePrivate(QContainerPacket &) const {}
    /** Reads the body; returns whether it is acceptable. The base accepts an empty body. */
    virtual bool readPrivate(QContainerPacket &) { return true; }

    /** The header words as this message holds them now. */
    QProtocolHeader getHeader() const;

    /** Makes this message an answer to @p query: copies words 1 to 3 and 6 to 8. */
    void replyTo(const QProtocolStruct &query);

    /** Stamps the words that identify a query (6 to 8), as a transport does. */
    void setRoute(qint32 source, qint32 session, qint32 sequence);

    /** Takes over the packet that @p other holds, so that a typed message can read it. */
    void setPacket(const QProtocolStruct &other);
    /** Takes bytes from a transport: a header followed by a body. */
    void setPacket(const QByteArray &bytes);
    /** The kept packet: the bytes of the last write() or setPacket(). */
    QByteArray packet() const;

protected:
    /** Header word 1; a derived message assigns its identity in its constructor. */
    int serviceId;
    /** Header word 2; assigned by the derived message's constructor. */
    int messageId;
    /** Header word 3; assigned by the derived message's constructor. */
    int messageType;

private:
    QByteArray headerBytes(qint32 bodyLength) const;

    qint32 m_version;
    qint32 m_bodyLength;
    qint32 m_source;
    qint32 m_session;
    qint32 m_sequence;
    QByteArray m_packet;
};

#endif // QPROTOCOLSTRUCT_H

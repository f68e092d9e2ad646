#ifndef ARCHIVEQUERYCANCEL_H
#define ARCHIVEQUERYCANCEL_H

#include "qprotocolstruct.h"
#include "telorparams5_export.h"

class ArchiveQuery;
class QObject;

/**
 * @brief Calls an ArchiveQuery off.
 *
 * Body: the token of the client whose query is called off, as a signed 64-bit integer
 * holding the pointer's value. readPrivate() reads it and returns true.
 */
class TELORPARAMS5_EXPORT ArchiveQueryCancel : public QProtocolStruct
{
public:
    /** A cancel for the client @p sender, with the identity 3, 10, 1. */
    explicit ArchiveQueryCancel(const QObject *sender);

    /**
     * A cancel of @p query: takes the query's token, makes this message an answer to the
     * query (its identity and routing words, see QProtocolStruct::replyTo()) and then sets
     * only `messageId` to 10. The other words keep what the query's header gave them.
     */
    explicit ArchiveQueryCancel(const ArchiveQuery &query);

    ~ArchiveQueryCancel() override;

    void writePrivate(QContainerPacket &packet) const override;
    /** Reads the token; returns true. */
    bool readPrivate(QContainerPacket &packet) override;

    /** The token of the client whose query is called off; never dereferenced. */
    const QObject *sender() const;

private:
    const QObject *m_sender;
};

#endif // ARCHIVEQUERYCANCEL_H

#ifndef SERVERTEST_H
#define SERVERTEST_H

// The plant server in a test: a server over a plant from XML, with every frame it sends
// kept per connection and every log line kept in order.

#include "memoryarchivestore.h"
#include "telortest.h"
#include "plantfile.h"
#include "plantserver.h"
#include "qprotocolstruct.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtCore/QtEndian>

#include <memory>

namespace servertest {

/** The example plant that ships with the package. */
inline QString examplePlantPath()
{
    return QStringLiteral(TELOR_SOURCE_DIR "/examples/plant/boiler.xml");
}

inline Plant loadPlant(const QString &path)
{
    Plant plant;
    PlantFile file;
    if (!file.load(path, &plant))
        qFatal("%s", qPrintable(file.error()));
    return plant;
}

inline Plant plantFromXml(const QByteArray &xml)
{
    Plant plant;
    PlantFile file;
    if (!file.loadData(xml, QStringLiteral("test.xml"), &plant))
        qFatal("%s", qPrintable(file.error()));
    return plant;
}

/** An untyped frame as a transport hands it over. */
inline QProtocolStruct frameOf(const QByteArray &packet)
{
    QProtocolStruct frame;
    frame.setPacket(packet);
    return frame;
}

/** The identity words of a sent packet. */
inline QList<qint32> identityOfPacket(const QByteArray &packet)
{
    QList<qint32> words;
    for (int i = 0; i < 3 && packet.size() >= 12; ++i)
        words.append(qFromBigEndian<qint32>(packet.constData() + 4 * i));
    return words;
}

inline QDateTime testStart()
{
    return QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC);
}

/** A running server with its frames and log lines. */
class Harness
{
public:
    explicit Harness(const Plant &plant, ArchiveStore *store = nullptr, qint64 historyMs = 10000,
                     PlantServer::Options options = PlantServer::Options())
    {
        if (!store) {
            m_ownStore.reset(new MemoryArchiveStore);
            store = m_ownStore.get();
        }
        options.start = testStart();
        options.historyMs = historyMs;
        server.reset(new PlantServer(plant, store, options));
        QObject::connect(server.get(), &PlantServer::sendFrame,
                         [this](quint64 connection, const QByteArray &frame) { sent[connection].append(frame); });
        QObject::connect(server.get(), &PlantServer::log, [this](const QString &line) { log.append(line); });
        QString error;
        started = server->start(&error);
        startError = error;
    }

    /** Sends @p message, written, from @p connection. */
    void send(quint64 connection, QProtocolStruct &message) { server->receive(connection, frameOf(message.write())); }

    /** The frames sent to @p connection since the last call, and forgets them. */
    QList<QByteArray> take(quint64 connection) { return sent.take(connection); }

    void ticks(int n)
    {
        for (int i = 0; i < n; ++i)
            server->tick();
    }

    std::unique_ptr<MemoryArchiveStore> m_ownStore;
    std::unique_ptr<PlantServer> server;
    QHash<quint64, QList<QByteArray>> sent;
    QStringList log;
    bool started = false;
    QString startError;
};

} // namespace servertest

#endif // SERVERTEST_H

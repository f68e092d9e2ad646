// Feeds arbitrary frames to the plant server's request handler, PlantServer::receive,
// on three connections, with ticks and closes in between (see requeststream.h). The
// server must answer or ignore every frame without crashing or leaking, and once every
// connection has closed it must hold nothing for any of them: no subscription, no
// unfinished answer, no event subscription, no connection.

#include "fuzztarget.h"
#include "requeststream.h"

#include "memoryarchivestore.h"
#include "plantfile.h"
#include "plantserver.h"
#include "qprotocolstruct.h"

#include <cstddef>
#include <cstdint>

namespace {

// A plant with one parameter of every kind, a status word and a small field.
const char plantXml[] = R"(<plant name="fuzz">
<events><Event id="1" name="alarm"><Message id="1" name="normal"/></Event><Event id="2" name="bits"/></events>
<tagTypes><tagType key="area"><text key="en">Area</text></tagType></tagTypes>
<parameters>
<param id="1" code="V" type="variant" lo="0" hi="100" les="10" lws="20" uws="80" ues="90"><tag type="area" value="a"/><driver kind="sine" mean="50" amplitude="60" period="2s"/></param>
<param id="2" code="D" type="double" uws="1"><driver kind="randomwalk" start="0" step="1"/></param>
<param id="3" code="E" type="discrete"><case value="0"><short lang="en">off</short></case><driver kind="steps" period="1s"><step at="0s" value="0"/><step at="500ms" value="1"/></driver></param>
<param id="4" code="S" type="status"><bit number="0"><name lang="en">b</name></bit><combination word="3"/><driver kind="bits" period="250ms" words="0 1 3"/></param>
<param id="5" code="T" type="string"><driver kind="constant" value="x"/></param>
<param id="6" code="L" type="list"><driver kind="constant" value="1;a"/></param>
<param id="7" code="M" type="map"><driver kind="ramp" from="0" to="1" period="1s"/></param>
<param id="8" code="F" type="field" rows="2" columns="2"><cells firstId="20" uws="50"/><driver kind="sine" mean="50" amplitude="10" period="1s"/></param>
</parameters>
<groups><group name="G"><param id="1"/><field id="8"/></group></groups>
</plant>)";

const Plant &plant()
{
    static const Plant loaded = [] {
        Plant p;
        PlantFile file;
        fuzz::check(file.loadData(QByteArray(plantXml), QStringLiteral("fuzz.xml"), &p));
        return p;
    }();
    return loaded;
}

QProtocolStruct frameOf(const QByteArray &packet)
{
    QProtocolStruct frame;
    frame.setPacket(packet);
    return frame;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    fuzz::silenceQtMessages();
    if (size > (1u << 20))
        return 0;
    MemoryArchiveStore store;
    PlantServer::Options options;
    options.start = QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC);
    options.historyMs = 1000;
    options.valuesPerPiece = 4;
    options.eventsPerPiece = 2;
    PlantServer server(plant(), &store, options);
    qint64 sentBytes = 0;
    QObject::connect(&server, &PlantServer::sendFrame,
                     [&sentBytes](quint64, const QByteArray &frame) { sentBytes += frame.size(); });
    QString error;
    fuzz::check(server.start(&error));

    size_t at = 0;
    int ticks = 0;
    while (at + 3 <= size) {
        const quint8 kind = data[at];
        const size_t length = (size_t(data[at + 1]) << 8) | data[at + 2];
        at += 3;
        const QByteArray bytes(reinterpret_cast<const char *>(data + at), int(std::min(length, size - at)));
        at += size_t(bytes.size());
        const quint64 connection = (kind / 4) % 3;
        switch (kind % 4) {
        case 0: {
            const requeststream::Identity id =
                requeststream::served[(bytes.isEmpty() ? 0 : quint8(bytes.at(0))) % requeststream::servedCount];
            server.receive(connection, frameOf(fuzz::packetWith(id.service, id.message, 1, bytes.mid(1))));
            break;
        }
        case 1:
            server.receive(connection, frameOf(bytes));
            break;
        case 2:
            if (ticks++ < 16)
                server.tick();
            break;
        default:
            server.connectionClosed(connection);
            break;
        }
        // Bounds that hold whatever is sent.
        fuzz::check(server.subscriptionCount() <= 3 * PlantServer::MaxSubscriptions);
        fuzz::check(server.pendingAnswerCount() <= 3 * PlantServer::MaxPendingAnswers);
    }
    for (quint64 connection = 0; connection < 3; ++connection)
        server.connectionClosed(connection);
    fuzz::check(server.connectionCount() == 0);
    fuzz::check(server.subscriptionCount() == 0);
    fuzz::check(server.pendingAnswerCount() == 0);
    fuzz::check(server.eventSubscriptionCount() == 0);
    fuzz::check(sentBytes < (qint64(1) << 31));
    return 0;
}

#ifndef SIMULATEDSERVER_H
#define SIMULATEDSERVER_H

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QSharedPointer>
#include <QtCore/QString>

#include <functional>
#include <map>
#include <memory>

class AbstractParameterBase;
class ParamBasePtr;
class QObject;

/**
 * @brief A parameter server that runs in the application's own process, for the demo and
 * the tests.
 *
 * The server holds parameter objects of its own and talks only in packets: receive()
 * takes a request packet as a client sends it and returns the answer packets, and tick()
 * moves every value one step and returns the subscription results that the change
 * produced. Every answer is a message of the library written through write(), addressed
 * with replyTo() to the query it answers.
 *
 * - A ParamSubscriptionQuery replaces the standing wish of its token. The server keeps
 *   one handle per wished parameter and subscriber, built with its refresh flag for the
 *   identifiers in `refreshIds`, and answers at once with every wished record (a handle's
 *   first write is a full one, so limits travel). A query with no identifiers ends the
 *   subscription; one with a null token is ignored.
 * - A ParamValuesQuery is answered with one ParamValuesResult holding, for every
 *   identifier asked for that the server knows (repeats kept), the leading identifier
 *   and a full record.
 * - tick() runs each parameter's driver, then sends every subscriber the records whose
 *   handles were raised, and finally drops the parameters' own flags.
 *
 * Identifiers the server does not hold are left out of its answers.
 */
class SimulatedServer
{
public:
    /** Moves one parameter to the value and state of tick number @p tick. */
    using Driver = std::function<void(AbstractParameterBase &param, int tick)>;

    /** A server with no parameters, whose clock starts at @p start and moves @p stepMs per tick. */
    explicit SimulatedServer(const QDateTime &start = QDateTime(QDate(2026, 1, 1), QTime(8, 0), Qt::UTC),
                             int stepMs = 250);
    ~SimulatedServer();

    /** Adds a parameter with a display name and the driver that moves it; tick 0 is applied at once. */
    void addParameter(const QSharedPointer<AbstractParameterBase> &param, const QString &name, Driver driver);
    /**
     * Adds the demo plant: 101 boiler temperature (variant, all six setpoints), 102 feed
     * pressure (variant, possible and high warning setpoints), 103 pump mode (string),
     * 104 flow (double) and 105 last sample time (variant holding a date and time).
     */
    void addStandardPlant();

    /** The server's own object for @p id, or null. */
    QSharedPointer<AbstractParameterBase> parameter(unsigned int id) const;
    /** The display name given to @p id. */
    QString name(unsigned int id) const;
    /** Identifiers of all parameters, ascending. */
    QList<unsigned int> ids() const;

    /** Handles one request packet and returns the answers, in sending order. */
    QList<QByteArray> receive(const QByteArray &packet);
    /** Advances the process by one tick and returns the subscription results to send. */
    QList<QByteArray> tick();

    /** The number of subscribers the server serves. */
    int subscriberCount() const;
    /** The server's clock: the time the next answer carries. */
    QDateTime now() const;
    /** The number of the last tick applied (0 before the first tick()). */
    int tickNumber() const;

private:
    struct Parameter
    {
        QSharedPointer<AbstractParameterBase> object;
        QString name;
        Driver driver;
    };
    struct Watch
    {
        // A handle must go before the parameter it watches; the server owns both.
        std::unique_ptr<ParamBasePtr> handle;
        bool refresh = false;
    };
    struct Subscriber
    {
        std::map<int, Watch> watches;
        QByteArray queryPacket; // the query being answered, for replyTo()
    };

    QList<QByteArray> subscribe(const QByteArray &packet);
    QList<QByteArray> answerValues(const QByteArray &packet);
    QByteArray resultFor(const QObject *token, Subscriber &subscriber, bool everything);
    void dropParameterFlags();

    QMap<unsigned int, Parameter> m_parameters;
    std::map<const QObject *, Subscriber> m_subscribers;
    QDateTime m_now;
    int m_stepMs;
    int m_tick = 0;
};

#endif // SIMULATEDSERVER_H

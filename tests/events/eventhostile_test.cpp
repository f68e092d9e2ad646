// Hostile bodies: counts far beyond what a packet holds, containers announced inside
// named values, and nesting without end. Each read is watched for a reader that reserves
// room for a received count: in an ordinary build the read runs in a child process whose
// address space is capped a little above what it already uses, so such a reader dies
// there; in a sanitizer build, which reserves its shadow memory up front, the sanitizer's
// allocation hook records the largest single request instead.

#include "eventtest.h"

#include "eventsarchiveresult.h"
#include "eventsdaydata.h"
#include "eventsquery.h"
#include "eventsreadedquery.h"
#include "eventstructwithreaded.h"

#include <QtCore/QFile>

#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define EVENTTEST_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define EVENTTEST_SANITIZER 1
#endif
#endif

#ifdef EVENTTEST_SANITIZER
// Part of every sanitizer runtime that tracks the heap; declared here because not every
// compiler ships the header that declares it.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*mallocHook)(const volatile void *, std::size_t),
                                                         void (*freeHook)(const volatile void *));
#endif

using namespace eventtest;
using telortest::plainBytes;

namespace {

constexpr quint32 HugeCount = 0x7FFFFFFF;
// Large enough that Qt's own reserve for it (8 bytes an element) exceeds the headroom,
// small enough that a sanitizer build can afford to let Qt make that reserve.
constexpr quint32 ControlCount = 0x04000000;
constexpr std::size_t Headroom = std::size_t(256) << 20;

#ifdef EVENTTEST_SANITIZER

std::atomic<std::size_t> largestRequest{0};

void recordRequest(const volatile void *, std::size_t size)
{
    std::size_t seen = largestRequest.load(std::memory_order_relaxed);
    while (size > seen && !largestRequest.compare_exchange_weak(seen, size, std::memory_order_relaxed)) {
    }
}

void ignoreRelease(const volatile void *) {}

/** Runs @p check and returns the largest single allocation it made. */
std::size_t largestRequestOf(const std::function<bool()> &check, bool *result)
{
    static const int installed = __sanitizer_install_malloc_and_free_hooks(recordRequest, ignoreRelease);
    Q_UNUSED(installed)
    largestRequest = 0;
    *result = check();
    return largestRequest.load();
}

#else

/** The address space in use now, in bytes. */
rlim_t addressSpaceInUse()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return static_cast<rlim_t>(fields.value(0).toULongLong()) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

/**
 * Caps the address space at what is in use plus the headroom, runs @p check and ends the
 * process: exit code 0 when @p check returned true, 2 when it returned false, and 4 when
 * a reader asked for more memory than the cap leaves (std::bad_alloc).
 */
[[noreturn]] void runCapped(const std::function<bool()> &check)
{
    const rlim_t cap = addressSpaceInUse() + Headroom;
    const rlimit limit{cap, cap};
    if (setrlimit(RLIMIT_AS, &limit) != 0)
        std::_Exit(3);
    try {
        std::_Exit(check() ? 0 : 2);
    } catch (const std::bad_alloc &) {
        std::_Exit(4);
    }
}

#endif

/** @p check holds, and nothing in it asks for more than the headroom. */
void expectBounded(const std::function<bool()> &check)
{
#ifdef EVENTTEST_SANITIZER
    bool result = false;
    EXPECT_LT(largestRequestOf(check, &result), Headroom);
    EXPECT_TRUE(result);
#else
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(runCapped(check), ::testing::ExitedWithCode(0), "");
#endif
}

/** Something in @p check asks for more than the headroom: the watch above can see it. */
void expectUnbounded(const std::function<bool()> &check)
{
#ifdef EVENTTEST_SANITIZER
    bool result = false;
    EXPECT_GE(largestRequestOf(check, &result), Headroom);
#else
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(runCapped(check), ::testing::ExitedWithCode(4), "");
#endif
}

void writeBase(QDataStream &s)
{
    s << qint64(1) << qint32(2) << qint32(3) << qint32(4);
}

QByteArray packetOf(const QByteArray &body)
{
    return telortest::packetBytes(3, 12, 2, body);
}

/** A record in the stream form whose named value is a QVariantList announcing @p count elements. */
void writeRecordWithHugeList(QDataStream &s, quint32 count)
{
    s << quint16(1) << quint8(2) << quint32(3) << quint32(4) << when();
    s << quint32(1) << QStringLiteral("list");
    s << quint32(QMetaType::QVariantList) << qint8(0) << count;
    s << quint32(QMetaType::Int) << qint8(0) << qint32(5);
}

QByteArray idsWithCount(quint32 count)
{
    return plainBytes([count](QDataStream &s) { s << true << count << qint32(1) << qint32(2); });
}

} // namespace

TEST(EventHostile, WatchCatchesAReaderThatReservesForTheCount)
{
    // Qt's own operator reserves for the count before it reads an element: the watch must
    // see it, or the tests below would prove nothing.
    const QByteArray body = idsWithCount(ControlCount);
    expectUnbounded([&] {
        QDataStream s(body);
        s.setVersion(QDataStream::Qt_5_15);
        bool readed = false;
        QList<int> ids;
        s >> readed >> ids;
        return true;
    });
}

TEST(EventHostile, ReadedQueryWithTheControlCount)
{
    const QByteArray packet = telortest::packetBytes(3, 20, 1, idsWithCount(ControlCount));
    expectBounded([&] {
        EventsReadedQuery query;
        return readPacket(query, packet) && query.readed && query.ids.isEmpty();
    });
}

TEST(EventHostile, ReadedQueryWithAHugeCount)
{
    const QByteArray packet = telortest::packetBytes(3, 20, 1, idsWithCount(HugeCount));
    expectBounded([&] {
        EventsReadedQuery query;
        return readPacket(query, packet) && query.readed && query.ids.isEmpty();
    });
}

TEST(EventHostile, ArchiveResultWithAHugeCount)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        writeBase(s);
        s << HugeCount;
        writeStreamForm(s, sampleEvent());
    });
    expectBounded([&] {
        EventsArchiveResult result;
        return readPacket(result, packetOf(body)) && result.value3 == 4 && result.events.isEmpty();
    });
}

TEST(EventHostile, QueryWithAHugeEventCount)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint64(1) << qint32(0) << qint8(1) << true << true << true << qint32(0);
        s << HugeCount;
        writeStreamForm(s, sampleEvent());
        s << qint32(9);
    });
    expectBounded([&] {
        EventsQuery query(0, nullptr);
        return readPacket(query, telortest::packetBytes(3, 12, 1, body)) && query.events.isEmpty()
            && query.option2 == 0;
    });
}

TEST(EventHostile, DayDataWithAHugeCount)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        writeBase(s);
        s << QDate(2025, 1, 1) << HugeCount << quint16(1) << qint32(1);
    });
    expectBounded([&] {
        EventsDayData data;
        return readPacket(data, packetOf(body)) && data.dayValues.isEmpty()
            && data.day == QDate(2025, 1, 1);
    });
}

TEST(EventHostile, NamedValueAnnouncingAHugeListInTheStreamForm)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        writeBase(s);
        s << qint32(1);
        writeRecordWithHugeList(s, HugeCount);
    });
    expectBounded([&] {
        EventsArchiveResult result;
        return readPacket(result, packetOf(body)) && result.events.isEmpty();
    });
}

TEST(EventHostile, NamedValueAnnouncingAHugeListInTheMessageForm)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(1) << quint8(2) << quint32(3) << when();
        s << quint32(1) << QStringLiteral("list");
        s << quint32(QMetaType::QVariantList) << qint8(0) << HugeCount;
        s << quint32(QMetaType::Int) << qint8(0) << qint32(5);
        s << quint32(4);
    });
    expectBounded([&] {
        EventStruct event;
        return readPacket(event, telortest::packetBytes(3, 17, 3, body)) && event.parameters.isEmpty()
            && event.firstId == 3 && event.secondId == 0;
    });
}

TEST(EventHostile, WrapperWithAHugeListInANamedValue)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        writeRecordWithHugeList(s, HugeCount);
        s << true;
    });
    expectBounded([&] {
        EventStructWithReaded message(EventStruct(), false);
        return readPacket(message, telortest::packetBytes(3, 41, 3, body))
            && message.event.parameters.isEmpty() && !message.readed;
    });
}

TEST(EventHostileNesting, DeeplyNestedNamedValueReadsAsBadWithoutRecursingForEver)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(1) << quint8(2) << quint32(3) << when();
        s << quint32(1) << QStringLiteral("deep");
        for (int i = 0; i < 10000; ++i)
            s << quint32(QMetaType::QVariantList) << qint8(0) << quint32(1);
        s << quint32(QMetaType::Int) << qint8(0) << qint32(5);
        s << quint32(4);
    });
    EventStruct event;
    EXPECT_TRUE(readPacket(event, telortest::packetBytes(3, 17, 3, body)));
    EXPECT_TRUE(event.parameters.isEmpty());
    EXPECT_EQ(event.firstId, 3u);
}

TEST(EventHostileNesting, NestingWithinTheLimitReadsAsQtReadsIt)
{
    QVariant value = 5;
    for (int i = 0; i < 20; ++i)
        value = QVariantList{value};
    EventStruct event = sampleEvent();
    event.parameters.insert(QStringLiteral("nested"), value);
    EventStruct back;
    EXPECT_TRUE(readPacket(back, event.write()));
    EXPECT_EQ(back.parameters, event.parameters);
}

TEST(EventHostileNesting, ManyRecordsThatRunOutEndQuickly)
{
    // A count of two thousand million records, and bytes for a few: the list reader stops
    // at the end of the bytes.
    const QByteArray body = plainBytes([](QDataStream &s) {
        writeBase(s);
        s << HugeCount;
        for (int i = 0; i < 100; ++i)
            writeStreamForm(s, sampleEvent());
    });
    EventsArchiveResult result;
    EXPECT_TRUE(readPacket(result, packetOf(body)));
    EXPECT_TRUE(result.events.isEmpty());
}

namespace {

/** A QDateTime in Qt's stream form, in the zone named @p zone. */
void writeTimeInZone(QDataStream &s, const QString &zone)
{
    s << qint64(QDate(2025, 3, 14).toJulianDay()) << quint32(37230456) << qint8(Qt::TimeZone) << zone;
}

} // namespace

TEST(EventUnknownZone, RecordDateInAnUnknownZoneReadsNullAndWritesAgain)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(1) << quint8(2) << quint32(3);
        writeTimeInZone(s, QStringLiteral("Nowhere/No_Such_Zone"));
        s << quint32(0) << quint32(4);
    });
    EventStruct event;
    ASSERT_TRUE(readPacket(event, telortest::packetBytes(3, 17, 3, body)));
    EXPECT_TRUE(event.dateTime.isNull());
    EXPECT_EQ(event.secondId, 4u) << "the bytes of the zone were consumed";
    EventStruct again;
    ASSERT_TRUE(readPacket(again, event.write()));
    EXPECT_TRUE(again.dateTime.isNull());
    EXPECT_EQ(again.secondId, 4u);
}

TEST(EventUnknownZone, StreamFormDateInAnUnknownZoneReadsNull)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << qint64(0) << qint32(0) << qint32(0) << qint32(0) << qint32(1);
        s << quint16(1) << quint8(2) << quint32(3) << quint32(4);
        writeTimeInZone(s, QStringLiteral("Nowhere/No_Such_Zone"));
        s << quint32(0);
    });
    EventsArchiveResult result;
    ASSERT_TRUE(readPacket(result, packetOf(body)));
    ASSERT_EQ(result.events.size(), 1);
    EXPECT_TRUE(result.events.first().dateTime.isNull());
    EXPECT_FALSE(result.write().isEmpty());
}

TEST(EventUnknownZone, NamedValueInAnUnknownZoneBecomesANullTime)
{
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(1) << quint8(2) << quint32(3) << when();
        s << quint32(2) << QStringLiteral("when") << quint32(QMetaType::QDateTime) << qint8(0);
        writeTimeInZone(s, QStringLiteral("Nowhere/No_Such_Zone"));
        s << QStringLiteral("list") << quint32(QMetaType::QVariantList) << qint8(0) << quint32(1)
          << quint32(QMetaType::QDateTime) << qint8(0);
        writeTimeInZone(s, QStringLiteral("Nowhere/No_Such_Zone"));
        s << quint32(4);
    });
    EventStruct event;
    ASSERT_TRUE(readPacket(event, telortest::packetBytes(3, 17, 3, body)));
    ASSERT_EQ(event.parameters.size(), 2);
    EXPECT_EQ(event.parameters.value(QStringLiteral("when")).userType(), QMetaType::QDateTime);
    EXPECT_TRUE(event.parameters.value(QStringLiteral("when")).toDateTime().isNull());
    EXPECT_TRUE(event.parameters.value(QStringLiteral("list")).toList().value(0).toDateTime().isNull());
    EXPECT_EQ(event.secondId, 4u);
    EventStruct again;
    ASSERT_TRUE(readPacket(again, event.write()));
    EXPECT_EQ(again.parameters.size(), 2);
}

TEST(EventUnknownZone, QueryAndIntervalPointsInAnUnknownZoneReadNull)
{
    const QByteArray queryBody = plainBytes([](QDataStream &s) {
        s << qint8(1) << qint64(1) << qint32(0) << qint8(1) << false << false;
        writeTimeInZone(s, QStringLiteral("Nowhere/No_Such_Zone"));
        s << true << qint32(6) << qint32(0) << qint32(7);
    });
    EventsQuery query(0, nullptr);
    ASSERT_TRUE(readPacket(query, telortest::packetBytes(3, 12, 1, queryBody)));
    EXPECT_TRUE(query.beginPoint.isNull());
    EXPECT_EQ(query.option1, 6);
    EXPECT_EQ(query.option2, 7);
    EXPECT_FALSE(query.write().isEmpty());
}

TEST(EventUnknownZone, ZoneNameLeadingOutOfTheZoneDirectoryIsNotLookedUp)
{
    // Qt would open the name as a file below its zone directory; a name with a ".."
    // section could reach a pipe or a terminal there and block the read.
    const QByteArray body = plainBytes([](QDataStream &s) {
        s << quint16(1) << quint8(2) << quint32(3) << quint32(4);
        writeTimeInZone(s, QStringLiteral("../zoneinfo/UTC"));
        s << quint32(0) << true;
    });
    EventStructWithReaded message(sampleEvent(), false);
    ASSERT_TRUE(readPacket(message, telortest::packetBytes(3, 41, 3, body)));
    EXPECT_TRUE(message.event.dateTime.isNull());
    EXPECT_TRUE(message.readed) << "the bytes of the zone name were consumed";
}

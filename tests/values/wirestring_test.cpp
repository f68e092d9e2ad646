// The bounded string reader: Qt's own result for every string, without the block Qt
// allocates for a length that the bytes after it cannot hold.

#include "allocationprobe.h"
#include "wirestream_p.h"
#include "telortest.h"

#include <gtest/gtest.h>

using telortest::AllocationProbe;
using telortest::plainBytes;

namespace {

struct Outcome
{
    QString value;
    bool isNull = false;
    QDataStream::Status status = QDataStream::Ok;
    qint64 pos = 0;
};

Outcome readWith(const QByteArray &bytes, bool bounded, QDataStream::Status entry = QDataStream::Ok)
{
    QDataStream in(bytes);
    in.setVersion(QDataStream::Qt_5_15);
    in.setStatus(entry);
    Outcome out;
    if (bounded)
        TelorWire::readString(in, out.value);
    else
        in >> out.value;
    out.isNull = out.value.isNull();
    out.status = in.status();
    out.pos = in.device()->pos();
    return out;
}

void expectSameAsQt(const QByteArray &bytes, QDataStream::Status entry = QDataStream::Ok)
{
    const Outcome qt = readWith(bytes, false, entry);
    const Outcome ours = readWith(bytes, true, entry);
    EXPECT_EQ(ours.value, qt.value);
    EXPECT_EQ(ours.isNull, qt.isNull);
    EXPECT_EQ(ours.status, qt.status);
    EXPECT_EQ(ours.pos, qt.pos);
}

} // namespace

TEST(WireString, WellFormedStringsReadAsQtReadsThem)
{
    expectSameAsQt(plainBytes([](QDataStream &s) { s << QStringLiteral("Druck") << quint8(7); }));
    expectSameAsQt(plainBytes([](QDataStream &s) { s << QString(QLatin1String("")); }));
    expectSameAsQt(plainBytes([](QDataStream &s) { s << QString(); }));
    const Outcome ours = readWith(plainBytes([](QDataStream &s) { s << QStringLiteral("Druck"); }), true);
    EXPECT_EQ(ours.value, QStringLiteral("Druck"));
    EXPECT_EQ(ours.status, QDataStream::Ok);
}

TEST(WireString, LengthBeyondTheBytesReadsNullAtTheEnd)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(0x7FFFFFFE);
        s.writeRawData("\0a\0b", 4);
    });
    const Outcome ours = readWith(bytes, true);
    EXPECT_TRUE(ours.isNull);
    EXPECT_EQ(ours.status, QDataStream::ReadPastEnd);
    EXPECT_EQ(ours.pos, bytes.size());
    expectSameAsQt(bytes);
}

TEST(WireString, OddNullAndTruncatedLengthsReadAsQtReadsThem)
{
    expectSameAsQt(plainBytes([](QDataStream &s) { s << quint32(3) << quint32(0x00410042); }));
    expectSameAsQt(plainBytes([](QDataStream &s) { s << quint32(0xFFFFFFFF) << quint16(1); }));
    expectSameAsQt(plainBytes([](QDataStream &s) { s << quint32(6) << quint16(0x41); }));
    expectSameAsQt(QByteArray("\0\0", 2));
    expectSameAsQt(QByteArray());
}

TEST(WireString, ABadStreamOnEntryReadsAsQtReadsIt)
{
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << QStringLiteral("ok") << quint32(0x40000000); });
    expectSameAsQt(bytes, QDataStream::ReadCorruptData);
    expectSameAsQt(bytes.mid(12), QDataStream::ReadPastEnd);
}

TEST(WireString, StringsInsideContainersUseTheBoundedReader)
{
    // A list of two strings whose second announces far more than follows: Qt empties the
    // list; so does the bounded reader, without reserving for the announced length.
    const QByteArray bytes = plainBytes([](QDataStream &s) {
        s << quint32(2) << QStringLiteral("a") << quint32(0x7FFFFFF0);
    });
    QDataStream qtIn(bytes);
    QStringList qtList;
    qtIn >> qtList;
    QDataStream in(bytes);
    QStringList list{QStringLiteral("old")};
    TelorWire::readList(in, list);
    EXPECT_EQ(list, qtList);
    EXPECT_TRUE(list.isEmpty());
    EXPECT_EQ(in.status(), qtIn.status());
    EXPECT_EQ(in.device()->pos(), qtIn.device()->pos());
}

TEST(WireString, LengthBeyondTheBytesIsNotAllocatedFor)
{
    if (!AllocationProbe::available())
        GTEST_SKIP() << "the heap belongs to the sanitizer in this build";
    const QByteArray bytes = plainBytes([](QDataStream &s) { s << quint32(0x7FFFFFFE) << quint32(0x00410042); });

    // Control: Qt's own operator sets a large block aside before it finds the bytes missing.
    std::size_t qtLargest = 0;
    {
        QDataStream in(bytes);
        QString value;
        AllocationProbe probe;
        in >> value;
        qtLargest = probe.largestRequest();
    }
    EXPECT_GE(qtLargest, std::size_t(1) << 20);

    QDataStream in(bytes);
    QString value;
    AllocationProbe probe;
    TelorWire::readString(in, value);
    EXPECT_LT(probe.largestRequest(), std::size_t(4096));
    EXPECT_TRUE(value.isNull());
}

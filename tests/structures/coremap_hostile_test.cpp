// The core XML reader on hostile text: it ends on every input, in time and memory that
// follow the size of the text.

#include "corefile.h"
#include "telortest.h"

#include "corefile_p.h"
#include "corefunctions.h"

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QElapsedTimer>
#include <QtCore/QRandomGenerator>

namespace {

struct Maps
{
    QMap<CorePoint, int> coordId;
    QMap<int, CorePoint> idCoord;
    bool ok = false;
};

Maps readText(const QByteArray &text)
{
    Maps maps;
    QBuffer buffer;
    buffer.setData(text);
    if (!buffer.open(QIODevice::ReadOnly))
        return maps;
    maps.ok = TelorCore::readCoreXml(buffer, maps.coordId, maps.idCoord);
    return maps;
}

void quiet(QtMsgType, const QMessageLogContext &, const QString &)
{
}

} // namespace

TEST(CoreMapHostile, ReaderOnADeviceMatchesInitOnTheFile)
{
    structtest::CoreFile file;
    ASSERT_TRUE(file.locked());
    const QByteArray texts[] = {
        "<Core><FA id=\"1\" x=\"2\" y=\"3\"/><FA id=\"2\" x=\"2\" y=\"4\"/></Core>",
        "<Core><FA id=\"1\" x=\"2\" y=\"3\"/><Other/></Core>",
        "<Core><FA id=\"1\" x=\"2\" y=\"3\"/><FA",
        "",
    };
    for (const QByteArray &text : texts) {
        SCOPED_TRACE(text.toStdString());
        telortest::LogCapture log;
        file.write(text);
        CoreMap map;
        map.init();
        const QStringList initLog = log.captured();
        log.clear();
        const Maps maps = readText(text);
        EXPECT_EQ(map.coordId(), maps.coordId);
        EXPECT_EQ(map.idCoord(), maps.idCoord);
        EXPECT_EQ(map.isValid(), maps.ok && !maps.coordId.isEmpty() && !maps.idCoord.isEmpty());
        EXPECT_EQ(log.captured(), initLog);
    }
}

TEST(CoreMapHostile, DeepNestingEnds)
{
    const int depth = 200000;
    const QByteArray text = QByteArray("<Core>").repeated(depth) + "<FA id=\"1\" x=\"1\" y=\"1\"/>"
                            + QByteArray("</Core>").repeated(depth);
    const Maps maps = readText(text);
    EXPECT_TRUE(maps.ok);
    EXPECT_EQ(maps.idCoord.size(), 1);

    // Never closed: the reader runs out of text and ends.
    const Maps open = readText(QByteArray("<Core>").repeated(depth));
    EXPECT_TRUE(open.ok);
    EXPECT_TRUE(open.idCoord.isEmpty());
}

TEST(CoreMapHostile, EntityExpansionEndsQuickly)
{
    // Entities that would grow to gigabytes if expanded in full.
    QByteArray dtd = "<!DOCTYPE Core [<!ENTITY a0 \"xxxxxxxxxx\">";
    for (int i = 1; i < 12; ++i)
        dtd += "<!ENTITY a" + QByteArray::number(i) + " \"" + QByteArray("&a" + QByteArray::number(i - 1) + ";").repeated(10) + "\">";
    dtd += "]>";
    const QByteArray text = dtd + "<Core><FA id=\"1\" x=\"1\" y=\"1\"/>&a11;<FA id=\"2\" x=\"&a11;\" y=\"1\"/></Core>";

    QElapsedTimer timer;
    timer.start();
    const Maps maps = readText(text);
    EXPECT_LT(timer.elapsed(), 10000);
    EXPECT_TRUE(maps.ok);
    EXPECT_TRUE(maps.idCoord.contains(0));
}

TEST(CoreMapHostile, RecursiveEntityEnds)
{
    const Maps maps = readText("<!DOCTYPE Core [<!ENTITY a \"&b;\"><!ENTITY b \"&a;\">]><Core>&a;<FA/></Core>");
    EXPECT_TRUE(maps.ok);
}

TEST(CoreMapHostile, ManyEntriesAndAttributes)
{
    QByteArray text = "<Core>";
    for (int i = 1; i <= 20000; ++i)
        text += "<FA id=\"" + QByteArray::number(i) + "\" x=\"" + QByteArray::number(i % 100) + "\" y=\""
                + QByteArray::number(i / 100) + "\"/>";
    QByteArray attributes;
    for (int i = 0; i < 5000; ++i)
        attributes += " a" + QByteArray::number(i) + "=\"v\"";
    text += "<FA" + attributes + " id=\"20001\"/></Core>";
    const Maps maps = readText(text);
    EXPECT_TRUE(maps.ok);
    EXPECT_EQ(maps.idCoord.size(), 20001);
    // Every position differs, the last entry's (0, 0) included.
    EXPECT_EQ(maps.coordId.size(), 20001);
    EXPECT_EQ(maps.idCoord.value(20000), CorePoint(0, 0));
}

TEST(CoreMapHostile, ArbitraryBytesEnd)
{
    const QtMessageHandler previous = qInstallMessageHandler(&quiet);
    QRandomGenerator random(777);
    const QByteArray alphabet("<>/=\"' !?-[]&;#xFACoreidy0123456789\n\t\xC3\xA9\xFF");
    for (int round = 0; round < 500; ++round) {
        QByteArray text;
        const int length = int(random.bounded(400));
        for (int i = 0; i < length; ++i)
            text += alphabet.at(int(random.bounded(alphabet.size())));
        readText(text);
    }
    for (int round = 0; round < 200; ++round) {
        QByteArray text;
        const int length = int(random.bounded(400));
        for (int i = 0; i < length; ++i)
            text += char(random.bounded(256));
        readText(text);
    }
    qInstallMessageHandler(previous);
    SUCCEED();
}

TEST(CoreMapHostile, OtherEncodingsAndBadBytes)
{
    // UTF-16 with a byte order mark reads like UTF-8.
    const QString text = QStringLiteral("<Core><FA id=\"3\" x=\"1\" y=\"2\"/></Core>");
    QByteArray utf16("\xFF\xFE", 2);
    utf16.append(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
    const Maps maps = readText(utf16);
    EXPECT_TRUE(maps.ok);
    EXPECT_EQ(maps.idCoord.value(2), CorePoint(2, 1));
#endif
    // Bytes that are not UTF-8 end the read as malformed text does: the reader refuses
    // the chunk of text that holds them, and the read counts as good.
    const Maps bad = readText("<Core><FA id=\"1\" x=\"1\" y=\"1\"/>\xFF\xFE\xFD<FA id=\"2\"/></Core>");
    EXPECT_TRUE(bad.ok);
    EXPECT_FALSE(bad.idCoord.contains(1));
}

// Section: tags, packed records and the core map.
//
// Three small services for applications. A server hands out one block of tags that say
// which tag types exist and which tags each parameter carries; the tag store reads it and
// answers questions in the operator's language. Packed records turn fixed binary layouts
// into bytes and back. The core map reads the core file once and translates between
// positions in the core and entry numbers.

#include "demosections.h"

#include "corefunctions.h"
#include "datetimestruct.h"
#include "telortagobject.h"
#include "validitydouble.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <algorithm>

namespace {

const QString En = QStringLiteral("en");
const QString Ru = QStringLiteral("ru");

/** The tag block as a server streams it from its three tables. */
QByteArray serverTagBlock()
{
    const QHash<QString, QHash<QString, QString>> texts{
        {QStringLiteral("unit"), {{En, QStringLiteral("Unit")}, {Ru, QStringLiteral("Blok")}}},
        {QStringLiteral("system"), {{En, QStringLiteral("System")}, {Ru, QStringLiteral("Sistema")}}}};
    const QHash<unsigned int, QHash<QString, QString>> params{
        {101u, {{QStringLiteral("unit"), QStringLiteral("1")}, {QStringLiteral("system"), QStringLiteral("cooling")}}},
        {102u, {{QStringLiteral("unit"), QStringLiteral("1")}, {QStringLiteral("system"), QStringLiteral("feedwater")}}},
        {103u, {{QStringLiteral("unit"), QStringLiteral("2")}}}};
    QHash<QString, QHash<QString, QSet<unsigned int>>> tagParams;
    for (auto param = params.cbegin(); param != params.cend(); ++param) {
        for (auto tag = param.value().cbegin(); tag != param.value().cend(); ++tag)
            tagParams[tag.key()][tag.value()].insert(param.key());
    }

    QByteArray block;
    QDataStream stream(&block, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << texts << params << tagParams;
    return block;
}

/** A hash as "key=value" pairs in key order, so that the output does not depend on hashing. */
QString sortedPairs(const QHash<QString, QString> &hash)
{
    QStringList pairs;
    for (auto it = hash.cbegin(); it != hash.cend(); ++it)
        pairs << it.key() + QLatin1Char('=') + it.value();
    std::sort(pairs.begin(), pairs.end());
    return pairs.join(QStringLiteral(", "));
}

QString pointText(const QPoint &point)
{
    return QStringLiteral("(%1, %2)").arg(point.x()).arg(point.y());
}

void demoTags(QTextStream &out)
{
    out << "Tags\n";
    TELORTagObject tags;
    const QByteArray block = serverTagBlock();
    const bool complete = tags.read(block);
    out << "  read a block of " << block.size() << " bytes: " << (complete ? "all three tables filled" : "incomplete")
        << "\n";
    out << "  tag types in English: " << sortedPairs(tags.getTagTypes(En)) << "\n";
    for (unsigned int id : {101u, 102u, 103u})
        out << "  parameter " << id << " in Russian: " << sortedPairs(tags.getParamTags(id, Ru)) << "\n";
    out << "  system of parameter 102: " << tags.getParamTagValue(102, QStringLiteral("system")) << "\n";
    const QString missing = tags.getParamTagValue(103, QStringLiteral("system"));
    out << "  system of parameter 103: " << (missing.isNull() ? QStringLiteral("(none)") : missing) << "\n";
    out << "  an empty block reads as " << (tags.read(QByteArray()) ? "complete" : "incomplete")
        << " and empties the store: " << tags.getTagTypes(En).size() << " tag types left\n";
}

void demoPackedRecords(QTextStream &out)
{
    out << "Packed records\n";
    ValidityDouble reading;
    reading.value = 1.0;
    reading.validity = 1;
    QByteArray side;
    const QByteArray bytes = reading.toByteArray(&side);
    out << "  ValidityDouble{1.0, 1} is " << bytes.size() << " bytes in the machine's order: "
        << QString::fromLatin1(bytes.toHex(' ')) << "\n";
    out << "  its side stream holds the marker: " << QString::fromLatin1(side.toHex(' ')) << "\n";

    ValidityDouble back;
    back.fromByteArray(bytes);
    out << "  read back: value " << back.value << ", validity " << back.validity << "\n";

    DateTimeStruct stamp;
    out << "  a DateTimeStruct takes 7 bytes: " << (stamp.fromByteArray(QByteArray(7, '\1')) ? "yes" : "no");
    stamp.setCheckSize(false);
    out << "; with the length check off it takes 9: " << (stamp.fromByteArray(QByteArray(9, '\1')) ? "yes" : "no")
        << " (first = " << stamp.first << ")\n";
}

void demoCoreMap(QTextStream &out)
{
    out << "Core map\n";
    const QString path = QCoreApplication::applicationDirPath() + QLatin1String("/../config/paramserver/core.xml");
    const QFileInfo file(path);
    out << "  core file: " << (file.exists() ? file.canonicalFilePath() : QStringLiteral("absent")) << "\n";
    coreMap.init();
    out << "  valid: " << (coreMap.isValid() ? "yes" : "no") << ", " << coreMap.idCoord().size() << " entries\n";
    if (coreMap.idCoord().isEmpty()) {
        out << "\n";
        return;
    }

    const CorePoint second = coreMap.idCoord().value(1);
    out << "  entry 1 (id 2 in the file, x=" << second.y() << " y=" << second.x() << ") is at " << pointText(second)
        << ": the axes cross\n";
    QStringList order;
    for (auto it = coreMap.coordId().cbegin(); it != coreMap.coordId().cend(); ++it)
        order << QStringLiteral("%1:%2").arg(pointText(it.key())).arg(it.value());
    out << "  positions by falling y, then rising x:\n    " << order.join(QStringLiteral(" ")) << "\n";
    const CorePoint centre(2, 2);
    out << "  the entry at " << pointText(centre) << " is number " << coreMap.coordId().value(centre, -1) << "\n\n";
}

} // namespace

void demoTagsAndCore(QTextStream &out)
{
    out << "== Tags, packed records and the core map\n\n";
    demoTags(out);
    demoPackedRecords(out);
    demoCoreMap(out);
}

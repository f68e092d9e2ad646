#include "corefile_p.h"

#include <QtCore/QDebug>
#include <QtCore/QIODevice>
#include <QtCore/QXmlStreamReader>

namespace {

/** An attribute as text, converted in base 10 without testing: absent or bad reads as 0. */
int numberAttribute(const QXmlStreamAttributes &attributes, QLatin1String name)
{
    return attributes.value(name).toString().toInt(nullptr, 10);
}

} // namespace

bool TelorCore::readCoreXml(QIODevice &device, QMap<CorePoint, int> &coordIdMap, QMap<int, CorePoint> &idCoordMap)
{
    // QXmlStreamReader consumes the device as it goes and reports a syntax error, or the
    // end of the data, by atEnd(); an error is not told apart from the end.
    QXmlStreamReader xml(&device);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;

        const QStringRef name = xml.qualifiedName();
        if (name == QLatin1String("Core"))
            continue;
        if (name != QLatin1String("FA")) {
            qDebug() << "corefunctions" << "invalid tag " << xml.name();
            return false;
        }

        const QXmlStreamAttributes attributes = xml.attributes();
        const int id = numberAttribute(attributes, QLatin1String("id"));
        const int x = numberAttribute(attributes, QLatin1String("x"));
        const int y = numberAttribute(attributes, QLatin1String("y"));

        // Numbers in the file start at 1, in the maps at 0. The subtraction wraps, as the
        // machine's does, so that an id of INT_MIN gives INT_MAX instead of overflowing.
        const int number = static_cast<int>(static_cast<unsigned int>(id) - 1u);
        // The file's y is the point's x() and the file's x its y().
        const CorePoint point(y, x);
        coordIdMap.insert(point, number);
        idCoordMap.insert(number, point);
    }
    return true;
}

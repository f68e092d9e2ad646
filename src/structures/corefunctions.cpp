#include "corefunctions.h"

#include "corefile_p.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

CoreMap coreMap;

CoreMap::CoreMap()
    : readOk(false)
{
}

CoreMap::~CoreMap() = default;

void CoreMap::init()
{
    QFile file(QCoreApplication::applicationDirPath() + QLatin1String("/../config/paramserver/core.xml"));
    if (!file.open(QIODevice::ReadOnly)) {
        readOk = true;
        return;
    }
    readOk = TelorCore::readCoreXml(file, coordIdMap, idCoordMap);
    file.close();
}

bool CoreMap::isValid() const
{
    return readOk && !coordIdMap.isEmpty() && !idCoordMap.isEmpty();
}

const QMap<CorePoint, int> &CoreMap::coordId() const
{
    return coordIdMap;
}

const QMap<int, CorePoint> &CoreMap::idCoord() const
{
    return idCoordMap;
}

#ifndef STRUCTURESTEST_H
#define STRUCTURESTEST_H

// Helpers for the packed structure tests: records built independently of the library, by
// a plain QDataStream in the byte order of the machine.

#include <QtCore/QByteArray>
#include <QtCore/QDataStream>
#include <QtCore/QSysInfo>

#include <functional>

namespace structtest {

/**
 * Bytes written by a QDataStream in the machine's byte order, with floating-point
 * numbers written at @p precision (single for 32-bit fields, double for 64-bit ones).
 */
inline QByteArray machineBytes(const std::function<void(QDataStream &)> &writer,
                               QDataStream::FloatingPointPrecision precision = QDataStream::SinglePrecision)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setByteOrder(QSysInfo::ByteOrder == QSysInfo::LittleEndian ? QDataStream::LittleEndian
                                                                      : QDataStream::BigEndian);
    stream.setFloatingPointPrecision(precision);
    writer(stream);
    return bytes;
}

} // namespace structtest

#endif // STRUCTURESTEST_H

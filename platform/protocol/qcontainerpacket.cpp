#include "qcontainerpacket.h"

#include <QtCore/QIODevice>

namespace {

void setWireFormat(QDataStream &stream)
{
    stream.setVersion(QDataStream::Qt_5_15);
    stream.setByteOrder(QDataStream::BigEndian);
    stream.setFloatingPointPrecision(QDataStream::DoublePrecision);
}

} // namespace

QContainerPacket::QContainerPacket(const QByteArray &data)
    : QDataStream(data)
{
    setWireFormat(*this);
}

QContainerPacket::QContainerPacket(QByteArray *target)
    : QDataStream(target, QIODevice::ReadWrite)
{
    setWireFormat(*this);
    device()->seek(device()->size());
}

QContainerPacket::~QContainerPacket() = default;

unsigned int QContainerPacket::position() const
{
    return static_cast<unsigned int>(device()->pos());
}

void QContainerPacket::at(unsigned int pos)
{
    QIODevice *dev = device();
    const qint64 target = qMin<qint64>(pos, dev->size());
    dev->seek(target);
    resetStatus();
}

qint64 QContainerPacket::bytesLeft() const
{
    return device()->size() - device()->pos();
}

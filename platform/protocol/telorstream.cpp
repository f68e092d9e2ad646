#include "telorstream.h"

TELORStream::TELORStream()
{
    m_buffer.setBuffer(&m_ownData);
    prepare();
}

TELORStream::TELORStream(QByteArray *target)
{
    m_buffer.setBuffer(target ? target : &m_ownData);
    prepare();
}

TELORStream::TELORStream(const QByteArray &data)
    : m_ownData(data)
{
    m_buffer.setBuffer(&m_ownData);
    prepare();
}

TELORStream::~TELORStream()
{
    // The buffer is a member and goes before the QDataStream base: detach it first.
    setDevice(nullptr);
}

void TELORStream::prepare()
{
    setDevice(&m_buffer);
    setVersion(QDataStream::Qt_5_15);
    setByteOrder(QDataStream::BigEndian);
    setFloatingPointPrecision(QDataStream::DoublePrecision);
}

bool TELORStream::openToRead()
{
    if (m_buffer.isOpen())
        m_buffer.close();
    resetStatus();
    return m_buffer.open(QIODevice::ReadOnly);
}

bool TELORStream::openToWrite()
{
    if (m_buffer.isOpen())
        m_buffer.close();
    resetStatus();
    if (!m_buffer.open(QIODevice::ReadWrite))
        return false;
    return m_buffer.seek(m_buffer.size());
}

void TELORStream::close()
{
    if (m_buffer.isOpen())
        m_buffer.close();
}

QByteArray TELORStream::data() const
{
    return m_buffer.data();
}

TELORDataStream::TELORDataStream() = default;

TELORDataStream::TELORDataStream(QByteArray *target)
    : TELORStream(target)
{
}

TELORDataStream::TELORDataStream(const QByteArray &data)
    : TELORStream(data)
{
}

TELORDataStream::~TELORDataStream() = default;

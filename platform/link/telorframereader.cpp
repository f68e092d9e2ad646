#include "telorframereader.h"

#include <QtCore/QtEndian>

#include <limits>

namespace {

// Offset of the body-length word in the header.
constexpr int BodyLengthOffset = 16;

// What the buffer may hold at most, so that its size stays a valid int whatever is
// handed in: frames not yet taken and the unfinished one.
constexpr qint64 MaxBuffered = std::numeric_limits<int>::max() - 64;

} // namespace

TELORFrameReader::TELORFrameReader() = default;

void TELORFrameReader::setMaxBodyLength(qint64 bytes)
{
    m_maxBodyLength = qBound<qint64>(0, bytes, MaxBodyLengthLimit);
}

qint64 TELORFrameReader::maxBodyLength() const
{
    return m_maxBodyLength;
}

bool TELORFrameReader::append(const QByteArray &bytes)
{
    if (!m_error.isEmpty())
        return false;
    if (bytes.isEmpty())
        return true;
    // Bytes already taken are dropped before new ones are added, so the buffer holds the
    // waiting frames and the unfinished one only.
    if (m_readPos > 0) {
        m_buffer.remove(0, m_readPos);
        m_scanPos -= m_readPos;
        for (int &end : m_frameEnds)
            end -= m_readPos;
        m_readPos = 0;
    }
    if (qint64(m_buffer.size()) + bytes.size() > MaxBuffered) {
        m_error = QStringLiteral("%1 bytes waiting, more than a reader holds").arg(qint64(m_buffer.size()) + bytes.size());
        return false;
    }
    // Qt shares the caller's bytes when the buffer is empty, and copies raw data.
    m_buffer.append(bytes);
    scan();
    return m_error.isEmpty();
}

void TELORFrameReader::scan()
{
    while (m_error.isEmpty()) {
        const qint64 available = qint64(m_buffer.size()) - m_scanPos;
        if (available < HeaderSize)
            return;
        const qint32 length = qFromBigEndian<qint32>(m_buffer.constData() + m_scanPos + BodyLengthOffset);
        if (length < 0) {
            m_error = QStringLiteral("body length %1 is negative").arg(length);
            return;
        }
        if (length > m_maxBodyLength) {
            m_error = QStringLiteral("body length %1 above the limit %2").arg(length).arg(m_maxBodyLength);
            return;
        }
        if (available < HeaderSize + qint64(length))
            return;
        m_scanPos += HeaderSize + length;
        m_frameEnds.push_back(m_scanPos);
    }
}

bool TELORFrameReader::hasFrame() const
{
    return !m_frameEnds.empty();
}

int TELORFrameReader::frameCount() const
{
    return int(m_frameEnds.size());
}

QByteArray TELORFrameReader::takeFrame()
{
    if (m_frameEnds.empty())
        return QByteArray();
    const int end = m_frameEnds.front();
    m_frameEnds.pop_front();
    QByteArray frame;
    if (m_readPos == 0 && end == m_buffer.size()) {
        frame = m_buffer; // the whole buffer is this frame: hand it over without a copy
        m_buffer.clear();
        m_scanPos = 0;
        m_readPos = 0;
        return frame;
    }
    frame = m_buffer.mid(m_readPos, end - m_readPos);
    m_readPos = end;
    if (m_readPos == m_buffer.size()) {
        m_buffer.clear();
        m_readPos = 0;
        m_scanPos = 0;
    }
    return frame;
}

bool TELORFrameReader::hasError() const
{
    return !m_error.isEmpty();
}

QString TELORFrameReader::errorString() const
{
    return m_error;
}

qint64 TELORFrameReader::bufferedBytes() const
{
    return qint64(m_buffer.size()) - m_readPos;
}

void TELORFrameReader::clear()
{
    m_buffer.clear();
    m_readPos = 0;
    m_scanPos = 0;
    m_frameEnds.clear();
    m_error.clear();
}

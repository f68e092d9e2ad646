#ifndef DESCRIPTIONTEST_H
#define DESCRIPTIONTEST_H

// Helpers of the description tests: records to bytes and back through a packet, the
// heap in use, and a message that carries one description through the frame.

#include "paraminfo.h"
#include "qcontainerpacket.h"
#include "qprotocolstruct.h"

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QTranslator>

#include <cstddef>
#include <memory>

namespace desctest {

/** The bytes that the record's own write() produces. */
template<typename Record>
QByteArray bytesOf(const Record &record)
{
    QByteArray bytes;
    QContainerPacket packet(&bytes);
    record.write(packet);
    return bytes;
}

/** Result of reading a record from bytes: what read() said and how far it got. */
struct ReadOutcome
{
    bool result = false;
    unsigned int position = 0;
};

/** Reads @p record from the start of @p bytes. */
template<typename Record>
ReadOutcome readFrom(const QByteArray &bytes, Record &record)
{
    QContainerPacket packet(bytes);
    ReadOutcome outcome;
    outcome.result = record.read(packet);
    outcome.position = packet.position();
    return outcome;
}


/**
 * Heap bytes in use. In a sanitizer build, every block the allocator holds; otherwise the
 * blocks obtained through operator new, which the test program counts (see
 * allocationcount.cpp). Either way a new object of the library shows up in it.
 */
std::size_t heapInUse();

/** A message whose body is one parameter description. */
class InfoCarrier : public QProtocolStruct
{
public:
    InfoCarrier()
    {
        serviceId = 2;
        messageId = 99;
        messageType = 4;
    }
    void writePrivate(QContainerPacket &packet) const override { info.write(packet); }
    bool readPrivate(QContainerPacket &packet) override { return info.read(packet); }

    ParamInfo info;
};

/**
 * While it lives, every literal that goes through QObject::tr comes out marked as
 * "<tr>" followed by the literal, so that a test can tell a translated literal from one
 * that was used as it stands. Creates the QCoreApplication that a translator needs when
 * there is none, and removes both again when it is destroyed.
 */
class MarkedTranslations
{
public:
    static QString marked(const char *literal) { return QStringLiteral("<tr>") + QString::fromUtf8(literal); }

    MarkedTranslations()
    {
        if (!QCoreApplication::instance())
            m_app.reset(new QCoreApplication(m_argc, m_argv));
        QCoreApplication::installTranslator(&m_translator);
    }
    ~MarkedTranslations() { QCoreApplication::removeTranslator(&m_translator); }
    MarkedTranslations(const MarkedTranslations &) = delete;
    MarkedTranslations &operator=(const MarkedTranslations &) = delete;

private:
    class Marker : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *sourceText, const char *, int) const override
        {
            return qstrcmp(context, "QObject") == 0 ? marked(sourceText) : QString();
        }
    };

    char m_name[5] = {'t', 'e', 's', 't', '\0'};
    char *m_argv[2] = {m_name, nullptr};
    int m_argc = 1;
    std::unique_ptr<QCoreApplication> m_app;
    Marker m_translator;
};

/** Sends @p sent through write(), a new message, setPacket() and read(). */
inline bool roundTrip(const ParamInfo &sent, ParamInfo &received)
{
    InfoCarrier out;
    out.info = sent;
    out.write();
    InfoCarrier in;
    in.setPacket(out);
    const bool result = in.read();
    received = in.info;
    return result;
}

} // namespace desctest

#endif // DESCRIPTIONTEST_H

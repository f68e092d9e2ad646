#ifndef SEEDWRITER_H
#define SEEDWRITER_H

// Shared by the seed programs: writes one seed file per call into the folder given on
// the command line, creating the folder.

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <cstdio>

class SeedWriter
{
public:
    SeedWriter(int argc, char **argv)
    {
        if (argc < 2) {
            std::fprintf(stderr, "usage: %s <output folder>\n", argv[0]);
            return;
        }
        m_dir = QString::fromLocal8Bit(argv[1]);
        m_ok = QDir().mkpath(m_dir);
    }

    /** Writes @p bytes as the seed @p name. */
    void add(const QString &name, const QByteArray &bytes)
    {
        QFile file(m_dir + QLatin1Char('/') + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            m_ok = false;
        else
            ++m_count;
    }

    /** The exit code of the seed program. */
    int finish() const
    {
        std::printf("wrote %d seeds to %s\n", m_count, qPrintable(m_dir));
        return m_ok && m_count > 0 ? 0 : 1;
    }

private:
    QString m_dir;
    bool m_ok = false;
    int m_count = 0;
};

#endif // SEEDWRITER_H

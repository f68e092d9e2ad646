#ifndef COREFILE_H
#define COREFILE_H

// The core file of the test program, at "/../config/paramserver/core.xml" below the
// application directory. A CoreFile holds a lock across processes while it lives, since
// every test runs as a process of its own and they share the one path; it removes the
// file, and the folders it had to create, when it goes.

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLockFile>
#include <QtCore/QString>

#include <gtest/gtest.h>

namespace structtest {

class CoreFile
{
public:
    CoreFile()
        : m_lock(QCoreApplication::applicationDirPath() + QStringLiteral("/coremap-test.lock"))
    {
        m_locked = m_lock.lock();
        const QString base = QCoreApplication::applicationDirPath();
        m_configDir = base + QStringLiteral("/../config");
        m_serverDir = m_configDir + QStringLiteral("/paramserver");
        m_createdConfig = !QDir(m_configDir).exists();
        m_createdServer = !QDir(m_serverDir).exists();
        QFile::remove(path());
    }

    ~CoreFile()
    {
        QFile::remove(path());
        QDir().rmdir(path());
        if (m_createdServer)
            QDir().rmdir(m_serverDir);
        if (m_createdConfig)
            QDir().rmdir(m_configDir);
        m_lock.unlock();
    }

    CoreFile(const CoreFile &) = delete;
    CoreFile &operator=(const CoreFile &) = delete;

    bool locked() const { return m_locked; }

    /** The path exactly as the core map builds it. */
    static QString path()
    {
        return QCoreApplication::applicationDirPath() + QStringLiteral("/../config/paramserver/core.xml");
    }

    /** Writes @p content as the core file. */
    void write(const QByteArray &content)
    {
        ASSERT_TRUE(QDir().mkpath(m_serverDir));
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(content), content.size());
    }

    /** Removes the core file. */
    void remove() { QFile::remove(path()); }

    /** Puts a folder where the core file belongs, so that the path cannot be opened as a file. */
    void blockWithFolder()
    {
        remove();
        ASSERT_TRUE(QDir().mkpath(path()));
    }

private:
    QLockFile m_lock;
    bool m_locked = false;
    QString m_configDir;
    QString m_serverDir;
    bool m_createdConfig = false;
    bool m_createdServer = false;
};

} // namespace structtest

#endif // COREFILE_H

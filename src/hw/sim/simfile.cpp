#include "simfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <ctime>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace SimFile
{

namespace
{

// How long a writer waits for another process's lock.
constexpr int lockWaitMs = 500;

Stamp stampFrom(const struct stat& info)
{
    Stamp stamp;
    stamp.device = info.st_dev;
    stamp.inode = info.st_ino;
    stamp.size = info.st_size;
    stamp.modified = qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec;
    stamp.changed = qint64(info.st_ctim.tv_sec) * 1000000000 + info.st_ctim.tv_nsec;
    return stamp;
}

QString kindOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return QStringLiteral("a directory");
    if (S_ISCHR(mode))
        return QStringLiteral("a character device");
    if (S_ISBLK(mode))
        return QStringLiteral("a block device");
    if (S_ISFIFO(mode))
        return QStringLiteral("a FIFO");
    if (S_ISSOCK(mode))
        return QStringLiteral("a socket");
    return QStringLiteral("not a regular file");
}

} // namespace

QString lastError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

Stamp stampOf(const QByteArray& path)
{
    struct stat info;
    if (::stat(path.constData(), &info) != 0 || !S_ISREG(info.st_mode))
        return Stamp();
    return stampFrom(info);
}

Stamp stampOf(int fd)
{
    struct stat info;
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode))
        return Stamp();
    return stampFrom(info);
}

QString resolve(const QString& path, QString& problem)
{
    QString current = QFileInfo(path).absoluteFilePath();
    for (int hops = 0; hops < 40; ++hops) {
        struct stat info;
        if (::lstat(QFile::encodeName(current).constData(), &info) != 0) {
            if (errno == ENOENT)
                return current;
            problem = QStringLiteral("cannot be examined (%1)").arg(lastError());
            return QString();
        }
        if (S_ISREG(info.st_mode))
            return current;
        if (!S_ISLNK(info.st_mode)) {
            problem = QStringLiteral("is %1, not a regular file").arg(kindOf(info.st_mode));
            if (hops > 0)
                problem = QStringLiteral("leads to %1, which %2").arg(current, problem);
            return QString();
        }
        // A link, possibly to a file that does not exist yet: follow it by hand.
        const QString target = QFile::symLinkTarget(current);
        if (target.isEmpty()) {
            problem = QStringLiteral("is a symbolic link that cannot be read");
            return QString();
        }
        current = QDir::cleanPath(target);
    }
    problem = QStringLiteral("is a loop of symbolic links");
    return QString();
}

bool readAll(const QString& path, QByteArray& data, Stamp& stamp, QString& problem)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat info;
    if (::stat(name.constData(), &info) != 0) {
        problem = QStringLiteral("cannot be read (%1)").arg(lastError());
        return false;
    }
    if (!S_ISREG(info.st_mode)) {
        problem = QStringLiteral("is %1, not a regular file").arg(kindOf(info.st_mode));
        return false;
    }
    const int fd = ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        problem = QStringLiteral("cannot be read (%1)").arg(lastError());
        return false;
    }
    stamp = stampOf(fd);
    const bool ok = stamp.size >= 0 && readAt(fd, 0, stamp.size, data);
    if (!ok)
        problem = stamp.size < 0 ? QStringLiteral("is not a regular file")
                                 : QStringLiteral("cannot be read (%1)").arg(lastError());
    ::close(fd);
    return ok;
}

bool readAt(int fd, qint64 offset, qint64 length, QByteArray& data)
{
    data.resize(length);
    qint64 done = 0;
    while (done < length) {
        const ssize_t n = ::pread(fd, data.data() + done, size_t(length - done), off_t(offset + done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        done += n;
    }
    data.truncate(done);
    return done == length;
}

Lock::Lock(const QString& path)
{
    const QString lockPath = path + QStringLiteral(".lock");
    const QByteArray name = QFile::encodeName(lockPath);
    struct stat info;
    if (::lstat(name.constData(), &info) == 0 && !S_ISREG(info.st_mode)) {
        m_problem
            = QStringLiteral("lock file %1 is %2; writing without it").arg(lockPath, kindOf(info.st_mode));
        return;
    }
    m_fd = ::open(name.constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0644);
    if (m_fd < 0) {
        m_problem
            = QStringLiteral("cannot open lock file %1 (%2); writing without it").arg(lockPath, lastError());
        return;
    }
    // The lock belongs to the open file, so a process that dies leaves no
    // stale lock behind, whatever the file holds.
    const timespec pause { 0, 2000000 };
    for (int waited = 0; ::flock(m_fd, LOCK_EX | LOCK_NB) != 0; waited += 2) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || waited >= lockWaitMs) {
            m_problem = errno == EWOULDBLOCK
                ? QStringLiteral(
                    "lock file %1 held by another process for more than %2 ms; writing without it")
                      .arg(lockPath)
                      .arg(lockWaitMs)
                : QStringLiteral("cannot lock %1 (%2); writing without it").arg(lockPath, lastError());
            ::close(m_fd);
            m_fd = -1;
            return;
        }
        nanosleep(&pause, nullptr);
    }
}

Lock::~Lock()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

} // namespace SimFile

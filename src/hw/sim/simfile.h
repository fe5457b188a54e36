// Careful access to the files of the simulated unit: only regular files are
// ever opened, and the state file's lock is never waited on for long.
#ifndef SIMFILE_H
#define SIMFILE_H

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace SimFile
{

// What identifies one version of a file. Every write changes the change time,
// which no program can set back, so two equal stamps mean an unchanged file.
struct Stamp {
    dev_t device = 0;
    ino_t inode = 0;
    qint64 size = -1; // -1: the file does not exist
    qint64 modified = 0;
    qint64 changed = 0;
    friend bool operator==(const Stamp& a, const Stamp& b)
    {
        return a.device == b.device && a.inode == b.inode && a.size == b.size && a.modified == b.modified
            && a.changed == b.changed;
    }
    friend bool operator!=(const Stamp& a, const Stamp& b) { return !(a == b); }
};

// The stamp of `path` (following symbolic links); size -1 when it is missing
// or is not a regular file.
Stamp stampOf(const QByteArray& path);
Stamp stampOf(int fd);

// Follows symbolic links to the file they name (which need not exist yet).
// Empty, with `problem` set, when the path names anything but a regular file
// or a missing one.
QString resolve(const QString& path, QString& problem);

// Reads a whole regular file; false with `problem` set otherwise. Never opens
// a device, a FIFO or a socket.
bool readAll(const QString& path, QByteArray& data, Stamp& stamp, QString& problem);

// Reads `length` bytes at `offset` from an open file.
bool readAt(int fd, qint64 offset, qint64 length, QByteArray& data);

// An exclusive lock on "<path>.lock", held until destruction. It waits at most
// half a second; a lock file that is not a regular file, or a lock held longer
// than that, is not waited on: `problem` says why and the holder goes on
// without it.
class Lock
{
public:
    explicit Lock(const QString& path);
    ~Lock();
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    bool held() const { return m_fd >= 0; }
    const QString& problem() const { return m_problem; }

private:
    int m_fd = -1;
    QString m_problem;
};

// The system's text for the last error.
QString lastError();

} // namespace SimFile

#endif // SIMFILE_H

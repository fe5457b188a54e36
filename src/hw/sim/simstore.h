// The simulated unit's state: profile values with the saved state laid over
// them, live readings, result codes to inject and the call trace. One instance
// per process, shared by every library operation and the control API.
#ifndef SIMSTORE_H
#define SIMSTORE_H

#include "simfile.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstdio>
#include <mutex>
#include <utility>

namespace SimStore
{

// The values an operation's type can carry, for the key it reads or writes.
// Profile and state lines outside it are refused. Objects of this class are
// static and link themselves into one list when the library is loaded.
struct ValueRange {
    ValueRange(const char* key, double lowest, double highest, bool whole);
    const char* key; // "<Family>/<Name>", or "<Family>/<Name>_" for indexed values
    double lowest;
    double highest;
    bool whole; // whole numbers only
    const ValueRange* next;
};

class Store
{
public:
    // The process-wide unit, loaded from the environment on first use.
    static Store& instance();

    ~Store();

    // Every access goes through this lock; it is recursive so that helpers
    // may nest. A standard mutex, so that ThreadSanitizer sees the locking.
    // The readers below (has to number) and key() leave it to their caller:
    // operations read several values under the one lock they hold.
    mutable std::recursive_mutex mutex;
    using Lock = std::lock_guard<std::recursive_mutex>;

    void reset(const QString& profile, const QString& stateFile);

    // True when the unit has the value at all (profile or saved state).
    bool has(const QString& key) const;
    // The value as stored, without live movement (invalid when absent).
    QVariant stored(const QString& key) const;
    // The value as the unit reports it now: held, moving or stored.
    QVariant current(const QString& key) const;
    QString text(const QString& key) const;
    int integer(const QString& key) const;
    long long wide(const QString& key) const;
    double number(const QString& key) const;
    // current() of a value the unit has, in one look-up; false without it.
    bool read(const QString& key, QVariant& value) const;
    // A value as wide() and number() read it.
    static long long wholeOf(const QVariant& value);
    static double numberOf(const QVariant& value);

    // A write made by a setter: kept and saved to the state file. False when
    // it cannot be saved; the unit then keeps the value it had.
    bool write(const QString& key, const QVariant& value);

    // The writes of one operation, saved together when it ends. commit() is
    // false when they could not be saved; they are then undone.
    class Change
    {
    public:
        explicit Change(Store& store);
        ~Change();
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
        bool commit();

    private:
        Store& m_store;
        bool m_done = false;
    };

    // A key made once from a string literal, so that lookups allocate nothing.
    QString key(const char* literal);
    QString key(const char* literal, int index); // "<literal>_<index>"

    void hold(const QString& key, const QVariant& value);
    void freezeLive(bool frozen);

    // The code injected for an operation; the caller holds the lock.
    int codeFor(const char* operation) const;
    int codeFor(const QString& operation) const;
    void forceCode(const QString& operation, int code);
    void clearCodes();

    // True when calls leave trace lines (a trace file or the in-memory trace).
    bool tracing() const { return m_traceFile || m_memoryTraceOn; }
    void setMemoryTrace(bool on);
    void trace(const QString& line);
    QStringList memoryTrace() const;
    void clearTrace();

    // Seconds since the unit was loaded; drives live readings and upgrades.
    double elapsed() const;

    // Run-time values that are never saved (a firmware run in progress);
    // forgotten on reset.
    QVariant scratch(const QString& key) const { return m_scratch.value(key); }
    void setScratch(const QString& key, const QVariant& value) { m_scratch.insert(key, value); }

private:
    struct Values {
        QHash<QString, QVariant> values;
        QHash<QByteArray, int> codes;
        bool frozen = false;
        QSet<QString> heldAtStored;
    };

    Store();
    void load(const QString& profile, const QString& stateFile);
    bool loadProfile(const QString& path, int depth = 0);
    void loadState();
    void readInto(const QString& path, QByteArrayView data, int firstLine, QString& section, Values& into);
    void reportOnce(const QString& message);
    bool save(const QList<std::pair<QString, QVariant>>& before);
    bool refresh(int fd, const SimFile::Stamp& now);
    void compact(int fd);
    QVariant live(const QString& key, const QVariant& base) const;
    // current() of `key` whose stored value is `stored` (null: none).
    QVariant reported(const QString& key, const QVariant* stored) const;
    // The stored value under `key`, saved state before profile; null if none.
    const QVariant* find(const QString& key) const;

    Values m_profile;
    Values m_state;
    QHash<QByteArray, int> m_forcedCodes;
    QHash<QString, QVariant> m_held;
    QHash<QString, QVariant> m_scratch;
    bool m_frozen = false;

    // The state file: its resolved path (empty: nothing persists), whether
    // values can be saved there, and what this process last saw of it.
    QString m_statePath;
    QByteArray m_statePathBytes;
    bool m_saving = false;
    QString m_stateProblem;
    SimFile::Stamp m_stamp;
    QByteArray m_tail; // the last bytes of the file as last seen
    QString m_tailSection;
    int m_lines = 0;
    qint64 m_settingLines = 0;
    qint64 m_overwritten = 0;

    // Writes of the operation in progress: each key with its value before.
    int m_changeDepth = 0;
    QList<std::pair<QString, QVariant>> m_before;

    QSet<QString> m_reported;
    QHash<const char*, QString> m_keys;
    QHash<std::pair<const char*, int>, QString> m_indexedKeys;

    std::FILE* m_traceFile = nullptr;
    bool m_memoryTraceOn = false;
    QStringList m_memoryTrace;

    QElapsedTimer m_clock;
};

// Text of a stored value; lists are joined with commas.
QString toText(const QVariant& value);

// Shortest decimal text that reads back as exactly `value`.
QString numberText(double value);
QString numberText(float value);

} // namespace SimStore

#endif // SIMSTORE_H

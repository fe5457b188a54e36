// The simulated unit's state: profile values with the saved state laid over
// them, live readings, result codes to inject and the call trace. One instance
// per process, shared by every library operation and the control API.
#ifndef SIMSTORE_H
#define SIMSTORE_H

#include <QElapsedTimer>
#include <QHash>
#include <QSet>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstdio>
#include <memory>
#include <mutex>

namespace SimStore
{

class Store
{
public:
    // The process-wide unit, loaded from the environment on first use.
    static Store& instance();

    ~Store();

    // Every access goes through this lock; it is recursive so that helpers
    // may nest. A standard mutex, so that ThreadSanitizer sees the locking.
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
    double number(const QString& key) const;

    // A write made by a setter: kept and saved to the state file.
    void write(const QString& key, const QVariant& value);

    void hold(const QString& key, const QVariant& value);
    void freezeLive(bool frozen);

    int codeFor(const QString& operation) const;
    void forceCode(const QString& operation, int code);
    void clearCodes();

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
    Store();
    void load(const QString& profile, const QString& stateFile);
    bool loadProfile(const QString& path, int depth = 0);
    void loadState();
    void readInto(QSettings& settings, QHash<QString, QVariant>& values, QHash<QString, int>& codes);
    QVariant live(const QString& key, const QVariant& base) const;

    QHash<QString, QVariant> m_profile;
    QHash<QString, QVariant> m_saved;
    QHash<QString, int> m_profileCodes;
    QHash<QString, int> m_forcedCodes;
    QHash<QString, QVariant> m_held;
    QHash<QString, QVariant> m_scratch;
    QSet<QString> m_heldAtStored;
    bool m_frozen = false;

    QString m_statePath;
    std::unique_ptr<QSettings> m_state;

    std::FILE* m_traceFile = nullptr;
    bool m_memoryTraceOn = false;
    QStringList m_memoryTrace;

    QElapsedTimer m_clock;
};

// Text of a stored value; QSettings hands back comma-separated INI values as
// lists, which are joined again here.
QString toText(const QVariant& value);

// Shortest decimal text that reads back as exactly `value`.
QString numberText(double value);
QString numberText(float value);

} // namespace SimStore

#endif // SIMSTORE_H

#include "simstore.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>

namespace SimStore
{

namespace
{

const QString shippedProfileDir = QStringLiteral(":/zuauxsim/profiles/");

QString shippedProfile(const QString& name)
{
    return shippedProfileDir + name + QStringLiteral(".ini");
}

QString resolveProfile(const QString& name)
{
    if (name.isEmpty())
        return shippedProfile(QStringLiteral("full"));
    if (!name.contains(QLatin1Char('/')) && QFile::exists(shippedProfile(name)))
        return shippedProfile(name);
    if (QFileInfo(name).isFile())
        return name;
    std::fprintf(
        stderr, "zu-aux2 simulator: unknown profile \"%s\"; using the full profile\n", qPrintable(name));
    return shippedProfile(QStringLiteral("full"));
}

QString defaultStatePath()
{
    QString base = qEnvironmentVariable("XDG_STATE_HOME");
    if (base.isEmpty())
        base = QDir::homePath() + QStringLiteral("/.local/state");
    return base + QStringLiteral("/zusettings/sim-state.ini");
}

// QSettings accepts nearly anything, so a damaged file is recognised here: it
// must be text made of sections, comments and key=value lines.
QString problemWith(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("is not readable");
    const QByteArray data = file.readAll();
    if (data.contains('\0'))
        return QStringLiteral("is corrupt (binary data)");
    const QList<QByteArray> lines = data.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        const QByteArray line = lines.at(i).trimmed();
        if (line.isEmpty() || line.startsWith(';') || line.startsWith('#') || line.contains('='))
            continue;
        if (line.startsWith('[') && line.endsWith(']'))
            continue;
        return QStringLiteral("is corrupt (line %1)").arg(i + 1);
    }
    return QString();
}

QString asideName(const QString& path)
{
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    QString name = path + QStringLiteral(".corrupt-") + stamp;
    for (int n = 2; QFile::exists(name); ++n)
        name = path + QStringLiteral(".corrupt-%1-%2").arg(stamp).arg(n);
    return name;
}

// How a live reading moves around its stored value.
struct LiveRule {
    const char* prefix;
    double amplitude;
    bool relative; // amplitude as a fraction of the stored value
    double period; // seconds
    double lowest;
    double highest;
};

const LiveRule liveRules[] = {
    { "Diagnostic/PCBTemp", 3, false, 90, -60, 150 },
    { "Diagnostic/SSTemp", 2, false, 70, -60, 150 },
    { "Diagnostic/PMTemp_", 4, false, 50, -60, 150 },
    { "Adc/Voltage_", 0.01, true, 20, 0, 100 },
    { "Lightsensor/AverageIlluminance", 0.4, true, 30, 0, 65535 },
    { "CfgIn/Value_", 0.05, true, 15, 0, 65535 },
    { "CfgIn/PwmFrequency_", 0.02, true, 25, 0, 1e6 },
    { "CfgIn/PwmDutyCycle_", 3, false, 25, 0, 100 },
    { "Battery/BatteryVoltageStatus", 5, false, 300, 0, 100 },
    { "Battery/BatteryTemp", 2, false, 120, -60, 150 },
};

} // namespace

QString toText(const QVariant& value)
{
    if (value.userType() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1Char(','));
    if (value.userType() == QMetaType::Double)
        return numberText(value.toDouble());
    if (value.userType() == QMetaType::Float)
        return numberText(value.toFloat());
    return value.toString();
}

QString numberText(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString numberText(float value)
{
    for (int precision = 1; precision < 9; ++precision) {
        const QString text = QString::number(double(value), 'g', precision);
        if (text.toFloat() == value)
            return text;
    }
    return QString::number(double(value), 'g', 9);
}

Store& Store::instance()
{
    static Store store;
    return store;
}

Store::Store()
{
    QString state = qEnvironmentVariable("ZUAUX_SIM_STATE");
    if (state.isEmpty())
        state = defaultStatePath();
    const QString tracePath = qEnvironmentVariable("ZUAUX_SIM_TRACE");
    if (!tracePath.isEmpty()) {
        m_traceFile = std::fopen(QFile::encodeName(tracePath).constData(), "a");
        if (!m_traceFile)
            std::fprintf(stderr, "zu-aux2 simulator: cannot open trace file %s\n", qPrintable(tracePath));
    }
    load(qEnvironmentVariable("ZUAUX_SIM_PROFILE"), state);
}

Store::~Store()
{
    if (m_traceFile)
        std::fclose(m_traceFile);
}

void Store::reset(const QString& profile, const QString& stateFile)
{
    Lock lock(mutex);
    load(profile, stateFile);
    m_forcedCodes.clear();
    m_held.clear();
    m_memoryTrace.clear();
    m_memoryTraceOn = true;
}

void Store::load(const QString& profile, const QString& stateFile)
{
    m_profile.clear();
    m_saved.clear();
    m_profileCodes.clear();
    m_heldAtStored.clear();
    m_scratch.clear();
    m_frozen = false;
    m_state.reset();
    m_statePath = stateFile;
    m_clock.start();

    if (!loadProfile(resolveProfile(profile)))
        loadProfile(shippedProfile(QStringLiteral("full")));
    if (!m_statePath.isEmpty())
        loadState();
}

bool Store::loadProfile(const QString& path, int depth)
{
    if (!problemWith(path).isEmpty()) {
        std::fprintf(stderr, "zu-aux2 simulator: profile %s %s; using the full profile\n", qPrintable(path),
            qPrintable(problemWith(path)));
        return false;
    }
    QSettings settings(path, QSettings::IniFormat);
    // A profile may describe itself as changes to another one.
    const QString base = toText(settings.value(QStringLiteral("profile/base")));
    if (!base.isEmpty() && depth < 4)
        loadProfile(resolveProfile(base), depth + 1);
    readInto(settings, m_profile, m_profileCodes);
    return true;
}

void Store::loadState()
{
    QString problem;
    if (QFile::exists(m_statePath)) {
        problem = problemWith(m_statePath);
        if (problem.isEmpty()) {
            m_state = std::make_unique<QSettings>(m_statePath, QSettings::IniFormat);
            if (m_state->status() != QSettings::NoError) {
                problem = QStringLiteral("is corrupt");
                m_state.reset();
            }
        }
    } else {
        QDir().mkpath(QFileInfo(m_statePath).absolutePath());
    }

    if (!problem.isEmpty()) {
        const QString aside = asideName(m_statePath);
        if (QFile::rename(m_statePath, aside)) {
            std::fprintf(stderr,
                "zu-aux2 simulator: state file %s %s; moved it to %s, using profile values\n",
                qPrintable(m_statePath), qPrintable(problem), qPrintable(aside));
        } else {
            // Keep the damaged file untouched and save nothing over it.
            std::fprintf(stderr,
                "zu-aux2 simulator: state file %s %s and could not be moved aside; using profile "
                "values, changes will not be saved\n",
                qPrintable(m_statePath), qPrintable(problem));
            return;
        }
    }

    if (!m_state)
        m_state = std::make_unique<QSettings>(m_statePath, QSettings::IniFormat);
    m_state->setAtomicSyncRequired(true);
    readInto(*m_state, m_saved, m_profileCodes);
}

void Store::readInto(QSettings& settings, QHash<QString, QVariant>& values, QHash<QString, int>& codes)
{
    const QString errors = QStringLiteral("errors/");
    const QString live = QStringLiteral("live/");
    const QStringList keys = settings.allKeys();
    for (const QString& key : keys) {
        const QVariant value = settings.value(key);
        if (key.startsWith(QLatin1String("profile/"))) {
            continue;
        } else if (key.startsWith(errors)) {
            codes.insert(key.mid(errors.size()), toText(value).toInt());
        } else if (key == live + QStringLiteral("frozen")) {
            m_frozen = toText(value).toInt() != 0;
        } else if (key == live + QStringLiteral("hold")) {
            for (const QString& held : toText(value).split(QLatin1Char(','), Qt::SkipEmptyParts))
                m_heldAtStored.insert(held.trimmed());
        } else {
            values.insert(key, value);
        }
    }
}

bool Store::has(const QString& key) const
{
    Lock lock(mutex);
    return m_saved.contains(key) || m_profile.contains(key);
}

QVariant Store::stored(const QString& key) const
{
    Lock lock(mutex);
    const auto saved = m_saved.constFind(key);
    if (saved != m_saved.constEnd())
        return *saved;
    return m_profile.value(key);
}

QVariant Store::current(const QString& key) const
{
    Lock lock(mutex);
    const auto held = m_held.constFind(key);
    if (held != m_held.constEnd())
        return *held;
    if (key == QLatin1String("Backlight/Intensity")
        && integer(QStringLiteral("Backlight/AutomaticBLStatus")) == 1 && has(key)) {
        // The automatic backlight drives the intensity from the illuminance.
        const double lux = number(QStringLiteral("Lightsensor/AverageIlluminance"));
        return qBound(20, qRound(20 + lux * 0.235), 255);
    }
    const QVariant base = stored(key);
    if (!base.isValid() || m_frozen || m_heldAtStored.contains(key))
        return base;
    return live(key, base);
}

QVariant Store::live(const QString& key, const QVariant& base) const
{
    const double t = elapsed();
    // Each key gets its own phase so that related readings do not move in step.
    const double phase = double(qHash(key) % 628) / 100.0;
    if (key == QLatin1String("DigIO/DigIO")) {
        int inputs = 0;
        for (int bit = 0; bit < 4; ++bit)
            inputs |= (int((t + phase) / (3 + 2 * bit)) & 1) << bit;
        return toText(base).toInt() ^ inputs;
    }
    for (const LiveRule& rule : liveRules) {
        if (!key.startsWith(QLatin1String(rule.prefix)))
            continue;
        const double value = toText(base).toDouble();
        const double amplitude = rule.relative ? std::fabs(value) * rule.amplitude : rule.amplitude;
        const double moved = value + amplitude * std::sin(2 * M_PI * t / rule.period + phase);
        return std::clamp(moved, rule.lowest, rule.highest);
    }
    return base;
}

QString Store::text(const QString& key) const
{
    return toText(current(key));
}

int Store::integer(const QString& key) const
{
    const QVariant value = current(key);
    if (value.userType() == QMetaType::Double)
        return qRound(value.toDouble());
    const QString text = toText(value).trimmed();
    bool ok = false;
    const int result = text.toInt(&ok);
    return ok ? result : qRound(text.toDouble());
}

double Store::number(const QString& key) const
{
    return toText(current(key)).toDouble();
}

void Store::write(const QString& key, const QVariant& value)
{
    Lock lock(mutex);
    m_saved.insert(key, value);
    if (!m_state)
        return;
    m_state->setValue(key, value);
    m_state->sync();
    if (m_state->status() != QSettings::NoError)
        std::fprintf(
            stderr, "zu-aux2 simulator: cannot save %s to %s\n", qPrintable(key), qPrintable(m_statePath));
}

void Store::hold(const QString& key, const QVariant& value)
{
    Lock lock(mutex);
    m_held.insert(key, value);
}

void Store::freezeLive(bool frozen)
{
    Lock lock(mutex);
    m_frozen = frozen;
}

int Store::codeFor(const QString& operation) const
{
    Lock lock(mutex);
    const QString any = QStringLiteral("*");
    for (const QString& name : { operation, any }) {
        if (m_forcedCodes.contains(name))
            return m_forcedCodes.value(name);
        if (m_profileCodes.contains(name))
            return m_profileCodes.value(name);
    }
    return 0;
}

void Store::forceCode(const QString& operation, int code)
{
    Lock lock(mutex);
    m_forcedCodes.insert(operation, code);
}

void Store::clearCodes()
{
    Lock lock(mutex);
    m_forcedCodes.clear();
}

void Store::trace(const QString& line)
{
    Lock lock(mutex);
    if (m_traceFile) {
        std::fputs(line.toLatin1().constData(), m_traceFile);
        std::fputc('\n', m_traceFile);
        std::fflush(m_traceFile);
    }
    if (m_memoryTraceOn)
        m_memoryTrace.append(line);
}

QStringList Store::memoryTrace() const
{
    Lock lock(mutex);
    // A list of its own rather than a shared one, so that later appends from
    // other threads never have to detach a list the caller is reading.
    QStringList copy;
    copy.reserve(m_memoryTrace.size());
    for (const QString& line : m_memoryTrace)
        copy.append(line);
    return copy;
}

void Store::clearTrace()
{
    Lock lock(mutex);
    m_memoryTrace.clear();
}

double Store::elapsed() const
{
    return double(m_clock.nsecsElapsed()) / 1e9;
}

} // namespace SimStore

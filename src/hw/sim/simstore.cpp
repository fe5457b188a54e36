#include "simstore.h"
#include "simini.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

namespace
{

const ValueRange* rangeList = nullptr;

struct Range {
    double lowest;
    double highest;
    bool whole;
};

// The ranges by key; a key that a getter and a setter share gets the values
// both types hold.
const QHash<QString, Range>& ranges()
{
    static const QHash<QString, Range> byKey = [] {
        QHash<QString, Range> map;
        for (const ValueRange* r = rangeList; r; r = r->next) {
            const QString key = QString::fromLatin1(r->key);
            Range range { r->lowest, r->highest, r->whole };
            const auto known = map.constFind(key);
            if (known != map.constEnd()) {
                range.lowest = std::max(range.lowest, known->lowest);
                range.highest = std::min(range.highest, known->highest);
                range.whole = range.whole || known->whole;
            }
            map.insert(key, range);
        }
        return map;
    }();
    return byKey;
}

// Whether `value` fits the type of the operation that uses `key`.
bool acceptable(const QString& key, const QString& value, QString& why)
{
    auto found = ranges().constFind(key);
    if (found == ranges().constEnd()) {
        // "<Family>/<Name>_<n>" is checked as "<Family>/<Name>_".
        qsizetype end = key.size();
        while (end > 0 && key.at(end - 1).isDigit())
            --end;
        if (end == key.size() || end == 0 || key.at(end - 1) != QLatin1Char('_'))
            return true;
        found = ranges().constFind(key.left(end));
        if (found == ranges().constEnd())
            return true;
    }
    bool ok = false;
    const double number = value.trimmed().toDouble(&ok);
    if (ok && std::isfinite(number) && number >= found->lowest && number <= found->highest
        && (!found->whole || number == std::floor(number)))
        return true;
    why = QStringLiteral("holds %1, not a %2 in %3..%4")
              .arg(value, found->whole ? QStringLiteral("whole number") : QStringLiteral("number"))
              .arg(found->lowest, 0, 'g', 12)
              .arg(found->highest, 0, 'g', 12);
    return false;
}

// A line as it can be shown on one line of a terminal.
QString shown(QByteArrayView raw)
{
    QByteArray text = raw.first(std::min<qsizetype>(raw.size(), 60)).toByteArray();
    for (char& c : text) {
        if (uchar(c) < 0x20 || c == 0x7f)
            c = '?';
    }
    return QString::fromLatin1(text) + (raw.size() > 60 ? QStringLiteral("...") : QString());
}

int linesIn(QByteArrayView data)
{
    return int(data.count('\n'));
}

// Keeps what the file holds after the last `count` bytes in view.
QByteArray lastBytes(const QByteArray& data, qsizetype count = 64)
{
    return data.right(count);
}

// Two texts of a value are the same value when they are equal or are the same
// number; this lets a setter's integer compare with the text a file holds.
bool sameValue(const QVariant& known, const QVariant& value)
{
    if (!known.isValid())
        return false;
    const QString text = toText(known);
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool: {
        bool ok = false;
        const long long number = text.toLongLong(&ok);
        return ok && number == value.toLongLong();
    }
    case QMetaType::QString:
        return text == value.toString();
    default:
        return text == toText(value);
    }
}

} // namespace

ValueRange::ValueRange(const char* key_, double lowest_, double highest_, bool whole_)
    : key(key_)
    , lowest(lowest_)
    , highest(highest_)
    , whole(whole_)
    , next(rangeList)
{
    rangeList = this;
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
    m_profile = Values();
    m_state = Values();
    m_scratch.clear();
    m_reported.clear();
    m_statePath = stateFile;
    m_statePathBytes.clear();
    m_saving = false;
    m_stateProblem.clear();
    m_stamp = SimFile::Stamp();
    m_tail.clear();
    m_tailSection.clear();
    m_lines = 0;
    m_settingLines = 0;
    m_overwritten = 0;
    m_before.clear();
    m_clock.start();

    if (!loadProfile(resolveProfile(profile)))
        loadProfile(shippedProfile(QStringLiteral("full")));
    if (!m_statePath.isEmpty())
        loadState();
    m_frozen = m_profile.frozen || m_state.frozen;
}

void Store::reportOnce(const QString& message)
{
    if (m_reported.contains(message))
        return;
    m_reported.insert(message);
    std::fprintf(stderr, "zu-aux2 simulator: %s\n", qPrintable(message));
}

bool Store::loadProfile(const QString& path, int depth)
{
    QByteArray data;
    QString problem;
    bool read = false;
    if (path.startsWith(QLatin1Char(':'))) {
        QFile resource(path);
        read = resource.open(QIODevice::ReadOnly);
        data = resource.readAll();
    } else {
        SimFile::Stamp stamp;
        read = SimFile::readAll(path, data, stamp, problem);
    }
    if (!read) {
        std::fprintf(stderr, "zu-aux2 simulator: profile %s %s; using the full profile\n", qPrintable(path),
            qPrintable(problem));
        return false;
    }
    Values own;
    QString section;
    readInto(path, data, 1, section, own);
    // A profile may describe itself as changes to another one.
    const QString base = own.values.take(QStringLiteral("profile/base")).toString();
    if (!base.isEmpty() && depth < 4)
        loadProfile(resolveProfile(base), depth + 1);
    m_profile.values.insert(own.values);
    m_profile.codes.insert(own.codes);
    m_profile.frozen = m_profile.frozen || own.frozen;
    m_profile.heldAtStored.unite(own.heldAtStored);
    return true;
}

void Store::readInto(const QString& path, QByteArrayView data, int firstLine, QString& section, Values& into)
{
    const bool state = &into == &m_state;
    SimIni::Reader reader;
    reader.rejected = [&](const SimIni::Line& line, const QString& why) {
        reportOnce(QStringLiteral("%1:%2: line ignored, it %3: %4")
                       .arg(path)
                       .arg(line.number)
                       .arg(why, shown(line.raw)));
    };
    reader.setting = [&](const SimIni::Line& line) {
        const QString& key = line.key;
        QString why;
        if (key.startsWith(QLatin1String("errors/"))) {
            bool ok = false;
            const int code = line.value.toInt(&ok);
            if (!ok)
                return reader.rejected(line, QStringLiteral("holds a code that is not a number"));
            into.codes.insert(key.mid(7).toLatin1(), code);
        } else if (key == QLatin1String("live/frozen")) {
            into.frozen = line.value.toInt() != 0;
        } else if (key == QLatin1String("live/hold")) {
            for (const QString& held : line.value.split(QLatin1Char(','), Qt::SkipEmptyParts))
                into.heldAtStored.insert(held.trimmed());
        } else if (key.startsWith(QLatin1String("profile/")) && key != QLatin1String("profile/base")) {
            return;
        } else if (!acceptable(key, line.value, why)) {
            return reader.rejected(line, why);
        } else {
            if (state && into.values.contains(key))
                ++m_overwritten;
            into.values.insert(key, line.value);
        }
        if (state)
            ++m_settingLines;
    };
    SimIni::read(data, firstLine, section, reader);
}

void Store::loadState()
{
    QString problem;
    const QString resolved = SimFile::resolve(m_statePath, problem);
    if (resolved.isEmpty()) {
        m_stateProblem = QStringLiteral("state file %1 %2").arg(m_statePath, problem);
        reportOnce(m_stateProblem + QStringLiteral("; using built-in values, nothing is saved"));
        return;
    }
    m_statePath = resolved;
    m_statePathBytes = QFile::encodeName(resolved);
    m_saving = true;
    if (SimFile::stampOf(m_statePathBytes).size < 0)
        return;
    QByteArray data;
    if (!SimFile::readAll(m_statePath, data, m_stamp, problem)) {
        // What cannot be read is not overwritten either.
        m_saving = false;
        m_stamp = SimFile::Stamp();
        m_stateProblem = QStringLiteral("state file %1 %2").arg(m_statePath, problem);
        reportOnce(m_stateProblem + QStringLiteral("; using built-in values, nothing is saved"));
        return;
    }
    readInto(m_statePath, data, 1, m_tailSection, m_state);
    m_lines = linesIn(data);
    m_tail = lastBytes(data);
}

const QVariant* Store::find(const QString& key) const
{
    const auto saved = m_state.values.constFind(key);
    if (saved != m_state.values.constEnd())
        return &*saved;
    const auto given = m_profile.values.constFind(key);
    return given != m_profile.values.constEnd() ? &*given : nullptr;
}

bool Store::has(const QString& key) const
{
    return find(key) != nullptr;
}

QVariant Store::stored(const QString& key) const
{
    const QVariant* value = find(key);
    return value ? *value : QVariant();
}

QVariant Store::current(const QString& key) const
{
    return reported(key, find(key));
}

bool Store::read(const QString& key, QVariant& value) const
{
    const QVariant* stored = find(key);
    if (!stored)
        return false;
    value = reported(key, stored);
    return true;
}

QVariant Store::reported(const QString& key, const QVariant* stored) const
{
    if (!m_held.isEmpty()) {
        const auto held = m_held.constFind(key);
        if (held != m_held.constEnd())
            return *held;
    }
    if (stored && key == QLatin1String("Backlight/Intensity")
        && integer(QStringLiteral("Backlight/AutomaticBLStatus")) == 1) {
        // The automatic backlight drives the intensity from the illuminance.
        const double lux = number(QStringLiteral("Lightsensor/AverageIlluminance"));
        return qBound(20, qRound(20 + lux * 0.235), 255);
    }
    if (!stored)
        return QVariant();
    if (m_frozen || m_profile.heldAtStored.contains(key) || m_state.heldAtStored.contains(key))
        return *stored;
    return live(key, *stored);
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

namespace
{
// The number a plain decimal text spells ("350", "-12"), read without the
// cost of the general conversions that polled values would pay on every
// call; false for every other value, which those conversions then read.
bool plainWhole(const QVariant& value, long long& result)
{
    if (value.userType() != QMetaType::QString)
        return false;
    const auto* text = static_cast<const QString*>(value.constData());
    const qsizetype size = text->size();
    const bool sign = size > 0 && (text->front() == QLatin1Char('-') || text->front() == QLatin1Char('+'));
    if (size == qsizetype(sign) || size - qsizetype(sign) > 18)
        return false;
    long long whole = 0;
    for (qsizetype i = sign; i < size; ++i) {
        const char16_t digit = text->at(i).unicode();
        if (digit < u'0' || digit > u'9')
            return false;
        whole = whole * 10 + (digit - u'0');
    }
    result = text->front() == QLatin1Char('-') ? -whole : whole;
    return true;
}
} // namespace

long long Store::wide(const QString& key) const
{
    return wholeOf(current(key));
}

long long Store::wholeOf(const QVariant& value)
{
    long long whole = 0;
    if (plainWhole(value, whole))
        return whole;
    double number = 0;
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::Bool:
        return value.toLongLong();
    case QMetaType::Double:
        number = value.toDouble();
        break;
    default: {
        const QString text = toText(value).trimmed();
        bool ok = false;
        const long long result = text.toLongLong(&ok);
        if (ok)
            return result;
        number = text.toDouble();
    }
    }
    // Anything a 64-bit integer cannot hold reads as 0 rather than wrapping.
    return std::isfinite(number) && std::fabs(number) < 9e18 ? qRound64(number) : 0;
}

int Store::integer(const QString& key) const
{
    return int(std::clamp<long long>(wide(key), INT_MIN, INT_MAX));
}

double Store::number(const QString& key) const
{
    return numberOf(current(key));
}

double Store::numberOf(const QVariant& value)
{
    long long whole = 0;
    if (plainWhole(value, whole))
        return double(whole);
    if (value.userType() == QMetaType::Double)
        return value.toDouble();
    return toText(value).toDouble();
}

QString Store::key(const char* literal)
{
    auto found = m_keys.constFind(literal);
    if (found == m_keys.constEnd())
        found = m_keys.insert(literal, QString::fromLatin1(literal));
    return *found;
}

QString Store::key(const char* literal, int index)
{
    const auto id = std::make_pair(literal, index);
    auto found = m_indexedKeys.constFind(id);
    if (found == m_indexedKeys.constEnd())
        found = m_indexedKeys.insert(id, QLatin1String(literal) + QLatin1Char('_') + QString::number(index));
    return *found;
}

bool Store::write(const QString& key, const QVariant& value)
{
    Lock lock(mutex);
    if (m_changeDepth == 0) {
        Change change(*this);
        write(key, value);
        return change.commit();
    }
    const QVariant known = stored(key);
    // Writing what the unit holds changes nothing, unless another process
    // changed the file since: then the write decides what it holds.
    if (sameValue(known, value) && (!m_saving || SimFile::stampOf(m_statePathBytes) == m_stamp))
        return true;
    const auto recorded = std::find_if(m_before.cbegin(), m_before.cend(),
        [&](const std::pair<QString, QVariant>& b) { return b.first == key; });
    if (recorded == m_before.cend())
        m_before.append({ key, m_state.values.value(key) });
    m_state.values.insert(key, value.userType() == QMetaType::QString ? value : QVariant(toText(value)));
    return true;
}

Store::Change::Change(Store& store)
    : m_store(store)
{
    m_store.mutex.lock();
    ++m_store.m_changeDepth;
}

Store::Change::~Change()
{
    commit();
    m_store.mutex.unlock();
}

bool Store::Change::commit()
{
    if (m_done)
        return true;
    m_done = true;
    if (--m_store.m_changeDepth > 0 || m_store.m_before.isEmpty())
        return true;
    const QList<std::pair<QString, QVariant>> before = std::move(m_store.m_before);
    m_store.m_before.clear();
    // Without a state file the unit keeps its values in memory only.
    if (m_store.m_statePath.isEmpty())
        return true;
    return m_store.save(before);
}

// Appends the values that `before` lists as changed to the state file, after
// taking in what other processes wrote. The memory always ends up as the file
// holds it.
bool Store::save(const QList<std::pair<QString, QVariant>>& before)
{
    QList<std::pair<QString, QString>> changes;
    for (const auto& [key, old] : before) {
        changes.append({ key, m_state.values.value(key).toString() });
        if (old.isValid())
            m_state.values.insert(key, old);
        else
            m_state.values.remove(key);
    }
    QStringList keys;
    for (const auto& change : changes)
        keys << change.first;
    const QString what = keys.join(QStringLiteral(", "));
    // Loading said why nothing can be saved.
    if (!m_saving)
        return false;

    if (m_stamp.size < 0)
        QDir().mkpath(QFileInfo(m_statePath).absolutePath());
    const int fd = ::open(
        m_statePathBytes.constData(), O_RDWR | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0644);
    if (fd < 0) {
        reportOnce(QStringLiteral("cannot save %1 to %2 (%3)").arg(what, m_statePath, SimFile::lastError()));
        return false;
    }
    SimFile::Lock lock(m_statePath);
    if (!lock.problem().isEmpty())
        reportOnce(lock.problem());
    const SimFile::Stamp now = SimFile::stampOf(fd);
    // An edit in place within one tick of the clock keeps the stamp; the last
    // bytes show most such edits.
    QByteArray seen;
    const bool unchanged = now == m_stamp
        && (m_tail.isEmpty()
            || (SimFile::readAt(fd, now.size - m_tail.size(), m_tail.size(), seen) && seen == m_tail));
    if (now.size < 0 || (!unchanged && !refresh(fd, now))) {
        ::close(fd);
        reportOnce(
            QStringLiteral("cannot save %1: state file %2 cannot be read back").arg(what, m_statePath));
        return false;
    }

    QByteArray text;
    QString section = m_tailSection;
    QList<std::pair<QString, QVariant>> written;
    for (const auto& [key, value] : changes) {
        if (sameValue(stored(key), value))
            continue;
        text += SimIni::sectionFor(key, section);
        text += SimIni::setting(key, value);
        written.append({ key, m_state.values.value(key) });
        if (m_state.values.contains(key))
            ++m_overwritten;
        m_state.values.insert(key, value);
    }
    if (text.isEmpty()) {
        ::close(fd);
        return true;
    }
    if (!m_tail.isEmpty() && !m_tail.endsWith('\n'))
        text.prepend('\n');

    qsizetype done = 0;
    while (done < text.size()) {
        const ssize_t n = ::write(fd, text.constData() + done, size_t(text.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            break;
        done += n;
    }
    if (done < text.size()) {
        const QString error = SimFile::lastError();
        // No half line stays behind, and the memory keeps what the file holds.
        if (done > 0 && ::ftruncate(fd, off_t(now.size)) != 0)
            reportOnce(QStringLiteral("cannot undo a partial write to %1").arg(m_statePath));
        ::close(fd);
        for (const auto& [key, old] : written) {
            if (old.isValid())
                m_state.values.insert(key, old);
            else
                m_state.values.remove(key);
        }
        reportOnce(QStringLiteral("cannot save %1 to %2 (%3)").arg(what, m_statePath, error));
        return false;
    }
    m_stamp = SimFile::stampOf(fd);
    m_tail = lastBytes(m_tail + text);
    m_tailSection = section;
    m_lines += linesIn(text);
    m_settingLines += written.size();
    // Old lines are dropped once they outnumber the live ones, so a write
    // costs what it changes, on average, whatever the file holds.
    if (lock.held() && m_overwritten > 256 && m_overwritten * 2 > m_settingLines)
        compact(fd);
    ::close(fd);
    return true;
}

// Takes in what another process changed in the file: only the appended text
// when the file grew by appending, the whole file otherwise.
bool Store::refresh(int fd, const SimFile::Stamp& now)
{
    QByteArray data;
    QByteArray seen;
    const qint64 from = m_stamp.size - m_tail.size();
    const bool appended = m_stamp.size > 0 && now.device == m_stamp.device && now.inode == m_stamp.inode
        && now.size > m_stamp.size && m_tail.endsWith('\n') && SimFile::readAt(fd, from, m_tail.size(), seen)
        && seen == m_tail;
    if (appended && SimFile::readAt(fd, m_stamp.size, now.size - m_stamp.size, data)) {
        readInto(m_statePath, data, m_lines + 1, m_tailSection, m_state);
        m_lines += linesIn(data);
        m_tail = lastBytes(m_tail + data);
    } else {
        if (!SimFile::readAt(fd, 0, now.size, data))
            return false;
        m_state = Values();
        m_tailSection.clear();
        m_settingLines = 0;
        m_overwritten = 0;
        readInto(m_statePath, data, 1, m_tailSection, m_state);
        m_lines = linesIn(data);
        m_tail = lastBytes(data);
    }
    m_stamp = now;
    m_frozen = m_frozen || m_state.frozen;
    return true;
}

// Rewrites the state file without the settings that later lines override.
// Comments, sections and lines the unit could not read stay as they are.
void Store::compact(int fd)
{
    QByteArray data;
    if (!SimFile::readAt(fd, 0, m_stamp.size, data))
        return;
    QHash<QString, int> lastLine;
    QHash<int, QString> keyOfLine;
    QString section;
    SimIni::Reader reader;
    reader.setting = [&](const SimIni::Line& line) {
        lastLine.insert(line.key, line.number);
        keyOfLine.insert(line.number, line.key);
    };
    reader.rejected = [](const SimIni::Line&, const QString&) {};
    SimIni::read(data, 1, section, reader);

    QList<QByteArrayView> kept;
    int number = 0;
    for (qsizetype start = 0; start <= data.size(); ++number) {
        qsizetype end = data.indexOf('\n', start);
        if (end < 0)
            end = data.size();
        const QByteArrayView line = QByteArrayView(data).sliced(start, end - start);
        start = end + 1;
        const auto key = keyOfLine.constFind(number + 1);
        if (key != keyOfLine.constEnd() && lastLine.value(*key) != number + 1)
            continue;
        // A section whose settings all went is dropped with them.
        if (!kept.isEmpty() && kept.last().trimmed().startsWith('[') && line.trimmed().startsWith('['))
            kept.removeLast();
        kept.append(line);
    }
    QByteArray out;
    out.reserve(data.size());
    for (qsizetype i = 0; i < kept.size(); ++i) {
        out.append(kept.at(i));
        if (i + 1 < kept.size())
            out.append('\n');
    }

    struct stat info;
    const QByteArray temporary = m_statePathBytes + ".tmp-" + QByteArray::number(::getpid());
    const int out_fd = ::fstat(fd, &info) == 0
        ? ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, info.st_mode & 07777)
        : -1;
    if (out_fd < 0)
        return;
    const bool written = ::write(out_fd, out.constData(), size_t(out.size())) == ssize_t(out.size());
    const bool closed = ::close(out_fd) == 0;
    if (!written || !closed || ::rename(temporary.constData(), m_statePathBytes.constData()) != 0) {
        ::unlink(temporary.constData());
        return;
    }
    m_stamp = SimFile::stampOf(m_statePathBytes);
    m_tail = lastBytes(out);
    m_lines = linesIn(out);
    m_settingLines = lastLine.size();
    m_overwritten = 0;
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

int Store::codeFor(const char* operation) const
{
    if (m_forcedCodes.isEmpty() && m_state.codes.isEmpty() && m_profile.codes.isEmpty())
        return 0;
    const QByteArray name = QByteArray::fromRawData(operation, qsizetype(std::strlen(operation)));
    static const QByteArray any = QByteArrayLiteral("*");
    for (const QByteArray* n : { &name, &any }) {
        for (const QHash<QByteArray, int>* codes : { &m_forcedCodes, &m_state.codes, &m_profile.codes }) {
            const auto found = codes->constFind(*n);
            if (found != codes->constEnd())
                return *found;
        }
    }
    return 0;
}

int Store::codeFor(const QString& operation) const
{
    Lock lock(mutex);
    return codeFor(operation.toLatin1().constData());
}

void Store::forceCode(const QString& operation, int code)
{
    Lock lock(mutex);
    m_forcedCodes.insert(operation.toLatin1(), code);
}

void Store::clearCodes()
{
    Lock lock(mutex);
    m_forcedCodes.clear();
}

void Store::setMemoryTrace(bool on)
{
    Lock lock(mutex);
    m_memoryTraceOn = on;
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

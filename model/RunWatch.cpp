#include "model/RunWatch.h"

#include "platform/Clock.h"
#include "platform/ExecutablePath.h"
#include "state/StatusStore.h"
#include "state/Texts.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace {

template <typename Condition>
std::optional<RunRecord> firstRecord(const QList<RunRecord> &history, Condition condition)
{
    const auto found = std::find_if(history.cbegin(), history.cend(), condition);
    return found == history.cend() ? std::nullopt : std::optional(*found);
}

std::optional<QUuid> head(const QList<RunRecord> &history)
{
    return history.isEmpty() ? std::nullopt : std::optional(history.first().id);
}

QString supportMessage(const QString &folder, const QString &fault)
{
    return Texts::tr("Vellomar non può scrivere nella sua cartella %1 (%2): i backup non possono "
                     "partire.")
        .arg(folder, fault);
}

qint64 thisMinute()
{
    return Clock::now().toSecsSinceEpoch() / 60;
}

} // namespace

/// The content of the engine's files at one moment. Both are read at every look, but decoded only
/// when their bytes have changed, so that a long history costs next to nothing.
struct RunWatch::Look
{
    QByteArray statusBytes;
    std::optional<RunStatus> found; ///< the status in those bytes
    bool isAlive = false;
    QByteArray historyBytes;
    std::optional<QList<RunRecord>> history; ///< absent while the bytes are the same

    void read(EngineFiles &engine)
    {
        if (QByteArray bytes = engine.statusBytes(); bytes != statusBytes) {
            found = StatusStore::decodedStatus(bytes);
            statusBytes = std::move(bytes);
        }
        // A crashed engine may have left its file.
        isAlive = found && engine.isAlive(*found);
        if (QByteArray bytes = engine.historyBytes(); bytes != historyBytes) {
            history = StatusStore::decodedHistory(bytes);
            historyBytes = std::move(bytes);
        }
    }
};

RunWatch::RunWatch(World world, Settings &settings, QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
    , m_settings(settings)
    , m_historyBytes(m_world.engine->historyBytes())
    , m_history(StatusStore::decodedHistory(m_historyBytes))
    , m_minute(thisMinute())
{
    connect(this, &RunWatch::historyChanged, this, &RunWatch::staleTextChanged);
    connect(this, &RunWatch::minutePassed, this, &RunWatch::staleTextChanged);
    connect(&m_settings, &Settings::changed, this, &RunWatch::staleTextChanged);
}

std::optional<RunRecord> RunWatch::lastSuccess() const
{
    return firstRecord(m_history, [](const RunRecord &record) {
        return !record.isVerification() && isGood(record.outcome);
    });
}

std::optional<RunRecord> RunWatch::lastRecord(DestinationID destination) const
{
    return firstRecord(m_history, [destination](const RunRecord &record) {
        return !record.isVerification() && record.destination == destination;
    });
}

std::optional<RunRecord> RunWatch::lastCheck() const
{
    return firstRecord(m_history, [](const RunRecord &record) { return record.isVerification(); });
}

std::optional<QString> RunWatch::staleText() const
{
    static constexpr qint64 secondsPerHour = 3600;
    static constexpr qint64 hoursPerDay = 24;
    const AppConfig &config = m_settings.config();
    if (config.alertAfterHours < 0 || !config.hasDestination()) {
        return std::nullopt;
    }
    const std::optional<RunRecord> last = lastSuccess();
    if (!last) {
        return std::nullopt;
    }
    const qint64 hours = last->date.msecsTo(Clock::now()) / 1000 / secondsPerHour;
    // Halved hours instead of a doubled interval, which could overflow.
    const bool isWithinTwoRuns = hours / 2 < config.intervalHours;
    if (isWithinTwoRuns || hours < config.alertAfterHours) {
        return std::nullopt;
    }
    if (hours < 2 * hoursPerDay) {
        return Texts::tr("%1 ore", nullptr, Texts::count(hours)).arg(hours);
    }
    const qint64 days = hours / hoursPerDay;
    return Texts::tr("%1 giorni", nullptr, Texts::count(days)).arg(days);
}

void RunWatch::look(const std::function<void()> &done)
{
    lookAtTheClock();
    if (std::exchange(m_isLooking, true)) {
        return;
    }
    Look before{.statusBytes = m_statusBytes,
                .found = m_foundStatus,
                .isAlive = false,
                .historyBytes = m_historyBytes,
                .history = {}};
    m_world.background.run(
        this,
        [engine = m_world.engine, before] {
            Look look = before;
            look.read(*engine);
            return look;
        },
        [this, done](const Look &look) {
            m_isLooking = false;
            take(look);
            if (done) {
                done();
            }
        });
}

void RunWatch::take(const Look &look)
{
    const bool wasRunning = m_status.has_value();
    m_statusBytes = look.statusBytes;
    m_foundStatus = look.found;
    setStatus(look.isAlive ? look.found : std::nullopt);
    if (m_status) {
        // The launch has succeeded: the run itself is seen.
        setLaunching(false);
    }
    m_historyBytes = look.historyBytes;
    const bool hasNewRecord = look.history && takeHistory(*look.history);
    // A run may have begun and ended between two looks.
    if (!m_status && (wasRunning || hasNewRecord)) {
        Q_EMIT ended();
    }
}

/// Whether the newest record has changed.
bool RunWatch::takeHistory(const QList<RunRecord> &found)
{
    if (head(found) == head(m_history)) {
        return false;
    }
    m_history = found;
    Q_EMIT historyChanged();
    return !found.isEmpty();
}

void RunWatch::lookAtTheClock()
{
    const qint64 minute = thisMinute();
    if (std::exchange(m_minute, minute) != minute) {
        checkSupportFolder();
        Q_EMIT minutePassed();
    }
}

void RunWatch::setStatus(const std::optional<RunStatus> &status)
{
    if (m_status == status) {
        return;
    }
    const bool wasBusy = isBusy();
    m_status = status;
    Q_EMIT statusChanged();
    if (isBusy() != wasBusy) {
        Q_EMIT busyChanged();
    }
}

void RunWatch::setLaunching(bool launching)
{
    if (m_launching == launching) {
        return;
    }
    const bool wasBusy = isBusy();
    m_launching = launching;
    Q_EMIT launchingChanged();
    if (isBusy() != wasBusy) {
        Q_EMIT busyChanged();
    }
}

void RunWatch::launch(const Gate &gate)
{
    if (!m_supportError) {
        launchNow(gate);
        return;
    }
    checkSupportFolder([this, gate] {
        if (m_supportError) {
            Q_EMIT launchFailed();
        } else {
            launchNow(gate);
        }
    });
}

void RunWatch::launchNow(const Gate &gate)
{
    // The engine's time to start and to write a live status.
    static constexpr std::chrono::seconds patience(6);
    if (isBusy()) {
        return;
    }
    setLaunching(true);
    const quint64 launch = ++m_launch;
    m_world.desktop->after(patience, [run = QPointer(this), launch] {
        if (run && run->m_launch == launch && run->m_launching) {
            run->setLaunching(false);
            run->checkSupportFolder();
        }
    });
    const auto start = [run = QPointer(this), launch] {
        if (run) {
            run->checkSupportFolder([run, launch] { run->startEngine(launch); });
        }
    };
    m_settings.flush([gate, start](const AppConfig &) {
        if (gate) {
            gate(start);
        } else {
            start();
        }
    });
}

void RunWatch::startEngine(quint64 launch)
{
    if (m_launch != launch || !m_launching) {
        return; // it was given up, or a scheduled run came first
    }
    const std::optional<QString> executable = ownExecutablePath();
    // Without a writable folder the engine would end without reporting anything.
    if (m_supportError || !executable ||
        !m_world.desktop->startDetached(*executable,
                                        {QStringLiteral("--backup"), QStringLiteral("--manual")})) {
        setLaunching(false);
        Q_EMIT launchFailed();
    }
}

void RunWatch::stop()
{
    if (m_status) {
        m_world.engine->stop(*m_status);
    }
}

void RunWatch::checkSupportFolder(const std::function<void()> &done)
{
    m_world.background.run(
        this,
        [engine = m_world.engine] {
            const std::optional<QString> fault = engine->fault();
            return fault ? std::optional(supportMessage(engine->folder(), *fault)) : std::nullopt;
        },
        [this, done](const std::optional<QString> &message) {
            if (m_supportError != message) {
                m_supportError = message;
                Q_EMIT supportErrorChanged();
            }
            if (done) {
                done();
            }
        });
}

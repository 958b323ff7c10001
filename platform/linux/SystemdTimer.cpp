#include "platform/PeriodicJob.h"

#include "platform/AtomicFile.h"
#include "platform/Clock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTime>

#include <utility>

namespace {

// The line of a unit that says from when its interval counts, so that the same plan gives the same
// unit.
constexpr QLatin1String countedFrom("# Counted from ");

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Only this job writes these files: temporary files beside them are those of a killed process.
void write(const QString &path, const QByteArray &content)
{
    AtomicFile::removeAbandoned(path);
    AtomicFile::write(path, content);
}

// In systemd's units a percent sign begins a specifier; two stand for one sign.
QString plain(QString text)
{
    return text.replace(u'%', QLatin1String("%%"));
}

// One word of a command line, quoted for systemd.
QString quoted(QString text)
{
    text.replace(u'\\', QLatin1String("\\\\"))
        .replace(u'"', QLatin1String("\\\""))
        .replace(u'\n', QLatin1String("\\n"))
        .replace(u'\t', QLatin1String("\\t"));
    return u'"' + plain(text) + u'"';
}

QByteArray serviceUnit(const PeriodicJobPlan &plan)
{
    // systemd refuses quotes and backslashes in the path of the executable but not in arguments, so
    // a shell is started, which replaces itself by it. The colon keeps dollar signs as they are.
    QString command = QLatin1String(":/bin/sh -c ") + quoted(QStringLiteral("exec \"$0\" \"$@\"")) +
                      u' ' + quoted(plan.executable);
    for (const QString &argument : plan.arguments) {
        command += u' ' + quoted(argument);
    }
    QString environment;
    for (auto variable = plan.environment.cbegin(); variable != plan.environment.cend();
         ++variable) {
        environment += QLatin1String("Environment=") +
                       quoted(variable.key() + u'=' + variable.value()) + u'\n';
    }
    return QStringLiteral("[Unit]\n"
                          "Description=Vellomar: backup pianificato\n"
                          "\n"
                          "[Service]\n"
                          "Type=oneshot\n"
                          "%1"
                          "ExecStart=%2\n"
                          "StandardError=append:%3\n"
                          "Nice=10\n"
                          "IOSchedulingClass=idle\n"
                          // Only the program is asked to stop; it passes that on to its tools.
                          "KillMode=mixed\n")
        .arg(environment, command, plain(plan.errorLog))
        .toUtf8();
}

/// Hours, minutes or seconds of a calendar expression: from a first value on in steps.
QString repeated(qint64 start, qint64 step, qint64 round)
{
    const QString first = QStringLiteral("%1").arg(start % step, 2, 10, QLatin1Char('0'));
    return step == round ? first : QString(first + u'/' + QString::number(step));
}

// The moments that are whole intervals from the start, as a calendar expression. A calendar counts
// on while the machine sleeps or is off, which a stopwatch doesn't; but it can only express
// intervals that divide the day, the hour or the minute.
QString schedule(qint64 interval, const QDateTime &start)
{
    static constexpr qint64 minute = 60;
    static constexpr qint64 hour = 60 * minute;
    static constexpr qint64 day = 24 * hour;
    const QTime time = start.toUTC().time();
    QString moments;
    if (interval % hour == 0 && day % interval == 0) {
        moments =
            repeated(time.hour(), interval / hour, 24) + time.toString(QStringLiteral(":mm:ss"));
    } else if (interval % minute == 0 && hour % interval == 0) {
        moments = QLatin1String("*:") + repeated(time.minute(), interval / minute, 60) +
                  time.toString(QStringLiteral(":ss"));
    } else if (minute % interval == 0) {
        moments = QLatin1String("*:*:") + repeated(time.second(), interval, 60);
    } else {
        return QStringLiteral("OnActiveSec=%1\nOnUnitActiveSec=%1\n").arg(interval);
    }
    return QStringLiteral("OnCalendar=*-*-* %1 UTC\nPersistent=true\n").arg(moments);
}

QByteArray timerUnit(const PeriodicJobPlan &plan, const QDateTime &start)
{
    // A run may be up to a sixtieth of the interval late, so that the system can bundle its work.
    const qint64 accuracy = qBound(qint64{1}, plan.intervalSeconds / 60, qint64{60});
    return QStringLiteral("%1%2\n"
                          "[Unit]\n"
                          "Description=Vellomar: backup pianificato\n"
                          "\n"
                          "[Timer]\n"
                          "%3"
                          "AccuracySec=%4\n"
                          "\n"
                          "[Install]\n"
                          "WantedBy=timers.target\n")
        .arg(countedFrom, start.toUTC().toString(Qt::ISODate),
             schedule(plan.intervalSeconds, start), QString::number(accuracy))
        .toUtf8();
}

/// From when the interval of an existing unit counts; invalid when the unit doesn't say.
QDateTime startOf(const QByteArray &timerUnit)
{
    static const QRegularExpression line(QStringLiteral("^# Counted from (\\S+)\n"));
    return QDateTime::fromString(line.match(QString::fromUtf8(timerUnit)).captured(1), Qt::ISODate);
}

} // namespace

SystemdTimer::SystemdTimer(const QString &configHome, const QString &dataHome, const QString &name,
                           RunTool runTool)
    : m_folder(configHome + QLatin1String("/systemd/user/"))
    , m_timer(name + QLatin1String(".timer"))
    , m_service(name + QLatin1String(".service"))
    , m_lastRun(dataHome + QLatin1String("/systemd/timers/stamp-") + m_timer)
    , m_runTool(std::move(runTool))
{
}

void SystemdTimer::establish(const PeriodicJobPlan &plan)
{
    if (!isAsPlanned(plan)) {
        const QDateTime start = Clock::now();
        systemctl({QStringLiteral("stop"), m_timer});
        setLastRun(start);
        QDir().mkpath(m_folder);
        write(m_folder + m_service, serviceUnit(plan));
        write(m_folder + m_timer, timerUnit(plan, start));
    } else if (isLoaded()) {
        return;
    }
    systemctl({QStringLiteral("daemon-reload")});
    systemctl({QStringLiteral("enable"), QStringLiteral("--now"), m_timer});
}

void SystemdTimer::remove()
{
    if (!QFile::exists(m_folder + m_timer)) {
        return;
    }
    systemctl({QStringLiteral("disable"), QStringLiteral("--now"), m_timer});
    // "systemctl clean" would do this, but of all its commands only that needs systemd to be on the
    // session bus.
    QFile::remove(m_lastRun);
    QFile::remove(m_folder + m_timer);
    QFile::remove(m_folder + m_service);
    systemctl({QStringLiteral("daemon-reload")});
}

std::optional<QString> SystemdTimer::configHome(const RunTool &runTool)
{
    const Answer answer =
        runTool(QStringLiteral("/usr/bin/systemctl"),
                {QStringLiteral("--user"), QStringLiteral("show"),
                 QStringLiteral("--property=UnitPath"), QStringLiteral("--value")});
    // systemd's own commands write to the first of the folders.
    const qsizetype end = answer.output.indexOf(QLatin1String("/systemd/user.control"));
    // A folder with special characters comes in quotes.
    return end > 0 && answer.output.startsWith(u'/') ? std::optional(answer.output.first(end))
                                                     : std::nullopt;
}

// systemd runs at once what a timer has missed since its last run or, when it knows of none, since
// the timer was last started. A new timer has missed nothing.
void SystemdTimer::setLastRun(const QDateTime &moment) const
{
    QDir().mkpath(QFileInfo(m_lastRun).path());
    QFile file(m_lastRun);
    if (file.open(QIODevice::WriteOnly)) {
        file.setFileTime(moment, QFileDevice::FileModificationTime);
    }
}

bool SystemdTimer::isLoaded() const
{
    const Answer answer =
        m_runTool(QStringLiteral("/usr/bin/systemctl"),
                  {QStringLiteral("--user"), QStringLiteral("show"),
                   QStringLiteral("--property=ActiveState,UnitFileState"), m_timer});
    return answer.output.contains(QLatin1String("ActiveState=active")) &&
           answer.output.contains(QLatin1String("UnitFileState=enabled"));
}

bool SystemdTimer::isAsPlanned(const PeriodicJobPlan &plan) const
{
    const QByteArray timer = contentOf(m_folder + m_timer);
    const QDateTime start = startOf(timer);
    return start.isValid() && timer == timerUnit(plan, start) &&
           contentOf(m_folder + m_service) == serviceUnit(plan);
}

void SystemdTimer::systemctl(const QStringList &arguments) const
{
    m_runTool(QStringLiteral("/usr/bin/systemctl"),
              QStringList{QStringLiteral("--user")} + arguments);
}

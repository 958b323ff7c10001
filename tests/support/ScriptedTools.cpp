#include "tests/support/ScriptedTools.h"

#include "tests/support/RcloneEnvelope.h"

#include <QFileInfo>

#include <algorithm>

QString ScriptedTools::Call::tool() const
{
    return QFileInfo(path).fileName();
}

QStringList ScriptedTools::Call::words() const
{
    // For a remote destination restic gets "-o rclone.program=…" in front.
    return arguments.value(0) == QLatin1String("-o") ? arguments.mid(2) : arguments;
}

QString ScriptedTools::Call::command() const
{
    const QString first = words().value(0);
    const bool hasTwoWords = first == QLatin1String("cat") || first == QLatin1String("config");
    if (hasTwoWords) {
        return first + u' ' + words().value(1);
    }
    return arguments.contains(QLatin1String("--dry-run")) ? first + QLatin1String(" --dry-run")
                                                          : first;
}

QString ScriptedTools::Call::repository() const
{
    return env.value(QStringLiteral("RESTIC_REPOSITORY"));
}

ScriptedTools::ScriptedTools()
    : m_runner(
          [this](const QString &path, const QStringList &arguments, const ProcessOptions &options) {
              return run({.path = path,
                          .arguments = arguments,
                          .env = options.env,
                          .input = options.input,
                          .handle = options.handle,
                          .stop = options.stop,
                          .isFollowed = static_cast<bool>(options.onLine)},
                         options.onLine);
          })
{
}

ScriptedTools::~ScriptedTools()
{
    letGo();
}

void ScriptedTools::answer(const QString &beginning, const ProcessResult &result)
{
    answer(beginning, {}, result);
}

void ScriptedTools::answer(const QString &beginning, const QString &repository,
                           const ProcessResult &result)
{
    const std::lock_guard lock(m_mutex);
    m_answers.insert({beginning, repository}, result);
}

QStringList ScriptedTools::commands() const
{
    QStringList result;
    for (const Call &call : calls) {
        result.append(call.command());
    }
    return result;
}

QList<ScriptedTools::Call> ScriptedTools::callsOf(const QString &command) const
{
    QList<Call> result;
    for (const Call &call : calls) {
        if (call.command() == command) {
            result.append(call);
        }
    }
    return result;
}

qsizetype ScriptedTools::count(const QString &tool, const QString &beginning)
{
    const std::lock_guard lock(m_mutex);
    return std::count_if(calls.cbegin(), calls.cend(), [&](const Call &call) {
        return call.tool() == tool && call.words().join(u' ').startsWith(beginning);
    });
}

QStringList ScriptedTools::repositories(const QString &beginning)
{
    const std::lock_guard lock(m_mutex);
    QStringList result;
    for (const Call &call : calls) {
        if (call.tool() == QLatin1String("restic") &&
            call.words().join(u' ').startsWith(beginning)) {
            result.append(call.repository());
        }
    }
    return result;
}

void ScriptedTools::connectRemotes()
{
    setRemotes(QStringLiteral(
        R"({"vellomar": {"type": "drive", "token": "t"}, "vellomar-server": {"type": "webdav"}})"));
}

void ScriptedTools::setRemotes(const QString &object)
{
    const std::lock_guard lock(m_mutex);
    dump = ended(0, object);
}

void ScriptedTools::hold()
{
    hold(Restic);
}

void ScriptedTools::holdRclone()
{
    hold(Rclone);
}

void ScriptedTools::holdConnections()
{
    hold(Connections);
}

void ScriptedTools::holdSchedule()
{
    hold(Schedule);
}

void ScriptedTools::hold(Held which)
{
    const std::lock_guard lock(m_mutex);
    m_holding |= which;
}

void ScriptedTools::letGo()
{
    {
        const std::lock_guard lock(m_mutex);
        m_holding = 0;
    }
    m_released.notify_all();
}

int ScriptedTools::held()
{
    const std::lock_guard lock(m_mutex);
    return m_held;
}

ProcessResult ScriptedTools::ended(int status, const QString &text)
{
    return {.status = status,
            .standardOutput = status == 0 ? text : QString(),
            .standardError = status == 0 ? QString() : text};
}

QString ScriptedTools::snapshot(const QString &id, const QString &host, const QString &time)
{
    return QStringLiteral(R"({"id":"%1","time":"%2","paths":["/a"],"hostname":"%3"})")
        .arg(id, time, host);
}

ProcessResult ScriptedTools::run(const Call &call, const LineReceiver &onLine)
{
    std::unique_lock lock(m_mutex);
    calls.append(call);
    if (before) {
        lock.unlock();
        before(call);
        lock.lock();
    }
    if (call.tool() == QLatin1String("rclone")) {
        if (call.command() == QLatin1String("config dump")) {
            waitFor(lock, Connections, false);
        } else if (call.words().value(0) != QLatin1String("config")) {
            waitFor(lock, Rclone, true);
        }
    } else if (call.tool() == QLatin1String("restic")) {
        waitFor(lock, Restic, true);
    } else {
        waitFor(lock, Schedule, false);
    }
    std::optional<ProcessResult> result = givenAnswer(call);
    if (!result) {
        result = usualAnswer(call);
    }
    const QStringList lines = call.command() == QLatin1String("backup") ? progress : QStringList();
    lock.unlock();
    for (const QString &line : lines) {
        onLine(line);
    }
    return *result;
}

void ScriptedTools::waitFor(std::unique_lock<std::mutex> &lock, Held which, bool isCounted)
{
    m_held += isCounted ? 1 : 0;
    m_released.wait(lock, [&] { return (m_holding & which) == 0; });
    m_held -= isCounted ? 1 : 0;
}

std::optional<ProcessResult> ScriptedTools::givenAnswer(const Call &call) const
{
    const QString words = call.words().join(u' ');
    std::optional<ProcessResult> best;
    qsizetype length = -1;
    for (auto it = m_answers.cbegin(); it != m_answers.cend(); ++it) {
        const auto &[beginning, repository] = it.key();
        // What is said of a repository goes before what is said of all.
        const bool isMeant = repository.isEmpty() || repository == call.repository();
        const qsizetype worth = 2 * beginning.size() + (repository.isEmpty() ? 0 : 1);
        if (isMeant && words.startsWith(beginning) && worth > length) {
            best = it.value();
            length = worth;
        }
    }
    return best;
}

ProcessResult ScriptedTools::usualAnswer(const Call &call) const
{
    const QString command = call.command();
    if (command == QLatin1String("config encryption")) {
        return encryptAsRcloneDoes(call.env);
    }
    const std::pair<const char *, ProcessResult> answers[] = {
        {"cat config", catConfig},
        {"init", init},
        {"backup", backup},
        {"unlock", unlock},
        {"forget", forget},
        {"forget --dry-run", forgetForecast},
        {"check", check},
        {"config dump", dump},
        {"snapshots", ended(0, QStringLiteral("[]"))},
        {"stats", ended(0, QStringLiteral(R"({"total_size":1000})"))}};
    for (const auto &[known, result] : answers) {
        if (command == QLatin1String(known)) {
            return result;
        }
    }
    return call.tool() == QLatin1String("restic")
               ? ended(99, QStringLiteral("no answer for ") + command)
               : ended(0);
}

#include "tests/support/ModelTools.h"

#include "tests/support/RcloneEnvelope.h"

#include <QFileInfo>

ModelTools::ModelTools()
    : m_answers{{QStringLiteral("snapshots"), ended(0, QStringLiteral("[]"))},
                {QStringLiteral("stats"), ended(0, QStringLiteral(R"({"total_size":1000})"))},
                {QStringLiteral("cat"), ended(0)}}
    , m_runner([this](const QString &path, const QStringList &arguments,
                      const ProcessOptions &options) { return run(path, arguments, options); })
{
}

ModelTools::~ModelTools()
{
    letGo();
}

void ModelTools::answer(const QString &command, const ProcessResult &result)
{
    const std::lock_guard lock(m_mutex);
    m_answers.insert(command, result);
}

void ModelTools::answer(const QString &command, const QString &repository,
                        const ProcessResult &result)
{
    const std::lock_guard lock(m_mutex);
    m_answers.insert(command + u' ' + repository, result);
}

void ModelTools::answerOfRclone(const QString &words, const ProcessResult &result)
{
    const std::lock_guard lock(m_mutex);
    m_rcloneAnswers.insert(words, result);
}

void ModelTools::setRemotes(const QString &dump)
{
    const std::lock_guard lock(m_mutex);
    m_remotes = dump;
}

void ModelTools::connectRemotes()
{
    setRemotes(QStringLiteral(
        R"({"vellomar": {"type": "drive", "token": "t"}, "vellomar-server": {"type": "webdav"}})"));
}

void ModelTools::hold()
{
    const std::lock_guard lock(m_mutex);
    m_isHolding = true;
}

void ModelTools::holdRclone()
{
    const std::lock_guard lock(m_mutex);
    m_isHoldingRclone = true;
}

void ModelTools::holdConnections()
{
    const std::lock_guard lock(m_mutex);
    m_isHoldingConnections = true;
}

void ModelTools::holdSchedule()
{
    const std::lock_guard lock(m_mutex);
    m_isHoldingSchedule = true;
}

void ModelTools::letGo()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isHoldingConnections = false;
        m_isHoldingSchedule = false;
        m_isHolding = false;
        m_isHoldingRclone = false;
    }
    m_released.notify_all();
}

int ModelTools::held()
{
    const std::lock_guard lock(m_mutex);
    return m_held;
}

QList<ModelTools::Call> ModelTools::calls()
{
    const std::lock_guard lock(m_mutex);
    return m_calls;
}

qsizetype ModelTools::count(const QString &tool, const QString &command)
{
    qsizetype number = 0;
    for (const Call &call : calls()) {
        if (call.tool == tool && (command.isEmpty() || call.command == command)) {
            ++number;
        }
    }
    return number;
}

QStringList ModelTools::repositories(const QString &command)
{
    QStringList result;
    for (const Call &call : calls()) {
        if (call.tool == QLatin1String("restic") && call.command == command) {
            result.append(call.repository);
        }
    }
    return result;
}

ProcessResult ModelTools::ended(int status, const QString &output, const QString &error)
{
    return {.status = status, .standardOutput = output, .standardError = error};
}

QString ModelTools::snapshot(const QString &id, const QString &host, const QString &time)
{
    return QStringLiteral(R"({"id":"%1","time":"%2","paths":["/a"],"hostname":"%3"})")
        .arg(id, time, host);
}

ProcessResult ModelTools::run(const QString &path, const QStringList &arguments,
                              const ProcessOptions &options)
{
    // For a remote destination restic gets "-o rclone.program=…" in front.
    const QStringList words =
        arguments.value(0) == QLatin1String("-o") ? arguments.mid(2) : arguments;
    const QString tool = QFileInfo(path).fileName();
    const QString command = tool == QLatin1String("rclone")
                                ? words.mid(0, 2).join(u' ')
                                : words.value(tool == QLatin1String("systemctl") ? 1 : 0);
    const QString repository = options.env.value(QStringLiteral("RESTIC_REPOSITORY"));

    std::unique_lock lock(m_mutex);
    m_calls.append({tool, command, repository, options.input.value_or(QString())});
    if (tool == QLatin1String("rclone")) {
        if (command == QLatin1String("config dump")) {
            m_released.wait(lock, [this] { return !m_isHoldingConnections; });
            return ended(0, m_remotes);
        }
        if (command == QLatin1String("config encryption")) {
            return encryptAsRcloneDoes(options.env);
        }
        if (!command.startsWith(QLatin1String("config "))) {
            ++m_held;
            m_released.wait(lock, [this] { return !m_isHoldingRclone; });
            --m_held;
        }
        // Limits of time follow the words of the question.
        return m_rcloneAnswers.value(words.mid(0, 3).join(u' '), ended(0));
    }
    if (tool == QLatin1String("systemctl")) {
        m_released.wait(lock, [this] { return !m_isHoldingSchedule; });
    }
    if (tool != QLatin1String("restic")) {
        return ended(0);
    }
    ++m_held;
    m_released.wait(lock, [this] { return !m_isHolding; });
    --m_held;
    const auto own = m_answers.constFind(command + u' ' + repository);
    return own != m_answers.constEnd() ? *own : m_answers.value(command);
}

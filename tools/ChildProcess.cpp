#include "tools/ChildProcess.h"

#include "platform/ProcessTree.h"
#include "tools/ChildEnvironment.h"

#include <QByteArray>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

namespace {

struct Pipe
{
    FileDescriptor reading;
    FileDescriptor writing;
};

// Moved above the three standard descriptors: we may have been started without them.
FileDescriptor aboveStandard(int descriptor)
{
    FileDescriptor given(descriptor);
    if (descriptor < 0 || descriptor > STDERR_FILENO) {
        return given;
    }
    return FileDescriptor(::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

tl::expected<Pipe, QString> makePipe()
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return tl::unexpected(qt_error_string(errno));
    }
    Pipe made{aboveStandard(ends[0]), aboveStandard(ends[1])};
    if (!made.reading.isOpen() || !made.writing.isOpen()) {
        return tl::unexpected(qt_error_string(errno));
    }
    return made;
}

// Filled before the child starts. It must never wait, so input that doesn't fit is a failure.
tl::expected<Pipe, QString> filledPipe(const QString &input)
{
    auto pipe = makePipe();
    if (!pipe) {
        return pipe;
    }
    const QByteArray bytes = input.toUtf8() + '\n';
    const int descriptor = pipe->writing.get();
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    const ssize_t written =
        ::write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size()));
    if (written != bytes.size()) {
        return tl::unexpected(qt_error_string(written < 0 ? errno : ENOBUFS));
    }
    return pipe;
}

// Texts as exec takes them: an array of pointers with a null at its end.
class TextVector
{
public:
    void append(const QByteArray &text) { m_texts.push_back(text); }

    [[nodiscard]] char **data()
    {
        m_pointers.clear();
        for (QByteArray &text : m_texts) {
            m_pointers.push_back(text.data());
        }
        m_pointers.push_back(nullptr);
        return m_pointers.data();
    }

private:
    std::vector<QByteArray> m_texts;
    std::vector<char *> m_pointers;
};

// If we were started with SIGCHLD ignored, the system would keep no exit status of our children.
void keepExitStatuses()
{
    struct sigaction action = {};
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 &&
        (action.sa_handler == SIG_IGN || (action.sa_flags & SA_NOCLDWAIT) != 0)) {
        action.sa_flags &= ~SA_NOCLDWAIT;
        if (action.sa_handler == SIG_IGN) {
            action.sa_handler = SIG_DFL;
        }
        ::sigaction(SIGCHLD, &action, nullptr);
    }
}

// What the child sets up before it runs the program: descriptors, signals and its process group.
// QProcess can reset signals and close descriptors from Qt 6.6 on, and start a session from 6.7 on;
// before, that takes a function of ours in the child of a process with threads.
class SpawnSetup
{
public:
    SpawnSetup()
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawnattr_init(&m_attributes);
        sigset_t all;
        sigfillset(&all);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setpgroup(&m_attributes, 0);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK |
                                                    POSIX_SPAWN_SETPGROUP);
    }
    ~SpawnSetup()
    {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }
    SpawnSetup(const SpawnSetup &) = delete;
    SpawnSetup &operator=(const SpawnSetup &) = delete;
    SpawnSetup(SpawnSetup &&) = delete;
    SpawnSetup &operator=(SpawnSetup &&) = delete;

    void place(const FileDescriptor &descriptor, int standard)
    {
        posix_spawn_file_actions_adddup2(&m_actions, descriptor.get(), standard);
    }
    void nullInput()
    {
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }

    // To be called last. It also closes descriptors that were opened without O_CLOEXEC.
    void closeOthers() { posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1); }

    [[nodiscard]] const posix_spawn_file_actions_t *actions() const { return &m_actions; }
    [[nodiscard]] const posix_spawnattr_t *attributes() const { return &m_attributes; }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

} // namespace

tl::expected<std::shared_ptr<ChildProcess>, QString>
ChildProcess::start(const QString &path, const QStringList &arguments,
                    const Environment &environment, const std::optional<QString> &input)
{
    auto output = makePipe();
    if (!output) {
        return tl::unexpected(output.error());
    }
    auto error = makePipe();
    if (!error) {
        return tl::unexpected(error.error());
    }
    SpawnSetup setup;
    Pipe inputPipe;
    if (input) {
        auto filled = filledPipe(*input);
        if (!filled) {
            return tl::unexpected(filled.error());
        }
        inputPipe = std::move(*filled);
        setup.place(inputPipe.reading, STDIN_FILENO);
    } else {
        setup.nullInput();
    }
    setup.place(output->writing, STDOUT_FILENO);
    setup.place(error->writing, STDERR_FILENO);
    setup.closeOthers();

    const QByteArray program = QFile::encodeName(path);
    TextVector words;
    words.append(program);
    for (const QString &argument : arguments) {
        words.append(argument.toUtf8());
    }
    TextVector variables;
    for (const QByteArray &entry : ChildEnvironment::with(environment)) {
        variables.append(entry);
    }

    keepExitStatuses();
    pid_t pid = 0;
    const int failure = ::posix_spawn(&pid, program.constData(), setup.actions(),
                                      setup.attributes(), words.data(), variables.data());
    if (failure != 0) {
        return tl::unexpected(qt_error_string(failure));
    }
    return std::make_shared<ChildProcess>(pid, std::move(output->reading),
                                          std::move(error->reading));
}

ChildProcess::ChildProcess(pid_t pid, FileDescriptor standardOutput, FileDescriptor standardError)
    : m_pid(pid)
    , m_standardOutput(std::move(standardOutput))
    , m_standardError(std::move(standardError))
{
}

void ChildProcess::awaitEnd() const
{
    // Doesn't reap the child: as long as it isn't reaped, no other process can get its id.
    siginfo_t info{};
    while (::waitid(P_PID, static_cast<id_t>(m_pid), &info, WEXITED | WNOWAIT) != 0 &&
           errno == EINTR) {
    }
}

int ChildProcess::wait()
{
    awaitEnd();
    const std::lock_guard lock(m_mutex);
    m_isRunning = false;
    int status = 0;
    pid_t reaped = -1;
    do {
        reaped = ::waitpid(m_pid, &status, 0);
    } while (reaped < 0 && errno == EINTR);
    if (reaped < 0) {
        return -1; // the status is lost, and must not pass for success
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

void ChildProcess::interrupt()
{
    const std::lock_guard lock(m_mutex);
    if (m_isRunning) {
        ::kill(m_pid, SIGINT);
    }
}

void ChildProcess::end()
{
    const std::lock_guard lock(m_mutex);
    if (!m_isRunning) {
        return;
    }
    // restic's rclone has a process group of its own, and one that hangs would live on for minutes:
    // so the whole tree. The group has what was started by a process that has ended meanwhile.
    killTree(m_pid);
    ::kill(-m_pid, SIGKILL);
}

// Runs a command and reports what it cost: its own process, and apart from it the children that it
// waited for.
//
// usage: Measured COMMAND [WORD…]
// Prints, when the command has ended well: seconds from start to end, seconds of processor time of
// the process itself, the same of its children, and the peak of its own memory in KiB. Nothing of
// the command's own output is shown.

#include <QByteArray>
#include <QFile>
#include <QList>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <span>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Cost
{
    double own = 0;
    double children = 0;
    qint64 peak = 0;
};

QByteArray content(pid_t pid, const char *name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Cost costOf(pid_t pid)
{
    Cost cost;
    // A process has a fine clock; for its children there are only the ticks in its stat file, the
    // 16th and 17th field. The line is cut behind the name, which may hold spaces.
    clockid_t clock = 0;
    timespec time{};
    if (::clock_getcpuclockid(pid, &clock) == 0 && ::clock_gettime(clock, &time) == 0) {
        cost.own = static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    }
    const QByteArray line = content(pid, "stat");
    const QList<QByteArray> fields = line.sliced(line.lastIndexOf(')') + 2).split(' ');
    cost.children = (fields.value(13).toDouble() + fields.value(14).toDouble()) /
                    static_cast<double>(::sysconf(_SC_CLK_TCK));
    const QList<QByteArray> lines = content(pid, "status").split('\n');
    for (const QByteArray &entry : lines) {
        if (entry.startsWith("VmHWM:")) {
            cost.peak = entry.simplified().split(' ').value(1).toLongLong();
        }
    }
    return cost;
}

[[noreturn]] void become(char *const *words)
{
    const int null = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    ::dup2(null, STDIN_FILENO);
    ::dup2(null, STDOUT_FILENO);
    // Held until the parent watches.
    static_cast<void>(std::raise(SIGSTOP));
    ::execv(words[0], words);
    std::perror(words[0]);
    std::_Exit(EXIT_FAILURE);
}

// By the time a process can be waited for, its memory is gone. So the kernel is asked to stop it on
// its way out, before that.
Cost followToEnd(pid_t pid, int &status)
{
    Cost cost;
    while (::waitpid(pid, &status, 0) == pid && WIFSTOPPED(status)) {
        const int event = status >> 16;
        const int signal = WSTOPSIG(status);
        if (event == PTRACE_EVENT_EXIT) {
            cost = costOf(pid);
        }
        ::ptrace(PTRACE_CONT, pid, nullptr, event == 0 ? signal : 0);
    }
    return cost;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::span words(argv, static_cast<size_t>(argc));
    if (words.size() < 2) {
        static_cast<void>(std::fputs("usage: Measured COMMAND [WORD…]\n", stderr));
        return EXIT_FAILURE;
    }
    const pid_t pid = ::fork();
    if (pid == 0) {
        become(words.data() + 1);
    }
    int status = 0;
    if (pid < 0 || ::waitpid(pid, &status, WUNTRACED) != pid ||
        ::ptrace(PTRACE_SEIZE, pid, nullptr, PTRACE_O_TRACEEXIT) != 0) {
        std::perror("the command can't be watched");
        return EXIT_FAILURE;
    }
    const auto start = std::chrono::steady_clock::now();
    ::kill(pid, SIGCONT);
    const Cost cost = followToEnd(pid, status);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != EXIT_SUCCESS) {
        static_cast<void>(std::fprintf(stderr, "%s didn't end well\n", words[1]));
        return EXIT_FAILURE;
    }
    std::printf("%.4f %.4f %.2f %lld\n", taken.count(), cost.own, cost.children, cost.peak);
    return EXIT_SUCCESS;
}

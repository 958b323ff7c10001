#include "tests/support/SecretWitness.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>

namespace {

constexpr int patienceMilliseconds = 300000;

// Bytes of a text that are shown; far more than any of the blocks in which these programs write.
constexpr auto shownBytes = "8388608";

constexpr auto watchedCalls =
    "trace=execve,execveat,open,openat,openat2,creat,mkdir,mkdirat,mknod,mknodat,chmod,fchmod,"
    "fchmodat,rename,renameat,renameat2,link,linkat,symlink,symlinkat,setxattr,fsetxattr,"
    "write,writev,pwrite64,pwritev,pwritev2,sendto,sendmsg,sendmmsg";

// "123 write(…" is the call write.
QByteArray nameOf(const QByteArray &call)
{
    const qsizetype end = call.indexOf('(');
    const qsizetype begin = call.lastIndexOf(' ', end) + 1;
    return end < 0 ? QByteArray() : call.sliced(begin, end - begin);
}

// What the descriptor that a call begins with stands for: "write(3<pipe:[77]>, …" gives pipe:[77].
// Quoted text comes after it, so that none of it is taken for a target.
QByteArray targetOf(const QByteArray &call)
{
    const qsizetype begin = call.indexOf('<');
    const qsizetype text = call.indexOf('"');
    if (begin < 0 || (text >= 0 && text < begin)) {
        return {};
    }
    const qsizetype end = call.indexOf(">, ", begin);
    return end < 0 ? QByteArray() : call.sliced(begin + 1, end - begin - 1);
}

bool isWrite(const QByteArray &call)
{
    static const QByteArrayList names{"write",    "writev", "pwrite64", "pwritev",
                                      "pwritev2", "sendto", "sendmsg",  "sendmmsg"};
    return names.contains(nameOf(call));
}

} // namespace

SecretWitness::SecretWitness(const QString &program, const QStringList &arguments,
                             const QByteArray &input)
{
    const QTemporaryDir folder;
    const QString record = folder.filePath(QStringLiteral("calls"));
    QProcess strace;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // A watched process can't look for leaks of memory: both need the same right.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    strace.setProcessEnvironment(environment);
    strace.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    strace.start(QStringLiteral("strace"),
                 // The kernel lets all other calls pass, so that what is watched isn't slowed down.
                 QStringList{QStringLiteral("-f"), QStringLiteral("--seccomp-bpf"),
                             QStringLiteral("-v"), QStringLiteral("-yy"), QStringLiteral("-qqq"),
                             QStringLiteral("-s"), QLatin1String(shownBytes), QStringLiteral("-e"),
                             QLatin1String(watchedCalls), QStringLiteral("-e"),
                             QStringLiteral("signal=none"), QStringLiteral("-o"), record, program} +
                     arguments);
    if (!strace.waitForStarted(patienceMilliseconds)) {
        return;
    }
    strace.write(input);
    strace.waitForBytesWritten(patienceMilliseconds);
    strace.closeWriteChannel();
    if (!strace.waitForFinished(patienceMilliseconds)) {
        strace.kill();
        strace.waitForFinished(patienceMilliseconds);
        return;
    }
    QFile file(record);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    m_calls = file.readAll().split('\n');
    for (const QByteArray &call : m_calls) {
        if (nameOf(call).startsWith("mknod") && call.contains("S_IFIFO")) {
            const qsizetype begin = call.indexOf('"') + 1;
            m_namedPipes.append(call.sliced(begin, call.indexOf('"', begin) - begin));
        }
    }
    m_output = strace.readAllStandardOutput();
    m_exitCode = strace.exitStatus() == QProcess::NormalExit ? strace.exitCode() : -1;
}

QByteArrayList SecretWitness::leaks(const QByteArrayList &secrets) const
{
    QByteArrayList found;
    for (const QByteArray &call : m_calls) {
        const bool holdsSecret =
            std::any_of(secrets.cbegin(), secrets.cend(),
                        [&call](const QByteArray &secret) { return call.contains(secret); });
        if (holdsSecret && !(isWrite(call) && goesToPipe(call))) {
            found.append(call);
        }
    }
    return found;
}

QByteArrayList SecretWitness::handOvers(const QByteArray &text) const
{
    QByteArrayList found;
    for (const QByteArray &call : m_calls) {
        if (call.contains(text) && isWrite(call) && goesToPipe(call)) {
            found.append(call);
        }
    }
    return found;
}

QByteArrayList SecretWitness::calls(const QByteArray &name, const QByteArray &text) const
{
    QByteArrayList found;
    for (const QByteArray &call : m_calls) {
        if (nameOf(call) == name && call.contains(text)) {
            found.append(call);
        }
    }
    return found;
}

bool SecretWitness::goesToPipe(const QByteArray &call) const
{
    const QByteArray target = targetOf(call);
    static const QByteArrayList kinds{"pipe:[", "socket:[", "UNIX", "TCP"};
    return m_namedPipes.contains(target) ||
           std::any_of(kinds.cbegin(), kinds.cend(),
                       [&target](const QByteArray &kind) { return target.startsWith(kind); });
}

// Follows the lines of a file as those of `restic backup --json`: a child prints them, the runner
// reads them, the progress takes them in and writes the live status now and then.
//
// usage: ProgressBench FILE
// Prints the seconds taken and the peak of the memory in KiB.

#include "engine/BackupProgress.h"
#include "tools/ProcessRunner.h"

#include <QFile>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <span>

namespace {

qint64 peakOfMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("VmHWM:")) {
            return line.simplified().split(' ').value(1).toLongLong();
        }
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::span words(argv, static_cast<size_t>(argc));
    if (words.size() != 2) {
        static_cast<void>(std::fputs("usage: ProgressBench FILE\n", stderr));
        return EXIT_FAILURE;
    }
    const auto start = std::chrono::steady_clock::now();
    StatusThrottle throttle;
    BackupProgress progress(DestinationID::Local, QDateTime::currentDateTimeUtc(), throttle);
    ResticBackup backup(
        [&progress](const ResticBackup::Status &status) { progress.report(status); });
    const ProcessResult result =
        runProcess(QStringLiteral("/bin/cat"), {QFile::decodeName(words[1])},
                   {.onLine = [&backup](const QString &line) { backup.handleLine(line); }});
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    // The last line says that all is done. Without it, something else was measured.
    if (result.status != 0 || progress.status().percent != 1.0) {
        static_cast<void>(std::fputs("the lines weren't followed to their end\n", stderr));
        return EXIT_FAILURE;
    }
    std::printf("%.3f %lld\n", taken.count(), peakOfMemory());
    return EXIT_SUCCESS;
}

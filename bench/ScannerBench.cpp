// A measurement of a folder with the exclusions of the settings, as the window does it.
//
// usage: ScannerBench FOLDER [EXCLUSION...]
// Prints the bytes of all files, the seconds that it took, and by how many KiB the memory of the
// process grew at most.

#include "model/SourceScanner.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>
#include <cstdlib>

#include <sys/resource.h>

namespace {

/// The most memory so far, in KiB.
long mostMemory()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QStringList excludes = QCoreApplication::arguments().mid(1);
    if (excludes.isEmpty()) {
        static_cast<void>(std::fputs("usage: ScannerBench FOLDER [EXCLUSION...]\n", stderr));
        return EXIT_FAILURE;
    }
    const QString folder = excludes.takeFirst();
    SourceScanner::size(QStringLiteral("/nonexistent"), excludes, [](qint64) {});
    const long before = mostMemory();
    QElapsedTimer timer;
    timer.start();
    const qint64 bytes = SourceScanner::size(folder, excludes, [](qint64) {});
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    std::printf("%lld %.4f %ld\n", static_cast<long long>(bytes), seconds, mostMemory() - before);
    return EXIT_SUCCESS;
}

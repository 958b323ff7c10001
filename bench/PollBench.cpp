// One look of the window at the engine's files, as it comes each second: with 300 entries in the
// history and nothing changed.
//
// usage: PollBench
// Prints the milliseconds of processor time that a look takes, and how many changes were reported.

#include "model/AppModel.h"
#include "model/Background.h"
#include "state/Paths.h"
#include "state/StatusStore.h"
#include "tests/support/PlainDesktop.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

constexpr int looks = 2000;

double processorMilliseconds()
{
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

int main(int argc, char *argv[])
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
        qunsetenv(name);
    }
    const QCoreApplication application(argc, argv);
    for (qsizetype i = 0; i < StatusStore::historyLimit; ++i) {
        RunRecord record = RunRecord::starting(DestinationID::Local);
        record.message = QStringLiteral("1.234 file nuovi, 56 modificati, 789 MB salvati");
        StatusStore::append(record);
    }
    AppModel model(World::real(std::make_shared<PlainDesktop>()));
    Background::waitForAll();
    QCoreApplication::processEvents();
    if (model.run()->history().size() != StatusStore::historyLimit) {
        static_cast<void>(std::fputs("the history wasn't read\n", stderr));
        return EXIT_FAILURE;
    }
    int changes = 0;
    const auto count = [&changes] { ++changes; };
    QObject::connect(model.run(), &RunWatch::statusChanged, count);
    QObject::connect(model.run(), &RunWatch::historyChanged, count);
    QObject::connect(model.run(), &RunWatch::launchingChanged, count);
    QObject::connect(model.run(), &RunWatch::busyChanged, count);
    QObject::connect(model.repositories(), &Repositories::changed, count);

    const double start = processorMilliseconds();
    for (int i = 0; i < looks; ++i) {
        model.run()->look();
        while (model.run()->isLooking()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    std::printf("%.4f %d\n", (processorMilliseconds() - start) / looks, changes);
    return EXIT_SUCCESS;
}

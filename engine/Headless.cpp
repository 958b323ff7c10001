#include "engine/Headless.h"

#include "engine/BackupEngine.h"
#include "state/ConfigStore.h"

#include <csignal>
#include <cstdlib>
#include <thread>

namespace {

sigset_t stopSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

// Serves the stop signals for as long as the process lives.
void listenForStop(const std::shared_ptr<ProcessHandle> &handle)
{
    const sigset_t signals = stopSignals();
    while (true) {
        int signal = 0;
        if (sigwait(&signals, &signal) == 0) {
            handle->terminate();
        }
    }
}

} // namespace

void Headless::run(bool manual)
{
    // Blocked here, before there is a second thread, and so in every thread: they wait for sigwait.
    const sigset_t signals = stopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    // restic that dies early must not take us with it.
    std::signal(SIGPIPE, SIG_IGN);

    const auto handle = std::make_shared<ProcessHandle>();
    BackupEngine engine(manual, ConfigStore::load(), handle);
    std::thread(listenForStop, handle).detach();

    int result = 0;
    std::thread cycle([&engine, &result] { result = engine.runAll(); });
    cycle.join();
    std::exit(result);
}

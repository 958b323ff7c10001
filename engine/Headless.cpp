#include "engine/Headless.h"

#include "engine/BackupEngine.h"
#include "state/ConfigStore.h"
#include "tools/ChildEnvironment.h"

#include <csignal>
#include <cstdlib>
#include <thread>

namespace {

// Whether the signal was ignored when the program was started, as nohup does it.
bool isIgnored(int signal)
{
    struct sigaction action = {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t stopSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    // SIGHUP means a stop only where it isn't ignored; the other two always do.
    if (!isIgnored(SIGHUP)) {
        sigaddset(&signals, SIGHUP);
    }
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
    ChildEnvironment::keep();
    // Blocked before there is a second thread, and so in every thread: only sigwait takes them.
    const sigset_t signals = stopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    // A restic that dies early must not end us: writing to its pipe then just fails.
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));

    const auto handle = std::make_shared<ProcessHandle>();
    BackupEngine engine(manual, ConfigStore::load(), handle);
    std::thread(listenForStop, handle).detach();

    int result = 0;
    std::thread cycle([&engine, &result] { result = engine.runAll(); });
    cycle.join();
    std::exit(result);
}

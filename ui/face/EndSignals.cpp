#include "ui/face/EndSignals.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr std::array endings = {SIGTERM, SIGINT, SIGHUP};

int counter = -1;

void note(int)
{
    const int error = errno;
    const eventfd_t one = 1;
    static_cast<void>(::write(counter, &one, sizeof(one)));
    errno = error;
}

} // namespace

// Qt doesn't handle the system's signals, and GLib's handlers need its event loop, which starts
// only with the application. A Qt that handles them would replace this.
EndSignals::EndSignals()
{
    counter = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (counter < 0) {
        return;
    }
    for (const int number : endings) {
        // A signal that is ignored at the start stays ignored, as with nohup.
        struct sigaction action = {};
        if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            action.sa_handler = note;
            action.sa_flags = SA_RESTART;
            ::sigaction(number, &action, nullptr);
        }
    }
}

EndSignals::~EndSignals()
{
    // The counter stays open, as the signals stay caught: none ends the process during its own end.
    m_arrivals.reset();
}

void EndSignals::listen()
{
    if (counter < 0) {
        return;
    }
    m_arrivals = std::make_unique<QSocketNotifier>(counter, QSocketNotifier::Read);
    connect(m_arrivals.get(), &QSocketNotifier::activated, this, [this] {
        eventfd_t count = 0;
        static_cast<void>(::eventfd_read(counter, &count));
        Q_EMIT received();
    });
}

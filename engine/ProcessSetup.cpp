#include "engine/ProcessSetup.h"

#include "platform/HomeFolder.h"
#include "state/Texts.h"
#include "tools/FileDescriptor.h"

#include <csignal>
#include <cstdio>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// Where a standard descriptor is missing the next file opened would take its place, and with it
// whatever a library prints there.
void fillStandardDescriptors()
{
    int descriptor = -1;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    ::close(descriptor);
}

// A bound of our own, as there are programs that walk through all the numbers that there may be.
void raiseOpenFiles()
{
    static constexpr rlim_t plenty = 8192;
    rlimit limit = {};
    if (::getrlimit(RLIMIT_NOFILE, &limit) == 0 && limit.rlim_cur < plenty) {
        limit.rlim_cur = limit.rlim_max < plenty ? limit.rlim_max : plenty;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
}

bool canOpenEnough()
{
    // What a run takes at its peak, several times over.
    static constexpr int enough = 64;
    std::vector<FileDescriptor> opened;
    for (int i = 0; i < enough; ++i) {
        opened.emplace_back(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0));
        if (!opened.back().isOpen()) {
            return false;
        }
    }
    return true;
}

bool fail(const QString &line)
{
    static_cast<void>(std::fprintf(stderr, "%s\n", qUtf8Printable(line)));
    return false;
}

} // namespace

bool ProcessSetup::complete()
{
    fillStandardDescriptors();
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    raiseOpenFiles();
    if (!canOpenEnough()) {
        return fail(Texts::tr("Vellomar: il sistema permette di aprire troppo pochi file"));
    }
    if (!findHomeFolder()) {
        return fail(Texts::tr("Vellomar: la cartella home non si trova. HOME è vuota e il sistema "
                              "non conosce l'utente."));
    }
    return true;
}

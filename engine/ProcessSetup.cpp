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

// Otherwise the next file to be opened would take the number of a missing standard descriptor, and
// libraries would print into that file.
void fillStandardDescriptors()
{
    int descriptor = -1;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    ::close(descriptor);
}

// Not more, as some programs close every possible descriptor one by one.
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
    // Several times what a run needs at its peak.
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

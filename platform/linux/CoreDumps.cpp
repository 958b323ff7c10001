#include "platform/CoreDumps.h"

#include <algorithm>

#include <sys/resource.h>

void switchOffCoreDumps()
{
    // With a limit of 1 byte Linux writes no file and starts no collector of crashes; with 0 it
    // would still start the collector. A process that isn't dumpable is no way out: it couldn't
    // read its own executable's path in /proc.
    rlimit limit = {};
    if (::getrlimit(RLIMIT_CORE, &limit) == 0) {
        const rlim_t none = std::min<rlim_t>(limit.rlim_max, 1);
        limit = {.rlim_cur = none, .rlim_max = none};
        ::setrlimit(RLIMIT_CORE, &limit);
    }
}

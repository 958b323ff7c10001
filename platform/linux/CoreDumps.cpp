#include "platform/CoreDumps.h"

#include <algorithm>

#include <sys/resource.h>

void switchOffCoreDumps()
{
    // A file of one byte isn't begun. At 0 Linux would still start the system's collector, at 1 it
    // doesn't. That /proc keeps telling our executable to ourselves rules out the other way, a
    // process that isn't dumpable.
    rlimit limit = {};
    if (::getrlimit(RLIMIT_CORE, &limit) == 0) {
        const rlim_t none = std::min<rlim_t>(limit.rlim_max, 1);
        limit = {.rlim_cur = none, .rlim_max = none};
        ::setrlimit(RLIMIT_CORE, &limit);
    }
}

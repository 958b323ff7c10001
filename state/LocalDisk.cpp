#include "state/LocalDisk.h"

#include "state/Paths.h"
#include "state/StatusStore.h"

namespace {

bool isAbove(const QString &mountPoint, const QString &other)
{
    const QString beginning = mountPoint.endsWith(u'/') ? mountPoint : QString(mountPoint + u'/');
    return mountPoint != other && other.startsWith(beginning);
}

} // namespace

bool LocalDisk::isAway(const QString &repository)
{
    const std::optional<MountedRepository> before = StatusStore::loadState().localDisk;
    if (!before || before->path != repository) {
        return false;
    }
    const std::optional<QString> now = Paths::volume(repository);
    return !now || now == Paths::volume(Paths::home()) || isAbove(*now, before->mountPoint);
}

void LocalDisk::remember(const QString &repository)
{
    const std::optional<QString> volume = Paths::volume(repository);
    std::optional<MountedRepository> now;
    if (volume && volume != Paths::volume(Paths::home())) {
        now = {repository, *volume};
    }
    EngineState state = StatusStore::loadState();
    if (state.localDisk != now) {
        state.localDisk = now;
        StatusStore::save(state);
    }
}

#include "model/AppModel.h"

#include "model/Background.h"
#include "state/Paths.h"

namespace {

/// The repository as it is; waits for it.
RepoInfo readRepository(const Restic &restic)
{
    auto snapshots = restic.snapshots();
    if (!snapshots) {
        return {.snapshots = {}, .size = {}, .error = snapshots.error().message, .loading = false};
    }
    RepoInfo info;
    // The size is that of the whole repository, other machines' versions included.
    info.size = snapshots->isEmpty() ? std::nullopt : restic.repositorySize();
    snapshots->removeIf([](const Snap &snap) { return snap.host != Paths::hostname(); });
    info.snapshots = *snapshots;
    return info;
}

} // namespace

void AppModel::refresh(DestinationID destination)
{
    if (!m_config.isEnabled(destination)) {
        if (m_repos.remove(destination) > 0) {
            Q_EMIT reposChanged();
            Q_EMIT summaryChanged();
        }
        return;
    }
    const Restic restic{
        .dest = destination, .config = m_config, .password = m_password, .repositoryOverride = {}};
    if (!restic.isAvailable()) {
        store(
            destination,
            {.snapshots = {}, .size = {}, .error = restic.unavailableMessage(), .loading = false});
        return;
    }
    // What is on show stays on show meanwhile.
    RepoInfo loading = m_repos.value(destination);
    loading.error.reset();
    loading.loading = true;
    store(destination, loading);
    Background::run(
        this, [restic] { return readRepository(restic); },
        [this, destination](const RepoInfo &info) { store(destination, info); });
}

void AppModel::refresh(Destination destination)
{
    refresh(static_cast<DestinationID>(destination));
}

void AppModel::refreshAll()
{
    for (const DestinationID destination : allDestinations) {
        refresh(destination);
    }
}

void AppModel::store(DestinationID destination, const RepoInfo &info)
{
    if (m_repos.contains(destination) && m_repos.value(destination) == info) {
        return;
    }
    m_repos.insert(destination, info);
    Q_EMIT reposChanged();
    Q_EMIT summaryChanged();
}

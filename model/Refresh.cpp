#include "model/AppModel.h"

#include "model/Background.h"
#include "model/ToolCalls.h"

// A folder on a network that doesn't answer holds up whoever asks whether it is there, and for a
// remote place rclone is asked. So even that is asked elsewhere, once at a time for a repository.
void AppModel::refresh(DestinationID destination)
{
    if (!m_config.isEnabled(destination)) {
        if (m_repos.remove(destination) > 0) {
            Q_EMIT reposChanged();
            Q_EMIT summaryChanged();
        }
        return;
    }
    if (m_isStarting) {
        return; // at the end of that all of them are read
    }
    // What is on show stays on show meanwhile.
    RepoInfo loading = m_repos.value(destination);
    loading.loading = true;
    store(destination, loading);
    const QString repository = m_config.repository(destination);
    if (m_sought.contains(repository)) {
        m_soughtAgain.insert(repository);
        return;
    }
    m_sought.insert(repository);
    const Restic restic{
        .dest = destination, .config = m_config, .password = m_password, .repositoryOverride = {}};
    Background().run(
        this, [restic] { return restic.isAvailable(); },
        [this, restic, use = m_uses.value(destination)](bool isThere) {
            read(restic, isThere, use);
        });
}

void AppModel::read(const Restic &restic, bool isThere, int use)
{
    const DestinationID destination = restic.dest;
    const QString repository = restic.config.repository(destination);
    m_sought.remove(repository);
    if (m_soughtAgain.remove(repository) || repository != m_config.repository(destination)) {
        refresh(destination); // key and settings may be others by now
        return;
    }
    // What went out of use meanwhile has no entry, or begins anew when it comes back.
    const auto storeIfInUse = [this, destination, use](const RepoInfo &info) {
        if (m_uses.value(destination) == use) {
            store(destination, info);
        }
    };
    if (!isThere) {
        storeIfInUse(
            {.snapshots = {}, .size = {}, .error = restic.unavailableMessage(), .loading = false});
        return;
    }
    RepoInfo loading = m_repos.value(destination);
    loading.error.reset();
    loading.loading = true;
    storeIfInUse(loading);
    Background().run(
        this, [restic] { return ToolCalls::real()->read(restic); }, storeIfInUse);
}

void AppModel::refreshAll()
{
    lookAtLocalFolder();
    for (const DestinationID destination : allDestinations) {
        refresh(destination);
    }
}

void AppModel::lookAtLocalFolder()
{
    m_localFolder.look(m_config);
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

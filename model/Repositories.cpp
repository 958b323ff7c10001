#include "model/Repositories.h"

#include "state/Fmt.h"
#include "state/Texts.h"

#include <utility>

Repositories::Repositories(World world, Settings &settings, EncryptionKey &key, RunWatch &run,
                           QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
    , m_settings(settings)
    , m_key(key)
    , m_run(run)
{
    connect(this, &Repositories::changed, this, &Repositories::destinationsChanged);
    connect(&m_run, &RunWatch::historyChanged, this, &Repositories::destinationsChanged);
    connect(&m_run, &RunWatch::minutePassed, this, &Repositories::destinationsChanged);
    connect(&m_run, &RunWatch::ended, this, &Repositories::refreshAll);
    connect(&m_key, &EncryptionKey::changed, this, &Repositories::refreshAll);
    connect(&m_settings, &Settings::changed, this, [this](const AppConfig &before) {
        raise(before);
        Q_EMIT destinationsChanged();
    });
}

/// Counts the destinations that are no longer in use, so that results still under way are dropped.
void Repositories::raise(const AppConfig &before)
{
    for (const DestinationID destination : before.enabledDestinations()) {
        if (!m_settings.config().isEnabled(destination)) {
            ++m_uses[destination];
        }
    }
}

QString Repositories::stateText(DestinationID destination) const
{
    if (!m_settings.config().isEnabled(destination)) {
        return Texts::tr("Non attiva");
    }
    if (const std::optional<QString> error = of(destination).error) {
        return *error;
    }
    const std::optional<RunRecord> last = m_run.lastRecord(destination);
    if (!last) {
        return Texts::tr("In attesa del primo backup");
    }
    if (last->outcome == Outcome::Failed) {
        return Texts::tr("Ultimo backup non riuscito");
    }
    return Texts::tr("Backup %1").arg(Fmt::relative(last->date));
}

Tone Repositories::stateTone(DestinationID destination) const
{
    if (!m_settings.config().isEnabled(destination)) {
        return Tone::Off;
    }
    const std::optional<RunRecord> last = m_run.lastRecord(destination);
    if (of(destination).error || !last) {
        return Tone::Attention;
    }
    return last->outcome == Outcome::Failed ? Tone::Wrong : Tone::Well;
}

QList<DestinationState> Repositories::destinations() const
{
    QList<DestinationState> states;
    for (const DestinationID id : allDestinations) {
        const RepoInfo repo = of(id);
        DestinationState state{.id = id,
                               .enabled = m_settings.config().isEnabled(id),
                               .stateText = stateText(id),
                               .stateTone = stateTone(id),
                               .known = m_all.contains(id),
                               .snapshotDates = {},
                               .size = repo.size.value_or(-1),
                               .error = repo.error.value_or(QString()),
                               .loading = repo.loading};
        for (const Snap &snapshot : repo.snapshots) {
            state.snapshotDates.append(snapshot.date);
        }
        states.append(state);
    }
    return states;
}

void Repositories::begin()
{
    m_hasBegun = true;
    refreshAll();
}

void Repositories::refreshAll()
{
    if (m_hasBegun) {
        for (const DestinationID destination : allDestinations) {
            refresh(destination);
        }
    }
}

// Even the check whether a repository is available waits, for a network folder or for rclone. So it
// is done in the background, once at a time for each repository.
void Repositories::refresh(DestinationID destination)
{
    const AppConfig &config = m_settings.config();
    if (!config.isEnabled(destination)) {
        if (m_all.remove(destination) > 0) {
            Q_EMIT changed();
        }
        return;
    }
    if (!m_hasBegun) {
        return; // begin() reads all of them
    }
    RepoInfo loading = of(destination);
    loading.loading = true;
    store(destination, loading);
    const QString repository = config.repository(destination);
    if (m_sought.contains(repository)) {
        m_soughtAgain.insert(repository);
        return;
    }
    m_sought.insert(repository);
    const Restic restic{
        .dest = destination, .config = config, .password = m_key.value(), .repositoryOverride = {}};
    m_world.background.run(
        this, [tools = m_world.tools, restic] { return tools->isAvailable(restic); },
        [this, restic, use = m_uses.value(destination)](bool isThere) {
            read(restic, isThere, use);
        });
}

void Repositories::read(const Restic &restic, bool isThere, int use)
{
    const DestinationID destination = restic.dest;
    const QString repository = restic.config.repository(destination);
    m_sought.remove(repository);
    if (m_soughtAgain.remove(repository) ||
        repository != m_settings.config().repository(destination)) {
        refresh(destination); // key and settings may have changed by now
        return;
    }
    // A destination that was switched off meanwhile has no entry, or was read again since.
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
    RepoInfo loading = of(destination);
    loading.error.reset();
    loading.loading = true;
    storeIfInUse(loading);
    m_world.background.run(
        this, [tools = m_world.tools, restic] { return tools->read(restic); }, storeIfInUse);
}

void Repositories::store(DestinationID destination, const RepoInfo &info)
{
    if (m_all.contains(destination) && of(destination) == info) {
        return;
    }
    m_all.insert(destination, info);
    Q_EMIT changed();
}

#include "ui/prepared/PreparedWorld.h"

#include "model/UserDefaults.h"
#include "state/JSONFile.h"

#include <QJsonArray>
#include <QUrl>
#include <QVariantMap>

#include <limits>
#include <utility>

namespace {

using SharedState = std::shared_ptr<PreparedState>;
// What is held knows the whole world: nobody else may own it.
using HeldAside = std::weak_ptr<PreparedWorld::Held>;

/// Holds so many of the coming deliveries.
void hold(const HeldAside &held, int deliveries)
{
    if (const auto there = held.lock()) {
        there->deliveries = deliveries;
    }
}

/// Does all at once, but for what is to be held.
Background::Doer doer(const HeldAside &held)
{
    return [held](std::function<void()> task) {
        const auto there = held.lock();
        if (there && there->deliveries > 0) {
            --there->deliveries;
            there->tasks.append(std::move(task));
        } else {
            task();
        }
    };
}

class PreparedKeys final : public KeyStore
{
public:
    explicit PreparedKeys(SharedState state)
        : m_state(std::move(state))
    {
    }

    StoredKey load() override
    {
        return {.key = m_state->key,
                .isMissing = false,
                .hasPrevious = false,
                .error = m_state->keyError};
    }
    StoredKey make() override { return load(); }
    Installation install(const QString &key, const QString & /*replaced*/) override
    {
        m_state->key = key;
        return {.error = {}, .hasPrevious = true};
    }
    tl::expected<std::optional<QString>, QString> previous() override
    {
        if (m_state->keyError) {
            return tl::unexpected(*m_state->keyError);
        }
        return std::nullopt;
    }

private:
    SharedState m_state;
};

class PreparedSettings final : public SettingsStore
{
public:
    explicit PreparedSettings(SharedState state)
        : m_state(std::move(state))
    {
    }

    AppConfig load() override { return m_state->config; }
    bool save(const AppConfig &config) override
    {
        m_state->config = config;
        return true;
    }
    void removeAbandoned() override {}

private:
    SharedState m_state;
};

class PreparedEngine final : public EngineFiles
{
public:
    PreparedEngine(SharedState state, std::shared_ptr<NotedDesktop> desktop)
        : m_state(std::move(state))
        , m_desktop(std::move(desktop))
    {
    }

    QByteArray statusBytes() override
    {
        return m_state->status ? JSONFile::encode(QJsonDocument(m_state->status->toJSON()))
                               : QByteArray();
    }
    QByteArray historyBytes() override
    {
        QJsonArray list;
        for (const RunRecord &record : m_state->history) {
            list.append(record.toJSON());
        }
        return JSONFile::encode(QJsonDocument(list));
    }
    bool isAlive(const RunStatus & /*status*/) override { return true; }
    void stop(const RunStatus & /*status*/) override
    {
        m_desktop->asked.append(QStringLiteral("stop"));
    }
    QString folder() override { return QStringLiteral("~/.local/share/Vellomar"); }
    std::optional<QString> fault() override { return m_state->supportFault; }

private:
    SharedState m_state;
    std::shared_ptr<NotedDesktop> m_desktop;
};

class PreparedDefaults final : public Defaults
{
public:
    explicit PreparedDefaults(const PreparedState &state)
    {
        QVariantMap sizes;
        for (const QString &source : state.config.sources) {
            if (state.sourceSizes.contains(source)) {
                sizes.insert(source, state.sourceSizes.value(source));
            }
        }
        m_values.insert(UserDefaults::sourceSizes, sizes);
    }
    QVariant value(QLatin1String key) override { return m_values.value(key); }
    void set(QLatin1String key, const QVariant &value) override { m_values.insert(key, value); }
    void remove(QLatin1String key) override { m_values.remove(key); }

private:
    QVariantMap m_values;
};

class PreparedTools final : public ToolCalls
{
public:
    PreparedTools(SharedState state, HeldAside held)
        : m_state(std::move(state))
        , m_held(std::move(held))
    {
    }

    bool isAvailable(const Restic & /*restic*/) override { return true; }
    RepoInfo read(const Restic &restic) override { return m_state->repos.value(restic.dest); }
    bool refusesKey(const Restic & /*restic*/) override { return false; }
    Accounts accounts() override
    {
        return {.drive = m_state->drive.connected, .server = m_state->server.connected};
    }
    std::optional<Rclone::Quota> quota(const QString &remote) override
    {
        return remote == Rclone::driveRemote ? m_state->drive.quota : m_state->server.quota;
    }
    std::optional<QString> versioning(const QString & /*bucket*/) override
    {
        return m_state->server.versioning;
    }
    Attempt connectDrive(const QString & /*clientID*/, const QString & /*clientSecret*/,
                         ProcessHandle & /*handle*/) override
    {
        return attempt(m_state->drive);
    }
    Attempt connectServer(const AppConfig & /*config*/, const QString &secret) override
    {
        if (const auto there = m_held.lock()) {
            there->secret = secret;
        }
        return attempt(m_state->server);
    }
    void disconnect(DestinationID destination) override
    {
        (destination == DestinationID::Drive ? m_state->drive : m_state->server).connected = false;
    }
    void removeAbandoned() override {}
    void pinServer() override {}
    void syncSchedule(const AppConfig & /*config*/) override {}

private:
    [[nodiscard]] Attempt attempt(Connection &place) const
    {
        if (place.connecting) {
            hold(m_held, 2); // what came of it, and that it is all
        }
        place.connected = place.error.isEmpty();
        return {.error = place.connected ? std::nullopt : std::optional(place.error),
                .isConnected = place.connected,
                .quota = place.connected ? place.quota : std::nullopt};
    }

    SharedState m_state;
    HeldAside m_held;
};

class PreparedDisks final : public Disks
{
public:
    PreparedDisks(SharedState state, HeldAside held)
        : m_state(std::move(state))
        , m_held(std::move(held))
    {
    }

    LocalPlace localPlace(const AppConfig &config) override
    {
        if (m_state->localUnknown) {
            hold(m_held, 2);
        }
        return config.localFolder.isEmpty() ? LocalPlace() : m_state->localPlace;
    }
    QStringList folders(const QStringList &paths) override
    {
        QStringList found = paths;
        found.removeAll(m_state->dropped);
        return found;
    }
    qint64 size(const QString &source, const AppConfig & /*config*/,
                const std::function<void(qint64)> &progress,
                const std::stop_token & /*stop*/) override
    {
        if (m_state->measuring) {
            progress(*m_state->measuring);
            hold(m_held, std::numeric_limits<int>::max());
        }
        return m_state->sourceSizes.value(source);
    }
    Notice saveKit(const QString &path, const QString & /*text*/,
                   const QString &localFolder) override
    {
        return kitPlace(path, localFolder);
    }
    Notice kitPlace(const QString & /*path*/, const QString & /*localFolder*/) override
    {
        return m_state->kitNotice.value_or(Notice());
    }
    void removePreviews() override {}

private:
    SharedState m_state;
    HeldAside m_held;
};

} // namespace

PreparedWorld::PreparedWorld(const PreparedState &state)
    : m_state(std::make_shared<PreparedState>(state))
{
}

World PreparedWorld::world() const
{
    m_desktop->fullDiskAccess = m_state->fullDiskAccess;
    return {.desktop = m_desktop,
            .keys = std::make_shared<PreparedKeys>(m_state),
            .settings = std::make_shared<PreparedSettings>(m_state),
            .engine = std::make_shared<PreparedEngine>(m_state, m_desktop),
            .defaults = std::make_shared<PreparedDefaults>(*m_state),
            .tools = std::make_shared<PreparedTools>(m_state, m_held),
            .disks = std::make_shared<PreparedDisks>(m_state, m_held),
            .background = Background(m_state->starting ? [](const std::function<void()> &) {}
                                                       : doer(m_held))};
}

std::unique_ptr<AppModel> PreparedWorld::model()
{
    auto model = std::make_unique<AppModel>(world());
    if (m_state->launching) {
        model->startBackup();
    }
    if (m_state->keyError && !m_state->key.isEmpty()) {
        meetKeyError(*model);
    }
    if (m_state->kitNotice) {
        meetKitNotice(*model);
    }
    meetConnections(*model);
    if (m_state->measuring) {
        model->runMeasure();
        m_held->deliveries = 0;
    }
    if (!m_state->typedExclude.isEmpty()) {
        model->addExclude(m_state->typedExclude);
    }
    if (!m_state->dropped.isEmpty()) {
        model->addDroppedSources({QUrl::fromLocalFile(m_state->dropped)});
    }
    m_desktop->asked.clear();
    return model;
}

void PreparedWorld::meetConnections(AppModel &model)
{
    if (m_state->drive.connecting || !m_state->drive.error.isEmpty()) {
        model.connectDrive();
    }
    if (m_state->server.connecting || !m_state->server.error.isEmpty()) {
        model.connectServer(QStringLiteral("secret"));
    }
}

void PreparedWorld::finish()
{
    m_state->localUnknown = false;
    m_state->drive.connecting = false;
    m_state->server.connecting = false;
    m_held->deliveries = 0;
    for (const std::function<void()> &task : std::exchange(m_held->tasks, {})) {
        task();
    }
}

QString PreparedWorld::secret() const
{
    return m_held->secret;
}

void PreparedWorld::meetKeyError(AppModel &model)
{
    const QStringList before = m_desktop->asked;
    model.requestPreviousKey();
    m_desktop->asked = before;
}

void PreparedWorld::meetKitNotice(AppModel &model)
{
    const QStringList before = m_desktop->asked;
    m_desktop->savePath = QStringLiteral("kit.txt");
    model.saveRecoveryKit();
    m_desktop->savePath.reset();
    m_desktop->asked = before;
}

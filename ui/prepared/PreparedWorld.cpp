#include "ui/prepared/PreparedWorld.h"

#include "state/JSONFile.h"

#include <QJsonArray>

#include <utility>

namespace {

using SharedState = std::shared_ptr<PreparedState>;

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
    QVariant value(QLatin1String key) override { return m_values.value(key); }
    void set(QLatin1String key, const QVariant &value) override { m_values.insert(key, value); }
    void remove(QLatin1String key) override { m_values.remove(key); }

private:
    QVariantMap m_values;
};

class PreparedTools final : public ToolCalls
{
public:
    explicit PreparedTools(SharedState state)
        : m_state(std::move(state))
    {
    }

    bool isAvailable(const Restic & /*restic*/) override { return true; }
    RepoInfo read(const Restic &restic) override { return m_state->repos.value(restic.dest); }
    bool refusesKey(const Restic & /*restic*/) override { return false; }
    Accounts accounts() override
    {
        return {.drive = m_state->config.driveEnabled, .server = m_state->config.serverEnabled};
    }
    std::optional<Rclone::Quota> quota(const QString & /*remote*/) override { return std::nullopt; }
    std::optional<QString> versioning(const QString & /*bucket*/) override { return std::nullopt; }
    void disconnect(DestinationID /*destination*/) override {}
    void removeAbandoned() override {}
    void pinServer() override {}
    void syncSchedule(const AppConfig & /*config*/) override {}

private:
    SharedState m_state;
};

class PreparedDisks final : public Disks
{
public:
    explicit PreparedDisks(SharedState state)
        : m_state(std::move(state))
    {
    }

    bool holdsBackupsBesideHome(const AppConfig & /*config*/) override
    {
        return m_state->localOnSystemDisk;
    }
    qint64 size(const QString & /*source*/, const AppConfig & /*config*/,
                const std::function<void(qint64)> & /*progress*/,
                const std::stop_token & /*stop*/) override
    {
        return 0;
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
            .defaults = std::make_shared<PreparedDefaults>(),
            .tools = std::make_shared<PreparedTools>(m_state),
            .disks = std::make_shared<PreparedDisks>(m_state),
            .background = Background(m_state->starting ? Background::Manner::Never
                                                       : Background::Manner::AtOnce)};
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
    m_desktop->asked.clear();
    return model;
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

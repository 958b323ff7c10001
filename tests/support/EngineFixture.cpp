#include "tests/support/EngineFixture.h"

#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "state/StatusStore.h"
#include "tests/support/ChoresDone.h"

#include <QDir>
#include <QFile>

EngineFixture::EngineFixture()
{
    secrets.items[{QStringLiteral("it.vellomar.app"), Keychain::repositoryKey}] = "the key";
    EngineState state = choresDone(clock.moment());
    for (const DestinationID destination : allDestinations) {
        state.newestVersion.insert(config.repository(destination), clock.moment());
    }
    StatusStore::save(state);
}

int EngineFixture::run(bool manual)
{
    ConfigStore::save(config);
    BackupEngine engine(
        manual, config, handle,
        [this] {
            ++batteryQuestions;
            return onBattery;
        },
        [this](const QString &title, const QString &body) {
            notifications.append({title, body});
        });
    return engine.runAll();
}

void EngineFixture::useAllDestinations()
{
    config.driveEnabled = true;
    config.serverEnabled = true;
    tools.connectRemotes();
}

RunRecord EngineFixture::onlyRecord()
{
    const QList<RunRecord> history = StatusStore::loadHistory();
    EXPECT_EQ(history.size(), 1);
    return history.isEmpty() ? RunRecord() : history.first();
}

QStringList EngineFixture::outcomes()
{
    QStringList result;
    const QList<RunRecord> history = StatusStore::loadHistory();
    for (const RunRecord &record : history) {
        result.prepend(rawValue(record.destination) + u' ' + rawValue(record.outcome));
    }
    return result;
}

QString EngineFixture::supportFile(const char *name)
{
    return Paths::supportFile(QString::fromUtf8(name));
}

std::optional<QByteArray> EngineFixture::content(const char *name)
{
    QFile file(supportFile(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    return file.readAll();
}

QString EngineFixture::folder(const char *name)
{
    return homeFolder(name);
}

#include "tests/support/ModelFixture.h"

#include "model/Background.h"
#include "platform/ExecutablePath.h"
#include "state/ConfigStore.h"
#include "state/JSONFile.h"
#include "state/Keychain.h"
#include "state/StatusStore.h"
#include "tests/support/ModelReady.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>

#include <csignal>

#include <sys/prctl.h>

namespace {

QString service()
{
    return QStringLiteral("it.vellomar.app");
}

} // namespace

EngineLookalike::EngineLookalike(const QString &name)
{
    const QString program =
        QDir::homePath() + u'/' +
        (name.isEmpty() ? QFileInfo(ownExecutablePath().value_or(QString())).fileName() : name);
    QFile::copy(QFileInfo(QStringLiteral("/bin/cat")).canonicalFilePath(), program);
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    // It waits at its standard input, and doesn't come to its last word.
    m_process.start(program,
                    {QStringLiteral("--"), QStringLiteral("-"), QStringLiteral("--backup")});
    // Qt reports the start once the new program has taken over.
    EXPECT_TRUE(m_process.waitForStarted());
}

EngineLookalike::~EngineLookalike()
{
    kill();
}

bool EngineLookalike::wasEndedBySignal()
{
    return m_process.waitForFinished() && m_process.exitStatus() == QProcess::CrashExit;
}

void EngineLookalike::kill()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

ModelFixture::ModelFixture()
{
    storeKey(QStringLiteral("the key in use"), Keychain::repositoryKey);
    storeKey(QStringLiteral("the key of rclone"), Keychain::rcloneConfigKey);
}

ModelFixture::~ModelFixture()
{
    tools.letGo();
    secrets.letGo();
    model.reset();
    Background::waitForAll();
    desktop->forget();
}

void ModelFixture::begin()
{
    ConfigStore::save(config);
    model = std::make_unique<AppModel>(World::real(desktop));
}

void ModelFixture::start()
{
    begin();
    ASSERT_TRUE(comesUp(*model));
}

void ModelFixture::restart()
{
    model.reset();
    Background::waitForAll();
    model = std::make_unique<AppModel>(World::real(desktop));
    ASSERT_TRUE(comesUp(*model));
}

void ModelFixture::settle()
{
    ::settle(model.get());
}

void ModelFixture::tick()
{
    const auto isDone = [this] { return !model->run()->isLooking(); };
    ASSERT_TRUE(eventuallyInLoop(isDone)); // the one of its timer
    model->run()->look();
    ASSERT_TRUE(eventuallyInLoop(isDone));
}

std::optional<QString> ModelFixture::install(const QString &key, bool saved)
{
    bool isDone = false;
    std::optional<QString> answer;
    model->install(key, saved, [&](const std::optional<QString> &message) {
        isDone = true;
        answer = message;
    });
    EXPECT_TRUE(eventuallyInLoop([&isDone] { return isDone; }));
    return answer;
}

void ModelFixture::useAllDestinations()
{
    config.driveEnabled = true;
    config.serverEnabled = true;
    tools.connectRemotes();
}

QString ModelFixture::supportFile(const char *name)
{
    return Paths::supportFile(QString::fromUtf8(name));
}

QString ModelFixture::folder(const char *name)
{
    return homeFolder(name);
}

RunStatus ModelFixture::leaveStatus(qint64 pid, double percent)
{
    RunStatus status;
    status.pid = static_cast<std::int32_t>(pid);
    status.startedAt = QDateTime(QDate(2026, 3, 1), QTime(9, 59), Qt::UTC);
    status.phase = QStringLiteral("Copia dei file");
    status.percent = percent;
    StatusStore::write(status);
    return status;
}

RunRecord ModelFixture::record(double hoursAgo, Outcome outcome, DestinationID destination) const
{
    RunRecord made;
    made.id = QUuid::createUuid();
    made.date = clock.moment().addSecs(static_cast<qint64>(-hoursAgo * 3600));
    made.outcome = outcome;
    made.destination = destination;
    made.message = QStringLiteral("un messaggio");
    return made;
}

void ModelFixture::writeHistory(const QList<RunRecord> &records)
{
    QJsonArray list;
    for (const RunRecord &entry : records) {
        list.append(entry.toJSON());
    }
    writeSupportFile("history.json", JSONFile::encode(QJsonDocument(list)));
}

void ModelFixture::storeKey(const QString &key, const QString &account)
{
    secrets.items[{service(), account}] = key.toUtf8();
}

QString ModelFixture::storedKey(const QString &account) const
{
    return QString::fromUtf8(secrets.items.value({service(), account}));
}

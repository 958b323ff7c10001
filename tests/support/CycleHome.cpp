#include "tests/support/CycleHome.h"

#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "state/StatusStore.h"
#include "tests/support/CheapRepository.h"
#include "tests/support/ChoresDone.h"
#include "tests/support/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int patienceMilliseconds = 120000;

QString key()
{
    return QStringLiteral("key of the test's repositories");
}

// By a program of its own: this process must not hold on to a session bus that ends before it.
bool runSecretTool(const QStringList &words, const QString &account, const QByteArray &input = {})
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    tool.start(QStringLiteral("secret-tool"),
               words + QStringList{QStringLiteral("service"), QStringLiteral("it.vellomar.app"),
                                   QStringLiteral("account"), account});
    tool.write(input);
    tool.closeWriteChannel();
    return tool.waitForFinished(patienceMilliseconds) && tool.exitCode() == 0;
}

struct Ending
{
    int code = -1;
    QByteArray output;
};

Ending runRestic(const QString &program, const QString &repository, const QStringList &arguments)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("RESTIC_REPOSITORY"), repository);
    environment.insert(QStringLiteral("RESTIC_PASSWORD"), key());
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    if (!process.waitForFinished(patienceMilliseconds)) {
        return {};
    }
    return {process.exitCode(), process.readAllStandardOutput()};
}

} // namespace

CycleHome::CycleHome()
{
    EXPECT_TRUE(keyring.isRunning());
    StatusStore::save(choresDone(QDateTime::currentDateTimeUtc()));
    EXPECT_TRUE(storeSecret(Keychain::repositoryKey, key().toUtf8()));
    writeFile(source + QLatin1String("/letter"), "Dear Anna");
    writeFile(source + QLatin1String("/list"), "milk, bread");
    saveSettings();
}

void CycleHome::saveSettings() const
{
    ConfigStore::save(config);
}

bool CycleHome::storeSecret(const QString &account, const QByteArray &value)
{
    return runSecretTool({QStringLiteral("store"), QStringLiteral("--label=Vellomar")}, account,
                         value);
}

bool CycleHome::removeSecret(const QString &account)
{
    return runSecretTool({QStringLiteral("clear")}, account);
}

void CycleHome::connectRemotes()
{
    const QString drive = folder(QStringLiteral("drive"));
    const QString server = folder(QStringLiteral("server"));
    writeSupportFile("rclone.conf",
                     "[vellomar]\ntype = alias\nremote = " + drive.toUtf8() +
                         "\ntoken = {\"access_token\":\"t\"}\n\n[vellomar-server]\ntype = alias\n" +
                         "remote = " + server.toUtf8() + '\n');
    config.driveEnabled = true;
    config.driveFolder = QStringLiteral("Vellomar/a mac");
    config.serverEnabled = true;
    config.serverPath = QStringLiteral("backups/a mac");
    saveSettings();
}

void CycleHome::makeRepository(const QString &target)
{
    EXPECT_TRUE(CheapRepository::make(target, key()));
}

QByteArray CycleHome::restic(const QString &target, const QStringList &arguments) const
{
    const Ending ending = runRestic(resticProgram, target, arguments);
    EXPECT_EQ(ending.code, 0) << arguments.join(u' ').toStdString();
    return ending.output;
}

bool CycleHome::isWhole(const QString &target) const
{
    return runRestic(resticProgram, target, {QStringLiteral("check"), QStringLiteral("--quiet")})
               .code == 0;
}

qsizetype CycleHome::snapshotCount(const QString &target)
{
    return QDir(target + QLatin1String("/snapshots")).entryList(QDir::Files).size();
}

bool CycleHome::isLocked(const QString &target)
{
    return !QDir(target + QLatin1String("/locks")).isEmpty();
}

RunRecord CycleHome::newestRecord()
{
    const QList<RunRecord> history = StatusStore::loadHistory();
    EXPECT_FALSE(history.isEmpty());
    return history.isEmpty() ? RunRecord() : history.first();
}

qsizetype CycleHome::recordCount()
{
    return StatusStore::loadHistory().size();
}

QString CycleHome::phase()
{
    const auto status = StatusStore::loadStatus();
    return status ? status->phase : QString();
}

QString CycleHome::folder(const QString &name)
{
    const QString path = Paths::home() + u'/' + name;
    QDir().mkpath(path);
    return path;
}

bool CycleHome::isThere(const char *supportFileName)
{
    return QFileInfo::exists(Paths::supportFile(QString::fromUtf8(supportFileName)));
}

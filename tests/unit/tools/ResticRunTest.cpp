#include "tools/Restic.h"

#include "state/StatusStore.h"
#include "tests/support/Files.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/RcloneEnvelope.h"
#include "tools/Tools.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

struct Call
{
    QString path;
    QStringList arguments;
    ProcessOptions options;
};

/// restic and rclone give the answers of the test, and every call is kept.
class ResticRunTest : public testing::Test
{
protected:
    ResticRunTest()
    {
        restic.config.localFolder = QStringLiteral("/media/disk");
        restic.config.serverPath = QStringLiteral("backups");
        restic.password = QStringLiteral("the repository's key");
    }

    ProcessResult answer(const QString &path, const QStringList &arguments,
                         const ProcessOptions &options)
    {
        calls.append({path, arguments, options});
        if (path == rclonePath && arguments.value(1) == QLatin1String("encryption")) {
            return encryptAsRcloneDoes(options.env);
        }
        return answers.isEmpty() ? ProcessResult{0, {}, {}} : answers.takeFirst();
    }

    /// The call of restic; those of rclone come before it.
    [[nodiscard]] const Call &last() const { return calls.last(); }

    void giveConfigKey()
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
            "the configuration's key";
    }

    [[nodiscard]] QList<QStringList> argumentLists() const
    {
        QList<QStringList> lists;
        for (const Call &call : calls) {
            lists.append(call.arguments);
        }
        return lists;
    }

    Restic restic;
    QList<Call> calls;
    QList<ProcessResult> answers;
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    ScopedProcessRunner runner{
        [this](const QString &path, const QStringList &arguments, const ProcessOptions &options) {
            return answer(path, arguments, options);
        }};
    const QString resticPath = *Tools::find(QStringLiteral("restic"));
    const QString rclonePath = *Tools::find(QStringLiteral("rclone"));
};

QStringList keys(const Call &call)
{
    return call.options.env.keys();
}

TEST_F(ResticRunTest, onADiskItIsResticAlone)
{
    ProcessHandle handle;
    answers = {{3, QStringLiteral("out"), QStringLiteral("err")}};
    const ProcessResult result =
        restic.run({QStringLiteral("stats"), QStringLiteral("--json")}, &handle);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.standardOutput, QStringLiteral("out"));
    EXPECT_EQ(result.standardError, QStringLiteral("err"));
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(last().path, resticPath);
    EXPECT_EQ(last().arguments, QStringList({QStringLiteral("stats"), QStringLiteral("--json")}));
    EXPECT_EQ(
        last().options.env,
        (ChildProcess::Environment{
            {QStringLiteral("RESTIC_REPOSITORY"), restic.config.repository(DestinationID::Local)},
            {QStringLiteral("PATH"),
             QFileInfo(resticPath).path() +
                 QLatin1String(
                     ":/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin")}}));
    EXPECT_EQ(last().options.input, restic.password);
    EXPECT_EQ(last().options.handle, &handle);
    EXPECT_FALSE(last().options.onLine);
    EXPECT_EQ(secrets.reads, 0);
}

TEST_F(ResticRunTest, theReceiverOfLinesIsPassedOn)
{
    QStringList lines;
    static_cast<void>(
        restic.run({}, nullptr, [&lines](const QString &line) { lines.append(line); }));
    ASSERT_TRUE(last().options.onLine);
    last().options.onLine(QStringLiteral("line"));
    EXPECT_EQ(lines, QStringList({QStringLiteral("line")}));
    EXPECT_EQ(last().options.handle, nullptr);
}

TEST_F(ResticRunTest, anotherRepositoryReplacesTheConfiguredOne)
{
    restic.repositoryOverride = QStringLiteral("rclone:vellomar:other");
    static_cast<void>(restic.run({QStringLiteral("x")}));
    ASSERT_EQ(calls.size(), 1); // a local destination, whatever the repository: no rclone
    EXPECT_EQ(last().options.env.value(QStringLiteral("RESTIC_REPOSITORY")),
              QStringLiteral("rclone:vellomar:other"));
    EXPECT_EQ(last().arguments, QStringList({QStringLiteral("x")}));
    EXPECT_EQ(keys(last()),
              QStringList({QStringLiteral("PATH"), QStringLiteral("RESTIC_REPOSITORY")}));
}

TEST_F(ResticRunTest, behindRcloneItGetsRcloneAndTheWayToItsKey)
{
    giveConfigKey();
    for (const DestinationID dest : {DestinationID::Drive, DestinationID::Server}) {
        restic.dest = dest;
        bool isPipeThere = false;
        QString command;
        answers.clear();
        calls.clear();
        static_cast<void>(restic.run({QStringLiteral("snapshots")}));
        EXPECT_EQ(last().path, resticPath);
        EXPECT_EQ(last().arguments,
                  QStringList({QStringLiteral("-o"), QLatin1String("rclone.program=") + rclonePath,
                               QStringLiteral("snapshots")}));
        EXPECT_EQ(last().options.env.value(QStringLiteral("RESTIC_REPOSITORY")),
                  restic.config.repository(dest));
        EXPECT_EQ(last().options.env.value(QStringLiteral("RCLONE_CONFIG")),
                  Paths::supportFile(QStringLiteral("rclone.conf")));
        command = last().options.env.value(QStringLiteral("RCLONE_PASSWORD_COMMAND"));
        const QString pipe = command.section(u'"', 3, 3);
        EXPECT_TRUE(pipe.startsWith(Paths::supportFile(QStringLiteral("k-")))) << qPrintable(pipe);
        isPipeThere = QFileInfo::exists(pipe);
        EXPECT_FALSE(isPipeThere); // the run is over
        EXPECT_EQ(keys(last()),
                  QStringList({QStringLiteral("PATH"), QStringLiteral("RCLONE_CONFIG"),
                               QStringLiteral("RCLONE_PASSWORD_COMMAND"),
                               QStringLiteral("RESTIC_REPOSITORY")}));
        EXPECT_EQ(last().options.input, restic.password);
    }
}

TEST_F(ResticRunTest, withoutAKeyOfTheConfigurationRcloneIsGivenNone)
{
    secrets.readFailure = -25308;
    restic.dest = DestinationID::Server;
    static_cast<void>(restic.run({QStringLiteral("x")}));
    ASSERT_EQ(calls.size(), 1); // nothing to encrypt the configuration with
    EXPECT_EQ(keys(last()), QStringList({QStringLiteral("PATH"), QStringLiteral("RCLONE_CONFIG"),
                                         QStringLiteral("RESTIC_REPOSITORY")}));
}

TEST_F(ResticRunTest, theConfigurationIsEncryptedBeforeTheFirstRunAndNotAgain)
{
    giveConfigKey();
    restic.dest = DestinationID::Drive;
    static_cast<void>(restic.run({QStringLiteral("one")}));
    static_cast<void>(restic.run({QStringLiteral("two")}));
    ASSERT_EQ(calls.size(), 3);
    EXPECT_EQ(calls.first().path, rclonePath);
    EXPECT_EQ(calls.first().arguments,
              QStringList(
                  {QStringLiteral("config"), QStringLiteral("encryption"), QStringLiteral("set")}));
    // Each run has its own pipe to the key.
    const QString variable = QStringLiteral("RCLONE_PASSWORD_COMMAND");
    EXPECT_NE(calls.at(1).options.env.value(variable), calls.at(2).options.env.value(variable));
}

TEST_F(ResticRunTest, noSecretStandsInAnArgumentOrInTheEnvironment)
{
    giveConfigKey();
    restic.dest = DestinationID::Drive;
    static_cast<void>(restic.prepare());
    ASSERT_EQ(calls.size(), 3);
    for (const Call &call : calls) {
        QStringList texts = call.arguments + call.options.env.values() + call.options.env.keys();
        texts.append(call.path);
        const QString all = texts.join(u'\n');
        EXPECT_FALSE(all.contains(QLatin1String("the repository's key")));
        EXPECT_FALSE(all.contains(QLatin1String("the configuration's key")));
    }
}

TEST_F(ResticRunTest, prepareOpensAndUnlocksARepositoryThatIsThere)
{
    answers = {{0, {}, {}}, {1, {}, QStringLiteral("in use")}};
    EXPECT_TRUE(restic.prepare().has_value());
    EXPECT_EQ(argumentLists(),
              QList<QStringList>(
                  {{QStringLiteral("cat"), QStringLiteral("config")}, {QStringLiteral("unlock")}}));
}

TEST_F(ResticRunTest, prepareMakesARepositoryThatIsNotThereAndUnlocksNothing)
{
    answers = {{10, {}, {}}, {0, {}, {}}};
    EXPECT_TRUE(restic.prepare().has_value());
    EXPECT_EQ(argumentLists(),
              QList<QStringList>(
                  {{QStringLiteral("cat"), QStringLiteral("config")}, {QStringLiteral("init")}}));
}

TEST_F(ResticRunTest, prepareReportsWhyItCouldNotMakeARepository)
{
    answers = {{10, {}, QStringLiteral("first")}, {1, {}, QStringLiteral("no room")}};
    const auto prepared = restic.prepare();
    ASSERT_FALSE(prepared.has_value());
    EXPECT_EQ(prepared.error().message, QStringLiteral("no room"));
    EXPECT_EQ(calls.size(), 2);
}

TEST_F(ResticRunTest, prepareReportsAnyOtherFailureAndDoesNothingMore)
{
    for (const int status : {1, 3, 12, 130, -1}) {
        calls.clear();
        answers = {{status, {}, QStringLiteral("why")}};
        const auto prepared = restic.prepare();
        ASSERT_FALSE(prepared.has_value());
        EXPECT_EQ(prepared.error(), Restic::describe({status, QString(), QStringLiteral("why")}));
        EXPECT_EQ(calls.size(), 1);
    }
}

TEST_F(ResticRunTest, prepareUnlocksARepositoryThatIsLockedAndThenWaitsForItsLock)
{
    const QStringList open{QStringLiteral("cat"), QStringLiteral("config")};
    const QStringList wait =
        open + QStringList{QStringLiteral("--retry-lock"), QStringLiteral("120s")};
    const QStringList unlock{QStringLiteral("unlock")};
    answers = {{11, {}, {}}, {0, {}, {}}, {0, {}, {}}, {0, {}, {}}};
    EXPECT_TRUE(restic.prepare().has_value());
    EXPECT_EQ(argumentLists(), QList<QStringList>({open, unlock, wait, unlock}));

    calls.clear();
    answers = {{11, {}, {}}, {0, {}, {}}, {11, {}, {}}};
    const auto prepared = restic.prepare();
    ASSERT_FALSE(prepared.has_value());
    EXPECT_EQ(prepared.error(), Restic::describe({11, QString(), QString()}));
    EXPECT_EQ(argumentLists(), QList<QStringList>({open, unlock, wait}));
}

TEST_F(ResticRunTest, onlyResticsOwnWordRefusesAKey)
{
    for (const int status : {0, 1, 10, 11, 12, 130, -1}) {
        answers = {{status, {}, {}}};
        EXPECT_EQ(restic.refusesKey(), status == 12) << status;
    }
    EXPECT_EQ(last().arguments, (QStringList{QStringLiteral("cat"), QStringLiteral("config")}));
}

TEST_F(ResticRunTest, aDiskWhoseFolderIsNoneIsReportedAtOnce)
{
    const QString path = Paths::home() + QLatin1String("/disk");
    ASSERT_TRUE(writeFile(path));
    restic.config.localFolder = path;
    const ResticError error{
        QStringLiteral("Il backup non può stare in ~/disk/Vellomar.backup: non è una cartella")};
    EXPECT_TRUE(restic.isAvailable());
    EXPECT_EQ(restic.prepare().error(), error);
    EXPECT_EQ(restic.snapshots().error(), error);

    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QDir().mkdir(path));
    const QString repository = path + QLatin1String("/Vellomar.backup");
    ASSERT_TRUE(writeFile(repository));
    EXPECT_EQ(restic.prepare().error(), error);
    ASSERT_TRUE(QFile::remove(repository));
    ASSERT_TRUE(QFile::link(repository, repository));
    EXPECT_EQ(restic.prepare().error(), error);
    EXPECT_TRUE(calls.isEmpty());

    ASSERT_TRUE(QFile::remove(repository));
    EXPECT_TRUE(restic.prepare().has_value());
    EXPECT_FALSE(calls.isEmpty());
}

TEST_F(ResticRunTest, aDiskIsAvailableWhenItsFolderIsThere)
{
    restic.config.localFolder.clear();
    EXPECT_FALSE(restic.isAvailable());
    restic.config.localFolder = Paths::home() + QLatin1String("/disk");
    EXPECT_FALSE(restic.isAvailable());
    ASSERT_TRUE(QDir().mkpath(restic.config.localFolder)); // without a repository in it
    EXPECT_TRUE(restic.isAvailable());
    EXPECT_TRUE(calls.isEmpty());
}

TEST_F(ResticRunTest, aFolderThatStayedWhenItsDiskWentIsNotAvailable)
{
    restic.config.localFolder = Paths::home();
    EngineState state;
    state.localDisk = {restic.config.repository(DestinationID::Local), Paths::home()};
    StatusStore::save(state);
    EXPECT_FALSE(restic.isAvailable());
    // Neither another folder nor another machine's repository was on that disk.
    restic.config.localFolder = Paths::support();
    EXPECT_TRUE(restic.isAvailable());
    restic.config.localFolder = Paths::home();
    restic.repositoryOverride = Paths::home();
    EXPECT_TRUE(restic.isAvailable());
}

TEST_F(ResticRunTest, anotherRepositoryOnADiskMustBeThereItself)
{
    restic.config.localFolder = Paths::home();
    restic.repositoryOverride = Paths::home() + QLatin1String("/repository");
    EXPECT_FALSE(restic.isAvailable());
    ASSERT_TRUE(QDir().mkpath(*restic.repositoryOverride));
    EXPECT_TRUE(restic.isAvailable());
    restic.config.localFolder.clear();
    EXPECT_TRUE(restic.isAvailable());
    restic.repositoryOverride = QString();
    EXPECT_FALSE(restic.isAvailable());
}

TEST_F(ResticRunTest, theRemotesDecideWhetherTheOthersAreAvailable)
{
    struct Row
    {
        const char *dump;
        bool drive;
        bool server;
    };
    for (const Row &row :
         {Row{"{}", false, false}, Row{R"({"vellomar":{"type":"drive"}})", false, false},
          Row{R"({"vellomar":{"token":"t"}})", true, false},
          Row{R"({"vellomar-server":{}})", false, true},
          Row{R"({"vellomar":{"token":""},"vellomar-server":{}})", true, true},
          Row{R"({"Vellomar":{"token":"t"},"vellomar-serve":{}})", false, false},
          Row{"", false, false}}) {
        // The file is read again only when its date is new.
        static int age = 0;
        QFile file(Paths::supportFile(QStringLiteral("rclone.conf")));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTimeUtc().addSecs(-100LL * ++age),
                                     QFileDevice::FileModificationTime));
        file.close();
        secrets.readFailure = -1; // keeps the file as it is
        answers = {{0, QString::fromUtf8(row.dump), QString()}};
        restic.dest = DestinationID::Drive;
        EXPECT_EQ(restic.isAvailable(), row.drive) << row.dump;
        restic.dest = DestinationID::Server;
        EXPECT_EQ(restic.isAvailable(), row.server) << row.dump;
    }
    EXPECT_EQ(calls.size(), 7); // one look at each state, and never restic
}

TEST_F(ResticRunTest, whatIsSaidWhenADestinationIsUnavailable)
{
    restic.dest = DestinationID::Local;
    EXPECT_EQ(restic.unavailableMessage(), QStringLiteral("Disco non collegato"));
    restic.dest = DestinationID::Drive;
    EXPECT_EQ(restic.unavailableMessage(), QStringLiteral("Google Drive non collegato"));
    restic.dest = DestinationID::Server;
    EXPECT_EQ(restic.unavailableMessage(), QStringLiteral("Server non collegato"));
}

} // namespace

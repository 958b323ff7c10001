#include "tests/support/ScriptedRestic.h"

#include "tests/support/CoreLimit.h"
#include "tools/OneShotSecret.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <array>

#include <fcntl.h>
#include <unistd.h>

namespace {

class Entry : public ScriptedRestic
{
protected:
    struct Ending
    {
        int code = -1;
        QByteArray output;
        QByteArray errors;
    };

    Ending run(const QStringList &arguments) const
    {
        Cycle cycle(installation.program());
        cycle.start(arguments);
        const int code = cycle.finish();
        return {code, cycle.output(), cycle.errors()};
    }

    static QStringList words(std::initializer_list<const char *> list)
    {
        QStringList result;
        for (const char *word : list) {
            result.append(QString::fromUtf8(word));
        }
        return result;
    }

    /// Runs the program under another name for itself.
    Ending runAs(const QString &name, const QStringList &arguments) const
    {
        QProcess shell;
        shell.start(QStringLiteral("bash"),
                    QStringList{QStringLiteral("-c"),
                                QStringLiteral("exec -a \"$1\" \"$0\" \"${@:2}\""),
                                installation.program(), name} +
                        arguments);
        EXPECT_TRUE(shell.waitForFinished());
        return {shell.exitCode(), shell.readAllStandardOutput(), shell.readAllStandardError()};
    }

    /// Runs the program with an environment that names no home, on a machine whose list of users is
    /// this one. `home` is what stands in its place: "-u HOME", or an empty "HOME=".
    Ending runHomeless(const QByteArray &users, const QString &home) const
    {
        writeFile(folder(QStringLiteral("etc")) + QLatin1String("/passwd"), users);
        writeFile(folder(QStringLiteral("etc")) + QLatin1String("/nsswitch"), "passwd: files\n");
        QStringList arguments{QStringLiteral("--mount")};
        if (::geteuid() != 0) {
            arguments << QStringLiteral("--map-current-user") << QStringLiteral("--keep-caps");
        }
        QProcess shell;
        shell.start(QStringLiteral("unshare"),
                    arguments +
                        QStringList{QStringLiteral("sh"), QStringLiteral("-c"),
                                    QStringLiteral("mount --bind \"$1/passwd\" /etc/passwd &&\n"
                                                   "mount --bind \"$1/nsswitch\" "
                                                   "/etc/nsswitch.conf &&\n"
                                                   "exec env $3 \"$2\" --backup"),
                                    QStringLiteral("sh"), folder(QStringLiteral("etc")),
                                    installation.program(), home});
        EXPECT_TRUE(shell.waitForFinished(120000));
        return {shell.exitCode(), shell.readAllStandardOutput(), shell.readAllStandardError()};
    }

    /// A line of the list of users for this one.
    static QByteArray userWithHome(const QString &home)
    {
        return "anna:x:" + QByteArray::number(::getuid()) + ":0::" + home.toUtf8() + ":/bin/sh\n";
    }

    /// Whether a cycle has begun since the last call.
    static bool hadCycle()
    {
        return QFile::remove(Paths::supportFile(QStringLiteral("backup.lock")));
    }
};

TEST_F(Entry, withoutAKnownWordItIsTheWindow)
{
    for (const QStringList &arguments :
         {words({}), words({"--manual"}), words({"--secret"}), words({"--manual", "--secret"}),
          words({"--backup=1"}), words({"--Backup"}), words({"-backup"}), words({"--backups"}),
          words({"backup", "--secrets", "x"}), words({"", "--"})}) {
        const Ending ending = run(arguments);
        EXPECT_EQ(ending.code, 1);
        EXPECT_EQ(ending.output, "");
        EXPECT_TRUE(ending.errors.contains("finestra")) << ending.errors.toStdString();
        EXPECT_FALSE(hadCycle()) << arguments.join(u' ').toStdString();
    }
    EXPECT_EQ(commands(), "");
}

TEST_F(Entry, theBackupMayStandAnywhereAmongUnknownWords)
{
    for (const QStringList &arguments :
         {words({"--backup"}), words({"x", "--backup"}), words({"--backup", "--other=1", ""}),
          words({"--backup", "--backup"}), words({"--", "--backup"})}) {
        const Ending ending = run(arguments);
        EXPECT_EQ(ending.code, 0);
        EXPECT_EQ(ending.output, "");
        EXPECT_EQ(ending.errors, "");
        EXPECT_TRUE(hadCycle()) << arguments.join(u' ').toStdString();
    }
}

TEST_F(Entry, manualIsReadWithTheBackupInAnyOrder)
{
    // Only a manual run goes on before the key is saved.
    config.keySaved = false;
    saveSettings();
    EXPECT_EQ(run(words({"--backup"})).code, 0);
    EXPECT_EQ(run(words({"--backup", "--manually"})).code, 0);
    EXPECT_EQ(recordCount(), 0);
    EXPECT_EQ(run(words({"--backup", "--manual"})).code, 0);
    EXPECT_EQ(recordCount(), 1);
    EXPECT_EQ(run(words({"--manual", "x", "--backup"})).code, 0);
    EXPECT_EQ(recordCount(), 2);
}

TEST_F(Entry, aSecretAsTheLastWordHasNoEffect)
{
    EXPECT_EQ(run(words({"--backup", "--secret"})).code, 0);
    EXPECT_TRUE(hadCycle());
}

TEST_F(Entry, theSecretIsDeliveredWhateverElseStandsThere)
{
    for (const bool backupFirst : {true, false}) {
        const auto secret = OneShotSecret::create(QStringLiteral("the secret"));
        ASSERT_TRUE(secret);
        const QStringList delivery{QStringLiteral("--secret"), secret->path()};
        const QStringList backup = words({"--backup", "--manual"});
        const Ending ending = run(backupFirst ? backup + delivery : delivery + backup);
        EXPECT_EQ(ending.code, 0);
        EXPECT_EQ(ending.output, "the secret");
        EXPECT_EQ(ending.errors, "");
        EXPECT_FALSE(hadCycle());
    }
}

TEST_F(Entry, theFirstSecretIsTheOneThatCounts)
{
    const auto secret = OneShotSecret::create(QStringLiteral("the secret"));
    ASSERT_TRUE(secret);
    for (const QStringList &arguments :
         {QStringList{QStringLiteral("--secret"), QStringLiteral("--secret"), secret->path()},
          QStringList{QStringLiteral("--secret"), QStringLiteral("/no/pipe"),
                      QStringLiteral("--secret"), secret->path()},
          words({"--secret", "--backup"})}) {
        const Ending ending = run(arguments);
        EXPECT_EQ(ending.code, 1);
        EXPECT_EQ(ending.output, "");
        EXPECT_FALSE(hadCycle());
    }
}

TEST_F(Entry, theProgramsOwnNameIsAWordLikeTheOthers)
{
    EXPECT_EQ(runAs(QStringLiteral("--backup"), {}).code, 0);
    EXPECT_TRUE(hadCycle());
    EXPECT_EQ(runAs(QStringLiteral("--manual"), {}).code, 1);
    EXPECT_FALSE(hadCycle());
    const auto secret = OneShotSecret::create(QStringLiteral("the secret"));
    ASSERT_TRUE(secret);
    EXPECT_EQ(runAs(QStringLiteral("--secret"), {secret->path()}).output, "the secret");
}

TEST_F(Entry, closedStandardDescriptorsDoNoHarm)
{
    script("await; echo '{\"message_type\":\"summary\",\"files_new\":3}'");
    Cycle cycle(installation.program());
    cycle.startBy(
        QStringLiteral("sh"),
        {QStringLiteral("-c"), QStringLiteral("exec \"$@\" <&- >&- 2>&-"), QStringLiteral("sh")});
    EXPECT_TRUE(isAwaiting());
    // None of our files or connections has the number of a standard stream, where a library may
    // print.
    for (const char *descriptor : {"0", "1", "2"}) {
        EXPECT_EQ(QFile::symLinkTarget(QStringLiteral("/proc/%1/fd/").arg(cycle.processId()) +
                                       QLatin1String(descriptor)),
                  QStringLiteral("/dev/null"));
    }
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_EQ(newestRecord().filesNew, 3);
}

TEST_F(Entry, withoutAHomeInTheEnvironmentTheListOfUsersGivesIt)
{
    for (const QString &missing : {QStringLiteral("-u HOME"), QStringLiteral("HOME=")}) {
        const Ending ending = runHomeless(userWithHome(home()), missing);
        EXPECT_EQ(ending.code, 0);
        EXPECT_EQ(ending.errors, "");
        EXPECT_TRUE(hadCycle());
        EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    }
    // The tools find it too.
    EXPECT_EQ(commands().count("backup"), 2);
}

TEST_F(Entry, withoutAnyHomeItSaysSoAndFails)
{
    for (const QByteArray &users : {QByteArray(), userWithHome(QString())}) {
        const Ending ending = runHomeless(users, QStringLiteral("-u HOME"));
        EXPECT_EQ(ending.code, 1);
        EXPECT_EQ(ending.output, "");
        EXPECT_TRUE(ending.errors.contains("la cartella home non si trova"))
            << ending.errors.toStdString();
        EXPECT_FALSE(hadCycle());
    }
}

TEST_F(Entry, theDeliveryOfASecretIsSafeFromClosedDescriptorsToo)
{
    const auto secret = OneShotSecret::create(QStringLiteral("the secret"));
    ASSERT_TRUE(secret);
    QProcess shell;
    shell.start(QStringLiteral("sh"),
                {QStringLiteral("-c"), QStringLiteral("\"$0\" --secret \"$1\" >&- 2>&-; echo $?"),
                 installation.program(), secret->path()});
    ASSERT_TRUE(shell.waitForFinished());
    // The secret went nowhere, nor back into the pipe, where it could be read again.
    EXPECT_EQ(shell.readAllStandardOutput(), "0\n");
    EXPECT_EQ(run({QStringLiteral("--secret"), secret->path()}).code, 1);
}

TEST_F(Entry, aFileThatMayNotGrowIsAFailedWriteAndNotTheEnd)
{
    Cycle cycle(installation.program());
    cycle.startBy(
        QStringLiteral("bash"),
        {QStringLiteral("-c"), QStringLiteral("ulimit -f 0; exec \"$@\""), QStringLiteral("bash")});
    // It ends restic, which here can't even note its commands.
    EXPECT_EQ(cycle.finish(), 1);
    EXPECT_FALSE(isThere("history.json"));
}

TEST_F(Entry, fewOpenFilesAreRaisedToWhatTheSystemLets)
{
    Cycle cycle(installation.program());
    cycle.startBy(QStringLiteral("bash"),
                  {QStringLiteral("-c"), QStringLiteral("ulimit -S -n 12; exec \"$@\""),
                   QStringLiteral("bash")});
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
}

TEST_F(Entry, tooFewOpenFilesAreReportedAndNoLibraryMeetsThem)
{
    for (const char *limit : {"12", "16", "20", "40"}) {
        Cycle cycle(installation.program());
        cycle.startBy(QStringLiteral("bash"),
                      {QStringLiteral("-c"), QStringLiteral("ulimit -n $0; exec \"$@\""),
                       QString::fromLatin1(limit)});
        EXPECT_EQ(cycle.finish(), 1) << limit;
        EXPECT_EQ(cycle.errors(), "Vellomar: il sistema permette di aprire troppo pochi file\n");
        EXPECT_FALSE(hadCycle());
    }
}

TEST_F(Entry, aFailedDestinationIsExitCodeOne)
{
    script("exit 1");
    EXPECT_EQ(run(words({"--backup"})).code, 1);
}

TEST_F(Entry, aRunAndItsToolsLeaveNoCore)
{
    allowCores();
    script("await");
    Cycle cycle(installation.program());
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    EXPECT_EQ(coreLimit(cycle.processId()), "1");
    const QList<pid_t> tools = childrenOf(cycle.processId());
    EXPECT_FALSE(tools.isEmpty());
    for (const pid_t tool : tools) {
        EXPECT_EQ(coreLimit(tool), "1");
    }
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
}

TEST_F(Entry, norDoesTheDeliveryOfASecret)
{
    allowCores();
    const auto secret = OneShotSecret::create(QStringLiteral("the secret"));
    ASSERT_TRUE(secret);
    // It blocks on an output pipe that is full.
    std::array<int, 2> output{};
    ASSERT_EQ(::pipe2(output.data(), O_CLOEXEC), 0);
    ASSERT_EQ(::fcntl(output[1], F_SETFL, O_NONBLOCK), 0);
    const std::array<char, 4096> filling{};
    while (::write(output[1], filling.data(), filling.size()) > 0) {
    }
    ASSERT_EQ(::fcntl(output[1], F_SETFL, 0), 0);
    QProcess delivery;
    delivery.setChildProcessModifier([&output] { ::dup2(output[1], STDOUT_FILENO); });
    delivery.start(installation.program(), {QStringLiteral("--secret"), secret->path()});
    EXPECT_TRUE(eventually([&delivery] { return coreLimit(delivery.processId()) == "1"; }));
    ::close(output[0]);
    ::close(output[1]);
    delivery.waitForFinished();
}

} // namespace

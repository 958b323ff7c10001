#include "tests/support/OrdinaryUser.h"
#include "tests/support/Cycle.h"
#include "tests/support/CycleHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// Before the keyring starts: a copy of the program that the user can reach, and becoming the user.
struct OrdinaryUsersProgram
{
    OrdinaryUsersProgram()
    {
        installation.addCopy(QStringLiteral("restic"));
        EXPECT_TRUE(becomeOrdinaryUser({installation.folder()}));
    }

    Installation installation;
};

// Real permissions, and things that vanish while restic is at work.
class OrdinaryUser : protected OrdinaryUsersProgram, public CycleHome
{
protected:
    OrdinaryUser() { resticProgram = installation.tool(QStringLiteral("restic")); }

    ~OrdinaryUser() override
    {
        // Or the home couldn't be removed.
        ::chmod(QFile::encodeName(home()).constData(), 0700);
    }

    int runCycle() { return Cycle(installation.program()).run(); }

    static void setMode(const QString &path, mode_t mode)
    {
        ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
    }

    /// Files that keep restic reading for seconds and take no room.
    void addLongFiles(int count) const
    {
        for (int i = 0; i < count; ++i) {
            QFile file(source + QStringLiteral("/long %1").arg(i));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            ASSERT_TRUE(file.resize(qint64{400} * 1024 * 1024));
        }
    }

    /// Runs a cycle and does something while restic, which is copying, is held still.
    int runAndMeanwhile(const std::function<void()> &act)
    {
        Cycle cycle(installation.program());
        cycle.start();
        EXPECT_TRUE(eventually([] { return phase() == QLatin1String("Copia dei file"); }));
        const QList<pid_t> children = childrenOf(cycle.processId());
        EXPECT_EQ(children.size(), 1);
        for (const pid_t child : children) {
            EXPECT_EQ(::kill(child, SIGSTOP), 0);
        }
        act();
        for (const pid_t child : children) {
            EXPECT_EQ(::kill(child, SIGCONT), 0);
        }
        return cycle.finish();
    }
};

TEST_F(OrdinaryUser, unreadableFilesGiveAWarningWithTheirNumber)
{
    makeRepository(repository);
    for (const char *name : {"/secret 1", "/secret 2", "/secret 3"}) {
        writeFile(source + QLatin1String(name), "x");
        setMode(source + QLatin1String(name), 0);
    }
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Warning);
    EXPECT_EQ(newestRecord().message,
              QStringLiteral("Completato, ma 3 elementi non erano leggibili"));
    EXPECT_EQ(newestRecord().filesNew, 2);
    EXPECT_EQ(snapshotCount(repository), 1);

    ASSERT_TRUE(QFile::remove(source + QLatin1String("/secret 2")));
    ASSERT_TRUE(QFile::remove(source + QLatin1String("/secret 3")));
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().message,
              QStringLiteral("Completato, ma 1 elementi non erano leggibili"));
}

TEST_F(OrdinaryUser, aSupportFolderThatCannotBeMadeEndsTheCycleWithOneLineOfReason)
{
    // The folder itself is made writable again at each start; its parent isn't.
    ASSERT_TRUE(QDir(Paths::support()).removeRecursively());
    setMode(QFileInfo(Paths::support()).path(), 0500);
    Cycle cycle(installation.program());
    cycle.start();
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_EQ(cycle.output(), QByteArray());
    EXPECT_EQ(QString::fromUtf8(cycle.errors()),
              QStringLiteral("Vellomar: impossibile scrivere nella cartella %1 (non si può "
                             "creare)\n")
                  .arg(Paths::support()));
    EXPECT_FALSE(QFileInfo::exists(Paths::support()));
    EXPECT_FALSE(QFileInfo::exists(repository));
    setMode(QFileInfo(Paths::support()).path(), 0700);
}

TEST_F(OrdinaryUser, aDiskThatCannotBeWrittenFailsWithResticsWords)
{
    setMode(disk, 0500);
    EXPECT_EQ(runCycle(), 1);
    EXPECT_EQ(newestRecord().outcome, Outcome::Failed);
    EXPECT_TRUE(newestRecord().message.contains(QLatin1String("permission denied")))
        << newestRecord().message.toStdString();
    setMode(disk, 0700);
}

TEST_F(OrdinaryUser, aSourceThatVanishesDuringTheRunGivesAWarning)
{
    makeRepository(repository);
    addLongFiles(60);
    EXPECT_EQ(runAndMeanwhile([this] { ASSERT_TRUE(QDir(source).removeRecursively()); }), 0);
    const RunRecord record = newestRecord();
    EXPECT_EQ(record.outcome, Outcome::Warning);
    EXPECT_TRUE(record.message.startsWith(QLatin1String("Completato, ma ")))
        << record.message.toStdString();
    EXPECT_TRUE(record.message.endsWith(QLatin1String(" elementi non erano leggibili")));
    EXPECT_FALSE(isThere("status.json"));
    EXPECT_TRUE(isWhole(repository));
}

TEST_F(OrdinaryUser, aDiskThatVanishesDuringTheRunFailsIt)
{
    addLongFiles(2);
    QByteArray bytes(30'000'000, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(bytes.data()),
                                          bytes.size() / 4);
    writeFile(source + QLatin1String("/z"), bytes);
    // As with the folder of mount points, only the system can make the disk's folder again.
    const QString media = folder(QStringLiteral("media"));
    config.localFolder = folder(QStringLiteral("media/disk"));
    saveSettings();
    const QString away = home() + QLatin1String("/disk in a pocket");
    EXPECT_EQ(runAndMeanwhile([&] {
                  ASSERT_TRUE(QDir().rename(config.localFolder, away));
                  setMode(media, 0500);
              }),
              1);
    EXPECT_EQ(newestRecord().outcome, Outcome::Failed);
    EXPECT_NE(newestRecord().message, QString());
    EXPECT_FALSE(isThere("status.json"));

    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().message, QStringLiteral("Disco non collegato"));

    setMode(media, 0700);
    ASSERT_TRUE(QDir().rename(away, config.localFolder));
    for (const char *name : {"/long 0", "/long 1"}) {
        ASSERT_TRUE(QFile::remove(source + QLatin1String(name)));
    }
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_TRUE(isWhole(config.localFolder + QLatin1String("/Vellomar.backup")));
}

} // namespace

#include "tests/support/Cycle.h"
#include "tests/support/CycleHome.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

class DiskBackup : public CycleHome
{
protected:
    DiskBackup() { makeRepository(repository); }

    /// Restores the newest snapshot into a new folder and gives the folder of `path` in there.
    QString restored(const QString &path) const
    {
        const QString target = home() + QLatin1String("/restored");
        static_cast<void>(restic(repository, {QStringLiteral("restore"), QStringLiteral("latest"),
                                              QStringLiteral("--target"), target}));
        return target + path;
    }

    /// What differs between two trees, as diff prints it; empty when nothing does.
    static QByteArray difference(const QString &left, const QString &right)
    {
        QProcess diff;
        diff.setProcessChannelMode(QProcess::MergedChannels);
        diff.start(QStringLiteral("diff"),
                   {QStringLiteral("-r"), QStringLiteral("--no-dereference"), left, right});
        EXPECT_TRUE(diff.waitForFinished());
        EXPECT_EQ(diff.exitCode(), 0);
        return diff.readAll();
    }

    void makeFile(const QByteArray &name) const
    {
        const QByteArray path = source.toUtf8() + '/' + name;
        FILE *file = std::fopen(path.constData(), "w");
        ASSERT_NE(file, nullptr);
        EXPECT_GE(std::fputs("content", file), 0);
        EXPECT_EQ(std::fclose(file), 0);
    }
};

TEST_F(DiskBackup, theFirstRunMakesTheRepositoryAndTheSecondOnlyAddsChanges)
{
    ASSERT_TRUE(QDir(repository).removeRecursively());
    EXPECT_EQ(Cycle().run(), 0);
    const RunRecord first = newestRecord();
    EXPECT_EQ(first.destination, DestinationID::Local);
    EXPECT_EQ(first.outcome, Outcome::Ok);
    EXPECT_EQ(first.message, QStringLiteral("Completato"));
    EXPECT_EQ(first.filesNew, 2);
    EXPECT_EQ(first.filesChanged, 0);
    EXPECT_GT(first.dataAdded, 0);
    EXPECT_GT(first.duration, 0);
    EXPECT_FALSE(first.kind);
    EXPECT_FALSE(isThere("status.json"));
    EXPECT_TRUE(isThere("backup.lock"));
    EXPECT_EQ(readFile(Paths::supportFile(QStringLiteral("excludes.txt"))), repository.toUtf8());

    writeFile(source + QLatin1String("/letter"), "Dear Anna, dear Bea");
    writeFile(source + QLatin1String("/new"), "new");
    EXPECT_EQ(Cycle().run(), 0);
    const RunRecord second = newestRecord();
    EXPECT_EQ(second.outcome, Outcome::Ok);
    EXPECT_EQ(second.filesNew, 1);
    EXPECT_EQ(second.filesChanged, 1);
    EXPECT_GE(second.date, first.date);
    EXPECT_EQ(recordCount(), 2);
    const QByteArray log = readFile(Paths::supportFile(QStringLiteral("backup.log")));
    EXPECT_EQ(log.count('\n'), 2);
    EXPECT_EQ(log.count(" [local] ok: Completato\n"), 2);
    EXPECT_EQ(snapshotCount(repository), 2);
    EXPECT_FALSE(isLocked(repository));

    EXPECT_EQ(difference(source, restored(source)), QByteArray());
    const QByteArray list =
        restic(repository, {QStringLiteral("snapshots"), QStringLiteral("--json")});
    EXPECT_TRUE(list.contains("\"tags\":[\"vellomar\"]")) << list.toStdString();
    EXPECT_TRUE(list.contains(QByteArray("\"hostname\":\"" + Paths::hostname().toUtf8() + '"')));
}

TEST_F(DiskBackup, isThatOfTheSettingsWhateverResticIsToDoInTheSession)
{
    const QList<std::pair<const char *, QByteArray>> variables{
        {"RESTIC_PASSWORD", "theirs"},
        {"RESTIC_REPOSITORY_FILE", QByteArray("/nonexistent")},
        {"RESTIC_HOST", "their-machine"},
        {"RESTIC_COMPRESSION", "theirs"}};
    for (const auto &[name, value] : variables) {
        qputenv(name, value);
    }
    EXPECT_EQ(Cycle().run(), 0);
    for (const auto &[name, value] : variables) {
        qunsetenv(name);
    }
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok) << qPrintable(newestRecord().message);
    const QByteArray list =
        restic(repository, {QStringLiteral("snapshots"), QStringLiteral("--json")});
    EXPECT_TRUE(list.contains(QByteArray("\"hostname\":\"" + Paths::hostname().toUtf8() + '"')));
}

TEST_F(DiskBackup, oddNamesComeBackByteForByte)
{
    for (const char *name :
         {"a\nb", "\"quoted\"", "'single'", "[brackets]", "star*?", "back\\slash", "$HOME",
          " blanks ", "-dash", "--json", "~", "#", "caff\xc3\xa8", "caffe\xcc\x80",
          "invalid \xff\xfe utf-8", "tab\tcr\r", "{\"message_type\":\"summary\"}", ".hidden"}) {
        makeFile(name);
    }
    const QString odd = folder(QStringLiteral("-a [source]\n\"$HOME\" *"));
    writeFile(odd + QLatin1String("/inside"), "inside");
    config.sources = {source, odd};
    saveSettings();
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_EQ(newestRecord().filesNew, 21);
    EXPECT_EQ(difference(source, restored(source)), QByteArray());
    EXPECT_EQ(difference(odd, home() + QLatin1String("/restored") + odd), QByteArray());
}

TEST_F(DiskBackup, whatIsExcludedStaysOut)
{
    const QString cache = folder(QStringLiteral("source/cache"));
    writeFile(cache + QLatin1String("/CACHEDIR.TAG"),
              "Signature: 8a477f597d28d172789f06886806bc55\n");
    writeFile(cache + QLatin1String("/thumbnail"), "x");
    writeFile(folder(QStringLiteral("source/node_modules")) + QLatin1String("/module"), "x");
    writeFile(folder(QStringLiteral("source/deep/node_modules")) + QLatin1String("/module"), "x");
    writeFile(source + QLatin1String("/old.tmp"), "x");
    writeFile(folder(QStringLiteral("source/private")) + QLatin1String("/diary"), "x");
    config.excludes = {QStringLiteral("node_modules"), QStringLiteral("*.tmp"),
                       QStringLiteral("~/source/private")};
    saveSettings();
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    const QString result = restored(source);
    EXPECT_EQ(QDir(result).entryList(QDir::Files, QDir::Name),
              (QStringList{QStringLiteral("letter"), QStringLiteral("list")}));
    EXPECT_FALSE(QFileInfo::exists(result + QLatin1String("/cache/thumbnail")));
    EXPECT_FALSE(QFileInfo::exists(result + QLatin1String("/node_modules")));
    EXPECT_TRUE(QFileInfo::exists(result + QLatin1String("/deep")));
    EXPECT_FALSE(QFileInfo::exists(result + QLatin1String("/deep/node_modules")));
    EXPECT_FALSE(QFileInfo::exists(result + QLatin1String("/private")));
}

TEST_F(DiskBackup, markedCachesAreKeptWhenTheSettingSaysSo)
{
    const QString cache = folder(QStringLiteral("source/cache"));
    writeFile(cache + QLatin1String("/CACHEDIR.TAG"),
              "Signature: 8a477f597d28d172789f06886806bc55\n");
    writeFile(cache + QLatin1String("/thumbnail"), "x");
    config.excludeCaches = false;
    saveSettings();
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().filesNew, 4);
}

TEST_F(DiskBackup, aRepositoryInsideASourceIsNotBackedUp)
{
    // Every character that means something in a pattern of restic's.
    config.localFolder = folder(QStringLiteral("source/My [1] *disk? $HOME \\ é"));
    saveSettings();
    const QString inside = config.localFolder + QLatin1String("/Vellomar.backup");
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().filesNew, 2);
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_EQ(newestRecord().filesNew, 0);
    EXPECT_EQ(newestRecord().filesChanged, 0);
    const QByteArray names = restic(inside, {QStringLiteral("ls"), QStringLiteral("latest")});
    EXPECT_TRUE(names.contains("/letter"));
    EXPECT_FALSE(names.contains("Vellomar.backup"));
}

TEST_F(DiskBackup, aSourceThatIsALinkComesBackWithWhatItLeadsTo)
{
    const QString documents = home() + QLatin1String("/Documenti");
    ASSERT_TRUE(QFile::link(source, documents));
    writeFile(folder(QStringLiteral("source/private")) + QLatin1String("/diary"), "x");
    config.sources = {documents};
    config.excludes = {QStringLiteral("~/Documenti/private")};
    saveSettings();
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_EQ(newestRecord().filesNew, 2);
    const QString link = restored(documents);
    EXPECT_EQ(QFile::symLinkTarget(link), source);
    const QString content = home() + QLatin1String("/restored") + source;
    EXPECT_EQ(readFile(content + QLatin1String("/letter")), "Dear Anna");
    EXPECT_FALSE(QFileInfo::exists(content + QLatin1String("/private")));
}

TEST_F(DiskBackup, aRepositoryIsNeverSavedIntoItselfWhateverItsDiskAndItsSourcesAreCalled)
{
    const QString real = folder(QStringLiteral("source/disk"));
    const QString disks = home() + QLatin1String("/disks");
    ASSERT_TRUE(QFile::link(source, disks));
    ASSERT_TRUE(QFile::link(home(), home() + QLatin1String("/self")));
    config.localFolder = disks + QLatin1String("/disk");
    config.sources = {source, disks, home() + QLatin1String("/self/source")};
    saveSettings();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Cycle().run(), 0);
        EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    }
    EXPECT_EQ(newestRecord().filesNew, 0);
    const QByteArray names = restic(real + QLatin1String("/Vellomar.backup"),
                                    {QStringLiteral("ls"), QStringLiteral("latest")});
    EXPECT_EQ(names.count("/letter"), 2);
    EXPECT_FALSE(names.contains("Vellomar.backup"));
}

TEST_F(DiskBackup, aSourceThatLooksLikeAnOptionIsAFolder)
{
    writeFile(folder(QStringLiteral("--dry-run")) + QLatin1String("/file"), "content");
    config.sources = {QStringLiteral("--dry-run")};
    saveSettings();
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().filesNew, 1);
    EXPECT_EQ(readFile(restored(home() + QLatin1String("/--dry-run/file"))), "content");
}

TEST_F(DiskBackup, aSourceThatIsGoneBeforeTheRunIsPassedOver)
{
    config.sources = {home() + QLatin1String("/gone"), source};
    saveSettings();
    EXPECT_EQ(Cycle().run(), 0);
    EXPECT_EQ(newestRecord().message, QStringLiteral("Completato"));
    EXPECT_EQ(newestRecord().filesNew, 2);
}

TEST_F(DiskBackup, withAllSourcesGoneTheRunFails)
{
    ASSERT_TRUE(QDir(source).removeRecursively());
    EXPECT_EQ(Cycle().run(), 1);
    EXPECT_EQ(newestRecord().outcome, Outcome::Failed);
    EXPECT_EQ(newestRecord().message, QStringLiteral("Nessuna cartella da salvare"));
    EXPECT_FALSE(isThere("excludes.txt"));
    EXPECT_FALSE(isThere("status.json"));
}

TEST_F(DiskBackup, aDiskThatIsNotAttachedIsSkippedWithoutStartingRestic)
{
    Installation installation;
    installation.addScript(QStringLiteral("restic"), "#!/bin/sh\ntouch \"$HOME/started\"\n");
    ASSERT_TRUE(QDir(disk).removeRecursively());
    EXPECT_EQ(Cycle(installation.program()).run(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Skipped);
    EXPECT_EQ(newestRecord().message, QStringLiteral("Disco non collegato"));
    EXPECT_FALSE(QFileInfo::exists(home() + QLatin1String("/started")));
    EXPECT_FALSE(QFileInfo::exists(disk));
}

TEST_F(DiskBackup, aScheduledRunDoesTheSame)
{
    Cycle scheduled;
    scheduled.start({QStringLiteral("--backup")});
    EXPECT_EQ(scheduled.finish(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_EQ(scheduled.output(), QByteArray());
    EXPECT_EQ(scheduled.errors(), QByteArray());
}

} // namespace

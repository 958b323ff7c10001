#include "tests/integration/tools/SampleBackup.h"

#include "tests/support/Files.h"
#include "tests/support/OrdinaryUser.h"

#include <QDirIterator>
#include <QSet>

#include <sys/stat.h>

// The real restic with a repository on a disk.

namespace {

class ResticLocalTest : public testing::Test
{
protected:
    ResticLocalTest()
    {
        restic.config.localFolder = QDir::homePath() + QLatin1String("/the disk");
        restic.password = QStringLiteral("key of \"the\" repository");
        EXPECT_TRUE(QDir().mkpath(restic.config.localFolder));
    }

    SampleBackup sample;
    Restic restic;
};

TEST_F(ResticLocalTest, aFreshDiskGetsARepositoryThatTheNextTimeIsKept)
{
    EXPECT_TRUE(restic.isAvailable());
    EXPECT_EQ(restic.snapshots().value(), QList<Snap>());
    EXPECT_EQ(restic.list(QStringLiteral("latest"), QStringLiteral("/")).error().message,
              QStringLiteral("Nessun backup presente in questa destinazione"));
    ASSERT_TRUE(restic.prepare().has_value());
    const QString config =
        restic.config.repository(DestinationID::Local) + QLatin1String("/config");
    const QByteArray before = readFile(config);
    EXPECT_FALSE(before.isEmpty());
    ASSERT_TRUE(restic.prepare().has_value());
    EXPECT_EQ(readFile(config), before);
    EXPECT_EQ(restic.snapshots().value(), QList<Snap>());
}

// A repository whose creation was interrupted between its key and its config file.
class CutMaking : public ResticLocalTest
{
protected:
    CutMaking()
    {
        EXPECT_TRUE(restic.prepare().has_value());
        EXPECT_TRUE(QFile::remove(repository + QLatin1String("/config")));
    }
    void write(const QString &name) const { writeFile(repository + u'/' + name); }
    [[nodiscard]] QStringList files() const
    {
        QStringList found;
        QDirIterator files(repository, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            found.append(files.next());
        }
        found.sort();
        return found;
    }
    void expectUntouched() const
    {
        const QStringList before = files();
        const auto prepared = restic.prepare();
        ASSERT_FALSE(prepared.has_value());
        EXPECT_EQ(prepared.error().message,
                  QStringLiteral("Nella destinazione manca il file «config» del backup. I dati ci "
                                 "sono ancora e non sono stati toccati."));
        EXPECT_EQ(files(), before);
    }

    const QString repository = restic.config.repository(DestinationID::Local);
};

TEST_F(CutMaking, withKeysAloneIsMadeGood)
{
    write(QLatin1String("keys/") + QString(64, u'a') + QLatin1String("-tmp-17"));
    ASSERT_EQ(restic.run({QStringLiteral("init")}).status, 1);
    ASSERT_TRUE(restic.prepare().has_value());
    EXPECT_EQ(restic.snapshots().value(), QList<Snap>());
    // The new key, and the first file.
    EXPECT_EQ(files().size(), 2);
    EXPECT_EQ(restic.run({QStringLiteral("backup"), SampleBackup::sources()}).status, 0);
    EXPECT_EQ(restic.snapshots().value().size(), 1);
}

TEST_F(CutMaking, withDataVersionsOrAnIndexIsNotTouched)
{
    for (const char *name : {"data/00/x", "index/x", "snapshots/x"}) {
        write(QString::fromUtf8(name));
        expectUntouched();
        ASSERT_TRUE(QFile::remove(repository + u'/' + QString::fromUtf8(name)));
    }
    // A file that isn't one of restic's keys belongs to the user.
    write(QStringLiteral("keys/my key"));
    expectUntouched();
}

TEST_F(CutMaking, withVersionsAndNoKeyIsNotTouchedEither)
{
    ASSERT_TRUE(QDir(repository + QLatin1String("/keys")).removeRecursively());
    ASSERT_TRUE(QDir(repository).mkdir(QStringLiteral("keys")));
    write(QLatin1String("snapshots/") + QString(64, u'a'));
    expectUntouched();
}

TEST_F(CutMaking, withFoldersThatCannotBeReadIsNotTouched)
{
    ASSERT_TRUE(becomeOrdinaryUser());
    const QByteArray data = QFile::encodeName(repository + QLatin1String("/data"));
    const QStringList before = files();
    ASSERT_EQ(::chmod(data.constData(), 0), 0);
    EXPECT_FALSE(restic.prepare().has_value());
    ASSERT_EQ(::chmod(data.constData(), 0700), 0);
    EXPECT_EQ(files(), before);
}

TEST_F(ResticLocalTest, anotherKeyIsReportedAsSuch)
{
    ASSERT_TRUE(restic.prepare().has_value());
    restic.password = QStringLiteral("another");
    const ResticError wrong{QStringLiteral("Chiave di cifratura errata per questa destinazione")};
    EXPECT_EQ(restic.prepare().error(), wrong);
    EXPECT_EQ(restic.snapshots().error(), wrong);
    EXPECT_EQ(restic.repositorySize(), std::nullopt);
}

TEST_F(ResticLocalTest, aRepositoryOfAnUnknownKindIsReportedInResticsWords)
{
    restic.repositoryOverride = QStringLiteral("nosuchkind:somewhere");
    const auto prepared = restic.prepare();
    ASSERT_FALSE(prepared.has_value());
    EXPECT_TRUE(prepared.error().message.contains(QLatin1String("add a `local:` prefix")))
        << prepared.error().message.toStdString();
}

TEST_F(ResticLocalTest, everyOddNameIsListedAndFound)
{
    const Snap snap = SampleBackup::backUp(restic);
    EXPECT_EQ(snap.host, QStringLiteral("macchina"));
    EXPECT_EQ(snap.paths, QStringList({SampleBackup::sources()}));
    EXPECT_GT(restic.repositorySize().value_or(0), 0);

    const auto nodes = restic.list(snap.id, SampleBackup::sources()).value();
    QSet<QString> names;
    for (const Node &node : nodes) {
        names.insert(node.name);
        EXPECT_EQ(node.path, QString(SampleBackup::sources() + u'/' + node.name));
    }
    QSet<QString> expected{QStringLiteral("folder [x]")};
    for (const QByteArray &name : SampleBackup::oddNames()) {
        expected.insert(SampleBackup::shown(name));
    }
    EXPECT_EQ(names, expected);
    EXPECT_TRUE(nodes.first().isDir);

    const auto inner = restic.list(snap.shortID, nodes.first().path).value();
    ASSERT_EQ(inner.size(), 1);
    EXPECT_EQ(inner.first().name, QStringLiteral("inner"));

    const auto found = [&](const QString &term) {
        QStringList list;
        const auto matches = restic.find(snap.id, term).value();
        for (const Node &node : matches) {
            list.append(node.name);
        }
        return list;
    };
    EXPECT_EQ(found(QStringLiteral("A*B")), QStringList({QStringLiteral("a*b.txt")}));
    EXPECT_EQ(found(QStringLiteral("a?b")), QStringList({QStringLiteral("a?b.txt")}));
    EXPECT_EQ(found(QStringLiteral("R[1]")), QStringList({QStringLiteral("br[1].txt")}));
    EXPECT_EQ(found(QStringLiteral("ck\\sl")), QStringList({QStringLiteral("back\\slash")}));
    EXPECT_EQ(found(QStringLiteral("e\nf")), QStringList({QStringLiteral("line\nfeed")}));
    EXPECT_EQ(found(QStringLiteral("-hyp")), QStringList({QStringLiteral("-hyphen")}));
    EXPECT_EQ(found(QStringLiteral("nowhere to be found")), QStringList());
}

TEST_F(ResticLocalTest, filesComeBackIntoATargetAlone)
{
    const Snap snap = SampleBackup::backUp(restic);
    const auto nodes = restic.list(snap.id, SampleBackup::sources()).value();
    // A wildcard, and a byte that isn't UTF-8; each has a neighbour that a pattern would match.
    for (const QByteArray &name : {QByteArray("a?b.txt"), QByteArray("caf\xe9.txt")}) {
        const QString target =
            QDir::homePath() + QLatin1String("/target ") + QString::fromLatin1(name.toHex());
        const Node node = SampleBackup::nodeOf(nodes, name);
        const ProcessResult restored = restic.run(restic.restoreArguments(snap.id, node, target));
        EXPECT_EQ(restored.status, 0) << qPrintable(restored.standardError);
        EXPECT_EQ(SampleBackup::content(target, name), name);
        for (const char *neighbour : {"aXb.txt", "a*b.txt", "a.b.txt", "cafe.txt", "plain.txt"}) {
            EXPECT_EQ(SampleBackup::content(target, neighbour), std::nullopt) << neighbour;
        }
    }
}

TEST_F(ResticLocalTest, filesAndFoldersComeBackWhereTheyWere)
{
    const Snap snap = SampleBackup::backUp(restic);
    const auto nodes = restic.list(snap.id, SampleBackup::sources()).value();
    const QByteArray name("a?b.txt");
    ASSERT_TRUE(QDir(SampleBackup::sources()).remove(QString::fromUtf8(name)));
    ASSERT_TRUE(QDir(SampleBackup::sources() + QLatin1String("/folder [x]")).removeRecursively());
    SampleBackup::write(SampleBackup::sources() + u'/', "new.txt");
    for (const QByteArray &item : {name, QByteArray("folder [x]")}) {
        const ProcessResult restored = restic.run(
            restic.restoreArguments(snap.id, SampleBackup::nodeOf(nodes, item), std::nullopt));
        EXPECT_EQ(restored.status, 0) << qPrintable(restored.standardError);
    }
    EXPECT_EQ(SampleBackup::content(SampleBackup::sources(), name), name);
    EXPECT_EQ(SampleBackup::content(SampleBackup::sources() + QLatin1String("/folder [x]/inner"),
                                    "deep*.txt"),
              QByteArray("deep*.txt"));
    EXPECT_EQ(SampleBackup::content(SampleBackup::sources(), "new.txt"), QByteArray("new.txt"));
}

TEST_F(ResticLocalTest, aFolderComesIntoATargetUnderItsName)
{
    const Snap snap = SampleBackup::backUp(restic);
    const auto nodes = restic.list(snap.id, SampleBackup::sources()).value();
    const QString target = QDir::homePath() + QLatin1String("/target");
    const Node folder = SampleBackup::nodeOf(nodes, "folder [x]");
    const ProcessResult restored =
        restic.run(restic.restoreArguments(snap.id, folder, target + u'/'));
    EXPECT_EQ(restored.status, 0) << qPrintable(restored.standardError);
    EXPECT_EQ(SampleBackup::content(target + QLatin1String("/folder [x]/inner"), "deep*.txt"),
              QByteArray("deep*.txt"));
}

} // namespace

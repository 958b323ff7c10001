#include "tests/support/ScriptedTools.h"
#include "tools/Restic.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

/// A restic that answers as the parameter's version did when tests/fixtures/record called it.
class ResticRecordings : public testing::TestWithParam<const char *>
{
protected:
    void play(const char *name)
    {
        answer = {read(name, ".status").trimmed().toInt(), QString::fromUtf8(read(name, ".out")),
                  QString::fromUtf8(read(name, ".err"))};
        tools.answer({}, answer);
    }
    static QByteArray read(const char *name, const char *kind)
    {
        QFile file(QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/fixtures/") +
                   QString::fromUtf8(GetParam()) + u'/' + QString::fromUtf8(name) +
                   QString::fromUtf8(kind));
        const bool isOpen = file.open(QIODevice::ReadOnly);
        // The script leaves out files that would be empty, but there is always a status.
        EXPECT_TRUE(isOpen || qstrcmp(kind, ".status") != 0) << qPrintable(file.fileName());
        return isOpen ? file.readAll() : QByteArray();
    }
    QString describedAs(const char *name)
    {
        play(name);
        EXPECT_NE(answer.status, 0) << name;
        return Restic::describe(answer).message;
    }

    ProcessResult answer;
    ScriptedTools tools;
    Restic restic;
    const QString home = QStringLiteral("/tmp/vellomar-recording/home");
};

TEST_P(ResticRecordings, snapshots)
{
    play("snapshots");
    const auto snaps = restic.snapshots().value();
    ASSERT_EQ(snaps.size(), 2);
    EXPECT_GE(snaps.at(0).date, snaps.at(1).date);
    for (const Snap &snap : snaps) {
        EXPECT_EQ(snap.id.size(), 64);
        EXPECT_EQ(snap.shortID, snap.id.left(8));
        EXPECT_EQ(snap.host, QStringLiteral("macchina"));
        EXPECT_EQ(snap.paths, QStringList({home}));
    }
    play("snapshots-of-none");
    EXPECT_EQ(restic.snapshots().value(), QList<Snap>());
}

TEST_P(ResticRecordings, theNodesOfAFolder)
{
    play("ls");
    const auto nodes = restic.list(QStringLiteral("x"), home + QLatin1String("/Documenti")).value();
    QStringList names;
    for (const Node &node : nodes) {
        EXPECT_EQ(node.path, home + QLatin1String("/Documenti/") + node.name);
        EXPECT_EQ(node.isDir, node.name == QLatin1String("Foto"));
        EXPECT_TRUE(node.modified.has_value());
        names.append(node.name);
    }
    ASSERT_EQ(names.size(), 9);
    EXPECT_EQ(names.first(), QStringLiteral("Foto"));
    EXPECT_LT(names.indexOf(QLatin1String("Capitolo 1.txt")),
              names.indexOf(QLatin1String("Capitolo 2.txt")));
    EXPECT_LT(names.indexOf(QLatin1String("Capitolo 2.txt")),
              names.indexOf(QLatin1String("capitolo 10.txt")));
    EXPECT_TRUE(names.contains(QLatin1String("riga\nnuova.txt")));
    EXPECT_TRUE(names.contains(QLatin1String("quo\"te'.txt")));
    EXPECT_TRUE(names.contains(QString::fromUtf8("caf\xef\xbf\xbd.txt")));
    const Node &first = nodes.at(names.indexOf(QLatin1String("Capitolo 1.txt")));
    EXPECT_EQ(first.size, 3);
    EXPECT_EQ(first.modified,
              QDateTime::fromString(QStringLiteral("2024-03-01T09:00:00Z"), Qt::ISODate));
}

TEST_P(ResticRecordings, matches)
{
    play("find");
    QStringList names;
    const auto found = restic.find(QStringLiteral("x"), QStringLiteral("CAPITOLO")).value();
    for (const Node &node : found) {
        names.append(node.name);
    }
    EXPECT_EQ(names,
              QStringList({QStringLiteral("Capitolo 1.txt"), QStringLiteral("Capitolo 2.txt"),
                           QStringLiteral("capitolo 10.txt")}));
    play("find-star");
    const auto starred = restic.find(QStringLiteral("x"), QStringLiteral("a*b")).value();
    ASSERT_EQ(starred.size(), 1);
    EXPECT_EQ(starred.first().name, QStringLiteral("a*b.txt"));
    play("find-nothing");
    EXPECT_EQ(restic.find(QStringLiteral("x"), QStringLiteral("nessuno")).value(), QList<Node>());
}

TEST_P(ResticRecordings, theSizeOfTheRepository)
{
    play("stats");
    EXPECT_GT(restic.repositorySize().value_or(0), 0);
}

TEST_P(ResticRecordings, failures)
{
    EXPECT_EQ(describedAs("wrong-key"),
              QStringLiteral("Chiave di cifratura errata per questa destinazione"));
    EXPECT_EQ(describedAs("wrong-key-plain"),
              QStringLiteral("Chiave di cifratura errata per questa destinazione"));
    EXPECT_EQ(describedAs("locked"),
              QStringLiteral("Destinazione occupata da un'altra operazione"));
    EXPECT_EQ(describedAs("locked-plain"),
              QStringLiteral("Destinazione occupata da un'altra operazione"));
    EXPECT_EQ(describedAs("snapshots-of-none"),
              QStringLiteral("Nessun backup presente in questa destinazione"));
    EXPECT_EQ(describedAs("cat-of-none"),
              QStringLiteral("Nessun backup presente in questa destinazione"));
    EXPECT_EQ(describedAs("ls-of-absent-snapshot"),
              QStringLiteral("no matching ID found for prefix \"ffffffff\""));
    EXPECT_EQ(describedAs("check-of-damaged"), QStringLiteral("Fatal: repository contains errors"));
    EXPECT_EQ(describedAs("backup"),
              QStringLiteral("Warning: at least one source file could not be read"));
}

TEST_P(ResticRecordings, anUnreadableFileIsExitCode3)
{
    play("backup");
    EXPECT_EQ(answer.status, ResticExit::someFilesUnreadable);
}

INSTANTIATE_TEST_SUITE_P(Versions, ResticRecordings, testing::Values("restic-0.18", "restic-0.19"),
                         [](const auto &version) {
                             return std::string(version.param) == "restic-0.18" ? "v018" : "v019";
                         });

} // namespace

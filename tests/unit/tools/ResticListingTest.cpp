#include "tests/support/ScriptedTools.h"
#include "tools/Restic.h"

#include <gtest/gtest.h>

namespace {

class ResticListingTest : public testing::Test
{
protected:
    ScriptedTools tools;
    Restic restic;

    void give(const char *standardOutput, int status = 0)
    {
        tools.answer({}, {status, QString::fromUtf8(standardOutput), QStringLiteral("why")});
    }
    /// What list() gives for nodes with these names; a leading slash makes a folder.
    QStringList listed(const QStringList &names)
    {
        QString lines;
        for (QString name : names) {
            const bool isDir = name.startsWith(u'/');
            name.remove(u'/');
            lines +=
                QStringLiteral(R"({"message_type":"node","name":"%1","type":"%2","path":"/d/%1"})"
                               "\n")
                    .arg(name, isDir ? QLatin1String("dir") : QLatin1String("file"));
        }
        tools.answer({}, {0, lines, QString()});
        return namesOf(restic.list(QStringLiteral("id"), QStringLiteral("/d")).value());
    }
    static QStringList namesOf(const QList<Node> &nodes)
    {
        QStringList names;
        for (const Node &node : nodes) {
            names.append(node.name);
        }
        return names;
    }
    QStringList snapshotIDs()
    {
        QStringList ids;
        const auto found = restic.snapshots().value();
        for (const Snap &snap : found) {
            ids.append(snap.id);
        }
        return ids;
    }
};

const ResticError why{QStringLiteral("why")};

TEST_F(ResticListingTest, snapshotsAreReadWhole)
{
    give(
        R"([{"id":"0123456789abcdef","short_id":"01234567","time":"2024-03-01T10:00:00.123456789+01:00",
        "paths":["/a","/b c"],"hostname":"pc","tree":"x","tags":["y"]}])");
    const auto snaps = restic.snapshots();
    EXPECT_EQ(tools.calls.last().arguments,
              QStringList({QStringLiteral("snapshots"), QStringLiteral("--json")}));
    ASSERT_TRUE(snaps.has_value());
    ASSERT_EQ(snaps->size(), 1);
    const Snap &snap = snaps->first();
    EXPECT_EQ(snap.id, QStringLiteral("0123456789abcdef"));
    EXPECT_EQ(snap.shortID, QStringLiteral("01234567"));
    EXPECT_EQ(snap.date,
              QDateTime::fromString(QStringLiteral("2024-03-01T09:00:00Z"), Qt::ISODate));
    EXPECT_EQ(snap.paths, QStringList({QStringLiteral("/a"), QStringLiteral("/b c")}));
    EXPECT_EQ(snap.host, QStringLiteral("pc"));
}

TEST_F(ResticListingTest, whatASnapshotLacksHasItsDefault)
{
    give(R"([{"id":"0123456789abcdef","time":"2024-03-01T10:00:00Z"},
             {"id":"abc","short_id":5,"hostname":null,"paths":"/x","time":"2024-03-01T09:00:00Z"},
             {"id":"d","paths":["/x",5],"time":"2024-03-01T08:00:00Z"}])");
    const auto snaps = restic.snapshots().value();
    ASSERT_EQ(snaps.size(), 3);
    EXPECT_EQ(snaps.at(0).shortID, QStringLiteral("01234567"));
    EXPECT_EQ(snaps.at(1).shortID, QStringLiteral("abc"));
    for (const Snap &snap : snaps) {
        EXPECT_EQ(snap.host, QString());
        EXPECT_EQ(snap.paths, QStringList());
    }
}

TEST_F(ResticListingTest, snapshotsThatCannotBeReadAreDropped)
{
    give(R"([{"id":"a"},{"time":"2024-03-01T10:00:00Z"},{"id":5,"time":"2024-03-01T10:00:00Z"},
             {"id":"b","time":5},{"id":"c","time":"yesterday"},{},
             {"id":"good","time":"2024-03-01T10:00:00Z"}])");
    EXPECT_EQ(snapshotIDs(), QStringList({QStringLiteral("good")}));
}

TEST_F(ResticListingTest, snapshotsComeNewestFirstAndEqualOnesInTheirOrder)
{
    give(
        R"([{"id":"old","time":"2024-01-01T00:00:00Z"},{"id":"tie1","time":"2024-03-01T10:00:00.9Z"},
             {"id":"new","time":"2024-03-01T10:00:00-05:00"},{"id":"tie2","time":"2024-03-01T11:00:00.1+01:00"}])");
    EXPECT_EQ(snapshotIDs(), QStringList({QStringLiteral("new"), QStringLiteral("tie1"),
                                          QStringLiteral("tie2"), QStringLiteral("old")}));
}

TEST_F(ResticListingTest, noRepositoryMeansNoSnapshots)
{
    give("", 10);
    EXPECT_EQ(restic.snapshots().value(), QList<Snap>());
    give("[]");
    EXPECT_EQ(restic.snapshots().value(), QList<Snap>());
}

TEST_F(ResticListingTest, aFailureOfSnapshotsIsReported)
{
    give("[]", 1);
    EXPECT_EQ(restic.snapshots().error(), why);
    give("[]", 12);
    EXPECT_EQ(restic.snapshots().error(), Restic::describe({12, QString(), QString()}));
}

TEST_F(ResticListingTest, damagedListsAreAFailureWithWhatIsKnown)
{
    for (const char *text : {"", "{}", "[", R"([{"id":"a"])", "[1]", R"([{}, "x"])", "null", "x"}) {
        give(text);
        EXPECT_EQ(restic.snapshots().error(), why) << text;
        EXPECT_EQ(restic.find(QStringLiteral("i"), QStringLiteral("t")).error(), why) << text;
    }
    tools.answer({}, {0, QStringLiteral("["), QString()});
    EXPECT_EQ(restic.snapshots().error().message, QStringLiteral("Errore sconosciuto (codice 0)"));
}

TEST_F(ResticListingTest, theRepositorysSizeIsItsTotal)
{
    give(R"({"total_size":9007199254740993,"total_blob_count":5})");
    EXPECT_EQ(restic.repositorySize(), 9007199254740993);
    EXPECT_EQ(tools.calls.last().arguments,
              QStringList({QStringLiteral("stats"), QStringLiteral("--json"),
                           QStringLiteral("--mode"), QStringLiteral("raw-data")}));
    give("{}");
    EXPECT_EQ(restic.repositorySize(), 0);
    for (const char *text : {"", "[]", "{", "5"}) {
        give(text);
        EXPECT_EQ(restic.repositorySize(), std::nullopt) << text;
    }
    give(R"({"total_size":5})", 1);
    EXPECT_EQ(restic.repositorySize(), std::nullopt);
}

TEST_F(ResticListingTest, aNodeIsReadWhole)
{
    give(
        "{\"struct_type\":\"snapshot\",\"message_type\":\"snapshot\"}\n\n"
        R"({"message_type":"node","name":"d","type":"dir","path":"/a/d","size":7})"
        "\n"
        R"({"message_type":"node","name":"f","type":"file","path":"/a/f","size":12.9,"mtime":"2024-03-01T10:00:00.5+01:00"})"
        "\n"
        R"({"message_type":"node","name":"l","type":"symlink","path":"/a/l","size":"x","mtime":"bad"})");
    const auto nodes = restic.list(QStringLiteral("id"), QStringLiteral("/a")).value();
    EXPECT_EQ(tools.calls.last().arguments,
              QStringList({QStringLiteral("ls"), QStringLiteral("--json"), QStringLiteral("id"),
                           QStringLiteral("/a")}));
    const QDateTime date =
        QDateTime::fromString(QStringLiteral("2024-03-01T09:00:00Z"), Qt::ISODate);
    ASSERT_EQ(nodes.size(), 3);
    EXPECT_EQ(nodes.at(0), (Node{QStringLiteral("/a/d"), QStringLiteral("d"), true, 7, {}}));
    EXPECT_EQ(nodes.at(1), (Node{QStringLiteral("/a/f"), QStringLiteral("f"), false, 12, date}));
    EXPECT_EQ(nodes.at(2), (Node{QStringLiteral("/a/l"), QStringLiteral("l"), false, 0, {}}));
}

TEST_F(ResticListingTest, linesThatAreNoNodesAreDropped)
{
    give(R"({"message_type":"node","name":"a","type":"dir","path":"/a"})"
         "\n" // the folder itself
         R"({"message_type":"other","name":"b","path":"/a/b"})"
         "\n"
         R"({"name":"c","path":"/a/c"})"
         "\n"
         R"({"message_type":"node","path":"/a/d"})"
         "\n"
         R"({"message_type":"node","name":"e"})"
         "\n"
         R"({"message_type":"node","name":5,"path":"/a/f"})"
         "\nnot JSON\n[1]\n5\n{\n"
         R"({"message_type":"node","name":"good","path":"/a/good"})");
    const auto nodes = restic.list(QStringLiteral("id"), QStringLiteral("/a")).value();
    EXPECT_EQ(namesOf(nodes), QStringList({QStringLiteral("good")}));
}

TEST_F(ResticListingTest, aFailureOfListIsReported)
{
    give(R"({"message_type":"node","name":"a","path":"/a"})", 1);
    EXPECT_EQ(restic.list(QStringLiteral("id"), QStringLiteral("/")).error(), why);
    give("");
    EXPECT_EQ(restic.list(QStringLiteral("id"), QStringLiteral("/")).value(), QList<Node>());
}

TEST_F(ResticListingTest, foldersComeFirstAndNumbersCountByValue)
{
    EXPECT_EQ(listed({QStringLiteral("file 10"), QStringLiteral("/z"), QStringLiteral("file 9"),
                      QStringLiteral("/folder 100"), QStringLiteral("file 1"),
                      QStringLiteral("/folder 20"), QStringLiteral("file 010b")}),
              QStringList({QStringLiteral("folder 20"), QStringLiteral("folder 100"),
                           QStringLiteral("z"), QStringLiteral("file 1"), QStringLiteral("file 9"),
                           QStringLiteral("file 10"), QStringLiteral("file 010b")}));
}

TEST_F(ResticListingTest, caseAndAccentsDoNotPartNames)
{
    const QString acute = QString::fromUtf8("\xc3\xa9"
                                            "poca");
    EXPECT_EQ(
        listed({QStringLiteral("Zeta"), QStringLiteral("fine"), acute, QStringLiteral("Alfa"),
                QStringLiteral("epico"), QStringLiteral("beta"), QStringLiteral("Erba")}),
        QStringList({QStringLiteral("Alfa"), QStringLiteral("beta"), QStringLiteral("epico"), acute,
                     QStringLiteral("Erba"), QStringLiteral("fine"), QStringLiteral("Zeta")}));
}

TEST_F(ResticListingTest, equalNamesKeepTheirOrder)
{
    give(
        R"([{"matches":[{"path":"/2/x"},{"path":"/1/x"},{"path":"/3/a"}]},{"matches":[{"path":"/0/x"}]}])");
    QStringList paths;
    const auto found = restic.find(QStringLiteral("i"), QStringLiteral("x")).value();
    for (const Node &node : found) {
        paths.append(node.path);
    }
    EXPECT_EQ(paths, QStringList({QStringLiteral("/3/a"), QStringLiteral("/2/x"),
                                  QStringLiteral("/1/x"), QStringLiteral("/0/x")}));
}

TEST_F(ResticListingTest, matchesAreReadAndFoldersNotPutFirst)
{
    give(R"([{"hits":1},{"matches":5},{"matches":[5]},{"matches":[{"path":"/x"},"y"]},
             {"matches":[{"path":"/d/z","type":"dir"},{"name":"n"},{"path":5},
             {"path":"/d/a b","type":"file","size":3,"mtime":"2024-03-01T10:00:00Z","name":"other"}]}])");
    const auto nodes = restic.find(QStringLiteral("i"), QStringLiteral("t")).value();
    ASSERT_EQ(nodes.size(), 2);
    EXPECT_EQ(nodes.at(0),
              (Node{QStringLiteral("/d/a b"), QStringLiteral("a b"), false, 3,
                    QDateTime::fromString(QStringLiteral("2024-03-01T10:00:00Z"), Qt::ISODate)}));
    EXPECT_EQ(nodes.at(1), (Node{QStringLiteral("/d/z"), QStringLiteral("z"), true, 0, {}}));
}

TEST_F(ResticListingTest, findSearchesForTheTermAsItStands)
{
    give("[]", 1);
    EXPECT_EQ(restic.find(QStringLiteral("id"), QStringLiteral("a*b")).error(), why);
    EXPECT_EQ(tools.calls.last().arguments,
              QStringList({QStringLiteral("find"), QStringLiteral("--json"), QStringLiteral("-i"),
                           QStringLiteral("--snapshot"), QStringLiteral("id"),
                           QStringLiteral("*a\\*b*")}));
    give("[]");
    EXPECT_EQ(restic.find(QStringLiteral("id"), QString()).value(), QList<Node>());
    EXPECT_EQ(tools.calls.last().arguments.last(), QStringLiteral("**"));
}

} // namespace

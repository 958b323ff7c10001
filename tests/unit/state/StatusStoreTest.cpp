#include "state/StatusStore.h"

#include "state/Paths.h"
#include "tests/support/Files.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace {

QString history()
{
    return Paths::supportFile(QStringLiteral("history.json"));
}

QString log()
{
    return Paths::supportFile(QStringLiteral("backup.log"));
}

// A record with a minute and an id of its own.
RunRecord record(DestinationID destination, Outcome outcome, const char *message = "stesso testo")
{
    static int minutes = 0;
    RunRecord made;
    made.id = QUuid::createUuid();
    made.date = QDateTime(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC).addSecs(qint64{60} * minutes++);
    made.destination = destination;
    made.outcome = outcome;
    made.message = QString::fromUtf8(message);
    return made;
}

RunStatus status()
{
    RunStatus made;
    made.pid = 7;
    made.startedAt = QDateTime(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC);
    made.phase = QStringLiteral("Copia");
    return made;
}

qsizetype logLines()
{
    return readFile(log()).count('\n');
}

} // namespace

TEST(StatusStore, aStatusIsWrittenReplacedAndCleared)
{
    EXPECT_FALSE(StatusStore::loadStatus());
    StatusStore::clear();
    StatusStore::write(status());
    EXPECT_EQ(StatusStore::loadStatus(), status());
    RunStatus later = status();
    later.currentFile = QStringLiteral("/a");
    StatusStore::write(later);
    EXPECT_EQ(StatusStore::loadStatus(), later);
    EXPECT_TRUE(readFile(Paths::supportFile(QStringLiteral("status.json")))
                    .startsWith("{\n    \"bytesDone\": 0,\n    \"currentFile\": \"/a\",\n"));
    StatusStore::clear();
    EXPECT_FALSE(StatusStore::loadStatus());
    EXPECT_EQ(QDir(Paths::support()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

TEST(StatusStore, aStatusThatCannotBeDecodedIsNone)
{
    QJsonObject object = status().toJSON();
    object.remove(QStringLiteral("percent"));
    for (const QByteArray &text :
         {QJsonDocument(object).toJson(), QByteArray(), QByteArray("{}"), QByteArray("[]"),
          QJsonDocument(status().toJSON()).toJson().chopped(5)}) {
        writeSupportFile("status.json", text);
        EXPECT_FALSE(StatusStore::loadStatus()) << text.toStdString();
    }
}

TEST(StatusStore, theFirstRecordMakesHistoryAndLog)
{
    const RunRecord only = record(DestinationID::Local, Outcome::Ok);
    StatusStore::append(only);
    EXPECT_EQ(StatusStore::loadHistory(), QList{only});
    EXPECT_EQ(readFile(log()), "2026-03-01T10:00:00Z [local] ok: stesso testo\n");
}

TEST(StatusStore, theNewestRecordStandsFirstInTheHistoryAndLastInTheLog)
{
    const RunRecord one = record(DestinationID::Local, Outcome::Failed, "uno");
    const RunRecord two = record(DestinationID::Server, Outcome::Cancelled, "due è");
    StatusStore::append(one);
    StatusStore::append(two);
    EXPECT_EQ(StatusStore::loadHistory(), QList({two, one}));
    EXPECT_EQ(readFile(log()), "2026-03-01T10:00:00Z [local] failed: uno\n"
                               "2026-03-01T10:01:00Z [server] cancelled: due è\n");
}

TEST(StatusStore, aLogLineIsOneLineWhateverTheMessageHolds)
{
    StatusStore::append(record(DestinationID::Drive, Outcome::Warning, "a\nb\n\nc"));
    EXPECT_EQ(readFile(log()), "2026-03-01T10:00:00Z [drive] warning: a b  c\n");
    EXPECT_EQ(StatusStore::loadHistory().first().message, QStringLiteral("a\nb\n\nc"));
}

TEST(StatusStore, theLogIsInUTCWithWholeSeconds)
{
    RunRecord abroad = record(DestinationID::Local, Outcome::Ok, "x");
    abroad.date = QDateTime(QDate(2026, 7, 1), QTime(1, 2, 3, 999), Qt::OffsetFromUTC, 7200);
    StatusStore::append(abroad);
    EXPECT_EQ(readFile(log()), "2026-06-30T23:02:03Z [local] ok: x\n");
}

TEST(StatusStore, theHistoryKeepsTheNewest300)
{
    QJsonArray list;
    QList<RunRecord> records;
    for (int i = 0; i < 300; ++i) {
        records.append(record(DestinationID::Local, Outcome::Ok));
        list.append(records.last().toJSON());
    }
    writeSupportFile("history.json", QJsonDocument(list).toJson());
    const RunRecord newest = record(DestinationID::Local, Outcome::Ok);
    StatusStore::append(newest);
    records.prepend(newest);
    records.removeLast();
    EXPECT_EQ(StatusStore::loadHistory(), records);

    // A longer one by a different program is cut too.
    list.append(record(DestinationID::Local, Outcome::Ok).toJSON());
    list.append(record(DestinationID::Local, Outcome::Ok).toJSON());
    writeSupportFile("history.json", QJsonDocument(list).toJson());
    StatusStore::append(newest);
    EXPECT_EQ(StatusStore::loadHistory(), records);
}

TEST(StatusStore, aRepeatedSkipTakesTheOlderOnesPlace)
{
    const RunRecord one = record(DestinationID::Local, Outcome::Skipped);
    const RunRecord two = record(DestinationID::Local, Outcome::Skipped);
    StatusStore::append(one);
    StatusStore::append(two);
    EXPECT_EQ(StatusStore::loadHistory(), QList{two});
    EXPECT_EQ(logLines(), 2);
}

TEST(StatusStore, aSkipAfterAnotherOutcomeStandsByItself)
{
    for (const Outcome between :
         {Outcome::Ok, Outcome::Warning, Outcome::Failed, Outcome::Cancelled}) {
        QFile::remove(history());
        const QList records = {record(DestinationID::Local, Outcome::Skipped),
                               record(DestinationID::Local, between),
                               record(DestinationID::Local, Outcome::Skipped)};
        for (const RunRecord &each : records) {
            StatusStore::append(each);
        }
        EXPECT_EQ(StatusStore::loadHistory(), QList({records[2], records[1], records[0]}));
    }
}

TEST(StatusStore, skipsAreComparedWithinOneDestination)
{
    const RunRecord one = record(DestinationID::Local, Outcome::Skipped);
    const RunRecord two = record(DestinationID::Drive, Outcome::Skipped);
    const RunRecord three = record(DestinationID::Local, Outcome::Skipped);
    StatusStore::append(one);
    StatusStore::append(two);
    EXPECT_EQ(StatusStore::loadHistory(), QList({two, one}));
    StatusStore::append(three);
    EXPECT_EQ(StatusStore::loadHistory(), QList({three, two}));
    EXPECT_EQ(logLines(), 3);
}

TEST(StatusStore, skipsWithDifferentMessagesBothStay)
{
    const RunRecord one = record(DestinationID::Local, Outcome::Skipped, "a");
    const RunRecord two = record(DestinationID::Local, Outcome::Skipped, "b");
    const RunRecord three = record(DestinationID::Local, Outcome::Skipped, "a");
    for (const RunRecord &each : {one, two, three}) {
        StatusStore::append(each);
    }
    EXPECT_EQ(StatusStore::loadHistory(), QList({three, two, one}));
}

TEST(StatusStore, onlySkipsCollapse)
{
    for (const Outcome outcome :
         {Outcome::Ok, Outcome::Warning, Outcome::Failed, Outcome::Cancelled}) {
        QFile::remove(history());
        const RunRecord one = record(DestinationID::Local, outcome);
        const RunRecord two = record(DestinationID::Local, outcome);
        StatusStore::append(one);
        StatusStore::append(two);
        EXPECT_EQ(StatusStore::loadHistory(), QList({two, one}));
    }
}

TEST(StatusStore, aDamagedHistoryIsEmptyAndReplacedByTheNextRecord)
{
    const QByteArray good =
        QJsonDocument(QJsonArray{record(DestinationID::Local, Outcome::Ok).toJSON()}).toJson();
    QByteArray unknown = good;
    unknown.replace("\"outcome\": \"ok\"", "\"outcome\": \"unknown\"");
    ASSERT_NE(unknown, good);
    QJsonArray oneBad = QJsonDocument::fromJson(good).array();
    oneBad.append(7);
    for (const QByteArray &text : {unknown, QByteArray(), QByteArray("{}"), good.chopped(4),
                                   QByteArray("\xff\xfe"), QJsonDocument(oneBad).toJson()}) {
        writeSupportFile("history.json", text);
        EXPECT_EQ(StatusStore::loadHistory(), QList<RunRecord>()) << text.toStdString();
        const RunRecord next = record(DestinationID::Local, Outcome::Ok);
        StatusStore::append(next);
        EXPECT_EQ(StatusStore::loadHistory(), QList{next}) << text.toStdString();
    }
}

TEST(StatusStore, aHistoryThatCannotBeWrittenLeavesTheLogGoing)
{
    ASSERT_TRUE(QDir().mkpath(history() + QLatin1String("/inside")));
    StatusStore::append(record(DestinationID::Local, Outcome::Ok));
    EXPECT_EQ(StatusStore::loadHistory(), QList<RunRecord>());
    EXPECT_EQ(logLines(), 1);
}

TEST(StatusStore, aLogThatCannotBeWrittenLeavesTheHistoryGoing)
{
    ASSERT_TRUE(QDir().mkpath(log()));
    const RunRecord only = record(DestinationID::Local, Outcome::Ok);
    StatusStore::append(only);
    EXPECT_EQ(StatusStore::loadHistory(), QList{only});
}

TEST(StatusStore, theEnginesStateComesBackAndADamagedOneIsEmpty)
{
    EXPECT_EQ(StatusStore::loadState(), EngineState());
    EngineState state;
    state.lastCheck[QStringLiteral("local")] = QDateTime(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC);
    StatusStore::save(state);
    EXPECT_EQ(StatusStore::loadState(), state);
    EXPECT_EQ(readFile(Paths::supportFile(QStringLiteral("state.json"))), R"({
    "lastCheck": {
        "local": "2026-03-01T10:00:00Z"
    },
    "lastPrune": {
    }
}
)");
    for (const char *text : {"", "{}", "[]", "{\"lastCheck\": 7}", "{\"lastCheck\": "}) {
        writeSupportFile("state.json", text);
        EXPECT_EQ(StatusStore::loadState(), EngineState()) << text;
    }
}

TEST(StatusStore, removesWhatAKilledWriterLeft)
{
    StatusStore::write(status());
    for (const char *name : {"status", "history", "state"}) {
        const QByteArray left = QByteArray(name) + ".json.abcdef.vellomar-partial";
        writeSupportFile(left.constData(), "{");
    }
    StatusStore::removeAbandoned();
    EXPECT_EQ(QDir(Paths::support()).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("status.json")});
}

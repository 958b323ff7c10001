#include "tests/support/EngineFixture.h"

#include "state/StatusStore.h"

#include <QDir>

namespace {

using namespace std::chrono_literals;

class WaysOut : public EngineFixture
{
protected:
    WaysOut()
    {
        tools.progress = {QStringLiteral(
            R"({"message_type":"summary","files_new":5,"files_changed":6,"data_added":99,)"
            R"("data_added_packed":7})")};
        // Every call of a tool takes half a minute, during which the clock is corrected.
        tools.before = [this](const ScriptedTools::Call &) {
            clock.advance(30s);
            clock.set(clock.moment().addSecs(-3600));
        };
    }

    /// Runs one cycle and checks all of its record but the id.
    void expectEnd(Outcome outcome, const QString &message, std::chrono::seconds duration)
    {
        const QDateTime start = clock.moment();
        EXPECT_EQ(run(), outcome == Outcome::Failed ? 1 : 0);
        const RunRecord record = onlyRecord();
        EXPECT_EQ(record.outcome, outcome);
        EXPECT_EQ(record.message, message);
        EXPECT_EQ(record.date, start);
        EXPECT_EQ(record.duration, std::chrono::duration<double>(duration).count());
        const bool counts = outcome == Outcome::Ok || outcome == Outcome::Warning;
        EXPECT_EQ(record.filesNew, counts ? 5 : 0);
        EXPECT_EQ(record.filesChanged, counts ? 6 : 0);
        EXPECT_EQ(record.dataAdded, counts ? 7 : 0);
        EXPECT_FALSE(record.kind);
        EXPECT_FALSE(content("status.json"));
    }
};

TEST_F(WaysOut, completed)
{
    expectEnd(Outcome::Ok, QStringLiteral("Completato"), 120s);
}

TEST_F(WaysOut, completedWithReportedErrorsIsStillCompleted)
{
    tools.progress.append(QStringLiteral(R"({"message_type":"error"})"));
    tools.backup = {0, {}, QStringLiteral(R"({"message_type":"error"})")};
    expectEnd(Outcome::Ok, QStringLiteral("Completato"), 120s);
}

TEST_F(WaysOut, someFilesUnreadableWithNoErrorReported)
{
    tools.backup = ScriptedTools::ended(3);
    expectEnd(Outcome::Warning, QStringLiteral("Completato, ma 1 elementi non erano leggibili"),
              120s);
}

TEST_F(WaysOut, unreadableFilesAreCountedWhereverTheyAreReported)
{
    const QString error = QStringLiteral(
        R"({"message_type":"error","error":{"message":"no"},"during":"archival","item":"/a"})");
    tools.progress += {error, error};
    tools.backup = ScriptedTools::ended(
        3, error + QLatin1String("\n\nplain words\n[]\n{\"message_type\":\"exit_error\"}\n") +
               error + QLatin1String("\n{\"message_type\":5}\n") + error);
    expectEnd(Outcome::Warning, QStringLiteral("Completato, ma 5 elementi non erano leggibili"),
              120s);
}

TEST_F(WaysOut, theCountOfErrorsBeginsAnewForEachDestination)
{
    useAllDestinations();
    tools.backup = ScriptedTools::ended(3, QStringLiteral("{\"message_type\":\"error\"}\n"
                                                          "{\"message_type\":\"error\"}\n"));
    EXPECT_EQ(run(), 0);
    for (const RunRecord &record : StatusStore::loadHistory()) {
        EXPECT_EQ(record.message, QStringLiteral("Completato, ma 2 elementi non erano leggibili"));
    }
}

TEST_F(WaysOut, noSummaryGivesNoCounts)
{
    tools.progress.clear();
    EXPECT_EQ(run(), 0);
    const RunRecord record = onlyRecord();
    EXPECT_EQ(record.outcome, Outcome::Ok);
    EXPECT_EQ(record.filesNew, 0);
    EXPECT_EQ(record.filesChanged, 0);
    EXPECT_EQ(record.dataAdded, 0);
}

TEST_F(WaysOut, diskNotAttached)
{
    ASSERT_TRUE(QDir().rmdir(config.localFolder));
    expectEnd(Outcome::Skipped, QStringLiteral("Disco non collegato"), 0s);
    EXPECT_TRUE(tools.calls.isEmpty());
}

TEST_F(WaysOut, noDiskChosen)
{
    config.localFolder.clear();
    expectEnd(Outcome::Skipped, QStringLiteral("Disco non collegato"), 0s);
    EXPECT_TRUE(tools.calls.isEmpty());
}

TEST_F(WaysOut, driveNotConnected)
{
    config.localEnabled = false;
    config.driveEnabled = true;
    tools.dump.standardOutput = QStringLiteral(R"({"vellomar-server": {"type": "sftp"}})");
    // Encrypting rclone's settings and asking for its remotes.
    expectEnd(Outcome::Skipped, QStringLiteral("Google Drive non collegato"), 60s);
}

TEST_F(WaysOut, serverNotConnected)
{
    config.localEnabled = false;
    config.serverEnabled = true;
    tools.dump = ScriptedTools::ended(1, QStringLiteral("no"));
    expectEnd(Outcome::Skipped, QStringLiteral("Server non collegato"), 60s);
}

TEST_F(WaysOut, theRepositoryCannotBeOpened)
{
    tools.catConfig = ScriptedTools::ended(1, QStringLiteral("first line\nFatal: broken\n"));
    expectEnd(Outcome::Failed, QStringLiteral("Fatal: broken"), 30s);
    EXPECT_EQ(tools.commands(), QStringList{QStringLiteral("cat config")});
}

TEST_F(WaysOut, theKeyIsWrong)
{
    tools.catConfig = ScriptedTools::ended(12, QStringLiteral("Fatal: wrong password"));
    expectEnd(Outcome::Failed, QStringLiteral("Chiave di cifratura errata per questa destinazione"),
              30s);
}

TEST_F(WaysOut, theRepositoryIsLocked)
{
    tools.catConfig = ScriptedTools::ended(11, QStringLiteral("Fatal: locked"));
    expectEnd(Outcome::Failed, QStringLiteral("Destinazione occupata da un'altra operazione"), 90s);
    EXPECT_EQ(tools.commands(), (QStringList{QStringLiteral("cat config"), QStringLiteral("unlock"),
                                             QStringLiteral("cat config")}));
}

TEST_F(WaysOut, theRepositoryCannotBeCreated)
{
    tools.catConfig = ScriptedTools::ended(10);
    tools.init = ScriptedTools::ended(1, QStringLiteral("Fatal: read-only file system"));
    expectEnd(Outcome::Failed, QStringLiteral("Fatal: read-only file system"), 60s);
    EXPECT_EQ(tools.commands(),
              (QStringList{QStringLiteral("cat config"), QStringLiteral("init")}));
}

TEST_F(WaysOut, noSourceExists)
{
    ASSERT_TRUE(QDir().rmdir(config.sources.first()));
    expectEnd(Outcome::Failed, QStringLiteral("Nessuna cartella da salvare"), 60s);
    EXPECT_FALSE(content("excludes.txt"));
    EXPECT_TRUE(tools.callsOf(QStringLiteral("backup")).isEmpty());
}

TEST_F(WaysOut, noSourceChosen)
{
    config.sources.clear();
    expectEnd(Outcome::Failed, QStringLiteral("Nessuna cartella da salvare"), 60s);
    EXPECT_FALSE(content("excludes.txt"));
}

TEST_F(WaysOut, stoppedDuringTheBackup)
{
    tools.before = [this](const ScriptedTools::Call &call) {
        clock.advance(30s);
        clock.set(clock.moment().addDays(-2));
        if (call.command() == QLatin1String("backup")) {
            handle->terminate();
        }
    };
    expectEnd(Outcome::Cancelled, QStringLiteral("Interrotto"), 90s);
}

TEST_F(WaysOut, theBackupFails)
{
    tools.backup = ScriptedTools::ended(
        1, QStringLiteral(R"({"message_type":"exit_error","code":1,"message":"Fatal: no room"})"));
    expectEnd(Outcome::Failed, QStringLiteral("Fatal: no room"), 90s);
}

struct Ending
{
    int status;
    const char *message;
};

class FailedEndings : public WaysOut, public testing::WithParamInterface<Ending>
{
};

TEST_P(FailedEndings, haveTheirText)
{
    tools.backup = ScriptedTools::ended(GetParam().status);
    expectEnd(Outcome::Failed, QString::fromUtf8(GetParam().message), 90s);
}

INSTANTIATE_TEST_SUITE_P(
    WaysOut, FailedEndings,
    testing::Values(Ending{1, "Errore sconosciuto (codice 1)"},
                    Ending{2, "Errore sconosciuto (codice 2)"},
                    Ending{4, "Errore sconosciuto (codice 4)"},
                    Ending{10, "Nessun backup presente in questa destinazione"},
                    Ending{11, "Destinazione occupata da un'altra operazione"},
                    Ending{12, "Chiave di cifratura errata per questa destinazione"},
                    Ending{130, "Errore sconosciuto (codice 130)"},
                    Ending{137, "Errore sconosciuto (codice 137)"},
                    Ending{-1, "Errore sconosciuto (codice -1)"}),
    [](const auto &ending) {
        return ending.param.status < 0 ? std::string("notStarted")
                                       : "code" + std::to_string(ending.param.status);
    });

} // namespace

#include "tests/support/ScriptedRestic.h"

#include <csignal>

namespace {

class SecondCycle : public ScriptedRestic
{
protected:
    SecondCycle()
    {
        script(R"(echo '{"message_type":"status","percent_done":0.5,"total_files":4}'; await)");
    }

    struct Files
    {
        QByteArray status = support("status.json");
        QByteArray history = support("history.json");
        QByteArray log = support("backup.log");

        bool operator==(const Files &) const = default;

        static QByteArray support(const char *name)
        {
            return readFile(Paths::supportFile(QString::fromUtf8(name)));
        }
    };
};

TEST_F(SecondCycle, endsAtOnceAndLeavesEverythingAlone)
{
    writeSupportFile("history.json", "[]");
    writeSupportFile("backup.log", "a line\n");
    Cycle first(installation.program());
    first.start();
    ASSERT_TRUE(isAwaiting());
    ASSERT_TRUE(eventually([] { return phase() == QLatin1String("Copia dei file"); }));
    const Files before;
    for (const bool manual : {true, false}) {
        Cycle second(installation.program());
        second.start(manual ? QStringList{QStringLiteral("--backup"), QStringLiteral("--manual")}
                            : QStringList{QStringLiteral("--backup")});
        EXPECT_EQ(second.finish(), 0);
        EXPECT_EQ(second.output(), "");
        EXPECT_EQ(second.errors(), "");
        EXPECT_EQ(Files(), before);
    }
    EXPECT_TRUE(first.isRunning());
    EXPECT_EQ(commands(), "cat\nunlock\nbackup\n");
    letGo();
    EXPECT_EQ(first.finish(), 0);
    EXPECT_EQ(recordCount(), 1);
    EXPECT_FALSE(isThere("status.json"));
}

TEST_F(SecondCycle, ofTwoStartedTogetherOneRuns)
{
    Cycle one(installation.program());
    Cycle other(installation.program());
    one.start();
    other.start();
    EXPECT_TRUE(isAwaiting());
    // The one that didn't get the lock ends while the other waits.
    EXPECT_TRUE(
        eventually([&] { return hasEnded(one.processId()) || hasEnded(other.processId()); }));
    letGo();
    EXPECT_EQ(one.finish(), 0);
    EXPECT_EQ(other.finish(), 0);
    EXPECT_EQ(recordCount(), 1);
    EXPECT_EQ(commands(), "cat\nunlock\nbackup\nforget\n");
}

TEST_F(SecondCycle, runsWellAfterOneThatWasKilled)
{
    Cycle killed(installation.program());
    killed.start();
    ASSERT_TRUE(isAwaiting());
    ASSERT_TRUE(eventually([] { return phase() == QLatin1String("Copia dei file"); }));
    killed.send(SIGKILL);
    EXPECT_EQ(killed.finish(), -1);
    EXPECT_TRUE(isThere("status.json"));
    EXPECT_FALSE(isThere("history.json"));
    letGo();
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(recordCount(), 1);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_FALSE(isThere("status.json"));
}

TEST_F(SecondCycle, thatHasNothingToDoStillClearsAStatusLeftBehind)
{
    config.localEnabled = false;
    saveSettings();
    // A dead process, a living one of another program, and no status at all.
    for (const char *status :
         {R"({"pid":2147483647,"startedAt":"2026-01-01T00:00:00Z","destination":"local",)"
          R"("phase":"Copia dei file","percent":0.5,"filesDone":1,"totalFiles":2,"bytesDone":3,)"
          R"("totalBytes":4})",
          R"({"pid":1,"startedAt":"2026-01-01T00:00:00Z","destination":"drive",)"
          R"("phase":"Connessione","percent":0,"filesDone":0,"totalFiles":0,"bytesDone":0,)"
          R"("totalBytes":0})",
          "", "{", "\xff\xfe"}) {
        writeSupportFile("status.json", status);
        EXPECT_EQ(runCycle(), 0);
        EXPECT_FALSE(isThere("status.json")) << status;
    }
    EXPECT_FALSE(isThere("history.json"));
    EXPECT_EQ(commands(), "");
}

} // namespace

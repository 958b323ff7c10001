#include "tests/support/ScriptedRestic.h"

#include "state/StatusStore.h"

#include <QFile>

#include <cerrno>

#include <sys/stat.h>

namespace {

class ToolFault : public ScriptedRestic
{
protected:
    void expectFailed(const QString &message)
    {
        EXPECT_EQ(runCycle(), 1);
        EXPECT_EQ(newestRecord().outcome, Outcome::Failed);
        EXPECT_EQ(newestRecord().message, message);
        EXPECT_FALSE(isThere("status.json"));
    }

    [[nodiscard]] QString restic() const { return installation.tool(QStringLiteral("restic")); }
};

TEST_F(ToolFault, resticMissing)
{
    ASSERT_TRUE(QFile::remove(restic()));
    expectFailed(QStringLiteral("restic non trovato"));
}

TEST_F(ToolFault, resticNotExecutable)
{
    ASSERT_EQ(::chmod(QFile::encodeName(restic()).constData(), 0600), 0);
    expectFailed(QStringLiteral("restic non trovato"));
}

TEST_F(ToolFault, resticAFolder)
{
    ASSERT_TRUE(QFile::remove(restic()));
    ASSERT_EQ(::mkdir(QFile::encodeName(restic()).constData(), 0700), 0);
    expectFailed(QStringLiteral("restic non trovato"));
}

TEST_F(ToolFault, resticNoProgram)
{
    installation.addScript(QStringLiteral("restic"), QByteArray("\x7f"
                                                                "ELF\0\0\0",
                                                                7));
    expectFailed(qt_error_string(ENOEXEC));
}

TEST_F(ToolFault, resticWithoutItsInterpreter)
{
    installation.addScript(QStringLiteral("restic"), "#!/no/such/shell\n");
    expectFailed(qt_error_string(ENOENT));
}

TEST_F(ToolFault, resticGoneBetweenItsCommands)
{
    script("exit 0", "rm \"$0\"; exit 0");
    expectFailed(QStringLiteral("restic non trovato"));
}

TEST_F(ToolFault, oddExitCodesHaveTheirText)
{
    const QList<std::pair<QByteArray, QString>> endings{
        {"exit 1", QStringLiteral("Errore sconosciuto (codice 1)")},
        {"exit 2", QStringLiteral("Errore sconosciuto (codice 2)")},
        {"exit 10", QStringLiteral("Nessun backup presente in questa destinazione")},
        {"exit 11", QStringLiteral("Destinazione occupata da un'altra operazione")},
        {"exit 12", QStringLiteral("Chiave di cifratura errata per questa destinazione")},
        {"exit 130", QStringLiteral("Errore sconosciuto (codice 130)")},
        {"exit 255", QStringLiteral("Errore sconosciuto (codice 255)")},
        // A signal's number must not be taken for an exit code of restic's own.
        {"trap - INT; kill -INT $$", QStringLiteral("Errore sconosciuto (codice 130)")},
        {"kill -HUP $$", QStringLiteral("Errore sconosciuto (codice 129)")},
        {"kill -KILL $$", QStringLiteral("Errore sconosciuto (codice 137)")},
        {"exec >&- 2>&-; exit 1", QStringLiteral("Errore sconosciuto (codice 1)")},
        {"echo '{\"message_type\":\"exit_error\",\"message\":\"Fatal: words\"}' >&2; exit 1",
         QStringLiteral("Fatal: words")},
        {"printf 'Fatal: caff\\303\\250 \\377\\n\\n' >&2; exit 1",
         QStringLiteral("Fatal: caffè \ufffd")},
    };
    for (const auto &[ending, message] : endings) {
        script(ending);
        expectFailed(message);
        EXPECT_EQ(newestRecord().filesNew, 0);
    }
}

TEST_F(ToolFault, whatGoesWrongWhileOpeningHasItsTextToo)
{
    const QList<std::pair<QByteArray, QString>> endings{
        {"exit 1", QStringLiteral("Errore sconosciuto (codice 1)")},
        {"exit 3", QStringLiteral("Errore sconosciuto (codice 3)")},
        {"exit 12", QStringLiteral("Chiave di cifratura errata per questa destinazione")},
        {"kill -KILL $$", QStringLiteral("Errore sconosciuto (codice 137)")}};
    for (const auto &[ending, message] : endings) {
        script("exit 0", ending);
        expectFailed(message);
    }
    EXPECT_EQ(commands(), "cat\ncat\ncat\ncat\n");
}

TEST_F(ToolFault, aResticThatSaysNothingIsTakenAtItsExitCode)
{
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().message, QStringLiteral("Completato"));
    EXPECT_EQ(newestRecord().filesNew, 0);
    script("exit 3");
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Warning);
    EXPECT_EQ(newestRecord().message,
              QStringLiteral("Completato, ma 1 elementi non erano leggibili"));
}

TEST_F(ToolFault, aFloodOfLinesIsRead)
{
    script("yes '{\"message_type\":\"status\",\"percent_done\":0.5,\"files_done\":3}' | "
           "head -n 200000\n"
           "yes '{\"message_type\":\"error\"}' | head -n 20000\n"
           "yes '{\"message_type\":\"error\"}' | head -n 20000 >&2\n"
           "echo '{\"message_type\":\"summary\",\"files_new\":3}'\n"
           "exit 3");
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().message,
              QStringLiteral("Completato, ma 40000 elementi non erano leggibili"));
    EXPECT_EQ(newestRecord().filesNew, 3);
}

TEST_F(ToolFault, linesOfAMegabyteAndBytesThatAreNoTextAreRead)
{
    script("head -c 1000000 /dev/zero | tr '\\0' x; echo\n"
           "printf '\\377\\376\\0\\n{\"message_type\":\"status\\377\"}\\n\\r\\n'\n"
           "printf '{\"message_type\":\"error\",\"item\":\"\\377\\376\"}\\n'\n"
           "printf '{\"message_type\":\"summary\",\"files_new\":4,\"x\":\"'\n"
           "head -c 1000000 /dev/zero | tr '\\0' y\n"
           // The last line comes without its end.
           "printf '\\303\"}'\n"
           "exit 3");
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().message,
              QStringLiteral("Completato, ma 1 elementi non erano leggibili"));
    EXPECT_EQ(newestRecord().filesNew, 4);
}

TEST_F(ToolFault, aMessageOfManyLinesStaysOneLineOfTheLog)
{
    script("echo '{\"message_type\":\"exit_error\",\"message\":\"one\\ntwo\"}' >&2; exit 1");
    expectFailed(QStringLiteral("one\ntwo"));
    const QByteArray log = readFile(Paths::supportFile(QStringLiteral("backup.log")));
    EXPECT_TRUE(log.endsWith(" [local] failed: one two\n")) << log.toStdString();
    EXPECT_EQ(log.count('\n'), 1);
}

TEST_F(ToolFault, theStatusIsOnDiskWhileTheToolRuns)
{
    script("echo '{\"message_type\":\"status\",\"percent_done\":0.25,\"total_files\":8,"
           "\"current_files\":[\"/a\"]}'; await");
    Cycle cycle(installation.program());
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    ASSERT_TRUE(eventually([] { return phase() == QLatin1String("Copia dei file"); }));
    const auto status = StatusStore::loadStatus();
    ASSERT_TRUE(status);
    EXPECT_EQ(status->pid, cycle.processId());
    EXPECT_EQ(status->percent, 0.25);
    EXPECT_EQ(status->totalFiles, 8);
    EXPECT_EQ(status->currentFile, QStringLiteral("/a"));
    EXPECT_FALSE(status->secondsRemaining);
    EXPECT_FALSE(isThere("history.json"));
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
    EXPECT_FALSE(isThere("status.json"));
}

} // namespace

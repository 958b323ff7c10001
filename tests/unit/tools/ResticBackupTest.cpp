#include "tools/ResticBackup.h"

#include "tests/support/MemorySecretBackend.h"
#include "tests/support/ScriptedTools.h"
#include "tools/Tools.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

class ResticBackupLines : public testing::Test
{
protected:
    void handle(const char *line) { backup.handleLine(QString::fromUtf8(line)); }

    /// One status message with these keys besides its type.
    void handleStatus(const char *keys)
    {
        handle((std::string(R"({"message_type":"status",)") + keys + '}').c_str());
    }

    int statuses = 0;            ///< how many were received
    ResticBackup::Status status; ///< the last of them
    ResticBackup backup{[this](const ResticBackup::Status &received) {
        ++statuses;
        status = received;
    }};
    const ResticBackup::Result &result = backup.result();
};

constexpr qint64 most = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

TEST_F(ResticBackupLines, everyKeyOfAStatusIsTaken)
{
    handleStatus(R"("percent_done":0.375,"files_done":11,"total_files":22,)"
                 R"("bytes_done":9007199254740993,"total_bytes":9007199254740995,)"
                 R"("seconds_remaining":44,"current_files":["/a/first","/a/second"],"unknown":1)");
    EXPECT_EQ(status.fractionDone, 0.375);
    EXPECT_EQ(status.filesDone, 11);
    EXPECT_EQ(status.totalFiles, 22);
    EXPECT_EQ(status.bytesDone, 9007199254740993);
    EXPECT_EQ(status.totalBytes, 9007199254740995);
    EXPECT_EQ(status.secondsRemaining, 44);
    EXPECT_EQ(status.currentFile, QStringLiteral("/a/first"));
}

TEST_F(ResticBackupLines, missingKeysReadAsZeroWhateverTheLineBeforeSaid)
{
    handleStatus(R"("percent_done":0.5,"files_done":1,"total_files":2,"bytes_done":3,)"
                 R"("total_bytes":4,"seconds_remaining":5,"current_files":["/a"])");
    handleStatus(R"("action":"none")");
    EXPECT_EQ(status.fractionDone, 0);
    EXPECT_EQ(status.filesDone, 0);
    EXPECT_EQ(status.totalFiles, 0);
    EXPECT_EQ(status.bytesDone, 0);
    EXPECT_EQ(status.totalBytes, 0);
    EXPECT_FALSE(status.secondsRemaining);
    EXPECT_FALSE(status.currentFile);
}

TEST_F(ResticBackupLines, wrongTypesReadAsZero)
{
    for (const char *value : {"\"7\"", "true", "null", "[7]", "{\"a\":7}"}) {
        const std::string text(value);
        handleStatus(("\"percent_done\":" + text + ",\"files_done\":" + text +
                      ",\"total_files\":" + text + ",\"bytes_done\":" + text +
                      ",\"total_bytes\":" + text + ",\"seconds_remaining\":" + text)
                         .c_str());
        EXPECT_EQ(status.fractionDone, 0) << value;
        EXPECT_EQ(status.filesDone, 0) << value;
        EXPECT_EQ(status.totalFiles, 0) << value;
        EXPECT_EQ(status.bytesDone, 0) << value;
        EXPECT_EQ(status.totalBytes, 0) << value;
        // The key is there, so the estimate is too.
        EXPECT_EQ(status.secondsRemaining, 0) << value;
    }
}

TEST_F(ResticBackupLines, thePercentageIsTakenAsItComes)
{
    for (const double value : {-0.5, 0.0, 1.0, 1.5, 100.0, 1e300}) {
        handleStatus(("\"percent_done\":" + std::to_string(value)).c_str());
        EXPECT_EQ(status.fractionDone, value);
    }
}

TEST_F(ResticBackupLines, fractionsOfCountsAreDropped)
{
    handleStatus(R"("files_done":7.9,"bytes_done":-3.9,"seconds_remaining":0.99)");
    EXPECT_EQ(status.filesDone, 7);
    EXPECT_EQ(status.bytesDone, -3);
    EXPECT_EQ(status.secondsRemaining, 0);
}

TEST_F(ResticBackupLines, negativeNumbersAreTakenAsTheyCome)
{
    handleStatus(R"("files_done":-1,"total_bytes":-9223372036854775808,"seconds_remaining":-4)");
    EXPECT_EQ(status.filesDone, -1);
    EXPECT_EQ(status.totalBytes, least);
    EXPECT_EQ(status.secondsRemaining, -4);
}

TEST_F(ResticBackupLines, numbersBeyondTheRangeAreHeldToIt)
{
    handleStatus(R"("files_done":9223372036854775807,"total_files":9223372036854775808,)"
                 R"("bytes_done":1e300,"total_bytes":-1e300)");
    EXPECT_EQ(status.filesDone, most);
    EXPECT_EQ(status.totalFiles, most);
    EXPECT_EQ(status.bytesDone, most);
    EXPECT_EQ(status.totalBytes, least);
}

TEST_F(ResticBackupLines, theEstimateVanishesWithItsKey)
{
    handleStatus(R"("seconds_remaining":12)");
    EXPECT_EQ(status.secondsRemaining, 12);
    handleStatus(R"("files_done":1)");
    EXPECT_FALSE(status.secondsRemaining);
}

TEST_F(ResticBackupLines, theCurrentFileIsTheFirstOfAListOfTexts)
{
    handleStatus(R"("current_files":["only"])");
    EXPECT_EQ(status.currentFile, QStringLiteral("only"));
    handleStatus(R"("current_files":["",  "second"])");
    EXPECT_EQ(status.currentFile, QString());
    handleStatus(R"("current_files":["a\nb \"quoted\" \ud83d\ude00"])");
    EXPECT_EQ(status.currentFile, QString::fromUtf8("a\nb \"quoted\" \xf0\x9f\x98\x80"));
}

TEST_F(ResticBackupLines, anythingButAListOfTextsIsNoCurrentFile)
{
    for (const char *value : {"[]", "null", "\"/a\"", "7", "{}", "{\"0\":\"/a\"}", "[7]",
                              "[\"/a\",7]", "[null]", "[[\"/a\"]]"}) {
        handleStatus(R"("current_files":["before"])");
        handleStatus((std::string("\"current_files\":") + value).c_str());
        EXPECT_FALSE(status.currentFile) << value;
    }
}

TEST_F(ResticBackupLines, linesThatAreNoMessageAreIgnored)
{
    for (const char *line : {"",
                             " ",
                             "plain words",
                             "{",
                             "{}",
                             "[]",
                             "null",
                             "7",
                             "\"status\"",
                             R"(["message_type","status"])",
                             R"({"message_type":"status")",
                             R"({"message_type":"status"} x)",
                             R"({"message_type":7,"files_done":9})",
                             R"({"message_type":null,"files_done":9})",
                             R"({"message_type":["status"]})",
                             R"({"Message_Type":"status","files_done":9})",
                             R"({"files_done":9})",
                             R"({"message_type":"status","files_done":01})",
                             R"({"message_type":"status","files_done":9,})",
                             R"({"message_type":"error")",
                             "\xEF\xBF\xBD{\"message_type\":\"status\"}"}) {
        handle(line);
        EXPECT_EQ(statuses, 0) << line;
    }
    EXPECT_EQ(result, ResticBackup::Result());
}

TEST_F(ResticBackupLines, messagesOfOtherTypesAreIgnored)
{
    for (const char *type : {"", "verbose_status", "exit_error", "Status", "status ", "ERROR",
                             "summaries", "initialized"}) {
        handle((std::string(R"({"message_type":")") + type + R"(","files_done":9,"files_new":9})")
                   .c_str());
    }
    EXPECT_EQ(statuses, 0);
    EXPECT_EQ(result, ResticBackup::Result());
}

TEST_F(ResticBackupLines, errorsAreCountedAndChangeNothingElse)
{
    handle(R"({"message_type":"error","files_done":9})");
    handle(R"({"message_type":"error"})");
    EXPECT_EQ(result.unreadable, 2);
    EXPECT_EQ(result.version, QString());
    EXPECT_EQ(statuses, 0);
}

TEST_F(ResticBackupLines, errorsOnStandardErrorAddToTheCount)
{
    handle(R"({"message_type":"error"})");
    backup.handleErrors(QStringLiteral("\n\n{\"message_type\":\"error\"}\nFatal: words\n"
                                       "{\"message_type\":\"status\",\"files_done\":9}\n"
                                       "{\"message_type\":\"summary\",\"files_new\":9}\n"
                                       "{\"message_type\":\"error\"}"));
    EXPECT_EQ(result.unreadable, 3);
    EXPECT_EQ(statuses, 0);
    EXPECT_EQ(result.filesNew, 0);
    backup.handleErrors({});
    EXPECT_EQ(result.unreadable, 3);
}

TEST_F(ResticBackupLines, theLastSummaryCounts)
{
    handle(R"({"message_type":"summary","files_new":1,"files_changed":2,"data_added_packed":3,)"
           R"("snapshot_id":"the first"})");
    handle(R"({"message_type":"summary","files_new":4,"data_added":9,"data_added_packed":)"
           R"(9007199254740993})");
    EXPECT_EQ(result.filesNew, 4);
    // What the last one doesn't give doesn't stay from the one before.
    EXPECT_EQ(result.version, QString());
    EXPECT_EQ(result.filesChanged, 0);
    EXPECT_EQ(result.dataAdded, 9007199254740993);
}

TEST_F(ResticBackupLines, wrongTypesInASummaryReadAsZero)
{
    handle(R"({"message_type":"summary","files_new":"1","files_changed":[2],)"
           R"("data_added_packed":null,"snapshot_id":7})");
    EXPECT_EQ(result, ResticBackup::Result());
}

TEST_F(ResticBackupLines, aSummaryLeavesTheStatusAlone)
{
    handle(R"({"message_type":"summary","files_done":9,"total_files":9})");
    EXPECT_EQ(statuses, 0);
}

TEST_F(ResticBackupLines, aLineOfAMegabyteIsRead)
{
    const QString name(1024 * 1024, u'x');
    backup.handleLine(
        QLatin1String(R"({"message_type":"status","files_done":3,"current_files":[")") + name +
        QLatin1String("\"]}"));
    EXPECT_EQ(status.filesDone, 3);
    EXPECT_EQ(status.currentFile, name);
}

TEST_F(ResticBackupLines, aDeeplyNestedLineIsIgnored)
{
    const QString nest = QString(100000, u'[');
    backup.handleLine(QLatin1String(R"({"message_type":"error","x":)") + nest);
    EXPECT_EQ(result.unreadable, 0);
}

TEST_F(ResticBackupLines, theSummaryNamesTheVersion)
{
    handle(R"({"message_type":"summary","snapshot_id":"0123456789abcdef"})");
    EXPECT_EQ(result.version, QStringLiteral("0123456789abcdef"));
}

/// A run with a restic that answers as the test says.
class ResticBackupRun : public testing::Test
{
protected:
    ResticBackupRun()
    {
        tools.connectRemotes();
        restic.config.localFolder = QStringLiteral("/media/disk");
    }

    tl::expected<ResticBackup::Result, ResticError> run()
    {
        return ResticBackup([](const ResticBackup::Status &) {})
            .run(restic, sources, QStringLiteral("/a list"), &handle);
    }

    [[nodiscard]] QStringList arguments()
    {
        static_cast<void>(run());
        const QList<ScriptedTools::Call> calls = tools.callsOf(QStringLiteral("backup"));
        EXPECT_EQ(calls.size(), 1);
        return calls.value(0).arguments;
    }

    static QStringList rcloneOption()
    {
        return {QStringLiteral("-o"),
                QLatin1String("rclone.program=") +
                    Tools::find(QStringLiteral("rclone")).value_or(QString())};
    }

    static QStringList commonArguments()
    {
        return {QStringLiteral("backup"),         QStringLiteral("--json"), QStringLiteral("--tag"),
                QStringLiteral("vellomar"),       QStringLiteral("--host"), Paths::hostname(),
                QStringLiteral("--exclude-file"), QStringLiteral("/a list")};
    }

    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    ScriptedTools tools;
    ProcessHandle handle;
    Restic restic;
    const QStringList sources{QStringLiteral("/a source"), QStringLiteral("/--dry-run")};
};

TEST_F(ResticBackupRun, theArgumentsForTheDisk)
{
    const QStringList options{QStringLiteral("--exclude-caches"), QStringLiteral("--")};
    EXPECT_EQ(arguments(), commonArguments() + options + sources);
}

TEST_F(ResticBackupRun, theArgumentsForDriveAskForBigPacks)
{
    restic.dest = DestinationID::Drive;
    const QStringList options{QStringLiteral("--exclude-caches"), QStringLiteral("--pack-size"),
                              QStringLiteral("64"), QStringLiteral("--")};
    EXPECT_EQ(arguments(), rcloneOption() + commonArguments() + options + sources);
}

TEST_F(ResticBackupRun, theArgumentsForTheServerAskForBigPacks)
{
    restic.dest = DestinationID::Server;
    restic.config.excludeCaches = false;
    const QStringList options{QStringLiteral("--pack-size"), QStringLiteral("64"),
                              QStringLiteral("--")};
    EXPECT_EQ(arguments(), rcloneOption() + commonArguments() + options + sources);
}

TEST_F(ResticBackupRun, cachesAreKeptWhenTheSettingSaysSo)
{
    restic.config.excludeCaches = false;
    EXPECT_EQ(arguments(), commonArguments() + QStringList{QStringLiteral("--")} + sources);
}

TEST_F(ResticBackupRun, canBeStoppedAndIsFollowed)
{
    static_cast<void>(run());
    const ScriptedTools::Call call = tools.callsOf(QStringLiteral("backup")).value(0);
    EXPECT_EQ(call.handle, &handle);
    EXPECT_TRUE(call.isFollowed);
}

TEST_F(ResticBackupRun, filesThatCouldNotBeReadCountOnEitherStream)
{
    tools.progress.append(QStringLiteral(R"({"message_type":"error"})"));
    tools.backup = ScriptedTools::ended(3, QStringLiteral(R"({"message_type":"error"})"));
    EXPECT_EQ(run()->unreadable, 2);
}

TEST_F(ResticBackupRun, whereOnlyTheCodeSaysThatSomeWereUnreadableThereWasOne)
{
    tools.backup = ScriptedTools::ended(3);
    EXPECT_EQ(run()->unreadable, 1);
}

TEST_F(ResticBackupRun, errorsOfARunThatEndedWellAreNoUnreadableFiles)
{
    tools.progress.append(QStringLiteral(R"({"message_type":"error"})"));
    const auto made = run();
    ASSERT_TRUE(made);
    EXPECT_EQ(made->unreadable, 0);
    EXPECT_EQ(made->version, QStringLiteral("the new one"));
}

TEST_F(ResticBackupRun, anyOtherCodeIsAFailureInTheUsersWords)
{
    for (const int status : {1, 2, 10, 11, 12, 130, -1}) {
        tools.backup = ScriptedTools::ended(status, QStringLiteral("Fatal: no"));
        const auto made = run();
        ASSERT_FALSE(made) << status;
        EXPECT_EQ(made.error(), Restic::describe(tools.backup)) << status;
    }
}

} // namespace

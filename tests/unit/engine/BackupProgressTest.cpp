#include "engine/BackupProgress.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

class ProgressLines : public testing::Test
{
protected:
    void handle(const char *line) { progress.handleLine(QString::fromUtf8(line)); }

    /// One status message with these keys besides its type.
    void handleStatus(const char *keys)
    {
        handle((std::string(R"({"message_type":"status",)") + keys + '}').c_str());
    }

    [[nodiscard]] RunRecord summary() const
    {
        RunRecord record;
        progress.summarise(record);
        return record;
    }

    BackupProgress::WriteTime lastWrite;
    BackupProgress progress{DestinationID::Local, QDateTime::currentDateTimeUtc(), lastWrite};
    const RunStatus &status = progress.status();
};

const QString copying = QStringLiteral("Copia dei file");
constexpr qint64 most = std::numeric_limits<qint64>::max();
constexpr qint64 least = std::numeric_limits<qint64>::min();

TEST_F(ProgressLines, everyKeyOfAStatusIsTaken)
{
    handleStatus(R"("percent_done":0.375,"files_done":11,"total_files":22,)"
                 R"("bytes_done":9007199254740993,"total_bytes":9007199254740995,)"
                 R"("seconds_remaining":44,"current_files":["/a/first","/a/second"],"unknown":1)");
    EXPECT_EQ(status.phase, copying);
    EXPECT_EQ(status.percent, 0.375);
    EXPECT_EQ(status.filesDone, 11);
    EXPECT_EQ(status.totalFiles, 22);
    EXPECT_EQ(status.bytesDone, 9007199254740993);
    EXPECT_EQ(status.totalBytes, 9007199254740995);
    EXPECT_EQ(status.secondsRemaining, 44);
    EXPECT_EQ(status.currentFile, QStringLiteral("/a/first"));
}

TEST_F(ProgressLines, missingKeysReadAsZeroWhateverTheLineBeforeSaid)
{
    handleStatus(R"("percent_done":0.5,"files_done":1,"total_files":2,"bytes_done":3,)"
                 R"("total_bytes":4,"seconds_remaining":5,"current_files":["/a"])");
    handleStatus(R"("action":"none")");
    EXPECT_EQ(status.phase, copying);
    EXPECT_EQ(status.percent, 0);
    EXPECT_EQ(status.filesDone, 0);
    EXPECT_EQ(status.totalFiles, 0);
    EXPECT_EQ(status.bytesDone, 0);
    EXPECT_EQ(status.totalBytes, 0);
    EXPECT_FALSE(status.secondsRemaining);
    EXPECT_FALSE(status.currentFile);
}

TEST_F(ProgressLines, wrongTypesReadAsZero)
{
    for (const char *value : {"\"7\"", "true", "null", "[7]", "{\"a\":7}"}) {
        const std::string text(value);
        handleStatus(("\"percent_done\":" + text + ",\"files_done\":" + text +
                      ",\"total_files\":" + text + ",\"bytes_done\":" + text +
                      ",\"total_bytes\":" + text + ",\"seconds_remaining\":" + text)
                         .c_str());
        EXPECT_EQ(status.phase, copying) << value;
        EXPECT_EQ(status.percent, 0) << value;
        EXPECT_EQ(status.filesDone, 0) << value;
        EXPECT_EQ(status.totalFiles, 0) << value;
        EXPECT_EQ(status.bytesDone, 0) << value;
        EXPECT_EQ(status.totalBytes, 0) << value;
        // The key is there, so the estimate is too.
        EXPECT_EQ(status.secondsRemaining, 0) << value;
    }
}

TEST_F(ProgressLines, thePercentageIsTakenAsItComes)
{
    for (const double value : {-0.5, 0.0, 1.0, 1.5, 100.0, 1e300}) {
        handleStatus(("\"percent_done\":" + std::to_string(value)).c_str());
        EXPECT_EQ(status.percent, value);
    }
}

TEST_F(ProgressLines, fractionsOfCountsAreDropped)
{
    handleStatus(R"("files_done":7.9,"bytes_done":-3.9,"seconds_remaining":0.99)");
    EXPECT_EQ(status.filesDone, 7);
    EXPECT_EQ(status.bytesDone, -3);
    EXPECT_EQ(status.secondsRemaining, 0);
}

TEST_F(ProgressLines, negativeNumbersAreTakenAsTheyCome)
{
    handleStatus(R"("files_done":-1,"total_bytes":-9223372036854775808,"seconds_remaining":-4)");
    EXPECT_EQ(status.filesDone, -1);
    EXPECT_EQ(status.totalBytes, least);
    EXPECT_EQ(status.secondsRemaining, -4);
}

TEST_F(ProgressLines, numbersBeyondTheRangeAreHeldToIt)
{
    handleStatus(R"("files_done":9223372036854775807,"total_files":9223372036854775808,)"
                 R"("bytes_done":1e300,"total_bytes":-1e300)");
    EXPECT_EQ(status.filesDone, most);
    EXPECT_EQ(status.totalFiles, most);
    EXPECT_EQ(status.bytesDone, most);
    EXPECT_EQ(status.totalBytes, least);
}

TEST_F(ProgressLines, theEstimateVanishesWithItsKey)
{
    handleStatus(R"("seconds_remaining":12)");
    EXPECT_EQ(status.secondsRemaining, 12);
    handleStatus(R"("files_done":1)");
    EXPECT_FALSE(status.secondsRemaining);
}

TEST_F(ProgressLines, theCurrentFileIsTheFirstOfAListOfTexts)
{
    handleStatus(R"("current_files":["only"])");
    EXPECT_EQ(status.currentFile, QStringLiteral("only"));
    handleStatus(R"("current_files":["",  "second"])");
    EXPECT_EQ(status.currentFile, QString());
    handleStatus(R"("current_files":["a\nb \"quoted\" \ud83d\ude00"])");
    EXPECT_EQ(status.currentFile, QString::fromUtf8("a\nb \"quoted\" \xf0\x9f\x98\x80"));
}

TEST_F(ProgressLines, anythingButAListOfTextsIsNoCurrentFile)
{
    for (const char *value : {"[]", "null", "\"/a\"", "7", "{}", "{\"0\":\"/a\"}", "[7]",
                              "[\"/a\",7]", "[null]", "[[\"/a\"]]"}) {
        handleStatus(R"("current_files":["before"])");
        handleStatus((std::string("\"current_files\":") + value).c_str());
        EXPECT_FALSE(status.currentFile) << value;
    }
}

TEST_F(ProgressLines, linesThatAreNoMessageAreIgnored)
{
    handleStatus(R"("files_done":3)");
    const RunStatus before = status;
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
        EXPECT_EQ(status, before) << line;
    }
    EXPECT_EQ(progress.errorCount(), 0);
    EXPECT_EQ(summary(), RunRecord());
}

TEST_F(ProgressLines, messagesOfOtherTypesAreIgnored)
{
    const RunStatus before = status;
    for (const char *type : {"", "verbose_status", "exit_error", "Status", "status ", "ERROR",
                             "summaries", "initialized"}) {
        handle((std::string(R"({"message_type":")") + type + R"(","files_done":9,"files_new":9})")
                   .c_str());
    }
    EXPECT_EQ(status, before);
    EXPECT_EQ(progress.errorCount(), 0);
    EXPECT_EQ(summary(), RunRecord());
}

TEST_F(ProgressLines, errorsAreCountedAndChangeNothingElse)
{
    const RunStatus before = status;
    handle(R"({"message_type":"error","files_done":9})");
    handle(R"({"message_type":"error"})");
    EXPECT_EQ(progress.errorCount(), 2);
    EXPECT_EQ(status, before);
}

TEST_F(ProgressLines, errorsOnStandardErrorAddToTheCount)
{
    handle(R"({"message_type":"error"})");
    progress.countErrors(QStringLiteral("\n\n{\"message_type\":\"error\"}\nFatal: words\n"
                                        "{\"message_type\":\"status\",\"files_done\":9}\n"
                                        "{\"message_type\":\"summary\",\"files_new\":9}\n"
                                        "{\"message_type\":\"error\"}"));
    EXPECT_EQ(progress.errorCount(), 3);
    EXPECT_EQ(status.filesDone, 0);
    EXPECT_EQ(summary().filesNew, 0);
    progress.countErrors({});
    EXPECT_EQ(progress.errorCount(), 3);
}

TEST_F(ProgressLines, theLastSummaryCounts)
{
    handle(R"({"message_type":"summary","files_new":1,"files_changed":2,"data_added_packed":3})");
    handle(R"({"message_type":"summary","files_new":4,"data_added":9,"data_added_packed":)"
           R"(9007199254740993})");
    const RunRecord record = summary();
    EXPECT_EQ(record.filesNew, 4);
    // The whole object is replaced: what the last one doesn't tell is 0.
    EXPECT_EQ(record.filesChanged, 0);
    EXPECT_EQ(record.dataAdded, 9007199254740993);
}

TEST_F(ProgressLines, wrongTypesInASummaryReadAsZero)
{
    handle(R"({"message_type":"summary","files_new":"1","files_changed":[2],)"
           R"("data_added_packed":null})");
    EXPECT_EQ(summary(), RunRecord());
}

TEST_F(ProgressLines, aSummaryLeavesTheStatusAlone)
{
    const RunStatus before = status;
    handle(R"({"message_type":"summary","files_done":9,"total_files":9})");
    EXPECT_EQ(status, before);
}

TEST_F(ProgressLines, aLineOfAMegabyteIsRead)
{
    const QString name(1024 * 1024, u'x');
    progress.handleLine(
        QLatin1String(R"({"message_type":"status","files_done":3,"current_files":[")") + name +
        QLatin1String("\"]}"));
    EXPECT_EQ(status.filesDone, 3);
    EXPECT_EQ(status.currentFile, name);
}

TEST_F(ProgressLines, aDeeplyNestedLineIsIgnored)
{
    const QString nest = QString(100000, u'[');
    progress.handleLine(QLatin1String(R"({"message_type":"error","x":)") + nest);
    EXPECT_EQ(progress.errorCount(), 0);
}

} // namespace

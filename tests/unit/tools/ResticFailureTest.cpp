#include "tools/Restic.h"

#include <gtest/gtest.h>

namespace {

QString said(int status, const char *standardError)
{
    return Restic::describe({status, QString(), QString::fromUtf8(standardError)}).message;
}

const QString wrongKey = QStringLiteral("Chiave di cifratura errata per questa destinazione");
const QString busy = QStringLiteral("Destinazione occupata da un'altra operazione");
const QString noBackup = QStringLiteral("Nessun backup presente in questa destinazione");
const QString otherHostKey =
    QStringLiteral("Il server si presenta con una chiave diversa da quella registrata: "
                   "collegamento rifiutato");

TEST(ResticFailure, threeExitCodesHaveWordsWhateverResticWrote)
{
    for (const char *text : {"", "plain", R"({"message":"json"})", "knownhosts: key mismatch"}) {
        EXPECT_EQ(said(12, text), wrongKey) << text;
        EXPECT_EQ(said(11, text), busy) << text;
        EXPECT_EQ(said(10, text), noBackup) << text;
    }
}

TEST(ResticFailure, aChangedHostKeyIsReported)
{
    EXPECT_EQ(said(1, "knownhosts"), otherHostKey);
    EXPECT_EQ(said(1, "rclone: ssh: handshake failed: knownhosts: key mismatch\nFatal: later"),
              otherHostKey);
    EXPECT_EQ(said(1, R"({"message":"knownhosts: key is unknown"})"), otherHostKey);
    EXPECT_EQ(said(-1, "knownhosts"), otherHostKey);
    EXPECT_EQ(said(1, "KnownHosts"), QStringLiteral("KnownHosts"));
    EXPECT_EQ(said(1, "known hosts"), QStringLiteral("known hosts"));
}

TEST(ResticFailure, nothingToTellGivesTheCode)
{
    EXPECT_EQ(said(1, ""), QStringLiteral("Errore sconosciuto (codice 1)"));
    EXPECT_EQ(said(130, "\n\n"), QStringLiteral("Errore sconosciuto (codice 130)"));
    EXPECT_EQ(said(-1, ""), QStringLiteral("Errore sconosciuto (codice -1)"));
    EXPECT_EQ(said(0, ""), QStringLiteral("Errore sconosciuto (codice 0)"));
    EXPECT_EQ(said(1234567, ""), QStringLiteral("Errore sconosciuto (codice 1234567)"));
}

TEST(ResticFailure, objectsWithoutAMessageTellNothing)
{
    for (const char *text :
         {"{}", R"({"code":1})", R"({"message":5})", R"({"message":null})", R"({"message":["x"]})",
          R"({"Message":"x"})",
          "{\"message_type\":\"error\",\"error\":{\"message\":\"inner\"}}\n{}"}) {
        EXPECT_EQ(said(1, text), QStringLiteral("Errore sconosciuto (codice 1)")) << text;
    }
}

TEST(ResticFailure, theLastMessageOfAllLinesCounts)
{
    EXPECT_EQ(said(1, "one\ntwo\n"), QStringLiteral("two"));
    EXPECT_EQ(said(1, "{\"message\":\"json\"}\nplain\n\n"), QStringLiteral("plain"));
    EXPECT_EQ(said(1, "plain\n{\"message\":\"json\"}\n"), QStringLiteral("json"));
    EXPECT_EQ(said(1, "plain\n{\"code\":1}\n"), QStringLiteral("plain"));
    EXPECT_EQ(said(3, "{\"message\":\"one\"}\n{}\n{\"message\":\"two\"}\n{}"),
              QStringLiteral("two"));
}

TEST(ResticFailure, theMessageStandsAsItIs)
{
    EXPECT_EQ(said(1, "  Fatal: x  \r"), QStringLiteral("  Fatal: x  \r"));
    EXPECT_EQ(said(1, R"({"message":"two\nlines"})"), QStringLiteral("two\nlines"));
    EXPECT_EQ(said(1, R"({"message":""})"), QString());
}

TEST(ResticFailure, whatIsNoObjectIsALine)
{
    for (const char *text :
         {"[1]", "\"message\"", "5", "null", R"({"message":"cut)", R"({"message":"x"} y)", "{"}) {
        EXPECT_EQ(said(1, text), QString::fromUtf8(text));
    }
}

TEST(ResticFailure, aCrashIsReportedByWhatResticPanickedWith)
{
    EXPECT_EQ(said(2, "panic: runtime error: index out of range [3] with length 3\n\n"
                      "goroutine 1 [running]:\nmain.main()\n\t/src/main.go:9 +0x1d\n"),
              QStringLiteral("restic si è chiuso per un errore interno: "
                             "runtime error: index out of range [3] with length 3"));
    EXPECT_EQ(said(2, "{\"message_type\":\"error\",\"message\":\"x\"}\n"
                      "panic: one [recovered]\n\tpanic: two\n\ngoroutine 7 gp=0x1 [running]:\n"
                      "panic({0x1, 0x2})\n\truntime/panic.go:1229 +0x48\n"),
              QStringLiteral("restic si è chiuso per un errore interno: one [recovered]"));
    EXPECT_EQ(said(2, "runtime: out of memory: cannot allocate 4194304-byte block (0 in use)\n"
                      "fatal error: out of memory\n\nruntime stack:\n"
                      "runtime.throw({0x18dc461?, 0x7ffea0dcd3f0?})\n"
                      "\truntime/panic.go:1229 +0x48 fp=0x7ffea0dcd390 sp=0x7ff pc=0x48bca8\n"),
              QStringLiteral("restic si è chiuso per un errore interno: out of memory"));
    EXPECT_EQ(said(2, "SIGSEGV: segmentation violation\nPC=0x495081 m=0 sigcode=0 addr=0x5\n\n"
                      "goroutine 0 gp=0x291b4a0 m=0 mp=0x291ca80 [idle]:\n"
                      "runtime.mPark(...)\n\truntime/proc.go:1967\nrax 0x0\ngs     0x0\n"),
              QStringLiteral("restic si è chiuso per un errore interno: "
                             "SIGSEGV: segmentation violation"));
}

TEST(ResticFailure, wordsAloneAreNoCrash)
{
    EXPECT_EQ(said(1, "panic: in the disco"), QStringLiteral("panic: in the disco"));
    EXPECT_EQ(said(1, "Fatal: cannot read goroutine 5 panic: x"),
              QStringLiteral("Fatal: cannot read goroutine 5 panic: x"));
}

TEST(ResticFailure, anErrorWithATraceBelowItIsTheError)
{
    EXPECT_EQ(said(1, "config file has zero size, invalid repository?\n"
                      "github.com/restic/restic/internal/global.hasRepositoryConfig\n"
                      "\tgithub.com/restic/restic/internal/global/global.go:352\n"
                      "main.newRootCommand.newCatCommand.func2\n"
                      "\tgithub.com/restic/restic/cmd/restic/cmd_cat.go:39\n"
                      "runtime.goexit\n\truntime/asm_amd64.s:1771\n"),
              QStringLiteral("config file has zero size, invalid repository?"));
    EXPECT_EQ(said(1, "\tnot a place: 12\n"), QStringLiteral("\tnot a place: 12"));
    EXPECT_EQ(said(1, "\tfile.go:12\n"), QStringLiteral("\tfile.go:12"));
}

TEST(ResticFailure, aRepositoryThatCannotBeEnteredIsReportedAndNotItsPlaceAlone)
{
    EXPECT_EQ(said(1, "Stat(<config/>) failed: stat /disk/a b/r/config: permission denied\n"
                      "Fatal: unable to open config file: stat /disk/a b/r/config: permission "
                      "denied\n/disk/a b/r\n"),
              QStringLiteral("Permesso negato: la cartella /disk/a b/r non si può aprire"));
    EXPECT_EQ(said(1, "Fatal: unable to open config file: stat /d/config: input/output error\n/d"),
              QStringLiteral("Fatal: unable to open config file: stat /d/config: input/output "
                             "error"));
}

TEST(ResticFailure, aMissingResticIsReported)
{
    EXPECT_EQ(said(-1, "restic non trovato"), QStringLiteral("restic non trovato"));
}

} // namespace

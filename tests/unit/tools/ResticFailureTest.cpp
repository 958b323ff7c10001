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

TEST(ResticFailure, aChangedHostKeyIsTold)
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

TEST(ResticFailure, aMissingResticIsTold)
{
    EXPECT_EQ(said(-1, "restic non trovato"), QStringLiteral("restic non trovato"));
}

} // namespace

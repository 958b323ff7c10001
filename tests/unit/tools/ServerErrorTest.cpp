#include "tools/Rclone.h"

#include <gtest/gtest.h>

namespace {

const char *const changedKey =
    "Il server si presenta con una chiave diversa da quella registrata. Se non l'hai cambiato tu, "
    "non collegarti da questa rete; altrimenti scollega e ricollega il server.";
const char *const refused = "Accesso rifiutato: controlla utente e password.";
const char *const unreachable = "Server non raggiungibile: controlla indirizzo e porta.";

struct Row
{
    const char *said;
    const char *shown;
};

class ServerError : public testing::TestWithParam<Row>
{
};

TEST_P(ServerError, isWordedWhateverTheCaseAndWhateverStandsAround)
{
    const QString said = QString::fromUtf8(GetParam().said);
    const QString shown = QString::fromUtf8(GetParam().shown);
    EXPECT_EQ(Rclone::serverError(said), shown);
    EXPECT_EQ(Rclone::serverError(said.toUpper()), shown);
    EXPECT_EQ(Rclone::serverError(QLatin1String("2024/03/01 10:00:00 NOTICE: first\nCouldn't: ") +
                                  said + QLatin1String(" (x)\n2024/03/01 10:00:00 ERROR : last\n")),
              shown);
}

INSTANTIATE_TEST_SUITE_P(
    Words, ServerError,
    testing::Values(Row{"knownhosts: key mismatch", changedKey}, Row{"401", refused},
                    Row{"403 Forbidden", refused}, Row{"unable to authenticate", refused},
                    Row{"permission denied", refused}, Row{"logon failure", refused},
                    Row{"InvalidAccessKeyId", refused}, Row{"SignatureDoesNotMatch", refused},
                    Row{"no such host", unreachable}, Row{"connection refused", unreachable},
                    Row{"timeout", unreachable}, Row{"timed out", unreachable},
                    Row{"network is unreachable", unreachable},
                    Row{"no route to host", unreachable}));

// The first rule that matches decides, wherever in the text it does.
INSTANTIATE_TEST_SUITE_P(
    Orders, ServerError,
    testing::Values(Row{"403 and knownhosts", changedKey}, Row{"knownhosts and 403", changedKey},
                    Row{"permission denied, knownhosts", changedKey},
                    Row{"i/o timeout; knownhosts", changedKey}, Row{"timeout after 401", refused},
                    Row{"401 after timeout", refused},
                    Row{"connection refused: logon failure", refused},
                    Row{"no such host, timed out, signaturedoesnotmatch", refused}));

TEST(ServerErrorWords, areNotMadeOfPartsOrLookAlikes)
{
    for (const char *text :
         {"known hosts", "known_hosts", "40 1", "4 03", "404", "permission  denied",
          "permission\ndenied", "time out", "timed  out", "logon-failure"}) {
        const QString said = QString::fromUtf8(text);
        EXPECT_EQ(Rclone::serverError(said), said.section(u'\n', -1)) << text;
    }
}

TEST(ServerErrorWords, ofAnythingElseAreRclonesOwnLastLine)
{
    EXPECT_EQ(Rclone::serverError(QStringLiteral(
                  "first\n2024/03/01 10:00:00 ERROR : Fatal error: Directory Not Found\n\n")),
              QStringLiteral("Directory Not Found"));
    EXPECT_EQ(Rclone::serverError(QStringLiteral("2024/03/01 10:00:00 NOTICE: Failed to lsd: X")),
              QStringLiteral("Failed to lsd: X"));
    EXPECT_EQ(Rclone::serverError(QStringLiteral("Just Words")), QStringLiteral("Just Words"));
}

TEST(ServerErrorWords, ofNothingAreThatTheServerIsNotReachable)
{
    for (const char *text : {"", "\n", "\n\n\n"}) {
        EXPECT_EQ(Rclone::serverError(QString::fromUtf8(text)),
                  QStringLiteral("Server non raggiungibile"));
    }
}

} // namespace

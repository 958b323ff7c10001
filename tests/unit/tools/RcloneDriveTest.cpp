#include "tests/unit/tools/RcloneFixture.h"

#include <limits>

namespace {

/// An rclone with which a connection succeeds, unless a test makes a step fail.
class RcloneDrive : public RcloneFixture
{
protected:
    RcloneDrive()
    {
        writeConfig(envelope, 1000);
        rclone = [this](const Call &call) {
            if (call.words() == dump) {
                return said(remotes);
            }
            if (call.words() != deletion) {
                duringRun();
                // rclone has written its file, however the sign-in ended.
                writeConfig(envelope, --m_age);
                return ended;
            }
            return said({});
        };
    }

    static ProcessResult said(const QString &output, int status = 0)
    {
        return {status, output, QString()};
    }
    static ProcessResult failed(const QString &error, int status = 2)
    {
        return {status, QString(), error};
    }

    std::optional<QString> connect(const QString &clientID = {}, const QString &clientSecret = {})
    {
        return Rclone::connect(clientID, clientSecret, handle);
    }
    /// The message of an attempt whose rclone ended like this.
    std::optional<QString> connectEndingIn(const ProcessResult &result)
    {
        ended = result;
        return connect();
    }
    /// The arguments with which rclone was to sign in.
    [[nodiscard]] QStringList creation() const
    {
        for (const Call &call : calls) {
            if (call.arguments.value(1) == QLatin1String("create")) {
                return call.arguments;
            }
        }
        return {};
    }
    std::optional<Rclone::Quota> quotaFrom(const char *json, int status = 0)
    {
        ended = said(QString::fromUtf8(json), status);
        return Rclone::quota(Rclone::driveRemote);
    }
    QStringList foldersFrom(const char *lines, int status = 0)
    {
        ended = said(QString::fromUtf8(lines), status);
        return Rclone::folders(QStringLiteral("Vellomar"), Rclone::driveRemote);
    }

    ProcessHandle handle;
    ProcessResult ended = said({});          ///< of whatever rclone is there for in the test
    std::function<void()> duringRun = [] {}; ///< what happens while it runs
    QString remotes = QStringLiteral(R"({"vellomar":{"type":"drive","token":"t"}})");

    const QString endStale =
        QStringLiteral("/usr/bin/pkill -f rclone config create vellomar drive");
    const QString deletion = QStringLiteral("config delete vellomar");
    const QString create = QStringLiteral("config create vellomar drive scope=drive.file");
    const QString unfinished = QStringLiteral("Autorizzazione non completata");
    const QString taken =
        QStringLiteral("Un'altra autorizzazione \u00e8 gi\u00e0 in corso. Chiudi la pagina di "
                       "accesso nel browser e riprova.");
    const QString cancelled = QStringLiteral("Collegamento annullato");

private:
    int m_age = 500;
};

TEST_F(RcloneDrive, aSignInComesAfterTheEndOfAStaleOneAndOfTheEarlierRemote)
{
    EXPECT_EQ(connect(), std::nullopt);
    EXPECT_EQ(commands(), QStringList({endStale, deletion, create, dump}));
}

TEST_F(RcloneDrive, theStaleOneIsNamedInOneArgumentAndThePkillGetsNothingElse)
{
    connect();
    EXPECT_EQ(calls.first().program, QStringLiteral("/usr/bin/pkill"));
    EXPECT_EQ(
        calls.first().arguments,
        QStringList({QStringLiteral("-f"), QStringLiteral("rclone config create vellomar drive")}));
    EXPECT_TRUE(calls.first().env.isEmpty());
    EXPECT_EQ(calls.first().input, std::nullopt);
    EXPECT_EQ(calls.first().handle, nullptr);
}

TEST_F(RcloneDrive, theHandleStopsTheSignInAlone)
{
    connect();
    for (const Call &call : calls) {
        EXPECT_EQ(call.handle, call.words() == create ? &handle : nullptr)
            << qPrintable(call.words());
    }
}

TEST_F(RcloneDrive, theSignInGetsTheEncryptedFileAndNoInput)
{
    connect();
    const Call &call = calls.at(2);
    EXPECT_EQ(call.config(), configFile());
    EXPECT_TRUE(call.passwordCommand().contains(QLatin1String("--secret")));
    EXPECT_EQ(call.env.size(), 2);
    EXPECT_EQ(call.input, std::nullopt);
}

TEST_F(RcloneDrive, aPlainFileIsEncryptedBeforeTheSignIn)
{
    writeConfig("[vellomar]\n", 1000);
    EXPECT_EQ(connect(), std::nullopt);
    EXPECT_EQ(commands().mid(0, 4), QStringList({endStale, encryption, deletion, create}));
}

TEST_F(RcloneDrive, withoutEncryptionThereIsNoSignIn)
{
    const auto answer = rclone;
    rclone = [&](const Call &call) { return call.words() == encryption ? said({}) : answer(call); };
    writeConfig("[vellomar]\n", 1000);
    EXPECT_EQ(connect(), QStringLiteral("Configurazione non riuscita"));
    EXPECT_EQ(creation(), QStringList());
    EXPECT_EQ(config(), QByteArray("[vellomar]\n"));
}

TEST_F(RcloneDrive, aFileThatTheSignInLeftInPlainIsEncrypted)
{
    const auto answer = rclone;
    rclone = [&](const Call &call) {
        if (call.words() == encryption) {
            return encryptAsRcloneDoes(call.env);
        }
        const ProcessResult result = answer(call);
        if (call.words() == create) {
            writeConfig("[vellomar]\ntoken = t\n");
        }
        return result;
    };
    EXPECT_EQ(connect(), std::nullopt);
    EXPECT_EQ(config(), envelope + "[vellomar]\ntoken = t\n");
}

TEST_F(RcloneDrive, aFileThatTheSignInLeftInPlainForGoodIsAFailure)
{
    const auto answer = rclone;
    rclone = [&](const Call &call) {
        if (call.words() == encryption) {
            return said({});
        }
        const ProcessResult result = answer(call);
        if (call.words() == create) {
            writeConfig("[vellomar]\ntoken = t\n");
        }
        return result;
    };
    EXPECT_EQ(connect(), unfinished);
    EXPECT_EQ(commands().last(), deletion);
}

TEST_F(RcloneDrive, neitherTheEndOfAStaleOneNorTheDeletionNeedSucceed)
{
    otherTool = [](const Call &) { return failed(QStringLiteral("no"), 1); };
    const auto answer = rclone;
    rclone = [&](const Call &call) {
        return call.words() == deletion ? failed(QStringLiteral("no"), 1) : answer(call);
    };
    EXPECT_EQ(connect(), std::nullopt);
}

TEST_F(RcloneDrive, aClientOfOnesOwnGoesAlongWithItsSecret)
{
    connect(QStringLiteral("an id"), QStringLiteral("a secret"));
    EXPECT_EQ(
        creation(),
        QStringList({QStringLiteral("config"), QStringLiteral("create"), QStringLiteral("vellomar"),
                     QStringLiteral("drive"), QStringLiteral("scope=drive.file"),
                     QStringLiteral("client_id=an id"), QStringLiteral("client_secret=a secret")}));
}

TEST_F(RcloneDrive, aClientOfOnesOwnMayHaveNoSecret)
{
    connect(QStringLiteral("an id"));
    EXPECT_EQ(creation().mid(5),
              QStringList({QStringLiteral("client_id=an id"), QStringLiteral("client_secret=")}));
}

TEST_F(RcloneDrive, withoutAClientOfOnesOwnTheSecretDoesNotCount)
{
    for (const char *secret : {"", "a secret", "--config=/x", "client_id=y"}) {
        calls.clear();
        connect(QString(), QString::fromUtf8(secret));
        EXPECT_EQ(creation().join(u' '), create) << secret;
    }
}

TEST_F(RcloneDrive, withoutATokenItIsAFailureHoweverRcloneEnded)
{
    for (const char *json : {"{}", "", R"({"vellomar":{"type":"drive"}})",
                             R"({"vellomar-server":{"type":"drive","token":"t"}})"}) {
        calls.clear();
        remotes = QString::fromUtf8(json);
        EXPECT_EQ(connect(), unfinished) << json;
        EXPECT_EQ(commands(), QStringList({endStale, deletion, create, dump, deletion})) << json;
    }
}

TEST_F(RcloneDrive, aTokenDoesNotCountWhenRcloneFailed)
{
    for (const int status : {1, 2, -1, 130}) {
        calls.clear();
        EXPECT_EQ(connectEndingIn(failed({}, status)), unfinished) << status;
        EXPECT_EQ(commands().last(), deletion) << status;
        EXPECT_EQ(commands().count(deletion), 2) << status;
    }
}

TEST_F(RcloneDrive, aFailureIsReportedInRclonesLastLine)
{
    EXPECT_EQ(connectEndingIn(failed(
                  QStringLiteral("2026/01/02 03:04:05 NOTICE: Waiting for code...\n"
                                 "2026/01/02 03:04:06 NOTICE: Fatal error: failed to get it\n"))),
              QStringLiteral("failed to get it"));
    EXPECT_EQ(connectEndingIn(failed(QStringLiteral("plain words\n\n"))),
              QStringLiteral("plain words"));
    EXPECT_EQ(connectEndingIn(failed(QStringLiteral("\n\n"))), unfinished);
    EXPECT_EQ(connectEndingIn(failed(QStringLiteral("2026/01/02 03:04:05 ERROR : \n"))),
              unfinished);
    // As when the user refuses in the browser.
    EXPECT_EQ(connectEndingIn(failed(QStringLiteral("Error: access_denied\nHelp: \n"))),
              unfinished);
}

TEST_F(RcloneDrive, aMissingTokenIsReportedInRclonesLastLineToo)
{
    remotes = QStringLiteral("{}");
    ended.standardError = QStringLiteral("2026/01/02 03:04:05 NOTICE: Something\n");
    EXPECT_EQ(connect(), QStringLiteral("Something"));
}

TEST_F(RcloneDrive, aTakenPortIsReportedWhereverItStands)
{
    EXPECT_EQ(connectEndingIn(failed(
                  QStringLiteral("listen tcp 127.0.0.1:53682: bind: address already in use\n"))),
              taken);
    EXPECT_EQ(connectEndingIn(failed(QStringLiteral("address already in use\nanother line\n"))),
              taken);
    // In these very letters.
    EXPECT_EQ(connectEndingIn(failed(QStringLiteral("Address already in use"))),
              QStringLiteral("Address already in use"));
    EXPECT_EQ(commands().last(), deletion);
}

TEST_F(RcloneDrive, aCancelledSignInIsReportedAsThatWhateverRcloneSaid)
{
    duringRun = [this] { handle.terminate(); };
    for (const char *error : {"", "address already in use", "2026/01/02 03:04:05 ERROR : x"}) {
        calls.clear();
        EXPECT_EQ(connectEndingIn(failed(QString::fromUtf8(error), -1)), cancelled) << error;
        EXPECT_EQ(commands(), QStringList({endStale, deletion, create, deletion})) << error;
    }
}

TEST_F(RcloneDrive, aCancelledSignInThatEndsWithoutATokenIsReportedAsCancelled)
{
    duringRun = [this] { handle.terminate(); };
    remotes = QStringLiteral("{}");
    EXPECT_EQ(connect(), cancelled);
    EXPECT_EQ(commands().last(), deletion);
}

TEST_F(RcloneDrive, aCancelThatComesWhenAllIsDoneChangesNothing)
{
    duringRun = [this] { handle.terminate(); };
    EXPECT_EQ(connect(), std::nullopt);
    EXPECT_EQ(commands().last(), dump);
}

TEST_F(RcloneDrive, theRoomIsAskedForWithLimits)
{
    quotaFrom("{}");
    EXPECT_EQ(
        calls.last().arguments,
        QStringList({QStringLiteral("about"), QStringLiteral("vellomar:"), QStringLiteral("--json"),
                     QStringLiteral("--contimeout"), QStringLiteral("10s"),
                     QStringLiteral("--timeout"), QStringLiteral("20s"),
                     QStringLiteral("--retries"), QStringLiteral("1")}));
    EXPECT_EQ(calls.last().config(), configFile());
    EXPECT_FALSE(calls.last().passwordCommand().isEmpty());
    EXPECT_EQ(calls.size(), 1);
    Rclone::quota(Rclone::serverRemote);
    EXPECT_EQ(calls.last().arguments.value(1), QStringLiteral("vellomar-server:"));
}

TEST_F(RcloneDrive, theRoomIsWhatIsUsedAndTheTotal)
{
    using Quota = Rclone::Quota;
    const qint64 most = std::numeric_limits<qint64>::max();
    EXPECT_EQ(quotaFrom(R"({"total":16106127360,"used":7993453766,"free":8112673594})"),
              (Quota{7993453766, 16106127360}));
    EXPECT_EQ(quotaFrom(R"({"total":5})"), (Quota{0, 5}));
    EXPECT_EQ(quotaFrom(R"({"total":0,"used":0})"), (Quota{0, 0}));
    EXPECT_EQ(quotaFrom(R"({"total":null,"used":"7"})"), (Quota{0, 0}));
    EXPECT_EQ(quotaFrom(R"({"total":-1,"used":-2})"), (Quota{-2, -1}));
    EXPECT_EQ(quotaFrom(R"({"total":10.9,"used":1.5})"), (Quota{1, 10}));
    EXPECT_EQ(quotaFrom(R"({"total":9223372036854775807,"used":9007199254740993})"),
              (Quota{9007199254740993, most}));
    EXPECT_EQ(quotaFrom(R"({"total":1e300,"used":1e3})"), (Quota{1000, most}));
}

TEST_F(RcloneDrive, theRoomIsAbsentWhenItIsNotReported)
{
    for (const char *json : {R"({"used":5})", "{}", "", "[]", R"([{"total":5}])", "5", "null",
                             R"({"total":5)", R"(x{"total":5})", R"({"Total":5})"}) {
        EXPECT_EQ(quotaFrom(json), std::nullopt) << json;
    }
    EXPECT_EQ(quotaFrom(R"({"total":5,"used":1})", 1), std::nullopt);
    EXPECT_EQ(quotaFrom(R"({"total":5,"used":1})", -1), std::nullopt);
}

TEST_F(RcloneDrive, foldersAreAskedForWithLimits)
{
    Rclone::folders(QStringLiteral("a path/of two"), Rclone::driveRemote);
    EXPECT_EQ(
        calls.last().arguments,
        QStringList({QStringLiteral("lsf"), QStringLiteral("vellomar:a path/of two"),
                     QStringLiteral("--dirs-only"), QStringLiteral("--contimeout"),
                     QStringLiteral("10s"), QStringLiteral("--timeout"), QStringLiteral("20s"),
                     QStringLiteral("--retries"), QStringLiteral("1")}));
    EXPECT_EQ(calls.last().config(), configFile());
    EXPECT_FALSE(calls.last().passwordCommand().isEmpty());
    Rclone::folders(QString(), Rclone::serverRemote);
    EXPECT_EQ(calls.last().arguments.value(1), QStringLiteral("vellomar-server:"));
}

TEST_F(RcloneDrive, foldersAreInRclonesOrderWithoutSlashesAroundThem)
{
    EXPECT_EQ(foldersFrom("a/\n"), QStringList({QStringLiteral("a")}));
    EXPECT_EQ(foldersFrom("b/\n\na b/\nB/\n\n\n"),
              QStringList({QStringLiteral("b"), QStringLiteral("a b"), QStringLiteral("B")}));
    EXPECT_EQ(
        foldersFrom("//x/y//\nno slash\n x /"),
        QStringList({QStringLiteral("x/y"), QStringLiteral("no slash"), QStringLiteral(" x ")}));
    EXPECT_EQ(foldersFrom("caff\u00e8, \u65e5\u672c/\n"),
              QStringList({QStringLiteral("caff\u00e8, \u65e5\u672c")}));
}

TEST_F(RcloneDrive, foldersAreNoneOnAFailure)
{
    EXPECT_EQ(foldersFrom(""), QStringList());
    EXPECT_EQ(foldersFrom("a/\n", 3), QStringList());
    EXPECT_EQ(foldersFrom("a/\n", -1), QStringList());
}

} // namespace

#include "tests/support/Files.h"
#include "tests/unit/tools/RcloneFixture.h"

#include <thread>
#include <vector>

namespace {

using RcloneTest = RcloneFixture;

ProcessResult dumped(const char *json, int status = 0)
{
    return {status, QString::fromUtf8(json), QString()};
}

TEST_F(RcloneTest, noFileAtAllIsEncryptedAtTheFirstTouch)
{
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_EQ(commands(), QStringList({encryption}));
    EXPECT_EQ(calls.first().config(), configFile());
    EXPECT_TRUE(calls.first().passwordCommand().contains(QLatin1String("--secret")));
    EXPECT_EQ(calls.first().env.size(), 2);
    EXPECT_EQ(calls.first().input, std::nullopt);
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_EQ(calls.size(), 1);
}

TEST_F(RcloneTest, anEmptyFileIsEncrypted)
{
    writeConfig("");
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_EQ(commands(), QStringList({encryption}));
}

TEST_F(RcloneTest, aPlainFileIsEncrypted)
{
    writeConfig("[vellomar]\n# Encrypted rclone configuration File\n");
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_EQ(commands(), QStringList({encryption}));
}

TEST_F(RcloneTest, aFileWithBytesThatAreNotUTF8IsEncrypted)
{
    writeConfig(QByteArray("\xff\xfe# Encrypted"));
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_EQ(commands(), QStringList({encryption}));
}

TEST_F(RcloneTest, anEncryptedFileIsLeftAlone)
{
    writeConfig(envelope);
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(config(), envelope);
}

TEST_F(RcloneTest, aFileThatRcloneHadSetAsideWhenItWasKilledComesBack)
{
    writeConfig(envelope);
    ASSERT_TRUE(QFile::rename(configFile(), configFile() + QLatin1String(".old3373816731")));
    ASSERT_TRUE(
        writeFile(configFile() + QLatin1String(".old4221691"))); // from before the setting aside
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(config(), envelope);
    EXPECT_FALSE(QFile::exists(configFile() + QLatin1String(".old3373816731")));
}

TEST_F(RcloneTest, aFileThatRcloneHadSetAsideTakesNoOthersPlace)
{
    writeConfig("[vellomar]\n");
    ASSERT_TRUE(QFile::rename(configFile(), configFile() + QLatin1String(".old3373816731")));
    writeConfig(envelope);
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(config(), envelope);
}

TEST_F(RcloneTest, aCopyOfTheUsersOwnStaysWhereItIs)
{
    const QStringList copies{QStringLiteral("rclone.conf.old"), QStringLiteral("rclone.conf.old2"),
                             QStringLiteral("rclone.conf.old20261121"),
                             QStringLiteral("rclone.conf.older3373816731"),
                             QStringLiteral("rclone.conf2")};
    for (const QString &copy : copies) {
        writeConfig("[theirs]\n");
        ASSERT_TRUE(QFile::rename(configFile(), Paths::supportFile(copy)));
    }
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_EQ(config(), envelope); // of nothing
    EXPECT_EQ(supportFiles(), QStringList(QStringLiteral("rclone.conf")) + copies);
}

TEST_F(RcloneTest, withoutAKeyTheFileStaysAsItIs)
{
    refuseKey();
    writeConfig("[vellomar]\n");
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(Rclone::configKey(), std::nullopt);
    EXPECT_EQ(config(), QByteArray("[vellomar]\n"));
}

TEST_F(RcloneTest, aFailureToEncryptIsReportedHoweverRcloneEnds)
{
    for (const int status : {0, 1, -1}) {
        rclone = [status](const Call &) { return ProcessResult{status, {}, {}}; };
        writeConfig("[vellomar]\n");
        EXPECT_FALSE(Rclone::encrypted()) << status;
    }
}

TEST_F(RcloneTest, aFailureToEncryptIsTriedAgain)
{
    const auto healthy = rclone;
    rclone = [](const Call &) { return ProcessResult{0, {}, {}}; };
    writeConfig("[vellomar]\n");
    EXPECT_FALSE(Rclone::encrypted());
    rclone = healthy;
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_EQ(commands(), QStringList({encryption, encryption}));
    EXPECT_EQ(config(), envelope + "[vellomar]\n");
}

TEST_F(RcloneTest, aFileThatIsPlainAgainIsEncryptedAgain)
{
    EXPECT_TRUE(Rclone::encrypted());
    writeConfig("[vellomar]\n");
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_EQ(config(), envelope + "[vellomar]\n");
}

TEST_F(RcloneTest, twoThreadsAtOnceEncryptOnce)
{
    const auto quick = rclone;
    rclone = [&quick](const Call &call) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return quick(call);
    };
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([] { EXPECT_TRUE(Rclone::encrypted()); });
        }
    }
    EXPECT_EQ(commands(), QStringList({encryption}));
}

TEST_F(RcloneTest, theKeyIsMadeOnceAndKept)
{
    secrets.items.clear();
    const auto key = Rclone::configKey();
    ASSERT_TRUE(key);
    EXPECT_EQ(key->size(), 32);
    EXPECT_EQ(secrets.items.value({service, account}), key->toUtf8());
    EXPECT_EQ(Rclone::configKey(), key);
    EXPECT_EQ(secrets.reads, 1);
    EXPECT_EQ(secrets.adds, 1);
}

TEST_F(RcloneTest, theEnvironmentHasAPipeOfItsOwnAndNoKey)
{
    const Rclone::ConfigEnvironment one;
    const Rclone::ConfigEnvironment two(QStringLiteral("/other.conf"));
    EXPECT_EQ(one.variables().value(QStringLiteral("RCLONE_CONFIG")), configFile());
    EXPECT_EQ(two.variables().value(QStringLiteral("RCLONE_CONFIG")),
              QStringLiteral("/other.conf"));
    const QString variable = QStringLiteral("RCLONE_PASSWORD_COMMAND");
    EXPECT_NE(one.variables().value(variable), two.variables().value(variable));
    for (const QString &value : one.variables()) {
        EXPECT_FALSE(value.contains(QLatin1String("key of the configuration")));
    }
    EXPECT_EQ(supportFiles().size(), 2);
}

TEST_F(RcloneTest, withoutAPipeOrAKeyThereIsNoCommand)
{
    ASSERT_TRUE(QDir(Paths::support()).removeRecursively());
    EXPECT_EQ(Rclone::ConfigEnvironment().variables().keys(),
              QStringList({QStringLiteral("RCLONE_CONFIG")}));
}

TEST_F(RcloneTest, remotesAreReadOnceAsLongAsTheFileStays)
{
    writeConfig(envelope, 100);
    rclone = [](const Call &) { return dumped(R"({"vellomar":{"type":"drive","token":"t"}})"); };
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(Rclone::remotes().keys(), QStringList({QStringLiteral("vellomar")}));
    }
    EXPECT_EQ(Rclone::remotes().value(Rclone::driveRemote).value(QLatin1String("type")).toString(),
              QStringLiteral("drive"));
    EXPECT_TRUE(Rclone::isConfigured());
    EXPECT_EQ(commands(), QStringList({dump}));
    EXPECT_EQ(calls.first().config(), configFile());
    EXPECT_FALSE(calls.first().passwordCommand().isEmpty());
}

TEST_F(RcloneTest, aChangeByAnyoneIsSeen)
{
    writeConfig(envelope, 100);
    rclone = [](const Call &) { return dumped(R"({"a":{}})"); };
    EXPECT_EQ(Rclone::remotes().keys(), QStringList({QStringLiteral("a")}));
    rclone = [](const Call &) { return dumped(R"({"b":{}})"); };
    EXPECT_EQ(Rclone::remotes().keys(), QStringList({QStringLiteral("a")}));
    writeConfig(envelope, 200); // an older date is a change as well
    EXPECT_EQ(Rclone::remotes().keys(), QStringList({QStringLiteral("b")}));
    QFile::remove(configFile());
    rclone = [](const Call &) { return dumped("{}"); };
    EXPECT_TRUE(Rclone::remotes().isEmpty());
    EXPECT_EQ(commands(), QStringList({dump, dump, encryption, dump}));
}

TEST_F(RcloneTest, aChangeWhileTheyAreReadIsSeenTheNextTime)
{
    writeConfig(envelope, 200);
    rclone = [this](const Call &) {
        writeConfig(envelope, 100);
        return dumped(R"({"a":{}})");
    };
    EXPECT_EQ(Rclone::remotes().keys(), QStringList({QStringLiteral("a")}));
    rclone = [](const Call &) { return dumped(R"({"b":{}})"); };
    EXPECT_EQ(Rclone::remotes().keys(), QStringList({QStringLiteral("b")}));
}

TEST_F(RcloneTest, anEmptyResultIsKeptToo)
{
    writeConfig(envelope, 100);
    rclone = [](const Call &) { return ProcessResult{1, {}, {}}; };
    EXPECT_TRUE(Rclone::remotes().isEmpty());
    EXPECT_TRUE(Rclone::remotes().isEmpty());
    EXPECT_EQ(calls.size(), 1);
}

TEST_F(RcloneTest, whatIsNoMapOfMapsIsNoRemotes)
{
    int age = 100;
    for (const char *text : {"", "[]", "null", "5", "{", R"({"vellomar":5})",
                             R"({"vellomar":{"token":"t"},"other":[]})", "x{}"}) {
        writeConfig(envelope, age += 100);
        rclone = [text](const Call &) { return dumped(text); };
        EXPECT_TRUE(Rclone::remotes().isEmpty()) << text;
        EXPECT_FALSE(Rclone::isConfigured()) << text;
    }
}

TEST_F(RcloneTest, theExitCodeOfADumpIsNotLookedAt)
{
    writeConfig(envelope, 100);
    rclone = [](const Call &) { return dumped(R"({"a":{}})", 1); };
    EXPECT_EQ(Rclone::remotes().size(), 1);
}

TEST_F(RcloneTest, onlyATokenMakesDriveConnected)
{
    struct Row
    {
        const char *json;
        bool isConfigured;
    };
    int age = 100;
    for (const Row &row :
         {Row{"{}", false}, Row{R"({"vellomar":{}})", false},
          Row{R"({"vellomar":{"type":"drive"}})", false},
          Row{R"({"vellomar-server":{"token":"t"}})", false},
          Row{R"({"vellomar":{"token":"t"}})", true}, Row{R"({"vellomar":{"token":""}})", true}}) {
        writeConfig(envelope, age += 100);
        rclone = [&row](const Call &) { return dumped(row.json); };
        EXPECT_EQ(Rclone::isConfigured(), row.isConfigured) << row.json;
    }
}

TEST_F(RcloneTest, twoThreadsAtOnceRunRcloneOnce)
{
    writeConfig(envelope, 100);
    rclone = [](const Call &) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return dumped(R"({"a":{}})");
    };
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([] { EXPECT_EQ(Rclone::remotes().size(), 1); });
        }
    }
    EXPECT_EQ(commands(), QStringList({dump}));
}

TEST_F(RcloneTest, aPlainFileIsEncryptedBeforeItsFirstReading)
{
    writeConfig("[vellomar]\n", 100);
    Rclone::remotes();
    EXPECT_EQ(commands(), QStringList({encryption, dump}));
}

TEST_F(RcloneTest, disconnectDeletesTheDriveRemote)
{
    rclone = [](const Call &) { return ProcessResult{1, {}, {}}; };
    Rclone::disconnect();
    EXPECT_EQ(commands(), QStringList({encryption, QStringLiteral("config delete vellomar")}));
    EXPECT_EQ(calls.last().config(), configFile());
    EXPECT_FALSE(calls.last().passwordCommand().isEmpty());
}

TEST_F(RcloneTest, obscureHandsTheSecretToStandardInput)
{
    rclone = [](const Call &) { return dumped(" \n\tscrambled text \r\n"); };
    EXPECT_EQ(Rclone::obscure(QStringLiteral("secret")), QStringLiteral("scrambled text"));
    EXPECT_EQ(commands(), QStringList({QStringLiteral("obscure -")}));
    EXPECT_EQ(calls.first().input, QStringLiteral("secret"));
    EXPECT_TRUE(calls.first().env.isEmpty());
}

TEST_F(RcloneTest, obscureFailsWithRclone)
{
    rclone = [](const Call &) { return dumped("scrambled", 1); };
    EXPECT_EQ(Rclone::obscure(QStringLiteral("secret")), std::nullopt);
    rclone = [](const Call &) { return dumped(" \n"); };
    EXPECT_EQ(Rclone::obscure(QStringLiteral("secret")), std::nullopt);
}

TEST_F(RcloneTest, obscureTakesASingleLineOnly)
{
    rclone = [](const Call &) { return dumped("scrambled"); };
    for (const char *text : {"\n", "a\nb", "a\n", "\na", "a\r\nb", "a\r\n", "a\r"}) {
        EXPECT_EQ(Rclone::obscure(QString::fromUtf8(text)), std::nullopt);
    }
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(Rclone::obscure(QStringLiteral("a\rb")), QStringLiteral("scrambled"));
}

TEST(RcloneLastError, isTheLastLineWithoutDateAndLevel)
{
    const auto said = [](const char *text) { return Rclone::lastError(QString::fromUtf8(text)); };
    EXPECT_EQ(said(""), std::nullopt);
    EXPECT_EQ(said("\n\n"), std::nullopt);
    EXPECT_EQ(said("2024/03/01 10:00:00 ERROR : Fatal error: x"), QStringLiteral("x"));
    EXPECT_EQ(said("first\n2024/03/01 10:00:00 ERROR : Fatal error: x\n\n"), QStringLiteral("x"));
    EXPECT_EQ(said("2024/03/01 10:00:00 NOTICE: y"), QStringLiteral("y"));
    EXPECT_EQ(said("2024/03/01 10:00:00 Fatal error: y"),
              QStringLiteral("2024/03/01 10:00:00 Fatal error: y"));
    EXPECT_EQ(said("2024/03/01 10:00:00 ERROR : a: b: Fatal error: c"),
              QStringLiteral("a: b: Fatal error: c"));
    EXPECT_EQ(said("just words"), QStringLiteral("just words"));
    EXPECT_EQ(said(" 2024/03/01 10:00:00 ERROR : x"),
              QStringLiteral(" 2024/03/01 10:00:00 ERROR : x"));
    EXPECT_EQ(said("2024/03/01 10:00:00 ERROR : "), QString());
}

} // namespace

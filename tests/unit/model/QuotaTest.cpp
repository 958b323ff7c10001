#include "model/Background.h"
#include "tests/support/ModelFixture.h"

namespace {

using Room = std::optional<Rclone::Quota>;

/// Connections whose servers report how much room they have.
class Quota : public ModelFixture
{
protected:
    void connectDrive() { tools.setRemotes(QStringLiteral(R"({"vellomar": {"token": "t"}})")); }
    void connectServer()
    {
        tools.setRemotes(QStringLiteral(R"({"vellomar-server": {"type": "s3"}})"));
    }
    void tell(const QString &remote, qint64 used, qint64 total)
    {
        tools.answer(question(remote),
                     ScriptedTools::ended(
                         0, QStringLiteral(R"({"total":%1,"used":%2})").arg(total).arg(used)));
    }
    void refuse(const QString &remote) { tools.answer(question(remote), ScriptedTools::ended(1)); }
    [[nodiscard]] qsizetype questions(const QString &remote)
    {
        return tools.count(QStringLiteral("rclone"), QStringLiteral("about %1:").arg(remote));
    }
    [[nodiscard]] qsizetype versioningQuestions()
    {
        return tools.count(QStringLiteral("rclone"), QStringLiteral("backend versioning"));
    }
    void tellVersioning(const QString &bucket, const QString &word)
    {
        tools.answer(QLatin1String("backend versioning vellomar-server:") + bucket,
                     ScriptedTools::ended(0, word + u'\n'));
    }

    const QString drive = QStringLiteral("vellomar");
    const QString server = QStringLiteral("vellomar-server");

private:
    static QString question(const QString &remote)
    {
        return QStringLiteral("about %1: --json").arg(remote);
    }
};

TEST_F(Quota, withNothingConnectedNobodyIsAsked)
{
    start();
    settle();
    model->refreshQuota();
    settle();
    EXPECT_EQ(questions(drive), 0);
    EXPECT_EQ(questions(server), 0);
    EXPECT_EQ(model->connections()->drive().quota, std::nullopt);
    EXPECT_EQ(model->connections()->server().quota, std::nullopt);
}

TEST_F(Quota, theStartAsksWhatIsConnected)
{
    tools.connectRemotes();
    tell(drive, 5, 15);
    tell(server, 7, 70);
    start();
    EXPECT_EQ(model->connections()->drive().quota, std::nullopt);
    settle();
    EXPECT_EQ(model->connections()->drive().quota, Room({.used = 5, .total = 15}));
    EXPECT_EQ(model->connections()->server().quota, Room({.used = 7, .total = 70}));
    EXPECT_EQ(questions(drive), 1);
    EXPECT_EQ(questions(server), 1);
}

TEST_F(Quota, connectedCountsAndNotInUse)
{
    connectDrive();
    config.driveEnabled = false;
    config.serverEnabled = true;
    tell(drive, 5, 15);
    start();
    settle();
    EXPECT_EQ(model->connections()->drive().quota, Room({.used = 5, .total = 15}));
    EXPECT_EQ(questions(server), 0);
}

TEST_F(Quota, theEndOfARunDoesNotAsk)
{
    tools.connectRemotes();
    start();
    settle();
    EngineLookalike engine;
    leaveStatus(engine.pid());
    tick();
    ASSERT_TRUE(model->run()->status());
    engine.kill();
    tick();
    ASSERT_FALSE(model->run()->status());
    settle();
    EXPECT_EQ(questions(drive), 1);
    EXPECT_EQ(questions(server), 1);
}

TEST_F(Quota, anotherAnswerReplacesTheOldOneAndIsReportedOnce)
{
    connectDrive();
    tell(drive, 5, 15);
    start();
    settle();
    const SignalCount changes(model->connections(), &Connections::driveChanged);
    model->refreshQuota();
    settle();
    EXPECT_EQ(changes.count(), 0);
    tell(drive, 6, 15);
    model->refreshQuota();
    // It stays on show while it is asked for again.
    EXPECT_EQ(model->connections()->drive().quota, Room({.used = 5, .total = 15}));
    settle();
    EXPECT_EQ(model->connections()->drive().quota, Room({.used = 6, .total = 15}));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(Quota, whatIsAskedAndDoesNotAnswerHasNoneAnyMore)
{
    tools.connectRemotes();
    tell(drive, 5, 15);
    tell(server, 7, 70);
    start();
    settle();
    refuse(drive);
    tools.answer(QStringLiteral("about vellomar-server: --json"),
                 ScriptedTools::ended(0, QStringLiteral(R"({"used":7})")));
    model->refreshQuota();
    settle();
    EXPECT_EQ(model->connections()->drive().quota, std::nullopt);
    EXPECT_EQ(model->connections()->server().quota, std::nullopt);
    EXPECT_EQ(model->connections()->drive().error, QString());
    EXPECT_EQ(model->connections()->server().error, QString());
}

TEST_F(Quota, anS3ServerIsAskedForTheVersioningOfItsBucket)
{
    connectServer();
    config.serverKind = ServerKind::S3;
    config.serverPath = QStringLiteral("//bucket/and/more");
    tellVersioning(QStringLiteral("bucket"), QStringLiteral("Enabled"));
    start();
    settle();
    EXPECT_EQ(model->connections()->server().versioning, QStringLiteral("Enabled"));
    tellVersioning(QStringLiteral("bucket"), QStringLiteral("Suspended"));
    model->refreshQuota();
    settle();
    EXPECT_EQ(model->connections()->server().versioning, QStringLiteral("Suspended"));
    tools.answer(QStringLiteral("backend versioning vellomar-server:bucket"),
                 ScriptedTools::ended(1));
    model->refreshQuota();
    settle();
    EXPECT_EQ(model->connections()->server().versioning, QString());
}

TEST_F(Quota, anS3ServerWithoutABucketHasNoVersioning)
{
    connectServer();
    config.serverKind = ServerKind::S3;
    config.serverPath = QStringLiteral("/");
    start();
    settle();
    EXPECT_EQ(model->connections()->server().versioning, QString());
    EXPECT_EQ(versioningQuestions(), 0);
    EXPECT_EQ(questions(server), 1);
}

TEST_F(Quota, otherServersAreNotAskedForVersioning)
{
    connectServer();
    for (const ServerKind kind : {ServerKind::Sftp, ServerKind::Webdav, ServerKind::Smb}) {
        config.serverKind = kind;
        start();
        settle();
        EXPECT_EQ(versioningQuestions(), 0);
        EXPECT_EQ(model->connections()->server().versioning, QString());
    }
}

TEST_F(Quota, aQuestionUnderWayKeepsTheSettingsThatItBeganWith)
{
    connectServer();
    config.serverKind = ServerKind::S3;
    config.serverPath = QStringLiteral("first/x");
    tellVersioning(QStringLiteral("first"), QStringLiteral("Enabled"));
    tools.holdRclone();
    start();
    ASSERT_TRUE(eventuallyInLoop([this] { return tools.held() == 1; }));
    change([](AppConfig &settings) { settings.serverPath = QStringLiteral("second/x"); });
    tools.letGo();
    settle();
    EXPECT_EQ(model->connections()->server().versioning, QStringLiteral("Enabled"));
}

TEST_F(Quota, theWindowGoesOnMeanwhileAndTheModelMayGo)
{
    tools.connectRemotes();
    tell(drive, 5, 15);
    tools.holdRclone();
    start();
    ASSERT_TRUE(eventuallyInLoop([this] { return tools.held() == 1; }));
    EXPECT_EQ(model->connections()->drive().quota, std::nullopt);
    model.reset();
    tools.letGo();
    settle();
    // The work ended after its owner was gone.
    EXPECT_EQ(questions(server), 1);
}

} // namespace

#include "tests/support/WebdavServer.h"
#include "tests/support/ServerStory.h"
#include "tools/Rclone.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Webdav : public ServerStory
{
protected:
    Webdav()
    {
        config.serverKind = ServerKind::Webdav;
        config.serverUser = WebdavServer::user();
    }

    void start(WebdavServer &server)
    {
        ASSERT_TRUE(server.start()) << qPrintable(server.output());
        config.serverHost = server.url();
    }
};

TEST_F(Webdav, aWholeLifeOverHttp)
{
    WebdavServer server;
    start(server);
    expectWholeLife(WebdavServer::password());
    EXPECT_EQ(snapshotCount(server.folder() + QLatin1String("/backups/a mac")), 1);
}

TEST_F(Webdav, aWholeLifeOverHttpsWithACertificateThatIsTrusted)
{
    WebdavServer server({.isEncrypted = true});
    start(server);
    qputenv("SSL_CERT_FILE", server.certificate().toUtf8());
    expectWholeLife(WebdavServer::password());
    EXPECT_EQ(snapshotCount(server.folder() + QLatin1String("/backups/a mac")), 1);
}

TEST_F(Webdav, aCertificateThatNobodySignedIsRefused)
{
    WebdavServer server({.isEncrypted = true});
    start(server);
    EXPECT_THAT(refusal(WebdavServer::password()),
                HasSubstr("certificate signed by unknown authority"));
}

TEST_F(Webdav, aWrongPasswordIsRefused)
{
    WebdavServer server;
    start(server);
    EXPECT_EQ(refusal(QStringLiteral("not the password")), accessText);
    EXPECT_EQ(refusal({}), accessText);
}

TEST_F(Webdav, aWrongUserIsRefused)
{
    WebdavServer server;
    start(server);
    config.serverUser = QStringLiteral("berta");
    EXPECT_EQ(refusal(WebdavServer::password()), accessText);
}

TEST_F(Webdav, aWrongPasswordIsRefusedOverHttpsToo)
{
    WebdavServer server({.isEncrypted = true});
    start(server);
    qputenv("SSL_CERT_FILE", server.certificate().toUtf8());
    EXPECT_EQ(refusal(QStringLiteral("not the password")), accessText);
}

TEST_F(Webdav, aFolderThatIsForbiddenIsRefused)
{
    WebdavServer server;
    start(server);
    config.serverHost = server.closedUrl();
    EXPECT_EQ(refusal(WebdavServer::password()), accessText);
}

TEST_F(Webdav, aFolderThatIsNotThereIsReportedAsByRclone)
{
    WebdavServer server;
    start(server);
    config.serverHost += QLatin1String("/nowhere");
    EXPECT_THAT(refusal(WebdavServer::password()), HasSubstr("directory not found"));
}

TEST_F(Webdav, aServerThatIsDownIsUnreachable)
{
    const WebdavServer server;
    config.serverHost = server.url();
    EXPECT_EQ(refusal(WebdavServer::password()), unreachableText);
}

TEST_F(Webdav, aNameThatNobodyHasIsUnreachable)
{
    config.serverHost = QStringLiteral("http://no-such-server.invalid");
    EXPECT_EQ(refusal(WebdavServer::password()), unreachableText);
}

TEST_F(Webdav, anAddressWithoutSchemeIsReportedAsByRclone)
{
    WebdavServer server;
    start(server);
    config.serverHost = QLatin1String("127.0.0.1:") + server.portText();
    EXPECT_THAT(refusal(WebdavServer::password()),
                StartsWith("Failed to create file system for \"vellomar-server:\""));
    config.serverHost = QStringLiteral("localhost");
    EXPECT_THAT(refusal(WebdavServer::password()), HasSubstr("unsupported protocol scheme"));
}

TEST_F(Webdav, httpsToAServerThatSpeaksHttpIsReportedAsByRclone)
{
    WebdavServer server;
    start(server);
    config.serverHost = QLatin1String("https://127.0.0.1:") + server.portText();
    EXPECT_THAT(refusal(WebdavServer::password()), HasSubstr("HTTP response to HTTPS client"));
}

TEST_F(Webdav, aServerThatAsksForNothingNeedsNoSecret)
{
    WebdavServer server({.isGuarded = false});
    start(server);
    config.serverUser.clear();
    ASSERT_EQ(connect(), std::nullopt);
    EXPECT_EQ(section(), (QJsonObject{{QStringLiteral("type"), QStringLiteral("webdav")},
                                      {QStringLiteral("url"), server.url()},
                                      {QStringLiteral("vendor"), QStringLiteral("other")},
                                      {QStringLiteral("user"), QString()},
                                      {QStringLiteral("pass"), QString()}}));
    expectWholeLife({});
}

TEST_F(Webdav, blanksAroundAddressAndUserDoNotCount)
{
    WebdavServer server;
    start(server);
    config.serverHost = QLatin1String("  ") + server.url() + QLatin1String("\t ");
    config.serverUser = QLatin1String("\t") + WebdavServer::user() + QLatin1String(" \n");
    ASSERT_EQ(connect(WebdavServer::password()), std::nullopt);
    EXPECT_EQ(section().value(QLatin1String("url")), server.url());
    EXPECT_EQ(section().value(QLatin1String("user")), WebdavServer::user());
    EXPECT_FALSE(section().value(QLatin1String("pass")).toString().isEmpty());
    EXPECT_FALSE(isThere("known_hosts"));
}

TEST_F(Webdav, aRefusedAttemptTakesTheEarlierConnectionAway)
{
    WebdavServer server;
    start(server);
    ASSERT_EQ(connect(WebdavServer::password()), std::nullopt);
    ASSERT_FALSE(section().isEmpty());
    EXPECT_EQ(refusal(QStringLiteral("not the password")), accessText);
}

} // namespace

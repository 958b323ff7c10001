#include "tests/support/S3Server.h"
#include "tests/support/ServedFolder.h"
#include "tests/support/ServerStory.h"
#include "tests/support/SmbServer.h"
#include "tools/Rclone.h"

// Passwords may hold any character: each reaches the server as it was typed, or the connection
// isn't made and the message says so.
namespace {

QStringList plainSecrets()
{
    return {QStringLiteral("\"double\" 'single'"),
            QStringLiteral("\"in double quotes\""),
            QStringLiteral("'in single quotes'"),
            QStringLiteral("blanks  inside it"),
            QStringLiteral("100% of %s and %"),
            QStringLiteral("=a=b = c="),
            QStringLiteral(";semi;colons;"),
            QStringLiteral("#hash # hash"),
            QStringLiteral("\\back\\slash\\n\\"),
            QStringLiteral("[section] key: value"),
            QStringLiteral("-rf ${HOME} $(id)"),
            QString(1000, u'l'),
            QStringLiteral(
                "citt\u00e0 \u65e5\u672c\u8a9e \u041f\u0430\u0440\u043e\u043b\u044c \U0001f600")};
}

// Those that rclone's file would change if they stood in it as they are.
QStringList changingSecrets()
{
    return {QStringLiteral("back`tick"), QStringLiteral("`in backticks`"),
            QStringLiteral("\"\"\"three quotes\"\"\""), QStringLiteral("a %(type)s reference"),
            QStringLiteral("%(nothing)s at all")};
}

// Blanks that rclone's file doesn't keep.
QStringList blankSecrets()
{
    return {QStringLiteral(" blank in front"), QStringLiteral("blank behind "),
            QStringLiteral("\ttabs around\t")};
}

QStringList withLineBreaks(const QStringList &breaks)
{
    QStringList secrets;
    for (const QString &lineBreak : breaks) {
        secrets << QString(QLatin1String("before") + lineBreak + QLatin1String("behind"))
                << QString(QLatin1String("only-behind") + lineBreak)
                << QString(lineBreak + QLatin1String("only-before"));
    }
    return secrets;
}

QStringList lineFeeds()
{
    return {QStringLiteral("\n"), QStringLiteral("\r\n")};
}

QStringList otherBreaks()
{
    return {QStringLiteral("\v"), QStringLiteral("\f"), QString(QChar(0x85)),
            QString(QChar(0x2028)), QString(QChar(0x2029))};
}

class ServerSecrets : public ServerStory
{
protected:
    /// Expects that a secret is refused before the server, which isn't even there, is asked.
    void expectNotConfigured(const QString &secret)
    {
        SCOPED_TRACE(secret.toStdString());
        EXPECT_EQ(connect(secret), QStringLiteral("Configurazione non riuscita"));
        expectNothingLeft();
    }
    static QString setting(const char *key)
    {
        return section().value(QLatin1String(key)).toString();
    }
    /// Starts an S3 server with a user for each secret, whose name is its place in the list.
    void startWithUsers(S3Server &server, const QStringList &secrets)
    {
        for (qsizetype i = 0; i < secrets.size(); ++i) {
            server.addUser(QString::number(i), secrets.at(i));
        }
        ASSERT_TRUE(server.start()) << qPrintable(server.output());
        config.serverKind = ServerKind::S3;
        config.serverHost = server.endpoint();
    }
    /// Expects that the section has the secret, in the form that rclone can undo.
    static void expectObscured(const QString &secret)
    {
        const ProcessResult revealed =
            runProcess(Installation::realTool(QStringLiteral("rclone")),
                       {QStringLiteral("reveal"), QStringLiteral("--"), setting("pass")});
        EXPECT_EQ(revealed.standardOutput, QString(secret + u'\n'));
    }
    void useAbsentServer(ServerKind kind)
    {
        const QString port = QString::number(Daemon::freePort());
        const bool hasPort = kind == ServerKind::Sftp || kind == ServerKind::Smb;
        config.serverKind = kind;
        config.serverHost = hasPort ? QStringLiteral("127.0.0.1")
                                    : QString(QLatin1String("http://127.0.0.1:") + port);
        config.serverPort = hasPort ? port : QString();
        config.serverUser = QStringLiteral("anna");
    }
    /// Expects that each secret opens a server whose password it is.
    void expectLogins(ServerKind kind, const QStringList &secrets)
    {
        for (const QString &secret : secrets) {
            SCOPED_TRACE(secret.toStdString());
            ServedFolder server(rawValue(kind), secret);
            ASSERT_TRUE(server.start()) << qPrintable(server.output());
            config.serverKind = kind;
            config.serverHost = server.host();
            config.serverPort = server.port();
            config.serverUser = ServedFolder::user();
            EXPECT_EQ(connect(secret), std::nullopt);
            expectObscured(secret);
        }
    }
};

TEST_F(ServerSecrets, everySecretOpensAWebdavServer)
{
    expectLogins(ServerKind::Webdav, plainSecrets() + changingSecrets() + blankSecrets());
}

TEST_F(ServerSecrets, everySecretOpensAnSftpServer)
{
    expectLogins(ServerKind::Sftp, plainSecrets() + changingSecrets() + blankSecrets());
}

TEST_F(ServerSecrets, theWrongOneOfTwoThatLookAlikeIsRefused)
{
    ServedFolder server(QStringLiteral("webdav"), QStringLiteral("blank behind"));
    ASSERT_TRUE(server.start()) << qPrintable(server.output());
    config.serverKind = ServerKind::Webdav;
    config.serverHost = server.host();
    config.serverUser = ServedFolder::user();
    EXPECT_EQ(connect(QStringLiteral("blank behind ")),
              QStringLiteral("Accesso rifiutato: controlla utente e password."));
    expectNothingLeft();
}

TEST_F(ServerSecrets, oneOfEveryCharacterOpensAnSmbServer)
{
    SmbServer server(QStringLiteral(" \"a\" 'b' `c` %(type)s 100% =;#\\ citt\u00e0 \u65e5\u672c "));
    ASSERT_TRUE(server.start()) << qPrintable(server.output());
    config.serverKind = ServerKind::Smb;
    config.serverHost = QStringLiteral("127.0.0.1");
    config.serverPort = server.portText();
    config.serverUser = server.user();
    EXPECT_EQ(connect(server.password()), std::nullopt);
    expectObscured(server.password());
}

TEST_F(ServerSecrets, theySurviveInTheSectionOfAnS3ServerAsTyped)
{
    S3Server server;
    const QStringList secrets = plainSecrets();
    startWithUsers(server, secrets);
    for (qsizetype i = 0; i < secrets.size(); ++i) {
        SCOPED_TRACE(secrets.at(i).toStdString());
        config.serverUser = S3Server::accessKey(QString::number(i));
        EXPECT_EQ(connect(secrets.at(i)), std::nullopt);
        EXPECT_EQ(setting("secret_access_key"), secrets.at(i));
    }
}

// rclone's file drops them, and then the server says no.
TEST_F(ServerSecrets, blanksAroundOneAreRefusedByAnS3Server)
{
    S3Server server;
    const QStringList secrets = blankSecrets();
    startWithUsers(server, secrets);
    for (qsizetype i = 0; i < secrets.size(); ++i) {
        SCOPED_TRACE(secrets.at(i).toStdString());
        config.serverUser = S3Server::accessKey(QString::number(i));
        EXPECT_EQ(connect(secrets.at(i)),
                  QStringLiteral("Accesso rifiutato: controlla utente e password."));
        expectNothingLeft();
    }
}

TEST_F(ServerSecrets, whatTheFileWouldChangeIsNotStoredForAnS3Server)
{
    useAbsentServer(ServerKind::S3);
    for (const QString &secret : changingSecrets()) {
        expectNotConfigured(secret);
    }
}

TEST_F(ServerSecrets, aLineBreakOfAnyKindIsNotStoredForAnS3Server)
{
    useAbsentServer(ServerKind::S3);
    for (const QString &secret :
         withLineBreaks(lineFeeds() + otherBreaks() + QStringList{QStringLiteral("\r")})) {
        expectNotConfigured(secret);
    }
}

// The others' secrets are scrambled first, and so can't break the file; but rclone would take the
// first line for all of it.
TEST_F(ServerSecrets, aLineFeedIsNotStoredForAnyServer)
{
    for (const ServerKind kind : {ServerKind::Webdav, ServerKind::Sftp, ServerKind::Smb}) {
        SCOPED_TRACE(rawValue(kind).toStdString());
        useAbsentServer(kind);
        for (const QString &secret : withLineBreaks(lineFeeds())) {
            expectNotConfigured(secret);
        }
        expectNotConfigured(QStringLiteral("carriage return behind\r"));
    }
}

TEST_F(ServerSecrets, everyOtherLineBreakOpensAWebdavServer)
{
    expectLogins(ServerKind::Webdav,
                 withLineBreaks(otherBreaks()) +
                     QStringList{QStringLiteral("in\rside"), QStringLiteral("\rin front")});
}

} // namespace

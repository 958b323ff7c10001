#include "state/Paths.h"
#include "tests/support/BackupHome.h"
#include "tests/support/Files.h"
#include "tests/support/S3Server.h"
#include "tests/support/SecretWitness.h"
#include "tests/support/ServedFolder.h"
#include "tests/support/SmbServer.h"
#include "tools/Rclone.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// A connection to each kind of server, good and refused, watched by its system calls.
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr auto goodSecret = "TypedByThePersonAtTheWindow4321";
constexpr auto wrongSecret = "MistypedByThePersonAtTheWindow9876";

/// Any of the servers, with goodSecret for its password.
class AnyServer
{
public:
    explicit AnyServer(const QString &kind)
        : m_kind(kind)
        , m_folder(kind, QLatin1String(goodSecret))
    {
    }

    bool start()
    {
        m_settings = {{QStringLiteral("kind"), m_kind}};
        if (m_kind == QLatin1String("s3")) {
            m_s3.addUser(QStringLiteral("berta"), QLatin1String(goodSecret));
            set(m_s3.endpoint(), {}, S3Server::accessKey(QStringLiteral("berta")));
            return m_s3.start();
        }
        if (m_kind == QLatin1String("smb")) {
            set(QStringLiteral("127.0.0.1"), m_smb.portText(), m_smb.user());
            return m_smb.start();
        }
        set(m_folder.host(), m_folder.port(), ServedFolder::user());
        return m_folder.start();
    }

    /// What to connect with, as the helper program reads it.
    [[nodiscard]] QByteArray settings(const char *secret) const
    {
        QJsonObject settings = m_settings;
        settings.insert(QStringLiteral("secret"), QLatin1String(secret));
        return QJsonDocument(settings).toJson();
    }

private:
    void set(const QString &host, const QString &port, const QString &user)
    {
        m_settings.insert(QStringLiteral("host"), host);
        m_settings.insert(QStringLiteral("port"), port);
        m_settings.insert(QStringLiteral("user"), user);
    }

    QString m_kind;
    QJsonObject m_settings;
    ServedFolder m_folder;
    S3Server m_s3;
    SmbServer m_smb{QLatin1String(goodSecret)};
};

class ConnectionSecrets : public testing::TestWithParam<const char *>
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(home.isReady());
        ASSERT_TRUE(QFile::remove(Paths::supportFile(QStringLiteral("rclone.conf"))));
        ASSERT_TRUE(server.start());
    }

    [[nodiscard]] bool isS3() const { return kind == QLatin1String("s3"); }

    /// Expects that a text is in the short-lived copy of rclone's file and nowhere else.
    static void expectOnlyInCopy(const SecretWitness &witness, const QByteArray &text)
    {
        const QByteArrayList leaks = witness.leaks({text});
        ASSERT_THAT(leaks, SizeIs(1));
        EXPECT_THAT(leaks.first().toStdString(),
                    HasSubstr(Paths::support().toStdString() + "/rclone-"));
        EXPECT_THAT(witness.calls("write", text), testing::Contains(leaks.first()));
    }
    /// Expects that a typed secret is scrambled before it gets into a file, but for S3, and that
    /// the keys of rclone's file and of the repositories are in none.
    void expectHidden(const SecretWitness &witness, const char *secret) const
    {
        EXPECT_THAT(witness.calls("execve", "\"lsd\""), Not(IsEmpty()));
        EXPECT_THAT(witness.calls("execve", "RCLONE_PASSWORD_COMMAND="), Not(IsEmpty()));
        if (isS3()) {
            expectOnlyInCopy(witness, secret);
        } else {
            EXPECT_THAT(witness.handOvers(secret), Not(IsEmpty()));
            EXPECT_THAT(witness.leaks({secret}), IsEmpty());
        }
        EXPECT_THAT(witness.leaks(BackupHome::secrets()), IsEmpty());
        EXPECT_TRUE(
            readFile(Paths::supportFile(QStringLiteral("rclone.conf"))).startsWith("# Encrypted"));
    }

    BackupHome home;
    const QString kind = QLatin1String(GetParam());
    AnyServer server{kind};
    const QStringList usualNames{QStringLiteral("config.json"), QStringLiteral("rclone.conf"),
                                 QStringLiteral("state.json")};
};

TEST_P(ConnectionSecrets, areHiddenInAConnectionThatWorks)
{
    const SecretWitness witness(QStringLiteral(CONNECT_SERVER), {}, server.settings(goodSecret));
    ASSERT_EQ(witness.exitCode(), 0);
    expectHidden(witness, goodSecret);
    const QJsonObject section = Rclone::remotes().value(Rclone::serverRemote);
    if (!isS3()) {
        const QByteArray scrambled = section.value(QLatin1String("pass")).toString().toUtf8();
        ASSERT_FALSE(scrambled.isEmpty());
        expectOnlyInCopy(witness, scrambled);
    }
    EXPECT_EQ(section.value(QLatin1String("type")), kind);
    QStringList names = usualNames;
    if (kind == QLatin1String("sftp")) {
        names.insert(1, QStringLiteral("known_hosts"));
    }
    EXPECT_EQ(supportFiles(), names);
}

TEST_P(ConnectionSecrets, areHiddenInAConnectionThatIsRefused)
{
    const SecretWitness witness(QStringLiteral(CONNECT_SERVER), {}, server.settings(wrongSecret));
    ASSERT_EQ(witness.exitCode(), 1);
    expectHidden(witness, wrongSecret);
    EXPECT_THAT(witness.handOvers("Accesso rifiutato: controlla utente e password."), SizeIs(1))
        << witness.output().constData();
    EXPECT_TRUE(Rclone::remotes().isEmpty());
    EXPECT_EQ(supportFiles(), usualNames);
}

INSTANTIATE_TEST_SUITE_P(Kinds, ConnectionSecrets, testing::Values("sftp", "smb", "webdav", "s3"));

} // namespace

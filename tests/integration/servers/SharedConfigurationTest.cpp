#include "state/Keychain.h"
#include "tests/support/Cycle.h"
#include "tests/support/CycleHome.h"
#include "tests/support/Files.h"
#include "tests/support/ManualClock.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/Waiting.h"
#include "tools/OneShotSecret.h"
#include "tools/Rclone.h"

#include <QDir>
#include <QRegularExpression>

#include <array>
#include <functional>
#include <memory>

#include <csignal>
#include <unistd.h>

// The configuration while several processes use it, and when the process that writes it is killed.
namespace {

constexpr int patienceMilliseconds = 60000;

QString configuration()
{
    return Paths::supportFile(QStringLiteral("rclone.conf"));
}

/// A program run beside the test, which ends with the object, and all that it started with it.
class Companion
{
public:
    Companion() { m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel); }
    ~Companion() { kill(); }
    Companion(const Companion &) = delete;
    Companion &operator=(const Companion &) = delete;
    Companion(Companion &&) = delete;
    Companion &operator=(Companion &&) = delete;

    bool start(const QString &program, const QStringList &arguments)
    {
        m_process.start(program, arguments);
        return m_process.waitForStarted(patienceMilliseconds);
    }
    /// Ends it and all that it started at the same moment.
    void kill()
    {
        if (isRunning()) {
            killWithAllItStarted(m_process.processId());
            m_process.waitForFinished(patienceMilliseconds);
        }
    }
    bool finish()
    {
        m_process.closeWriteChannel();
        return m_process.waitForFinished(patienceMilliseconds) &&
               m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    }
    bool isRunning() { return !m_process.waitForFinished(0) && m_process.processId() > 0; }
    QByteArray output()
    {
        m_process.waitForReadyRead(0);
        return m_process.readAllStandardOutput();
    }

private:
    QProcess m_process;
};

class SharedConfiguration : public CycleHome
{
protected:
    SharedConfiguration()
    {
        const QByteArray key = "key of the configuration";
        EXPECT_TRUE(storeSecret(Keychain::rcloneConfigKey, key));
        secrets.items[{QStringLiteral("it.vellomar.app"), Keychain::rcloneConfigKey}] = key;
        EXPECT_TRUE(store(QStringLiteral("a0")));
    }

    static bool store(const QString &name)
    {
        return Rclone::store(name, {{QStringLiteral("type"), QStringLiteral("webdav")},
                                    {QStringLiteral("pass"), QString(2000, u'p')},
                                    {QStringLiteral("last"), QStringLiteral("setting")}});
    }
    static QStringList supportNames(const QString &pattern)
    {
        return supportFiles().filter(QRegularExpression(pattern));
    }

    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
};

TEST_F(SharedConfiguration, isWholeToTwoReadersAtEveryMomentOfAStore)
{
    std::array<Companion, 2> readers;
    std::array<QByteArray, 2> outputs;
    const auto hear = [&](const QByteArray &line) {
        return eventually([&] {
            bool everyone = true;
            for (size_t i = 0; i < readers.size(); ++i) {
                outputs[i] += readers[i].output();
                everyone = everyone && outputs[i].contains(QByteArray(line + '\n'));
            }
            return everyone;
        });
    };
    for (Companion &reader : readers) {
        ASSERT_TRUE(reader.start(QStringLiteral(USE_CONFIGURATION), {QStringLiteral("read")}));
    }
    ASSERT_TRUE(hear("a0"));
    static constexpr int stores = 8;
    QByteArray all = "a0";
    QByteArrayList possible{all};
    for (int i = 1; i <= stores; ++i) {
        const QString name = QStringLiteral("a%1").arg(i);
        ASSERT_TRUE(store(name));
        possible.append(all += ' ' + name.toUtf8());
    }
    ASSERT_TRUE(hear(all));
    for (size_t i = 0; i < readers.size(); ++i) {
        EXPECT_TRUE(readers[i].finish());
        outputs[i] += readers[i].output();
        const QByteArrayList lines = outputs[i].split('\n');
        qsizetype newest = 0;
        for (const QByteArray &line : lines.first(lines.size() - 1)) {
            const qsizetype step = possible.indexOf(line);
            ASSERT_GE(step, newest) << line.constData();
            newest = step;
        }
    }
}

class KilledStore : public SharedConfiguration
{
protected:
    KilledStore() { before = readFile(configuration()); }

    /// Stores "a1" in a process whose renamings, and those of its rclone, each wait a while, and
    /// kills both as soon as the condition holds; false when it never did.
    bool killWhen(const std::function<bool()> &condition)
    {
        Companion companion;
        EXPECT_TRUE(companion.start(
            QStringLiteral("strace"),
            {QStringLiteral("-f"), QStringLiteral("-qq"), QStringLiteral("-o"),
             QStringLiteral("/dev/null"), QStringLiteral("-e"),
             QStringLiteral("trace=?rename,?renameat,renameat2"), QStringLiteral("-e"),
             QStringLiteral("inject=?rename,?renameat,renameat2:delay_enter=1500000"),
             QStringLiteral(USE_CONFIGURATION), QStringLiteral("store"), QStringLiteral("a1")}));
        EXPECT_TRUE(eventually([&] { return condition() || !companion.isRunning(); }));
        const bool isKilled = companion.isRunning();
        companion.kill();
        return isKilled && condition();
    }
    /// The content of the one file with such a name; empty when there is none.
    static QByteArray content(const QString &pattern)
    {
        const QStringList names = supportNames(pattern);
        return names.size() == 1 ? readFile(Paths::supportFile(names.first())) : QByteArray();
    }
    /// What the next start finds and what it leaves.
    void expectOldFile()
    {
        EXPECT_EQ(readFile(configuration()), before);
        EXPECT_EQ(Rclone::remotes().keys(), QStringList{QStringLiteral("a0")});
        tidyUp();
        EXPECT_TRUE(store(QStringLiteral("a1"))); // as if nothing had been
        EXPECT_EQ(Rclone::remotes().size(), 2);
    }
    static void tidyUp()
    {
        ManualClock clock(QDateTime::currentDateTimeUtc().addSecs(61));
        const ScopedClock later(clock);
        OneShotSecret::removeStale();
        EXPECT_EQ(supportNames(QStringLiteral("^k-|^rclone")).join(u' '),
                  QStringLiteral("rclone.conf"));
    }

    const QString copy = QStringLiteral("^rclone-.*\\.conf$");
    const QString newBesideCopy = QStringLiteral("^rclone-.*\\.conf[0-9]+$");
    const QString oldBesideCopy = QStringLiteral("^rclone-.*\\.conf\\.old[0-9]+$");
    const QByteArray plain = "PasswordOfTheRemote98765";
    QByteArray before;
};

TEST_F(KilledStore, withThePlainCopyJustWrittenLeavesTheOldFile)
{
    ASSERT_TRUE(killWhen([this] { return content(copy).contains(plain); }));
    expectOldFile();
}

TEST_F(KilledStore, withRclonesFileBesideTheCopyLeavesTheOldFile)
{
    ASSERT_TRUE(killWhen([this] { return content(newBesideCopy).startsWith("# Encrypted"); }));
    EXPECT_TRUE(content(copy).contains(plain));
    expectOldFile();
}

TEST_F(KilledStore, withTheCopySetAsideByRcloneLeavesTheOldFile)
{
    ASSERT_TRUE(killWhen([this] { return content(oldBesideCopy).contains(plain); }));
    EXPECT_TRUE(supportNames(copy).isEmpty());
    expectOldFile();
}

TEST_F(KilledStore, beforeTheEncryptedCopyTakesTheFilesPlaceLeavesTheOldFile)
{
    ASSERT_TRUE(killWhen([this] { return content(copy).startsWith("# Encrypted"); }));
    expectOldFile();
}

TEST_F(KilledStore, afterwardsHasTheNewFile)
{
    ASSERT_TRUE(store(QStringLiteral("a9")));
    before = readFile(configuration());
    Companion companion;
    ASSERT_TRUE(companion.start(QStringLiteral(USE_CONFIGURATION),
                                {QStringLiteral("store"), QStringLiteral("b")}));
    ASSERT_TRUE(eventually([this] { return readFile(configuration()) != before; }));
    companion.kill();
    EXPECT_EQ(Rclone::remotes().size(), 3);
    EXPECT_TRUE(readFile(configuration()).startsWith("# Encrypted"));
    tidyUp();
}

TEST_F(KilledStore, aKilledDisconnectionLosesNothing)
{
    // rclone changes its file in place; killed between its two steps it leaves none.
    const auto isSetAside = [] {
        return !QFile::exists(configuration()) &&
               !content(QStringLiteral("^rclone\\.conf\\.old[0-9]+$")).isEmpty();
    };
    ASSERT_TRUE(store(QStringLiteral("vellomar-server")));
    before = readFile(configuration());
    Companion companion;
    ASSERT_TRUE(
        companion.start(QStringLiteral("strace"),
                        {QStringLiteral("-f"), QStringLiteral("-qq"), QStringLiteral("-o"),
                         QStringLiteral("/dev/null"), QStringLiteral("-e"),
                         QStringLiteral("trace=?rename,?renameat,renameat2"), QStringLiteral("-e"),
                         QStringLiteral("inject=?rename,?renameat,renameat2:delay_enter=1500000"),
                         QStringLiteral(USE_CONFIGURATION), QStringLiteral("disconnect-server")}));
    ASSERT_TRUE(eventually(isSetAside));
    companion.kill();
    ASSERT_TRUE(isSetAside());

    Companion next;
    ASSERT_TRUE(next.start(QStringLiteral(USE_CONFIGURATION), {QStringLiteral("read")}));
    EXPECT_TRUE(eventually([&] { return next.output().contains("a0 vellomar-server\n"); }));
    EXPECT_TRUE(next.finish());
    EXPECT_EQ(readFile(configuration()), before);
    tidyUp();
}

} // namespace

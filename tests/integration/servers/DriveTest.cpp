#include "model/AppModel.h"
#include "state/ConfigStore.h"
#include "state/Paths.h"
#include "tests/support/Cycle.h"
#include "tests/support/EventLoop.h"
#include "tests/support/Files.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/PlainDesktop.h"
#include "tests/support/ReadySettings.h"
#include "tests/support/SignInPage.h"
#include "tools/FileDescriptor.h"
#include "tools/Rclone.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <algorithm>
#include <future>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

// Signing in to Google Drive with the real rclone.

namespace {

using Answer = SignInPage::Answer;
using Browser = SignInPage::Browser;

/// Where rclone waits for the browser.
sockaddr_in signInAddress()
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(53682);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// Whether a process accepts connections there.
bool isAnswered()
{
    const FileDescriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in address = signInAddress();
    return ::connect(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof(address)) ==
           0;
}

/// The port taken by another process.
class HeldPort
{
public:
    HeldPort()
    {
        const int on = 1;
        ::setsockopt(m_socket.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
        const sockaddr_in address = signInAddress();
        m_isHeld = ::bind(m_socket.get(), reinterpret_cast<const sockaddr *>(&address),
                          sizeof(address)) == 0 &&
                   ::listen(m_socket.get(), 1) == 0;
    }

    /// False when it was taken already.
    [[nodiscard]] bool isHeld() const { return m_isHeld; }

private:
    FileDescriptor m_socket{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    bool m_isHeld = false;
};

/// Whether a process of rclone's, started by this one, is there.
bool isRcloneRunning()
{
    const QList<pid_t> children = childrenOf(::getpid());
    return std::any_of(children.cbegin(), children.cend(), [](pid_t child) {
        return readFile(QStringLiteral("/proc/%1/comm").arg(child)) == "rclone\n";
    });
}

/// Whether rclone runs for a sign-in, started by this process.
bool isSigningIn()
{
    const QList<pid_t> children = childrenOf(::getpid());
    return std::any_of(children.cbegin(), children.cend(), [](pid_t child) {
        const QByteArray words = readFile(QStringLiteral("/proc/%1/cmdline").arg(child));
        return words.contains(QByteArray("rclone\0config\0create", 20));
    });
}

/// A sign-in on a thread of its own, as the window has it; ended with the object.
class Attempt
{
public:
    Attempt()
        : m_result(
              std::async(std::launch::async, [this] { return Rclone::connect({}, {}, m_handle); }))
    {
    }
    ~Attempt() { m_handle.terminate(); }
    Attempt(const Attempt &) = delete;
    Attempt &operator=(const Attempt &) = delete;
    Attempt(Attempt &&) = delete;
    Attempt &operator=(Attempt &&) = delete;

    void cancel() { m_handle.terminate(); }
    std::optional<QString> result() { return m_result.get(); }

private:
    ProcessHandle m_handle;
    std::future<std::optional<QString>> m_result;
};

class Drive : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(SignInPage::isApart()); }
    Drive()
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
            "kEy of the configuration";
    }

    static std::optional<QString> connect(const QString &clientID = {},
                                          const QString &clientSecret = {})
    {
        ProcessHandle handle;
        return Rclone::connect(clientID, clientSecret, handle);
    }
    static QString setting(const char *key)
    {
        return Rclone::remotes().value(Rclone::driveRemote).value(QLatin1String(key)).toString();
    }
    static QByteArray config()
    {
        return readFile(Paths::supportFile(QStringLiteral("rclone.conf")));
    }
    /// Expects that the encrypted file is all there is and that nothing of the user's access
    /// stands anywhere else.
    static void expectKept()
    {
        EXPECT_EQ(supportFiles(), QStringList({QStringLiteral("rclone.conf")}));
        EXPECT_TRUE(config().startsWith("# Encrypted"));
        for (const QByteArray &token : {SignInPage::accessToken(), SignInPage::refreshToken()}) {
            EXPECT_FALSE(isInAnyFile(Paths::home(), token)) << token.constData();
        }
        EXPECT_FALSE(isRcloneRunning());
        EXPECT_TRUE(HeldPort().isHeld());
    }
    static void expectNothingLeft()
    {
        EXPECT_FALSE(Rclone::isConfigured());
        EXPECT_FALSE(Rclone::remotes().contains(Rclone::driveRemote));
        expectKept();
    }

    const QString cancelled = QStringLiteral("Collegamento annullato");
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
};

TEST_F(Drive, isConnectedWhenTheUserAgrees)
{
    SignInPage page;
    ASSERT_TRUE(page.isRunning());
    EXPECT_EQ(connect(), std::nullopt);
    EXPECT_TRUE(Rclone::isConfigured());
    EXPECT_EQ(setting("type"), QStringLiteral("drive"));
    EXPECT_EQ(setting("scope"), QStringLiteral("drive.file"));
    EXPECT_EQ(setting("client_id"), QString());
    EXPECT_EQ(setting("client_secret"), QString());
    const QJsonObject token = QJsonDocument::fromJson(setting("token").toUtf8()).object();
    EXPECT_EQ(token.value(QLatin1String("access_token")).toString().toUtf8(),
              SignInPage::accessToken());
    EXPECT_EQ(token.value(QLatin1String("refresh_token")).toString().toUtf8(),
              SignInPage::refreshToken());
    expectKept();

    ASSERT_EQ(page.questions("page").size(), 1);
    EXPECT_TRUE(page.questions("page").first().endsWith(
        QLatin1String(" https://www.googleapis.com/auth/drive.file")));
    EXPECT_EQ(page.questions("token").size(), 1);

    Rclone::disconnect();
    expectNothingLeft();
}

TEST_F(Drive, isConnectedByWayOfAClientOfTheUsersOwn)
{
    SignInPage page;
    ASSERT_TRUE(page.isRunning());
    EXPECT_EQ(connect(QStringLiteral("id of.their own"), QStringLiteral("s3cret = of #theirs; %")),
              std::nullopt);
    EXPECT_EQ(page.questions(),
              QStringList({QStringLiteral("page id%20of.their%20own "
                                          "https://www.googleapis.com/auth/drive.file"),
                           QStringLiteral("token id%20of.their%20own "
                                          "s3cret%20%3D%20of%20%23theirs%3B%20%25")}));
    EXPECT_EQ(setting("client_id"), QStringLiteral("id of.their own"));
    EXPECT_EQ(setting("client_secret"), QStringLiteral("s3cret = of #theirs; %"));
    EXPECT_FALSE(isInAnyFile(Paths::home(), "s3cret"));
    expectKept();
}

TEST_F(Drive, isAskedForWithRclonesOwnClientWhenOnlyASecretIsGiven)
{
    SignInPage page;
    ASSERT_TRUE(page.isRunning());
    EXPECT_EQ(connect({}, QStringLiteral("s3cret")), std::nullopt);
    ASSERT_EQ(page.questions("token").size(), 1);
    EXPECT_FALSE(page.questions("token").first().contains(QLatin1String("s3cret")));
    EXPECT_EQ(setting("client_secret"), QString());
}

TEST_F(Drive, replacesAnEarlierConnectionAndLeavesTheServersAlone)
{
    SignInPage page;
    ASSERT_TRUE(page.isRunning());
    ASSERT_TRUE(
        Rclone::store(Rclone::serverRemote, {{QStringLiteral("type"), QStringLiteral("alias")}}));
    ASSERT_TRUE(Rclone::store(Rclone::driveRemote,
                              {{QStringLiteral("type"), QStringLiteral("drive")},
                               {QStringLiteral("root_folder_id"), QStringLiteral("earlier")},
                               {QStringLiteral("token"), QStringLiteral("earlier")}}));
    EXPECT_EQ(connect(), std::nullopt);
    EXPECT_EQ(setting("root_folder_id"), QString());
    EXPECT_TRUE(setting("token").contains(QString::fromUtf8(SignInPage::accessToken())));
    EXPECT_TRUE(Rclone::remotes().contains(Rclone::serverRemote));
    expectKept();
}

TEST_F(Drive, isNotConnectedWhenTheUserRefuses)
{
    SignInPage page(Answer::refuse);
    ASSERT_TRUE(page.isRunning());
    ASSERT_TRUE(
        Rclone::store(Rclone::serverRemote, {{QStringLiteral("type"), QStringLiteral("alias")}}));
    ASSERT_TRUE(
        Rclone::store(Rclone::driveRemote, {{QStringLiteral("type"), QStringLiteral("drive")},
                                            {QStringLiteral("token"), QStringLiteral("earlier")}}));
    EXPECT_EQ(connect(), QStringLiteral("Autorizzazione non completata"));
    EXPECT_EQ(page.questions("page").size(), 1);
    EXPECT_TRUE(page.questions("token").isEmpty());
    expectNothingLeft(); // of the earlier connection neither
    EXPECT_TRUE(Rclone::remotes().contains(Rclone::serverRemote));
}

TEST_F(Drive, isNotConnectedWhenGoogleGivesNoToken)
{
    {
        const SignInPage page(Answer::deny);
        ASSERT_TRUE(page.isRunning());
        EXPECT_TRUE(connect().value_or(QString()).contains(QLatin1String("invalid_grant")));
        expectNothingLeft();
    }
    const SignInPage page(Answer::empty);
    ASSERT_TRUE(page.isRunning());
    EXPECT_TRUE(connect().value_or(QString()).contains(QLatin1String("access_token")));
    expectNothingLeft();
}

TEST_F(Drive, isConnectedByTheUserThoughTheSessionHasAWayInOfItsOwn)
{
    SignInPage page;
    ASSERT_TRUE(page.isRunning());
    // rclone would sign in as a machine of Google's, or take that token, without asking.
    qputenv("RCLONE_DRIVE_ENV_AUTH", "true");
    qputenv("RCLONE_DRIVE_TOKEN", "{\"access_token\":\"theirs\"}");
    EXPECT_EQ(connect(), std::nullopt);
    EXPECT_EQ(page.questions("page").size(), 1);
    EXPECT_TRUE(setting("token").contains(QString::fromUtf8(SignInPage::accessToken())));
    expectKept();
}

TEST_F(Drive, saysSoWhenSomebodyElseHoldsThePort)
{
    SignInPage page;
    ASSERT_TRUE(page.isRunning());
    {
        const HeldPort held;
        ASSERT_TRUE(held.isHeld());
        EXPECT_EQ(connect(), QStringLiteral("Un'altra autorizzazione \u00e8 gi\u00e0 in corso. "
                                            "Chiudi la pagina di accesso nel browser e riprova."));
        EXPECT_TRUE(page.questions().isEmpty());
    }
    expectNothingLeft();
    EXPECT_EQ(connect(), std::nullopt);
}

TEST_F(Drive, isConnectedThoughAnInterruptedAttemptStillWaits)
{
    SignInPage page;
    ASSERT_TRUE(page.isRunning());
    QProcess stale;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("RCLONE_CONFIG"), Paths::home() + QLatin1String("/stale"));
    environment.insert(QStringLiteral("PATH"), Paths::home()); // no browser
    stale.setProcessEnvironment(environment);
    stale.start(Installation::realTool(QStringLiteral("rclone")),
                {QStringLiteral("config"), QStringLiteral("create"), QStringLiteral("vellomar"),
                 QStringLiteral("drive"), QStringLiteral("scope=drive.file")});
    ASSERT_TRUE(stale.waitForStarted());
    ASSERT_TRUE(eventually(isAnswered));
    EXPECT_EQ(connect(), std::nullopt);
    EXPECT_TRUE(stale.waitForFinished());
    EXPECT_EQ(stale.exitStatus(), QProcess::CrashExit); // ended by a signal
    QFile::remove(Paths::home() + QLatin1String("/stale"));
    EXPECT_TRUE(Rclone::isConfigured());
    expectKept();
}

TEST_F(Drive, waitsForTheUserWhenNoBrowserOpens)
{
    SignInPage page(Answer::grant, Browser::broken);
    ASSERT_TRUE(page.isRunning());
    Attempt attempt;
    ASSERT_TRUE(eventually([&page] { return page.isOpened(); }));
    EXPECT_TRUE(isSigningIn());
    attempt.cancel();
    EXPECT_EQ(attempt.result(), cancelled);
    EXPECT_TRUE(page.questions().isEmpty());
    expectNothingLeft();
}

TEST_F(Drive, isCancelledBeforeItBegins)
{
    SignInPage page;
    ASSERT_TRUE(page.isRunning());
    ProcessHandle handle;
    handle.terminate();
    EXPECT_EQ(Rclone::connect({}, {}, handle), cancelled);
    expectNothingLeft();
}

TEST_F(Drive, isCancelledWhenRcloneHasJustBegun)
{
    const SignInPage page(Answer::grant, Browser::unattended);
    ASSERT_TRUE(page.isRunning());
    Attempt attempt;
    ASSERT_TRUE(eventually(isSigningIn));
    attempt.cancel();
    EXPECT_EQ(attempt.result(), cancelled);
    expectNothingLeft();
}

TEST_F(Drive, isCancelledWhileThePageIsOpenAndCanBeTriedAgain)
{
    {
        const SignInPage page(Answer::grant, Browser::unattended);
        ASSERT_TRUE(page.isRunning());
        Attempt attempt;
        ASSERT_TRUE(eventually([&page] { return page.isOpened(); }));
        attempt.cancel();
        EXPECT_EQ(attempt.result(), cancelled);
        expectNothingLeft();
    }
    const SignInPage page;
    ASSERT_TRUE(page.isRunning());
    EXPECT_EQ(connect(), std::nullopt);
    EXPECT_TRUE(Rclone::isConfigured());
    expectKept();
}

// The window's part in it.
class DriveOfTheWindow : public Drive
{
protected:
    DriveOfTheWindow()
    {
        AppConfig config = readySettings();
        config.driveClientSecret = QStringLiteral("a secret");
        ConfigStore::save(config);
        model = std::make_unique<AppModel>(World::real(std::make_shared<PlainDesktop>()));
    }
    ~DriveOfTheWindow() override
    {
        model.reset();
        Background::waitForAll();
    }

    void SetUp() override
    {
        Drive::SetUp();
        ASSERT_TRUE(eventuallyInLoop([this] { return !model->isStarting(); }));
        ASSERT_TRUE(page.isRunning());
        model->connectDrive();
        ASSERT_TRUE(eventuallyInLoop([this] { return page.isOpened(); }));
        ASSERT_TRUE(isSigningIn());
    }
    /// Whether nobody listens for an answer of the browser.
    static bool isOver() { return !isSigningIn() && HeldPort().isHeld(); }

    TestApplication application;
    const SignInPage page{Answer::grant, Browser::unattended};
    std::unique_ptr<AppModel> model;
};

TEST_F(DriveOfTheWindow, theEndOfTheProgramLeavesNoListener)
{
    model->prepareToQuit();
    EXPECT_TRUE(isOver());
}

TEST_F(DriveOfTheWindow, aClosedWindowLeavesNoListener)
{
    model->becomeHidden();
    EXPECT_TRUE(eventuallyInLoop([this] { return !model->connections()->drive().connecting; }));
    EXPECT_EQ(model->connections()->drive().error, cancelled);
    EXPECT_TRUE(isOver());
}

TEST_F(DriveOfTheWindow, aDisconnectLeavesNoListener)
{
    model->disconnectDrive();
    EXPECT_EQ(model->connections()->drive(), Connection());
    EXPECT_TRUE(eventuallyInLoop([] { return isOver(); }));
}

TEST_F(Drive, isCancelledWhileTheTokenIsOnItsWay)
{
    SignInPage page(Answer::stall);
    ASSERT_TRUE(page.isRunning());
    Attempt attempt;
    ASSERT_TRUE(eventually([&page] { return !page.questions("token").isEmpty(); }));
    attempt.cancel();
    EXPECT_EQ(attempt.result(), cancelled);
    expectNothingLeft();
}

} // namespace

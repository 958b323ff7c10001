#include "platform/Notifications.h"

#include "engine/Notifier.h"
#include "state/Paths.h"
#include "tests/support/KeyringSession.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <thread>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

// Far above every limit that is tested, and far below D-Bus's own of 25 seconds.
constexpr qint64 muchTooLong = 15000;

/// A private session bus, with a notification service on it that records its calls.
class Notifications : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(bus.isRunning()); }
    void TearDown() override
    {
        service.kill();
        service.waitForFinished(20000);
    }

    [[nodiscard]] bool startService(const QString &manner)
    {
        service.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        service.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        service.start(QStringLiteral("/usr/bin/python3"),
                      {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/notification_service.py"),
                       manner, record});
        return service.waitForStarted(20000) &&
               QProcess::execute(QStringLiteral("gdbus"),
                                 {QStringLiteral("wait"), QStringLiteral("--session"),
                                  QStringLiteral("--timeout=20"),
                                  QStringLiteral("org.freedesktop.Notifications")}) == 0;
    }

    /// The service's calls of this method, in order.
    [[nodiscard]] QList<QJsonObject> calls(const QString &method) const
    {
        QList<QJsonObject> found;
        QFile file(record);
        if (file.open(QIODevice::ReadOnly)) {
            for (const QByteArray &line : file.readAll().split('\n')) {
                const QJsonObject call = QJsonDocument::fromJson(line).object();
                if (call.value(QLatin1String("method")) == QJsonValue(method)) {
                    found.append(call);
                }
            }
        }
        return found;
    }
    /// The one notification that was posted; empty when there were others.
    [[nodiscard]] QJsonObject notification() const
    {
        const QList<QJsonObject> posted = calls(QStringLiteral("Notify"));
        return posted.size() == 1 ? posted.first() : QJsonObject();
    }
    [[nodiscard]] QString posted(const QString &key) const
    {
        return notification().value(key).toString();
    }

    static bool post(const QString &title, const QString &body)
    {
        return postNotification({.title = title, .body = body, .icon = {}}, 20s);
    }

    const QString record = QDir::homePath() + QLatin1String("/notifications");
    KeyringSession bus{KeyringSession::Keyring::none};
    QProcess service;
};

/// Whether a call comes back in time.
template <typename Call>
testing::AssertionResult comesBack(Call call)
{
    QElapsedTimer timer;
    timer.start();
    call();
    const qint64 taken = timer.elapsed();
    if (taken < muchTooLong) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "it took " << taken << " ms";
}

TEST_F(Notifications, areTheProgramsWithItsIconAndNothingElse)
{
    ASSERT_TRUE(startService(QStringLiteral("plain")));
    Notifier::send(QStringLiteral("Backup non riuscito"), QStringLiteral("Disco: spazio esaurito"));
    const QJsonObject call = notification();
    EXPECT_EQ(call.value(QLatin1String("application")), QJsonValue(QStringLiteral("Vellomar")));
    EXPECT_EQ(call.value(QLatin1String("title")),
              QJsonValue(QStringLiteral("Backup non riuscito")));
    EXPECT_EQ(call.value(QLatin1String("body")),
              QJsonValue(QStringLiteral("Disco: spazio esaurito")));
    EXPECT_EQ(call.value(QLatin1String("replaces")), QJsonValue(0));
    EXPECT_EQ(call.value(QLatin1String("actions")), QJsonValue(QJsonArray()));
    EXPECT_EQ(call.value(QLatin1String("timeout")), QJsonValue(-1));
    const QJsonObject hints{{QStringLiteral("urgency"), 1},
                            {QStringLiteral("suppress-sound"), true}};
    EXPECT_EQ(call.value(QLatin1String("hints")), QJsonValue(hints));

    const QString icon = call.value(QLatin1String("icon")).toString();
    EXPECT_EQ(icon, *Paths::resources() + QLatin1String("/vellomar.svg"));
    QFile picture(icon);
    ASSERT_TRUE(picture.open(QIODevice::ReadOnly));
    EXPECT_TRUE(picture.readAll().contains("<svg"));
}

TEST_F(Notifications, stayWhenTheProcessThatPostedThemEnds)
{
    ASSERT_TRUE(startService(QStringLiteral("plain")));
    // A process of its own, whose connection to the bus ends with it.
    EXPECT_EXIT(
        {
            Notifier::send(QStringLiteral("title"), QStringLiteral("body"));
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
    ASSERT_TRUE(eventually([this] { return !calls(QStringLiteral("gone")).isEmpty(); }));
    EXPECT_EQ(calls(QStringLiteral("gone")).first().value(QLatin1String("withdrawn")),
              QJsonValue(QJsonArray()));
    EXPECT_EQ(posted(QStringLiteral("title")), QStringLiteral("title"));
}

TEST_F(Notifications, eachIsOneOfItsOwn)
{
    ASSERT_TRUE(startService(QStringLiteral("plain")));
    EXPECT_TRUE(post(QStringLiteral("one"), QString()));
    EXPECT_TRUE(post(QStringLiteral("two"), QString()));
    const QList<QJsonObject> all = calls(QStringLiteral("Notify"));
    ASSERT_EQ(all.size(), 2);
    EXPECT_EQ(all.at(0).value(QLatin1String("title")), QJsonValue(QStringLiteral("one")));
    EXPECT_EQ(all.at(1).value(QLatin1String("title")), QJsonValue(QStringLiteral("two")));
    EXPECT_EQ(all.at(1).value(QLatin1String("replaces")), QJsonValue(0));
}

TEST_F(Notifications, whereBodiesAreMarkupTheyAreEscaped)
{
    ASSERT_TRUE(startService(QStringLiteral("markup")));
    EXPECT_TRUE(post(QStringLiteral("a < b & c"), QStringLiteral("<b>\"x\"</b> & <img src='y'/>")));
    EXPECT_EQ(posted(QStringLiteral("title")), QStringLiteral("a < b & c"));
    EXPECT_EQ(posted(QStringLiteral("body")),
              QStringLiteral("&lt;b&gt;&quot;x&quot;&lt;/b&gt; &amp; &lt;img src='y'/&gt;"));
}

TEST_F(Notifications, whereBodiesArePlainTheyStayAsTheyAre)
{
    ASSERT_TRUE(startService(QStringLiteral("plain")));
    const QString body = QStringLiteral("<b>\"x\"</b> & <img src='y'/>");
    EXPECT_TRUE(post(QStringLiteral("title"), body));
    EXPECT_EQ(posted(QStringLiteral("body")), body);
}

TEST_F(Notifications, oddTextsArriveWhole)
{
    ASSERT_TRUE(startService(QStringLiteral("plain")));
    const QString title = QStringLiteral("riga\nriga\t%s 備份 \U0001F600");
    const QString body = QString(qsizetype{100} * 1024, u'è') + QStringLiteral("\n%n\\ end");
    EXPECT_TRUE(post(title, body));
    EXPECT_EQ(posted(QStringLiteral("title")), title);
    EXPECT_EQ(posted(QStringLiteral("body")), body);
}

TEST_F(Notifications, whatNoTextMayHoldIsReplaced)
{
    ASSERT_TRUE(startService(QStringLiteral("plain")));
    const QString body =
        QStringLiteral("before ") + QChar(0xD800) + u' ' + QChar(u'\0') + QStringLiteral(" after");
    EXPECT_TRUE(post(QString(), body));
    EXPECT_EQ(posted(QStringLiteral("title")), QString());
    EXPECT_TRUE(posted(QStringLiteral("body")).startsWith(QLatin1String("before ")));
    EXPECT_TRUE(posted(QStringLiteral("body")).endsWith(QLatin1String(" after")));
}

TEST_F(Notifications, aServiceThatRefusesIsPassedOver)
{
    ASSERT_TRUE(startService(QStringLiteral("refusing")));
    EXPECT_FALSE(post(QStringLiteral("title"), QStringLiteral("body")));
    EXPECT_EQ(calls(QStringLiteral("Notify")).size(), 1);
    Notifier::send(QStringLiteral("title"), QStringLiteral("body"));
    EXPECT_EQ(calls(QStringLiteral("Notify")).size(), 2);
}

TEST_F(Notifications, noServiceIsPassedOver)
{
    EXPECT_FALSE(post(QStringLiteral("title"), QStringLiteral("body")));
    EXPECT_TRUE(comesBack([] {
        Notifier::send(QStringLiteral("title"), QStringLiteral("body"));
        Notifier::requestPermission();
    }));
}

TEST_F(Notifications, aServiceThatNeverAnswersIsWaitedForOnlySoLong)
{
    ASSERT_TRUE(startService(QStringLiteral("silent")));
    EXPECT_TRUE(comesBack(
        [] { EXPECT_FALSE(postNotification({.title = {}, .body = {}, .icon = {}}, 200ms)); }));
    EXPECT_TRUE(
        comesBack([] { Notifier::send(QStringLiteral("title"), QStringLiteral("the last one")); }));
    // It was handed over all the same.
    ASSERT_FALSE(calls(QStringLiteral("Notify")).isEmpty());
    EXPECT_EQ(calls(QStringLiteral("Notify")).last().value(QLatin1String("body")),
              QJsonValue(QStringLiteral("the last one")));
}

TEST_F(Notifications, threeSecondsAreTheLimit)
{
    ASSERT_TRUE(startService(QStringLiteral("silent")));
    // Begun earlier, and with more than twice the time limit.
    std::atomic<bool> longerHasEnded = false;
    std::thread longer([&longerHasEnded] {
        postNotification({.title = {}, .body = {}, .icon = {}}, 6500ms);
        longerHasEnded = true;
    });
    EXPECT_TRUE(eventually([this] { return !calls(QStringLiteral("Notify")).isEmpty(); }));
    QElapsedTimer timer;
    timer.start();
    Notifier::send(QStringLiteral("title"), QStringLiteral("body"));
    EXPECT_GE(timer.elapsed(), 3000);
    EXPECT_FALSE(longerHasEnded);
    longer.join();
}

TEST_F(Notifications, theLimitHoldsForAllQuestionsTogether)
{
    ASSERT_TRUE(startService(QStringLiteral("mute")));
    EXPECT_TRUE(comesBack([] {
        EXPECT_FALSE(postNotification({.title = {}, .body = {}, .icon = {}}, 200ms));
        Notifier::send(QStringLiteral("title"), QStringLiteral("body"));
        Notifier::requestPermission();
    }));
}

TEST_F(Notifications, aServiceThatStandsStillIsWaitedForOnlySoLong)
{
    ASSERT_TRUE(startService(QStringLiteral("plain")));
    ASSERT_EQ(::kill(static_cast<pid_t>(service.processId()), SIGSTOP), 0);
    EXPECT_TRUE(comesBack([] { Notifier::send(QStringLiteral("title"), QStringLiteral("body")); }));
}

TEST_F(Notifications, askingForThePermissionWakesTheServiceAndShowsNothing)
{
    ASSERT_TRUE(startService(QStringLiteral("plain")));
    Notifier::requestPermission();
    EXPECT_EQ(calls(QStringLiteral("GetServerInformation")).size(), 1);
    EXPECT_TRUE(calls(QStringLiteral("Notify")).isEmpty());
}

TEST(NotificationsWithoutABus, areDropped)
{
    EXPECT_FALSE(postNotification({.title = {}, .body = {}, .icon = {}}, 20s));
    EXPECT_TRUE(comesBack([] {
        Notifier::send(QStringLiteral("title"), QStringLiteral("body"));
        Notifier::requestPermission();
    }));
}

TEST(NotificationsWithoutABus, areDroppedWhenTheBusNeverAnswers)
{
    // Calls are accepted and never answered.
    const QByteArray path = QDir::homePath().toUtf8() + "/bus";
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(static_cast<size_t>(path.size()), sizeof(address.sun_path));
    std::copy(path.cbegin(), path.cend(), std::begin(address.sun_path));
    const int listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_GE(listener, 0);
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof(address)), 0);
    ASSERT_EQ(::listen(listener, 16), 0);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);

    EXPECT_TRUE(comesBack(
        [] { EXPECT_FALSE(postNotification({.title = {}, .body = {}, .icon = {}}, 200ms)); }));
    EXPECT_TRUE(comesBack([] { Notifier::send(QStringLiteral("title"), QStringLiteral("body")); }));
    ::close(listener);
}

} // namespace

#include "platform/PowerSource.h"

#include "tests/support/PrivateBus.h"
#include "tools/FileDescriptor.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <iterator>

#include <sys/socket.h>
#include <sys/un.h>

namespace {

// A system bus of the test's own.
class SystemBus
{
public:
    SystemBus() = default;
    ~SystemBus() { endProcess(m_upower); }
    SystemBus(const SystemBus &) = delete;
    SystemBus &operator=(const SystemBus &) = delete;
    SystemBus(SystemBus &&) = delete;
    SystemBus &operator=(SystemBus &&) = delete;

    [[nodiscard]] bool isRunning() const { return m_bus.isRunning(); }

    // A stand-in for UPower, with its properties in JSON.
    [[nodiscard]] bool startUPower(const QString &properties)
    {
        // Debian's own Python is the one that has the module.
        startWithTest(m_upower, QStringLiteral("/usr/bin/python3"),
                      {QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--system"),
                       QStringLiteral("--template"), QStringLiteral("upower"),
                       QStringLiteral("--parameters"), properties});
        return m_upower.waitForStarted() &&
               m_bus.waitForName(QStringLiteral("org.freedesktop.UPower"));
    }

    // From now on UPower is there, but never answers.
    void freezeUPower() { ::kill(static_cast<pid_t>(m_upower.processId()), SIGSTOP); }

private:
    PrivateBus m_bus{PrivateBus::Kind::system};
    QProcess m_upower;
};

bool answer(const char *output)
{
    return Pmset::runsOnBattery(
        [output](const QString & /*path*/, const QStringList & /*arguments*/) {
            return QString::fromUtf8(output);
        });
}

} // namespace

TEST(PowerSource, withoutABusItIsTheMains)
{
    EXPECT_FALSE(runsOnBattery());
}

TEST(PowerSource, withoutUPowerItIsTheMains)
{
    const SystemBus bus;
    ASSERT_TRUE(bus.isRunning());
    EXPECT_FALSE(runsOnBattery());
}

TEST(PowerSource, upowerSaysThatItIsTheBattery)
{
    SystemBus bus;
    ASSERT_TRUE(bus.isRunning());
    ASSERT_TRUE(bus.startUPower(QStringLiteral(R"({"OnBattery": true})")));
    EXPECT_TRUE(runsOnBattery());
}

TEST(PowerSource, upowerSaysThatItIsTheMains)
{
    SystemBus bus;
    ASSERT_TRUE(bus.isRunning());
    ASSERT_TRUE(bus.startUPower(QStringLiteral(R"({"OnBattery": false})")));
    EXPECT_FALSE(runsOnBattery());
}

TEST(PowerSource, anAnswerOfAnotherTypeIsTheMains)
{
    SystemBus bus;
    ASSERT_TRUE(bus.isRunning());
    ASSERT_TRUE(bus.startUPower(QStringLiteral(R"({"OnBattery": "yes"})")));
    EXPECT_FALSE(runsOnBattery());
}

TEST(PowerSource, aServiceThatNeverAnswersHoldsNobodyUp)
{
    SystemBus bus;
    ASSERT_TRUE(bus.isRunning());
    ASSERT_TRUE(bus.startUPower(QStringLiteral(R"({"OnBattery": true})")));
    bus.freezeUPower();
    // That it comes back at all is the point: GLib's own limit is 25 seconds.
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(runsOnBattery());
    EXPECT_LT(timer.elapsed(), 20000);
}

TEST(PowerSource, aBusThatNeverAnswersHoldsNothingUp)
{
    // Connections are accepted and never answered.
    const QByteArray path = QFile::encodeName(QDir::homePath() + QLatin1String("/bus"));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(static_cast<size_t>(path.size()), sizeof(address.sun_path));
    std::copy(path.cbegin(), path.cend(), std::begin(address.sun_path));
    const FileDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_TRUE(listener.isOpen());
    ASSERT_EQ(::bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof(address)),
              0);
    ASSERT_EQ(::listen(listener.get(), 16), 0);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path);
    EXPECT_FALSE(runsOnBattery());
}

TEST(Pmset, theFirstLineNamesTheSource)
{
    EXPECT_TRUE(answer("Now drawing from 'Battery Power'\n"
                       " -InternalBattery-0 (id=4653155)\t85%; discharging; 4:21 remaining "
                       "present: true\n"));
    EXPECT_FALSE(answer("Now drawing from 'AC Power'\n"
                        " -InternalBattery-0 (id=4653155)\t100%; charged; 0:00 remaining "
                        "present: true\n"));
    EXPECT_FALSE(answer("Now drawing from 'AC Power'\n"));
    EXPECT_FALSE(answer(""));
}

TEST(Pmset, asksTheSystemsProgram)
{
    QString program;
    QStringList given;
    const bool onBattery =
        Pmset::runsOnBattery([&](const QString &path, const QStringList &arguments) {
            program = path;
            given = arguments;
            return QString();
        });
    EXPECT_FALSE(onBattery);
    EXPECT_EQ(program, QStringLiteral("/usr/bin/pmset"));
    EXPECT_EQ(given, QStringList({QStringLiteral("-g"), QStringLiteral("ps")}));
}

#include "platform/PowerSource.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>

#include <sys/prctl.h>

namespace {

constexpr int patience = 20000;

constexpr const char *busConfiguration = R"(<busconfig>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

void endProcess(QProcess &process)
{
    process.kill();
    process.waitForFinished(patience);
}

void diesWithThisProcess(QProcess &process)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

// A system bus of the test's own.
class SystemBus
{
public:
    SystemBus()
    {
        const QString path = QDir::homePath() + QLatin1String("/bus.conf");
        QFile configuration(path);
        if (configuration.open(QIODevice::WriteOnly)) {
            configuration.write(busConfiguration);
            configuration.close();
        }
        diesWithThisProcess(m_bus);
        m_bus.start(QStringLiteral("dbus-daemon"),
                    {QLatin1String("--config-file=") + path, QStringLiteral("--nofork"),
                     QStringLiteral("--print-address=1")});
        isRunning = m_bus.waitForStarted(patience) && m_bus.waitForReadyRead(patience);
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_bus.readLine().trimmed());
    }
    ~SystemBus()
    {
        endProcess(m_upower);
        endProcess(m_bus);
    }
    SystemBus(const SystemBus &) = delete;
    SystemBus &operator=(const SystemBus &) = delete;
    SystemBus(SystemBus &&) = delete;
    SystemBus &operator=(SystemBus &&) = delete;

    // A stand-in for UPower, with its properties in JSON.
    [[nodiscard]] bool startUPower(const QString &properties)
    {
        diesWithThisProcess(m_upower);
        // Debian's own Python is the one that has the module.
        m_upower.start(QStringLiteral("/usr/bin/python3"),
                       {QStringLiteral("-m"), QStringLiteral("dbusmock"),
                        QStringLiteral("--system"), QStringLiteral("--template"),
                        QStringLiteral("upower"), QStringLiteral("--parameters"), properties});
        QProcess wait;
        wait.start(QStringLiteral("gdbus"),
                   {QStringLiteral("wait"), QStringLiteral("--system"),
                    QStringLiteral("--timeout=20"), QStringLiteral("org.freedesktop.UPower")});
        return m_upower.waitForStarted(patience) && wait.waitForFinished(patience) &&
               wait.exitCode() == 0;
    }

    // From now on UPower is there, but never answers.
    void freezeUPower() { ::kill(static_cast<pid_t>(m_upower.processId()), SIGSTOP); }

    bool isRunning = false;

private:
    QProcess m_bus;
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
    ASSERT_TRUE(bus.isRunning);
    EXPECT_FALSE(runsOnBattery());
}

TEST(PowerSource, upowerTellsThatItIsTheBattery)
{
    SystemBus bus;
    ASSERT_TRUE(bus.isRunning);
    ASSERT_TRUE(bus.startUPower(QStringLiteral(R"({"OnBattery": true})")));
    EXPECT_TRUE(runsOnBattery());
}

TEST(PowerSource, upowerTellsThatItIsTheMains)
{
    SystemBus bus;
    ASSERT_TRUE(bus.isRunning);
    ASSERT_TRUE(bus.startUPower(QStringLiteral(R"({"OnBattery": false})")));
    EXPECT_FALSE(runsOnBattery());
}

TEST(PowerSource, anAnswerOfAnotherTypeIsTheMains)
{
    SystemBus bus;
    ASSERT_TRUE(bus.isRunning);
    ASSERT_TRUE(bus.startUPower(QStringLiteral(R"({"OnBattery": "yes"})")));
    EXPECT_FALSE(runsOnBattery());
}

TEST(PowerSource, aServiceThatNeverAnswersHoldsNobodyUp)
{
    SystemBus bus;
    ASSERT_TRUE(bus.isRunning);
    ASSERT_TRUE(bus.startUPower(QStringLiteral(R"({"OnBattery": true})")));
    bus.freezeUPower();
    // That it comes back at all is the point: GLib's own limit is 25 seconds.
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(runsOnBattery());
    EXPECT_LT(timer.elapsed(), 20000);
}

TEST(Pmset, theFirstLineTellsTheSource)
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

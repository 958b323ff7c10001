#include "ui/shell/SingleInstance.h"

#include "state/Paths.h"
#include "tests/support/EventLoop.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gtest/gtest.h>

#include <array>
#include <csignal>

#include <sys/prctl.h>
#include <sys/stat.h>

namespace {

using Role = SingleInstance::Role;
using namespace std::chrono_literals;

/// Another process that is the same program: the helper beside the tests. It says its role, and
/// then each start that it hears of, a line each.
class OtherProcess
{
public:
    ~OtherProcess() { kill(); }
    OtherProcess() = default;
    OtherProcess(const OtherProcess &) = delete;
    OtherProcess &operator=(const OtherProcess &) = delete;
    OtherProcess(OtherProcess &&) = delete;
    OtherProcess &operator=(OtherProcess &&) = delete;

    void start(const QString &token = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), token);
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        m_process.start(QStringLiteral(VELLOMAR_INSTANCE_HELPER), {});
    }
    /// Its next line; fails when none comes.
    [[nodiscard]] QByteArray line()
    {
        EXPECT_TRUE(eventuallyInLoop([this] { return m_process.canReadLine(); }));
        return m_process.readLine().trimmed();
    }
    void signal(int number) const { ::kill(static_cast<pid_t>(m_process.processId()), number); }
    void kill()
    {
        m_process.kill();
        m_process.waitForFinished(20000);
    }
    /// Asks it to end as a window does.
    void end()
    {
        m_process.closeWriteChannel();
        EXPECT_TRUE(m_process.waitForFinished(60000));
    }

private:
    QProcess m_process;
};

class SingleInstanceTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(runtime));
        ASSERT_TRUE(QFile::setPermissions(
            runtime, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));
        qputenv("XDG_RUNTIME_DIR", runtime.toUtf8());
    }

    static QStringList filesIn(const QString &folder)
    {
        return QDir(folder).entryList({QStringLiteral("vellomar-*")},
                                      QDir::Files | QDir::System | QDir::NoDotAndDotDot);
    }

    int argc = 1;
    QByteArray name{"test"};
    std::array<char *, 2> argv{name.data(), nullptr};
    QCoreApplication app{argc, argv.data()};
    const QString runtime = QDir::homePath() + QLatin1String("/run");
};

TEST_F(SingleInstanceTest, theSecondHandsOverToTheFirst)
{
    OtherProcess first;
    first.start();
    ASSERT_EQ(first.line(), "first");
    OtherProcess second;
    second.start(QStringLiteral("token-\u00e8"));
    EXPECT_EQ(second.line(), "handed over");
    EXPECT_EQ(first.line(), "started again: token-\xc3\xa8");
    OtherProcess third;
    third.start();
    EXPECT_EQ(third.line(), "handed over");
    EXPECT_EQ(first.line(), "started again:");
}

TEST_F(SingleInstanceTest, afterTheFirstsEndTheNextIsTheFirst)
{
    OtherProcess first;
    first.start();
    ASSERT_EQ(first.line(), "first");
    first.end();
    EXPECT_EQ(filesIn(runtime).size(), 1); // the lock
    OtherProcess next;
    next.start();
    EXPECT_EQ(next.line(), "first");
}

TEST_F(SingleInstanceTest, oneThatCrashedIsInNobodysWay)
{
    OtherProcess first;
    first.start();
    ASSERT_EQ(first.line(), "first");
    first.kill();
    EXPECT_EQ(filesIn(runtime).size(), 2); // its socket, too
    OtherProcess next;
    next.start();
    ASSERT_EQ(next.line(), "first");
    OtherProcess second;
    second.start();
    EXPECT_EQ(second.line(), "handed over");
    EXPECT_EQ(next.line(), "started again:");
}

TEST_F(SingleInstanceTest, amongManyAtTheSameTimeOneIsTheFirst)
{
    constexpr size_t count = 6;
    std::array<OtherProcess, count> all;
    for (OtherProcess &one : all) {
        one.start();
    }
    OtherProcess *first = nullptr;
    for (OtherProcess &one : all) {
        const QByteArray role = one.line();
        if (role == "first") {
            EXPECT_EQ(first, nullptr);
            first = &one;
        } else {
            EXPECT_EQ(role, "handed over");
        }
    }
    ASSERT_NE(first, nullptr);
    for (size_t other = 1; other < count; ++other) {
        EXPECT_EQ(first->line(), "started again:");
    }
}

TEST_F(SingleInstanceTest, oneThatStandsStillIsWaitedForOnlySoLong)
{
    OtherProcess first;
    first.start();
    ASSERT_EQ(first.line(), "first");
    first.signal(SIGSTOP);
    EXPECT_EQ(SingleInstance().begin(200ms), Role::unanswered);
    first.signal(SIGCONT);
    EXPECT_EQ(SingleInstance().begin(60s), Role::handedOver);
}

TEST_F(SingleInstanceTest, withoutARuntimeFolderTheyMeetInTheSupportFolder)
{
    qunsetenv("XDG_RUNTIME_DIR");
    OtherProcess first;
    first.start();
    ASSERT_EQ(first.line(), "first");
    EXPECT_EQ(SingleInstance().begin(60s), Role::handedOver);
    EXPECT_EQ(filesIn(Paths::support()).size(), 2);
}

TEST_F(SingleInstanceTest, aRuntimeFolderThatOthersMayWriteToIsNotUsed)
{
    ASSERT_EQ(::chmod(QFile::encodeName(runtime).constData(), 0777), 0);
    SingleInstance one;
    EXPECT_EQ(one.begin(60s), Role::first);
    EXPECT_TRUE(filesIn(runtime).isEmpty());
    EXPECT_EQ(filesIn(Paths::support()).size(), 2);
}

TEST_F(SingleInstanceTest, nothingOfItIsOpenToOthers)
{
    SingleInstance one;
    ASSERT_EQ(one.begin(60s), Role::first);
    const QStringList files = filesIn(runtime);
    ASSERT_EQ(files.size(), 2);
    for (const QString &file : files) {
        if (file.endsWith(QLatin1String(".lock"))) {
            EXPECT_EQ(QFileInfo(runtime + u'/' + file).permissions() &
                          (QFileDevice::ReadOther | QFileDevice::WriteOther |
                           QFileDevice::ReadGroup | QFileDevice::WriteGroup),
                      QFileDevice::Permissions());
        }
    }
}

TEST_F(SingleInstanceTest, anotherHomesProgramIsAnotherProgram)
{
    OtherProcess first;
    first.start();
    ASSERT_EQ(first.line(), "first");
    qputenv("HOME", (QDir::homePath() + QLatin1String("/another")).toUtf8());
    OtherProcess other;
    other.start();
    EXPECT_EQ(other.line(), "first");
}

TEST_F(SingleInstanceTest, inAFolderWithAVeryLongNameItWorksToo)
{
    const QString deep = runtime + u'/' + QString(200, u'x');
    ASSERT_TRUE(QDir().mkpath(deep));
    qputenv("XDG_RUNTIME_DIR", deep.toUtf8());
    OtherProcess first;
    first.start();
    ASSERT_EQ(first.line(), "first");
    EXPECT_EQ(filesIn(deep).size(), 2);
    EXPECT_EQ(SingleInstance().begin(60s), Role::handedOver);
}

TEST_F(SingleInstanceTest, whereNothingCanBeWrittenTheWindowOpensAllTheSame)
{
    {
        SingleInstance found;
        ASSERT_EQ(found.begin(60s), Role::first);
    }
    // A folder stands where the lock would.
    const QString lock = runtime + u'/' + filesIn(runtime).value(0);
    ASSERT_TRUE(QFile::remove(lock));
    ASSERT_TRUE(QDir().mkpath(lock));
    SingleInstance one;
    EXPECT_EQ(one.begin(60s), Role::first);
}

} // namespace

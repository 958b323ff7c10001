#include "state/Keychain.h"
#include "state/Paths.h"
#include "tests/support/Cycle.h"
#include "tests/support/Files.h"
#include "tests/support/Waiting.h"
#include "tests/support/WindowSession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

class Opening : public WindowSession
{
protected:
    static QByteArray secret(const QString &account)
    {
        return ManagedScreen::run(QStringLiteral("secret-tool"),
                                  {QStringLiteral("lookup"), QStringLiteral("service"),
                                   QStringLiteral("it.vellomar.app"), QStringLiteral("account"),
                                   account})
            .value_or(QString())
            .toUtf8();
    }

    ShownProgram program;
};

TEST_F(Opening, anEmptyHomeGetsAWindowAFolderAndAKey)
{
    program.start();
    ASSERT_TRUE(program.shows());
    const QString window = program.windows().value(0);
    EXPECT_EQ(ManagedScreen::place(window).size(), QSize(1060, 720));
    EXPECT_TRUE(eventually([&] { return ManagedScreen::isPainted(window); }));
    const QFileInfo folder(QDir::homePath() + QLatin1String("/.local/share/Vellomar"));
    ASSERT_TRUE(folder.isDir());
    EXPECT_EQ(folder.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther), 0);
    EXPECT_EQ(secret(Keychain::repositoryKey).size(), 32);
    EXPECT_FALSE(secret(Keychain::rcloneConfigKey).isEmpty());
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(), 0);
    EXPECT_EQ(program.errors(), "");
}

TEST_F(Opening, atTwiceTheScaleItFitsAScreenThatIsTooSmallForIt)
{
    qputenv("QT_SCALE_FACTOR", "2");
    program.start();
    ASSERT_TRUE(program.shows());
    // With its frame around it.
    QSize size;
    EXPECT_TRUE(eventually([&] {
        size = ManagedScreen::place(program.windows().value(0)).size();
        return size.width() > 1500 && size.width() <= ManagedScreen::size.width() &&
               size.height() > 900 && size.height() < ManagedScreen::size.height();
    })) << size.width()
        << " x " << size.height() << ", running: " << program.isRunning() << '\n'
        << program.errors().toStdString();
}

TEST_F(Opening, theWindowBecomesTheActiveOne)
{
    program.start();
    ASSERT_TRUE(program.shows());
    EXPECT_TRUE(
        eventually([&] { return ManagedScreen::activeWindow() == program.windows().value(0); }));
}

TEST_F(Opening, theDesktopKnowsWhoseWindowItIs)
{
    program.start();
    ASSERT_TRUE(program.shows());
    const QString list =
        ManagedScreen::run(QStringLiteral("wmctrl"), {QStringLiteral("-l"), QStringLiteral("-x")})
            .value_or(QString());
    EXPECT_TRUE(list.contains(QLatin1String("vellomar.Vellomar"))) << list.toStdString();
}

TEST_F(Opening, unknownWordsAndManualAloneOpenItToo)
{
    program.start({QStringLiteral("--manual"), QStringLiteral("--secret")});
    EXPECT_TRUE(program.shows());
}

TEST_F(Opening, atRestNothingMovesByItself)
{
    program.start();
    ASSERT_TRUE(program.shows());
    // How often the window's thread has slept.
    const auto sleeps = [this] {
        const QString status = QString::fromUtf8(
            readFile(QStringLiteral("/proc/%1/task/%1/status").arg(program.processId())));
        return status.section(QLatin1String("voluntary_ctxt_switches:"), 1)
            .section(u'\n', 0, 0)
            .trimmed()
            .toInt();
    };
    // An animation would wake it some fifty times a second; polling the engine's files once.
    constexpr unsigned long watchMilliseconds = 3000;
    constexpr int most = 50;
    for (const bool isHidden : {false, true}) {
        if (isHidden) {
            ASSERT_TRUE(ManagedScreen::close(program.windows().value(0)));
            ASSERT_TRUE(program.hides());
        }
        int last = 0;
        EXPECT_TRUE(eventually([&] {
            const int before = sleeps();
            QThread::msleep(watchMilliseconds);
            last = sleeps() - before;
            return last > 0 && last < most;
        })) << last;
    }
}

TEST_F(Opening, aSettingsFileThatIsNoneDoesNotHinderIt)
{
    ASSERT_TRUE(writeSupportFile("config.json", "{ no settings"));
    program.start();
    EXPECT_TRUE(program.shows());
}

TEST_F(Opening, withoutTheModuleItSaysSo)
{
    // A copy of the program alone.
    const Installation installation;
    ShownProgram alone(installation.program());
    alone.start();
    EXPECT_EQ(alone.finish(), 1);
    const QByteArray errors = alone.errors();
    EXPECT_TRUE(errors.contains("la finestra non si può caricare")) << errors.toStdString();
    EXPECT_TRUE(errors.contains("libvellomar-window.so")) << errors.toStdString();
}

TEST_F(Opening, aModuleThatIsNoneIsReportedLikewise)
{
    const Installation installation;
    const QString folder =
        QFileInfo(installation.program()).path() + QLatin1String("/../lib/vellomar");
    ASSERT_TRUE(writeFile(folder + QLatin1String("/libvellomar-window.so"), "no library"));
    ShownProgram broken(installation.program());
    broken.start();
    EXPECT_EQ(broken.finish(), 1);
    EXPECT_TRUE(broken.errors().contains("la finestra non si può caricare"));
}

} // namespace

#include "state/ConfigStore.h"
#include "tests/support/Waiting.h"
#include "tests/support/WindowSession.h"

#include <QDeadlineTimer>
#include <QDir>

#include <csignal>

#include <sys/prctl.h>

// The panel that opens from the tray.

namespace {

using namespace std::chrono_literals;

class TrayPanel : public WindowSession
{
protected:
    void TearDown() override
    {
        tray.kill();
        tray.waitForFinished(20000);
    }

    bool startTray(const QString &name, const QStringList &arguments)
    {
        tray.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        tray.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        tray.start(name, arguments);
        return tray.waitForStarted(20000);
    }
    /// The window, with its item in a tray on the session bus.
    void open()
    {
        ASSERT_TRUE(startTray(QStringLiteral("/usr/bin/python3"),
                              {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/tray_host.py")}));
        ASSERT_TRUE(ManagedScreen::run(QStringLiteral("gdbus"),
                                       {QStringLiteral("wait"), QStringLiteral("--session"),
                                        QStringLiteral("--timeout=20"),
                                        QStringLiteral("org.kde.StatusNotifierWatcher")}));
        program.start();
        ASSERT_TRUE(program.shows());
        // The host says what the item shows once it is there.
        ASSERT_TRUE(eventually([this] { return tray.waitForReadyRead(1) || tray.canReadLine(); }));
    }
    void activate()
    {
        tray.write("Activate\n");
        tray.waitForBytesWritten(20000);
    }
    bool opensPanel()
    {
        return eventually([this] { return program.panels().size() == 1; });
    }
    /// Moves the keyboard to the panel's first button. Its buttons are looked at, as the hand of
    /// the dial moves by itself.
    bool reachesItsFirstButton()
    {
        const QString panel = program.panels().value(0);
        const bool isReady = eventually([&] {
            return ManagedScreen::activeWindow() == panel && ManagedScreen::isPainted(panel);
        });
        const auto before = ManagedScreen::pictureOfFoot(panel);
        const auto changes = [&] {
            const auto now = ManagedScreen::pictureOfFoot(panel);
            return now && now != before;
        };
        // A key that comes before the panel has been given the keyboard is lost. One that is only
        // late must not be followed by another.
        return isReady && before && eventually([&] {
                   const QDeadlineTimer late(10s);
                   return ManagedScreen::press(QStringLiteral("Tab")) &&
                          eventually([&] { return changes() || late.hasExpired(); }) && changes();
               });
    }
    bool closesPanel()
    {
        return eventually([this] { return program.panels().isEmpty(); });
    }
    /// Number of the window that the item has in a tray on the screen; empty while it has none.
    QString itemWindow()
    {
        const QStringList windows =
            ManagedScreen::run(QStringLiteral("xdotool"),
                               {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                QStringLiteral("--pid"), QString::number(program.processId())})
                .value_or(QString())
                .split(u'\n', Qt::SkipEmptyParts);
        constexpr int largestItem = 64;
        for (const QString &window : windows) {
            const QSize size = ManagedScreen::place(window).size();
            if (!size.isEmpty() && size.width() <= largestItem && size.height() <= largestItem) {
                return window;
            }
        }
        return {};
    }
    QRect panelPlace() { return ManagedScreen::place(program.panels().value(0)); }

    ShownProgram program;
    QProcess tray;
};

TEST_F(TrayPanel, opensInTheCornerAndIsWhole)
{
    open();
    activate();
    ASSERT_TRUE(opensPanel());
    EXPECT_TRUE(eventually([this] { return ManagedScreen::isPainted(program.panels().value(0)); }));
    const QRect screenPlace(QPoint(), ManagedScreen::size);
    EXPECT_TRUE(eventually([&] {
        const QRect panel = panelPlace();
        return screenPlace.contains(panel) && panel.right() > screenPlace.right() - 40 &&
               panel.top() < 40 && panel.height() > 150;
    }));
}

TEST_F(TrayPanel, anotherClickClosesItAndTheNextOneOpensItAgain)
{
    open();
    activate();
    ASSERT_TRUE(opensPanel());
    activate();
    EXPECT_TRUE(closesPanel());
    activate();
    EXPECT_TRUE(opensPanel());
}

TEST_F(TrayPanel, escapeClosesIt)
{
    open();
    activate();
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(reachesItsFirstButton());
    ASSERT_TRUE(ManagedScreen::press(QStringLiteral("Escape")));
    EXPECT_TRUE(closesPanel());
    EXPECT_TRUE(program.isRunning());
}

TEST_F(TrayPanel, turningToAnotherWindowClosesIt)
{
    open();
    activate();
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(reachesItsFirstButton());
    ASSERT_TRUE(ManagedScreen::run(QStringLiteral("xdotool"),
                                   {QStringLiteral("windowactivate"), program.windows().value(0)}));
    EXPECT_TRUE(closesPanel());
}

TEST_F(TrayPanel, bringsTheWindowBackThatWasClosed)
{
    open();
    close(program);
    activate();
    ASSERT_TRUE(opensPanel());
    // With nothing set up a backup can't be started, so "Apri Vellomar" is the first button.
    ASSERT_TRUE(reachesItsFirstButton());
    ASSERT_TRUE(ManagedScreen::press(QStringLiteral("space")));
    EXPECT_TRUE(program.shows());
    EXPECT_TRUE(closesPanel());
}

TEST_F(TrayPanel, aBackupThatNeedsTheKitFirstBringsTheWindowBack)
{
    AppConfig config = ConfigStore::load();
    config.localEnabled = true;
    config.localFolder = QDir::homePath();
    ConfigStore::save(config);
    open();
    close(program);
    activate();
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(eventually([this] { return ManagedScreen::isPainted(program.panels().value(0)); }));
    // "Esegui backup" is the first button of the last row.
    constexpr QPoint fromCorner(12 + 40, -12 - 16);
    ASSERT_TRUE(ManagedScreen::click(panelPlace().bottomLeft() + fromCorner));
    EXPECT_TRUE(program.shows());
    EXPECT_TRUE(closesPanel());
}

TEST_F(TrayPanel, endsTheProgram)
{
    open();
    activate();
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(eventually([this] { return ManagedScreen::isPainted(program.panels().value(0)); }));
    // The last button of the last row.
    constexpr QPoint fromCorner(12 + 16, 12 + 16);
    ASSERT_TRUE(ManagedScreen::click(panelPlace().bottomRight() - fromCorner));
    EXPECT_EQ(program.finish(), 0);
}

TEST_F(TrayPanel, opensBesideTheItemInATrayOnTheScreen)
{
    ASSERT_TRUE(
        startTray(QStringLiteral("trayer"),
                  {QStringLiteral("--edge"), QStringLiteral("bottom"), QStringLiteral("--align"),
                   QStringLiteral("left"), QStringLiteral("--tint"), QStringLiteral("0x000000"),
                   QStringLiteral("--transparent"), QStringLiteral("false")}));
    program.start();
    ASSERT_TRUE(program.shows());
    // The item's own small window is inside the tray's, at the lower left, once it is there.
    ASSERT_TRUE(eventually([this] { return !itemWindow().isEmpty(); }));
    ASSERT_TRUE(ManagedScreen::click(ManagedScreen::place(itemWindow()).center()));
    ASSERT_TRUE(opensPanel());
    const QRect screenPlace(QPoint(), ManagedScreen::size);
    EXPECT_TRUE(eventually([&] {
        const QRect panel = panelPlace();
        return screenPlace.contains(panel) && panel.left() < 40 &&
               panel.bottom() > screenPlace.bottom() - 120;
    }));
}

} // namespace

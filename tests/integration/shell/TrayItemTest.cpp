#include "ui/shell/TrayItem.h"

#include "tests/support/EventLoop.h"
#include "tests/support/KeyringSession.h"
#include "tests/support/Screen.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QScreen>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <memory>

#include <sys/prctl.h>

// Qt's own D-Bus module loses a message of its tray item at the end of the program.
extern "C" const char *__lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libQt6DBus\n";
}

namespace {

/// A screen and a session bus, at first without a tray on either.
class TrayItemTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(screen.isRunning());
        ASSERT_TRUE(bus.isRunning());
    }
    void TearDown() override
    {
        item.reset();
        app.reset();
        tray.kill();
        tray.waitForFinished(20000);
    }

    [[nodiscard]] bool startTray(const QString &program, const QStringList &arguments)
    {
        tray.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        tray.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        tray.start(program, arguments);
        return tray.waitForStarted(20000);
    }
    [[nodiscard]] bool startHostOnTheBus()
    {
        return startTray(QStringLiteral("/usr/bin/python3"),
                         {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/tray_host.py")}) &&
               QProcess::execute(QStringLiteral("gdbus"),
                                 {QStringLiteral("wait"), QStringLiteral("--session"),
                                  QStringLiteral("--timeout=20"),
                                  QStringLiteral("org.kde.StatusNotifierWatcher")}) == 0;
    }
    [[nodiscard]] bool startTrayOnTheScreen()
    {
        return startTray(QStringLiteral("trayer"),
                         {QStringLiteral("--edge"), QStringLiteral("top"), QStringLiteral("--tint"),
                          QStringLiteral("0x000000"), QStringLiteral("--transparent"),
                          QStringLiteral("false")});
    }
    void startProgram()
    {
        app = std::make_unique<QApplication>(argc, argv.data());
        app->setApplicationDisplayName(QStringLiteral("Vellomar"));
    }
    void makeItem()
    {
        item = std::make_unique<TrayItem>();
        QObject::connect(item.get(), &TrayItem::activated, item.get(), [this] { ++activations; });
    }
    /// What the host on the bus says next of the item.
    QJsonObject said()
    {
        // It was started before the program's event loop, which so doesn't know of it.
        EXPECT_TRUE(eventuallyInLoop([this] {
            return tray.canReadLine() || (tray.waitForReadyRead(1) && tray.canReadLine());
        }));
        return QJsonDocument::fromJson(tray.readLine()).object();
    }

    int argc = 1;
    QByteArray name{"test"};
    std::array<char *, 2> argv{name.data(), nullptr};
    Screen screen;
    KeyringSession bus{KeyringSession::Keyring::none};
    QProcess tray;
    std::unique_ptr<QApplication> app;
    std::unique_ptr<TrayItem> item;
    int activations = 0;
};

TEST_F(TrayItemTest, withoutATrayNothingHappens)
{
    startProgram();
    EXPECT_FALSE(TrayItem::isAvailable());
    makeItem();
    item->setBusy(true);
    EXPECT_TRUE(item->isBusy());
    QCoreApplication::processEvents();
    EXPECT_EQ(activations, 0);
}

TEST_F(TrayItemTest, aTrayOnTheBusGetsItsNameAndPicture)
{
    ASSERT_TRUE(startHostOnTheBus());
    qputenv("XDG_CURRENT_DESKTOP", "GNOME");
    startProgram();
    EXPECT_TRUE(TrayItem::isAvailable());
    makeItem();
    const QJsonObject first = said();
    EXPECT_EQ(first.value(QLatin1String("tip")), QJsonValue(QStringLiteral("Vellomar")));
    const QJsonArray pictures = first.value(QLatin1String("pictures")).toArray();
    ASSERT_FALSE(pictures.isEmpty());
    // Pixels are alpha, red, green, blue; every visible one is white.
    const QByteArray dots =
        QByteArray::fromHex(pictures.first().toArray().at(2).toString().toLatin1());
    int whole = 0;
    for (qsizetype at = 0; at + 4 <= dots.size(); at += 4) {
        if (dots.at(at) == '\xff') {
            ++whole;
            EXPECT_EQ(dots.mid(at, 4), QByteArray(4, '\xff'));
        }
    }
    EXPECT_GT(whole, 0);

    // The item may report a change more than once.
    QJsonArray latest = pictures;
    const auto shown = [this, &latest] {
        tray.waitForReadyRead(1);
        while (tray.canReadLine()) {
            latest = QJsonDocument::fromJson(tray.readLine())
                         .object()
                         .value(QLatin1String("pictures"))
                         .toArray();
        }
        return latest;
    };
    item->setBusy(true);
    EXPECT_TRUE(eventuallyInLoop([&] { return shown() != pictures; }));
    item->setBusy(false);
    EXPECT_TRUE(eventuallyInLoop([&] { return shown() == pictures; }));
}

TEST_F(TrayItemTest, eachClickInATrayOnTheBusActivates)
{
    ASSERT_TRUE(startHostOnTheBus());
    startProgram();
    makeItem();
    said();
    int clicks = 0;
    for (const char *method : {"Activate\n", "SecondaryActivate\n", "ContextMenu\n"}) {
        tray.write(method);
        tray.waitForBytesWritten(20000);
        ++clicks;
        EXPECT_TRUE(eventuallyInLoop([&] { return activations == clicks; })) << method;
    }
}

TEST_F(TrayItemTest, aTrayOnTheScreenShowsItAndAClickActivates)
{
    ASSERT_TRUE(startTrayOnTheScreen());
    startProgram();
    ASSERT_TRUE(eventuallyInLoop([] { return TrayItem::isAvailable(); }));
    makeItem();
    ASSERT_TRUE(eventuallyInLoop([this] { return item->place().width() > 8; }));
    const QPoint middle = item->place().center();
    // In the tray it is painted, and not all in one colour.
    EXPECT_TRUE(eventuallyInLoop([&] {
        const QImage seen = app->primaryScreen()
                                ->grabWindow(0, item->place().x(), item->place().y(),
                                             item->place().width(), item->place().height())
                                .toImage();
        const QRgb corner = seen.pixel(0, 0);
        for (int y = 0; y < seen.height(); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                if (seen.pixel(x, y) != corner) {
                    return true;
                }
            }
        }
        return false;
    }));
    EXPECT_EQ(QProcess::execute(QStringLiteral("xdotool"),
                                {QStringLiteral("mousemove"), QString::number(middle.x()),
                                 QString::number(middle.y()), QStringLiteral("click"),
                                 QStringLiteral("1")}),
              0);
    EXPECT_TRUE(eventuallyInLoop([this] { return activations == 1; }));
}

TEST_F(TrayItemTest, aTrayThatComesLaterShowsIt)
{
    startProgram();
    makeItem();
    EXPECT_FALSE(TrayItem::isAvailable());
    ASSERT_TRUE(startTrayOnTheScreen());
    EXPECT_TRUE(eventuallyInLoop([this] { return item->place().width() > 8; }));
}

} // namespace

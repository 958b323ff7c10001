#include "engine/Notifier.h"
#include "tests/support/Files.h"
#include "tests/support/KeyringSession.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtEndian>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/prctl.h>

namespace {

void start(QProcess &process, const QString &program, const QStringList &arguments)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process.start(program, arguments);
}

void end(QProcess &process)
{
    process.terminate();
    if (!process.waitForFinished(20000)) {
        process.kill();
        process.waitForFinished(20000);
    }
}

/// How many pixels of a screen have the colours of the icon's parts, and of the text on it.
struct Dots
{
    int ground = 0;
    int light = 0;
    int text = 0;
};

/// Counts in the file in which Xvfb keeps its screen: a header of words with their most important
/// byte first, a table of colours, and then four bytes a pixel.
Dots dotsOf(const QString &screen)
{
    QFile file(screen);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray content = file.readAll();
    constexpr qsizetype headerWords = 25;
    if (content.size() < headerWords * 4) {
        return {};
    }
    const auto word = [&content](qsizetype index) {
        return static_cast<qsizetype>(qFromBigEndian<quint32>(content.constData() + index * 4));
    };
    constexpr qsizetype bytesOfColour = 12;
    Dots dots;
    for (qsizetype at = word(0) + word(19) * bytesOfColour; at + 4 <= content.size(); at += 4) {
        const auto byte = [&content, at](qsizetype index) {
            return static_cast<int>(static_cast<unsigned char>(content.at(at + index)));
        };
        const int blue = byte(0);
        const int green = byte(1);
        const int red = byte(2);
        if (red < 50 && green > red + 20 && blue > red + 20) {
            ++dots.ground; // teal
        } else if (red > 220 && green > 140 && green < 220 && blue < 150) {
            ++dots.light; // amber
        } else if (red < 40 && green < 40 && blue > 80) {
            ++dots.text; // the text colour of the service's settings
        }
    }
    return dots;
}

/// A screen of its own with a real notification service on it.
class NotificationWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        start(server, QStringLiteral("Xvfb"),
              {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
               QStringLiteral("0"), QStringLiteral("640x240x24"), QStringLiteral("-nolisten"),
               QStringLiteral("tcp"), QStringLiteral("-fbdir"), home});
        ASSERT_TRUE(server.waitForReadyRead(20000)) << server.errorString().toStdString();
        qputenv("DISPLAY", ':' + server.readLine().trimmed());

        const QString settings = home + QLatin1String("/dunstrc");
        ASSERT_TRUE(writeFile(
            settings, "[global]\nfont = Inter 12\nformat = \"<small>%a</small>\\n<b>%s</b>\\n%b\"\n"
                      "width = 440\nmin_icon_size = 64\nmax_icon_size = 64\nframe_width = 1\n"
                      "frame_color = \"#aaaaaa\"\norigin = top-right\noffset = 16x16\n"
                      "icon_path = /nonexistent\n"
                      "[urgency_normal]\nbackground = \"#ffffff\"\nforeground = \"#101060\"\n"
                      "timeout = 0\n"));
        start(service, QStringLiteral("dunst"), {QStringLiteral("-conf"), settings});
        ASSERT_TRUE(service.waitForStarted(20000)) << service.errorString().toStdString();
        ASSERT_EQ(QProcess::execute(QStringLiteral("gdbus"),
                                    {QStringLiteral("wait"), QStringLiteral("--session"),
                                     QStringLiteral("--timeout=20"),
                                     QStringLiteral("org.freedesktop.Notifications")}),
                  0);
    }
    void TearDown() override
    {
        end(service);
        end(server);
    }

    const QString home = QDir::homePath();
    const QString screen = home + QLatin1String("/Xvfb_screen0");
    KeyringSession bus{KeyringSession::Keyring::none};
    QProcess server;
    QProcess service;
};

TEST_F(NotificationWindow, showsTheIconAndTheText)
{
    const Dots before = dotsOf(screen);
    EXPECT_EQ(before.ground, 0);
    EXPECT_EQ(before.light, 0);
    EXPECT_EQ(before.text, 0);
    Notifier::send(QStringLiteral("Backup non riuscito"),
                   QStringLiteral("Disco esterno: spazio esaurito <500 MB & meno>"));
    // The icon is 64 by 64 pixels, most of them its ground.
    EXPECT_TRUE(eventually([this] {
        const Dots dots = dotsOf(screen);
        return dots.ground > 1500 && dots.light > 100 && dots.text > 200;
    })) << dotsOf(screen).ground
        << ' ' << dotsOf(screen).light << ' ' << dotsOf(screen).text;

    // Kept, to be looked at by hand.
    const QString keep = qEnvironmentVariable("VELLOMAR_KEEP_PICTURES");
    if (!keep.isEmpty()) {
        EXPECT_TRUE(QFile::copy(screen, keep + QLatin1String("/notification.xwd")));
    }
}

} // namespace

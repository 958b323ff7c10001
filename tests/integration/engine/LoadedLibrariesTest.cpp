#include "tests/support/ScriptedRestic.h"

#include "tools/OneShotSecret.h"

#include <QRegularExpression>

namespace {

// What a face without a window has loaded, whether it was linked to or opened later.
class LoadedLibraries : public ScriptedRestic
{
protected:
    static void expectNoWindowToolkit(const QByteArray &libraries)
    {
        // It is a list, and of the right program.
        EXPECT_TRUE(libraries.contains("libQt6Core"));
        static const QRegularExpression toolkit(QStringLiteral(
            R"([^\s/]*lib(Qt6(Gui|Qml|Quick|Widgets|OpenGL|Svg|PrintSupport|XcbQpa|WaylandClient))"
            R"(|X11|xcb|wayland|gtk|gdk|GL|EGL)[^\s]*)"));
        const QRegularExpressionMatch found = toolkit.match(QString::fromUtf8(libraries));
        EXPECT_FALSE(found.hasMatch()) << found.captured().toStdString();
    }
};

TEST_F(LoadedLibraries, aBackupHasNoWindowToolkit)
{
    script("await");
    Cycle cycle(installation.program());
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    const QByteArray libraries = readFile(QStringLiteral("/proc/%1/maps").arg(cycle.processId()));
    // The keyring has been asked by now.
    EXPECT_TRUE(libraries.contains("libsecret"));
    expectNoWindowToolkit(libraries);
    letGo();
    EXPECT_EQ(cycle.finish(), 0);
}

TEST_F(LoadedLibraries, theDeliveryOfASecretHasNoWindowToolkit)
{
    const auto secret = OneShotSecret::create(QStringLiteral("the secret"));
    ASSERT_TRUE(secret);
    // It ends too quickly to be looked at, so the loader's own log is read.
    qputenv("LD_DEBUG", "files");
    Cycle delivery(installation.program());
    delivery.start({QStringLiteral("--secret"), secret->path()});
    EXPECT_EQ(delivery.finish(), 0);
    EXPECT_EQ(delivery.output(), "the secret");
    expectNoWindowToolkit(delivery.errors());
}

} // namespace

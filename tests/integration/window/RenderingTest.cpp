#include "ui/face/Rendering.h"

#include "tests/support/Screen.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QQuickWindow>

#include <gtest/gtest.h>

#include <array>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

/// While it exists, the leak sanitizer ignores allocations: the software OpenGL leaks a little, and
/// is unloaded before a suppression could name it.
class LibrariesMayKeep
{
#ifdef __SANITIZE_ADDRESS__
    __lsan::ScopedDisabler disabler;
#endif
};

/// A virtual screen, where OpenGL is emulated or missing.
class RenderingTest : public testing::Test
{
protected:
    static QString present() { return QStringLiteral("/dev/null"); }
    static QString absent() { return QStringLiteral("/dev/no-such-device"); }

    int argc = 1;
    std::array<char, 5> name = {'t', 'e', 's', 't', '\0'};
    std::array<char *, 2> argv{name.data(), nullptr};
};

TEST_F(RenderingTest, anImitationOfOpenGlIsNoGraphicsProcessor)
{
    [[maybe_unused]] const LibrariesMayKeep inThisTest;
    const Screen screen;
    ASSERT_TRUE(screen.isRunning());
    const QGuiApplication application(argc, argv.data());
    QOpenGLContext context;
    ASSERT_TRUE(context.create());
    EXPECT_FALSE(Rendering::hasGraphicsProcessor({absent(), present()}));
    EXPECT_FALSE(Rendering::hasGraphicsProcessor({absent()}));
    EXPECT_FALSE(Rendering::hasGraphicsProcessor({}));
}

TEST_F(RenderingTest, aScreenWithoutOpenGlHasNone)
{
    const Screen screen({1280, 800}, {QStringLiteral("-extension"), QStringLiteral("GLX")});
    ASSERT_TRUE(screen.isRunning());
    qputenv("__EGL_VENDOR_LIBRARY_DIRS", "/nonexistent");
    const QGuiApplication application(argc, argv.data());
    EXPECT_FALSE(Rendering::hasGraphicsProcessor({present()}));
    Rendering::choose();
    EXPECT_EQ(QQuickWindow::sceneGraphBackend(), QStringLiteral("software"));
}

TEST_F(RenderingTest, whatTheUserTellsQtHolds)
{
    const Screen screen;
    ASSERT_TRUE(screen.isRunning());
    qputenv("QSG_RHI_BACKEND", "opengl");
    const QGuiApplication application(argc, argv.data());
    Rendering::choose();
    EXPECT_NE(QQuickWindow::sceneGraphBackend(), QStringLiteral("software"));
}

} // namespace

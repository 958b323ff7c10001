#include "tests/support/Files.h"
#include "tests/support/Waiting.h"
#include "tests/support/WindowSession.h"

#include <QDir>

// What a desktop may lack: the window opens all the same.

namespace {

class MissingDesktop : public WindowSession
{
protected:
    void expectWindow()
    {
        program.start();
        ASSERT_TRUE(program.shows()) << program.errors().toStdString();
        EXPECT_TRUE(
            eventually([this] { return ManagedScreen::isPainted(program.windows().value(0)); }));
        program.send(SIGTERM);
        EXPECT_EQ(program.finish(), 0) << program.errors().toStdString();
    }

    ShownProgram program;
};

class MissingKeyring : public MissingDesktop
{
protected:
    MissingKeyring() { session.stopKeyring(); }
};

TEST_F(MissingDesktop, aSessionBus)
{
    session.stopKeyring();
    session.stopBus();
    expectWindow();
}

TEST_F(MissingDesktop, aKeyring)
{
    session.stopKeyring();
    expectWindow();
}

TEST_F(MissingDesktop, fonts)
{
    const QString empty = QDir::homePath() + QLatin1String("/no-fonts");
    const QString settings = empty + QLatin1String("/fonts.conf");
    ASSERT_TRUE(writeFile(settings,
                          "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">"
                          "<fontconfig></fontconfig>"));
    qputenv("FONTCONFIG_FILE", settings.toUtf8());
    expectWindow();
}

TEST_F(MissingDesktop, anIconTheme)
{
    qputenv("XDG_DATA_DIRS", "/nonexistent");
    expectWindow();
}

TEST_F(MissingDesktop, aRuntimeFolder)
{
    qputenv("XDG_RUNTIME_DIR", "");
    expectWindow();
}

TEST_F(MissingDesktop, aPlaceForTheSupportFolder)
{
    // A file stands where the folder would be.
    qputenv("XDG_DATA_HOME", QDir::homePath().toUtf8() + "/occupied");
    ASSERT_TRUE(writeFile(QDir::homePath() + QLatin1String("/occupied")));
    expectWindow();
}

TEST_F(MissingDesktop, aScreenIsReported)
{
    for (const char *display : {"", ":987"}) {
        qputenv("DISPLAY", display);
        ShownProgram blind;
        blind.start();
        EXPECT_EQ(blind.finish(), 1);
        const QByteArray errors = blind.errors();
        EXPECT_TRUE(errors.contains("qui non c'è uno schermo")) << errors.toStdString();
    }
}

} // namespace

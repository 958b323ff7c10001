#include "state/ConfigStore.h"
#include "state/Paths.h"
#include "tests/support/AccessibleTree.h"
#include "tests/support/Cycle.h"
#include "tests/support/Waiting.h"
#include "tests/support/WindowSession.h"

#include <QDir>
#include <QFile>

#include <csignal>

// The window while the keyring doesn't answer.

namespace {

class KeyringWait : public WindowSession
{
protected:
    void SetUp() override
    {
        WindowSession::SetUp();
        ASSERT_TRUE(reader.isRunning());
        AppConfig config = ConfigStore::load();
        config.localEnabled = true;
        config.localFolder = QDir::homePath();
        config.keySaved = true;
        ConfigStore::save(config);
    }

    bool shows(const QString &role, const QString &name)
    {
        return eventually([&] { return reader.find(program.processId(), role, name).has_value(); });
    }

    const QString heading = QStringLiteral("heading");
    const QString waiting = QStringLiteral("In attesa del Portachiavi");
    AccessibleTree reader;
    ShownProgram program;
};

TEST_F(KeyringWait, theWindowIsThereSaysSoAndGoesOnWithTheAnswer)
{
    const QString answer = QDir::homePath() + QLatin1String("/answer");
    session.stopKeyring();
    session.startHidingService(
        {QStringLiteral("default"), QLatin1String("opens-when:") + answer, QStringLiteral("key")});
    ASSERT_TRUE(session.isRunning());
    program.start();
    ASSERT_TRUE(program.shows());
    EXPECT_TRUE(shows(heading, waiting));
    EXPECT_TRUE(shows(QStringLiteral("label"), waiting)); // at the sidebar's foot
    EXPECT_TRUE(shows(QStringLiteral("push button"), QStringLiteral("Avvio in corso...")));
    QFile file(answer);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(shows(heading, QStringLiteral("Nessun backup eseguito")));
    EXPECT_TRUE(shows(QStringLiteral("push button"), QStringLiteral("Esegui backup ora")));
}

TEST_F(KeyringWait, aSecondStartHandsOverMeanwhile)
{
    session.pauseKeyring();
    program.start();
    ASSERT_TRUE(program.shows());
    ASSERT_TRUE(ManagedScreen::close(program.windows().value(0)));
    ASSERT_TRUE(program.hides());
    ShownProgram second;
    second.start();
    EXPECT_EQ(second.finish(), 0);
    EXPECT_EQ(second.errors(), "");
    EXPECT_TRUE(program.shows());
}

TEST_F(KeyringWait, theProgramCanBeEndedMeanwhile)
{
    session.pauseKeyring();
    program.start();
    ASSERT_TRUE(program.shows());
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(), 0);
    EXPECT_EQ(program.errors(), "");
}

TEST_F(KeyringWait, aPersonWhoIsAskedAndDoesNotAnswerHoldsNothingUp)
{
    session.restartLocked();
    session.startPrompter(KeyringSession::Prompter::silent);
    ASSERT_TRUE(session.isRunning());
    program.start();
    ASSERT_TRUE(program.shows());
    EXPECT_TRUE(shows(heading, waiting));
    ASSERT_TRUE(eventually([this] { return session.wasAsked(); }));
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(), 0);
}

} // namespace

#include "state/ConfigStore.h"
#include "state/Paths.h"
#include "tests/support/AccessibleTree.h"
#include "tests/support/Cycle.h"
#include "tests/support/Files.h"
#include "tests/support/ReadySettings.h"
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
        ConfigStore::save(readySettings());
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
    ASSERT_TRUE(writeFile(answer));
    EXPECT_TRUE(shows(heading, QStringLiteral("Nessun backup eseguito")));
    EXPECT_TRUE(shows(QStringLiteral("push button"), QStringLiteral("Esegui backup ora")));
}

TEST_F(KeyringWait, aSecondStartHandsOverMeanwhile)
{
    session.pauseKeyring();
    program.start();
    ASSERT_TRUE(program.shows());
    close(program);
    startAgain();
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

TEST_F(KeyringWait, aUserWhoIsAskedAndDoesNotAnswerHoldsNothingUp)
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

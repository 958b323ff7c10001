#include "tests/support/ScriptedRestic.h"

#include "state/Keychain.h"

#include <QRegularExpression>

namespace {

class KeyringFault : public ScriptedRestic
{
protected:
    KeyringFault()
    {
        config.driveEnabled = true;
        config.serverEnabled = true;
        saveSettings();
    }

    static void expectOneFailure()
    {
        EXPECT_EQ(recordCount(), 1);
        EXPECT_EQ(newestRecord().destination, DestinationID::Local);
        EXPECT_EQ(newestRecord().outcome, Outcome::Failed);
        EXPECT_EQ(newestRecord().duration, 0);
        EXPECT_FALSE(isThere("status.json"));
    }

    static void expectRefusal()
    {
        expectOneFailure();
        static const QRegularExpression text(QStringLiteral(
            R"(\AImpossibile accedere alla chiave nel Portachiavi \(errore -?\d+\)\z)"));
        EXPECT_TRUE(text.match(newestRecord().message).hasMatch())
            << newestRecord().message.toStdString();
    }
};

TEST_F(KeyringFault, noSessionBusFailsTheCycle)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    EXPECT_EQ(runCycle(), 1);
    expectRefusal();
    EXPECT_EQ(commands(), "");
}

TEST_F(KeyringFault, aLockedKeyringFailsTheCycle)
{
    keyring.restartLocked();
    ASSERT_TRUE(keyring.isRunning());
    EXPECT_EQ(runCycle(), 1);
    expectRefusal();
    EXPECT_EQ(commands(), "");
}

TEST_F(KeyringFault, aMissingKeyFailsTheCycle)
{
    ASSERT_TRUE(removeSecret(Keychain::repositoryKey));
    EXPECT_EQ(runCycle(), 1);
    expectOneFailure();
    EXPECT_EQ(newestRecord().message,
              QStringLiteral("Chiave di cifratura non trovata nel Portachiavi: apri Vellomar"));
    EXPECT_EQ(commands(), "");
    // Only the window makes one, so the next run finds none either.
    EXPECT_EQ(runCycle(), 1);
}

TEST_F(KeyringFault, aWrongKeyFailsTheRun)
{
    config.driveEnabled = false;
    config.serverEnabled = false;
    saveSettings();
    installation.addReal(QStringLiteral("restic"));
    makeRepository(repository);
    ASSERT_TRUE(storeSecret(Keychain::repositoryKey, "another key"));
    EXPECT_EQ(runCycle(), 1);
    EXPECT_EQ(newestRecord().message,
              QStringLiteral("Chiave di cifratura errata per questa destinazione"));
    EXPECT_EQ(snapshotCount(repository), 0);
}

} // namespace

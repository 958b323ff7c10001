// A locked keyring must never be taken for one without the item: a new key would be made, and all
// that was encrypted with the old one would be lost to the program.

#include "platform/linux/FreedesktopSecretBackend.h"
#include "state/Keychain.h"
#include "tests/support/KeyringSession.h"

#include <gtest/gtest.h>

using Prompter = KeyringSession::Prompter;

namespace {

const QString account = Keychain::repositoryKey;
const QString oldKey = QStringLiteral("the old key");
constexpr std::int32_t isLocked = 2; // libsecret's SECRET_ERROR_IS_LOCKED

// Every operation gives an error, and once the keyring is open again the old key is still there.
void expectRefusedAndUnharmed(KeyringSession &session)
{
    const auto read = Keychain::read(account);
    ASSERT_FALSE(read.has_value());
    EXPECT_NE(read.error().status, SecretBackend::itemNotFound);
    EXPECT_NE(read.error().status, 0);
    EXPECT_TRUE(read.error().message().contains(QString::number(read.error().status)));
    EXPECT_FALSE(Keychain::loadOrCreate(account));
    EXPECT_FALSE(Keychain::write(QStringLiteral("a new key"), account));

    session.restartUnlocked();
    ASSERT_TRUE(session.isRunning());
    EXPECT_EQ(Keychain::read(account).value(), oldKey);
}

} // namespace

TEST(LockedKeyring, nobodyThereToUnlockItIsAnError)
{
    KeyringSession session;
    ASSERT_TRUE(Keychain::write(oldKey, account));
    session.restartLocked();
    ASSERT_TRUE(session.isRunning());
    expectRefusedAndUnharmed(session);
}

TEST(LockedKeyring, aPrompterWithoutAScreenIsAnError)
{
    KeyringSession session;
    ASSERT_TRUE(Keychain::write(oldKey, account));
    session.restartLocked();
    session.startPrompter(Prompter::system);
    ASSERT_TRUE(session.isRunning());
    expectRefusedAndUnharmed(session);
}

TEST(LockedKeyring, aRefusedPromptIsAnError)
{
    KeyringSession session;
    ASSERT_TRUE(Keychain::write(oldKey, account));
    session.restartLocked();
    session.startPrompter(Prompter::refusing);
    ASSERT_TRUE(session.isRunning());
    expectRefusedAndUnharmed(session);
    EXPECT_TRUE(session.wasAsked());
}

TEST(LockedKeyring, aPromptThatNobodyAnswersIsAnErrorInTheEnd)
{
    KeyringSession session;
    ASSERT_TRUE(Keychain::write(oldKey, account));
    session.restartLocked();
    session.startPrompter(Prompter::silent);
    ASSERT_TRUE(session.isRunning());
    FreedesktopSecretBackend impatient(std::chrono::seconds(3));
    const ScopedSecretBackend inForce(impatient);
    expectRefusedAndUnharmed(session);
    EXPECT_TRUE(session.wasAsked());
}

TEST(LockedKeyring, anEmptyOneIsAnErrorToo)
{
    KeyringSession session;
    session.restartLocked();
    session.startPrompter(Prompter::refusing);
    ASSERT_TRUE(session.isRunning());
    EXPECT_FALSE(Keychain::read(account));
    EXPECT_FALSE(Keychain::loadOrCreate(account));
    EXPECT_TRUE(session.wasAsked());

    session.restartUnlocked();
    ASSERT_TRUE(session.isRunning());
    EXPECT_FALSE(Keychain::read(account).value().has_value());
}

TEST(LockedKeyring, oneThatHidesItsItemsIsAnErrorUntilItIsUnlocked)
{
    KeyringSession session(KeyringSession::Keyring::none);
    session.startHidingService({QStringLiteral("default"), QStringLiteral("refuses"), oldKey});
    ASSERT_TRUE(session.isRunning());
    const auto read = Keychain::read(account);
    ASSERT_FALSE(read.has_value());
    EXPECT_EQ(read.error().status, isLocked);
    EXPECT_FALSE(Keychain::loadOrCreate(account));
    EXPECT_FALSE(Keychain::write(QStringLiteral("a new key"), account));
}

TEST(LockedKeyring, oneThatHidesItsItemsGivesThemOnceUnlocked)
{
    KeyringSession session(KeyringSession::Keyring::none);
    session.startHidingService({QStringLiteral("default"), QStringLiteral("opens"), oldKey});
    ASSERT_TRUE(session.isRunning());
    const auto key = Keychain::loadOrCreate(account);
    ASSERT_TRUE(key.has_value()) << key.error().status;
    EXPECT_EQ(*key, oldKey);
}

TEST(LockedKeyring, oneThatSomebodyElseUnlocksMeanwhileGivesItsItems)
{
    KeyringSession session(KeyringSession::Keyring::none);
    session.startHidingService(
        {QStringLiteral("default"), QStringLiteral("opens-meanwhile"), oldKey});
    ASSERT_TRUE(session.isRunning());
    const auto read = Keychain::read(account);
    ASSERT_TRUE(read.has_value()) << read.error().status;
    EXPECT_EQ(*read, oldKey);
}

TEST(LockedKeyring, oneThatIsFoundEmptyOnceUnlockedHasNoItem)
{
    KeyringSession session(KeyringSession::Keyring::none);
    session.startHidingService({QStringLiteral("default"), QStringLiteral("opens")});
    ASSERT_TRUE(session.isRunning());
    const auto value = Keychain::read(account);
    ASSERT_TRUE(value.has_value()) << value.error().status;
    EXPECT_FALSE(value->has_value());
}

TEST(LockedKeyring, oneThatIsNotTheDefaultCountsWhereThereIsNoDefault)
{
    KeyringSession session(KeyringSession::Keyring::none);
    session.startHidingService({QStringLiteral("no-default"), QStringLiteral("refuses"), oldKey});
    ASSERT_TRUE(session.isRunning());
    const auto read = Keychain::read(account);
    ASSERT_FALSE(read.has_value());
    EXPECT_EQ(read.error().status, isLocked);
    EXPECT_FALSE(Keychain::loadOrCreate(account));
}

#include "platform/linux/FreedesktopSecretBackend.h"
#include "state/Keychain.h"
#include "tests/support/KeyringSession.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <gtest/gtest.h>

#include <string>

namespace {

struct Output
{
    int exitCode = -1;
    QByteArray text;
};

Output secretTool(const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("secret-tool"), arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(20000)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    return {process.exitCode(), process.readAll()};
}

QStringList attributesOf(const QString &account)
{
    return {QStringLiteral("service"), QStringLiteral("it.vellomar.app"), QStringLiteral("account"),
            account};
}

const QString account = Keychain::repositoryKey;

} // namespace

TEST(Keyring, anItemThatIsNotThereIsAbsentWithoutAnError)
{
    const KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    const auto value = Keychain::read(account);
    ASSERT_TRUE(value.has_value()) << value.error().status;
    EXPECT_FALSE(value->has_value());
}

TEST(Keyring, aSecondWriteReplacesTheValueAndKeepsOneItem)
{
    const KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    ASSERT_TRUE(Keychain::write(QStringLiteral("first"), account));
    ASSERT_TRUE(Keychain::write(QStringLiteral("second"), account));
    EXPECT_EQ(Keychain::read(account).value(), QStringLiteral("second"));

    const Output found = secretTool(QStringList{QStringLiteral("search"), QStringLiteral("--all")} +
                                    attributesOf(account));
    EXPECT_EQ(found.text.count("secret = "), 1) << found.text.toStdString();
    EXPECT_TRUE(found.text.contains("secret = second")) << found.text.toStdString();
    EXPECT_TRUE(found.text.contains("label = Vellomar: repository-key"))
        << found.text.toStdString();
}

TEST(Keyring, itemsOfOtherAccountsStayApart)
{
    const KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    ASSERT_TRUE(Keychain::write(QStringLiteral("one"), Keychain::repositoryKey));
    ASSERT_TRUE(Keychain::write(QStringLiteral("two"), Keychain::previousRepositoryKey));
    EXPECT_EQ(Keychain::read(Keychain::repositoryKey).value(), QStringLiteral("one"));
    EXPECT_EQ(Keychain::read(Keychain::previousRepositoryKey).value(), QStringLiteral("two"));
    EXPECT_FALSE(Keychain::read(Keychain::rcloneConfigKey).value().has_value());
}

TEST(Keyring, otherProgramsFindWhatWeStored)
{
    const KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    ASSERT_TRUE(Keychain::write(QStringLiteral("our value"), account));
    const Output found = secretTool(QStringList{QStringLiteral("lookup")} + attributesOf(account));
    EXPECT_EQ(found.exitCode, 0);
    EXPECT_EQ(found.text, "our value");
}

TEST(Keyring, anItemStoredByAnotherProgramIsReadAndReplaced)
{
    const KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    ASSERT_EQ(secretTool(QStringList{QStringLiteral("store"), QStringLiteral("--label=by hand")} +
                             attributesOf(account),
                         "their value")
                  .exitCode,
              0);
    EXPECT_EQ(Keychain::read(account).value(), QStringLiteral("their value"));

    ASSERT_TRUE(Keychain::write(QStringLiteral("our value"), account));
    const Output found = secretTool(QStringList{QStringLiteral("search"), QStringLiteral("--all")} +
                                    attributesOf(account));
    EXPECT_EQ(found.text.count("secret = "), 1) << found.text.toStdString();
    EXPECT_TRUE(found.text.contains("secret = our value")) << found.text.toStdString();
}

TEST(Keyring, valuesOfEveryKindComeBackAsTheyWere)
{
    const KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    const QList<QString> values = {
        QString(),
        QString(1000, u'k'),
        QStringLiteral("パスワード – ключ 🔑 è"),
        QStringLiteral(R"(it's "quoted" \ $HOME `id`)"),
        QStringLiteral("two\nlines\r\n"),
        QStringLiteral(" blanks around "),
        QString(QChar::ByteOrderMark) + QStringLiteral("marked"),
        QStringLiteral("a") + QChar(u'\0') + QStringLiteral("b"),
    };
    for (const QString &value : values) {
        ASSERT_TRUE(Keychain::write(value, account)) << value.toStdString();
        const auto stored = Keychain::read(account);
        ASSERT_TRUE(stored.has_value()) << value.toStdString();
        EXPECT_EQ(*stored, value) << value.toStdString();
    }
}

TEST(Keyring, bytesThatAreNotUTF8AreRepaired)
{
    const KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    FreedesktopSecretBackend backend;
    ASSERT_EQ(backend.add(QStringLiteral("it.vellomar.app"), account,
                          "a\xff"
                          "b"),
              0);
    EXPECT_EQ(Keychain::read(account).value(), QStringLiteral("a\ufffdb"));
}

TEST(Keyring, aKeyIsMadeOnceAndThenKept)
{
    KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    const auto key = Keychain::loadOrCreate(account);
    ASSERT_TRUE(key.has_value());
    EXPECT_EQ(key->size(), 32);
    EXPECT_EQ(Keychain::loadOrCreate(account).value(), *key);

    // A keyring that was restarted meanwhile serves the same process.
    session.restartUnlocked();
    ASSERT_TRUE(session.isRunning());
    EXPECT_EQ(Keychain::loadOrCreate(account).value(), *key);
}

TEST(Keyring, noBusIsAnErrorWithItsCode)
{
    const auto value = Keychain::read(account);
    ASSERT_FALSE(value.has_value());
    EXPECT_NE(value.error().status, 0);
    EXPECT_TRUE(value.error().message().contains(QString::number(value.error().status)));
    EXPECT_FALSE(Keychain::write(QStringLiteral("value"), account));
    EXPECT_FALSE(Keychain::loadOrCreate(account));
}

TEST(Keyring, aBusWithoutAKeyringIsAnErrorAndNotAMissingItem)
{
    const KeyringSession session(KeyringSession::Keyring::none);
    ASSERT_TRUE(session.isRunning());
    EXPECT_FALSE(Keychain::read(account));
    EXPECT_FALSE(Keychain::write(QStringLiteral("value"), account));
    EXPECT_FALSE(Keychain::loadOrCreate(account));
}

TEST(Keyring, aKeyringThatDiesInBetweenIsAnErrorAndNotAMissingItem)
{
    KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    ASSERT_TRUE(Keychain::write(QStringLiteral("value"), account));
    session.stopKeyring();
    EXPECT_FALSE(Keychain::read(account));
    EXPECT_FALSE(Keychain::loadOrCreate(account));
}

TEST(Keyring, aBusThatDiesInBetweenIsAnErrorAndDoesNotEndTheProgram)
{
    int count = 1;
    std::string name = "test";
    char *arguments[] = {name.data(), nullptr};
    const QCoreApplication application(count, arguments);

    KeyringSession session;
    ASSERT_TRUE(session.isRunning());
    ASSERT_TRUE(Keychain::write(QStringLiteral("value"), account));
    session.stopBus();
    // The news of it comes through the event loop.
    for (int i = 0; i < 20; ++i) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    EXPECT_FALSE(Keychain::read(account));
    EXPECT_FALSE(Keychain::loadOrCreate(account));
}

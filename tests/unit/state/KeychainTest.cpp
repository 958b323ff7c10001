#include "state/Keychain.h"

#include "tests/support/MemorySecretBackend.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr QLatin1String alphabet("abcdefghijkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789");

// The smallest number whose product with 56 has this index in its upper half.
quint64 firstOf(quint64 index)
{
    __extension__ using Wide = unsigned __int128;
    return static_cast<quint64>(((Wide{index} << 64U) + 55) / 56);
}

class KeychainTest : public testing::Test
{
protected:
    MemorySecretBackend backend;
    ScopedSecretBackend inForce{backend};
    const QString account = Keychain::repositoryKey;
    const std::pair<QString, QString> item{QStringLiteral("it.vellomar.app"), account};
};

} // namespace

TEST_F(KeychainTest, theAccountsHaveTheirNames)
{
    EXPECT_EQ(Keychain::repositoryKey, QLatin1String("repository-key"));
    EXPECT_EQ(Keychain::previousRepositoryKey, QLatin1String("repository-key-previous"));
    EXPECT_EQ(Keychain::rcloneConfigKey, QLatin1String("rclone-config-key"));
}

TEST_F(KeychainTest, aMissingItemIsAbsentAndNothingIsMade)
{
    EXPECT_EQ(Keychain::read(account).value(), std::nullopt);
    EXPECT_TRUE(backend.items.isEmpty());
}

TEST_F(KeychainTest, aValueIsReadUnderOurServiceAlone)
{
    backend.items[{QStringLiteral("other"), account}] = "theirs";
    EXPECT_EQ(Keychain::read(account).value(), std::nullopt);
    backend.items[item] = "ours";
    EXPECT_EQ(Keychain::read(account).value(), QStringLiteral("ours"));
}

TEST_F(KeychainTest, bytesThatAreNotUTF8AreRepaired)
{
    backend.items[item] = "a\xff";
    EXPECT_EQ(Keychain::read(account).value(), QStringLiteral("a\ufffd"));
}

TEST_F(KeychainTest, aLastCharacterThatIsCutOffIsNotDropped)
{
    for (const QByteArray &cut : {QByteArray("\xc3"), QByteArray("\xe6\x97"),
                                  QByteArray("\xf0\x9f\x98"), QByteArray("\xe6")}) {
        backend.items[item] = "a" + cut;
        const QString value = Keychain::read(account).value().value_or(QString());
        EXPECT_TRUE(value.startsWith(QStringLiteral("a\ufffd"))) << cut.toHex().constData();
        EXPECT_EQ(value.count(QChar::ReplacementCharacter), value.size() - 1);
    }
}

TEST_F(KeychainTest, aLeadingByteOrderMarkBelongsToTheValue)
{
    const QString value = QString(QChar::ByteOrderMark) + QStringLiteral("x");
    ASSERT_TRUE(Keychain::write(value, account));
    EXPECT_EQ(Keychain::read(account).value(), value);
}

TEST_F(KeychainTest, aWriteAddsFirstAndReplacesThen)
{
    ASSERT_TRUE(Keychain::write(QStringLiteral("è1"), account));
    EXPECT_EQ(backend.adds, 1);
    ASSERT_TRUE(Keychain::write(QStringLiteral("2"), account));
    EXPECT_EQ(backend.adds, 1);
    EXPECT_EQ(backend.updates, 2);
    EXPECT_EQ(backend.items.size(), 1);
    EXPECT_EQ(backend.items.value(item), "2");
}

TEST_F(KeychainTest, errorsHoldThePlatformsCode)
{
    backend.readFailure = -25308;
    backend.writeFailure = 7;
    EXPECT_EQ(Keychain::read(account).error(), KeychainError{-25308});
    EXPECT_EQ(Keychain::write(QStringLiteral("x"), account).error(), KeychainError{7});
    EXPECT_EQ(backend.adds, 0);
    EXPECT_EQ(KeychainError{-25308}.message(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore -25308)"));
    EXPECT_EQ(KeychainError{1234567}.message(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 1234567)"));
}

TEST_F(KeychainTest, aGoodAnswerWithoutDataIsAnError)
{
    class NoData final : public SecretBackend
    {
        Match copyMatching(const QString & /*service*/, const QString & /*account*/) override
        {
            return {0, std::nullopt};
        }
        std::int32_t update(const QString & /*service*/, const QString & /*account*/,
                            const QByteArray & /*value*/) override
        {
            return itemNotFound;
        }
        std::int32_t add(const QString & /*service*/, const QString & /*account*/,
                         const QByteArray & /*value*/) override
        {
            return 5;
        }
    };
    NoData noData;
    const ScopedSecretBackend instead(noData);
    EXPECT_EQ(Keychain::read(account).error(), KeychainError{0});
    EXPECT_EQ(Keychain::write(QStringLiteral("x"), account).error(), KeychainError{5});
}

TEST_F(KeychainTest, aKeyIsMadeOnce)
{
    const QString key = Keychain::loadOrCreate(account).value();
    EXPECT_EQ(key.size(), 32);
    for (const QChar character : key) {
        EXPECT_TRUE(alphabet.contains(character)) << key.toStdString();
    }
    EXPECT_EQ(backend.items.value(item), key.toUtf8());
    EXPECT_EQ(Keychain::loadOrCreate(account).value(), key);
    EXPECT_EQ(backend.adds, 1);
    EXPECT_NE(Keychain::loadOrCreate(Keychain::rcloneConfigKey).value(), key);
}

TEST_F(KeychainTest, anEmptyValueIsAValue)
{
    backend.items[item] = "";
    EXPECT_EQ(Keychain::loadOrCreate(account).value(), QString());
    EXPECT_EQ(backend.updates + backend.adds, 0);
}

TEST_F(KeychainTest, nothingIsMadeWhenTheReadFails)
{
    backend.readFailure = 3;
    EXPECT_EQ(Keychain::loadOrCreate(account).error(), KeychainError{3});
    EXPECT_EQ(backend.updates + backend.adds, 0);
}

TEST_F(KeychainTest, aKeyThatCannotBeStoredIsNotGiven)
{
    backend.writeFailure = 4;
    EXPECT_EQ(Keychain::loadOrCreate(account).error(), KeychainError{4});
    EXPECT_TRUE(backend.items.isEmpty());
}

TEST(KeyGeneration, theUpperHalfOfTheProductIsTheIndex)
{
    ASSERT_EQ(alphabet.size(), 56);
    for (quint64 index = 0; index < 56; ++index) {
        // One more number, as the first may be drawn again.
        const QString key = Keychain::generateKey([index] { return firstOf(index) + 1; });
        EXPECT_EQ(key, QString(32, alphabet.at(static_cast<qsizetype>(index))));
    }
    const QString last = Keychain::generateKey([] { return std::numeric_limits<quint64>::max(); });
    EXPECT_EQ(last, QString(32, u'9'));
}

TEST(KeyGeneration, drawsBelowTheThresholdAreDrawnAgain)
{
    // 2^64 is 16 more than a multiple of 56: a lower half below 16 is refused, 16 itself is not.
    int draws = 0;
    const QString key = Keychain::generateKey([&draws]() -> quint64 {
        ++draws;
        return draws <= 3 ? 0 : 1; // 56 times them: 0, and 56
    });
    EXPECT_EQ(draws, 3 + 32);
    EXPECT_EQ(key, QString(32, u'a'));

    for (quint64 index = 0; index < 56; ++index) {
        const quint64 number = firstOf(index);
        const bool refused = number * 56 < 16;
        draws = 0;
        Keychain::generateKey([&draws, number]() -> quint64 {
            ++draws;
            return draws == 1 ? number : number + 1;
        });
        EXPECT_EQ(draws, refused ? 33 : 32) << index;
    }
}

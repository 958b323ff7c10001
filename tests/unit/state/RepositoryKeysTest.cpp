#include "state/RepositoryKeys.h"

#include "platform/SecretBackend.h"

#include <QMap>
#include <QSet>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <vector>

namespace {

constexpr std::int32_t refusal = 31;

/// Thrown where the process is killed.
struct Killed
{
};

/// A store that can be made to fail at one of its writes, which are counted from 1.
class FailingStore final : public SecretBackend
{
public:
    enum class Fault {
        none,
        refusesOne,   ///< that write alone
        refusesAll,   ///< that write and all after it
        killedBefore, ///< the process ends before that write
        killedAfter,  ///< the process ends right after that write
    };

    QMap<QString, QByteArray> items; ///< by account
    QString unreadable;              ///< an account that can't be read
    Fault fault = Fault::none;
    int faultyWrite = 0;
    int writes = 0;

    Match copyMatching(const QString & /*service*/, const QString &account) override
    {
        if (account == unreadable) {
            return {refusal, std::nullopt};
        }
        const auto item = items.constFind(account);
        return item == items.constEnd() ? Match{itemNotFound, std::nullopt} : Match{0, *item};
    }
    std::int32_t update(const QString & /*service*/, const QString &account,
                        const QByteArray &value) override
    {
        return items.contains(account) ? write(account, value) : itemNotFound;
    }
    std::int32_t add(const QString & /*service*/, const QString &account,
                     const QByteArray &value) override
    {
        return write(account, value);
    }

private:
    std::int32_t write(const QString &account, const QByteArray &value)
    {
        ++writes;
        const bool isFaulty = writes == faultyWrite;
        if (isFaulty && fault == Fault::killedBefore) {
            throw Killed();
        }
        if ((isFaulty && fault == Fault::refusesOne) ||
            (writes >= faultyWrite && fault == Fault::refusesAll)) {
            return refusal;
        }
        items[account] = value;
        if (isFaulty && fault == Fault::killedAfter) {
            throw Killed();
        }
        return 0;
    }
};

/// What a user does with the key.
enum class Step { installFirst, installSecond, goBack };

/// A program with the store: the key in memory, and all keys that a backup was made with.
class Program
{
public:
    explicit Program(FailingStore &store)
        : m_store(store)
    {
        for (const QByteArray &key : store.items) {
            m_used.insert(QString::fromUtf8(key));
        }
    }

    /// Starts again; a store that can't be read leaves it without a key.
    void start(bool canRead = true)
    {
        m_inUse = canRead ? Keychain::read(Keychain::repositoryKey).value().value_or(QString())
                          : QString();
    }

    void make(Step step)
    {
        std::optional<QString> key;
        if (step == Step::goBack) {
            key = RepositoryKeys::previous().value();
        } else {
            key = step == Step::installFirst ? QStringLiteral("first") : QStringLiteral("second");
        }
        if (key && RepositoryKeys::install(*key, m_inUse)) {
            m_inUse = *key;
            m_used.insert(*key);
        }
    }

    /// Whether the store still has each key that a backup may have been made with.
    [[nodiscard]] bool hasAll() const
    {
        QSet<QString> stored;
        for (const QByteArray &key : m_store.items) {
            stored.insert(QString::fromUtf8(key));
        }
        return stored.contains(m_used);
    }

private:
    FailingStore &m_store;
    QString m_inUse;
    QSet<QString> m_used;
};

class RepositoryKeysTest : public testing::Test
{
protected:
    [[nodiscard]] QString current() const { return item(Keychain::repositoryKey); }
    [[nodiscard]] QString previous() const { return item(Keychain::previousRepositoryKey); }
    [[nodiscard]] QString earlier(int number) const
    {
        return item(QStringLiteral("repository-key-earlier-%1").arg(number));
    }
    void put(const QString &account, const char *key) { store.items[account] = key; }

    FailingStore store;
    ScopedSecretBackend inForce{store};

private:
    [[nodiscard]] QString item(const QString &account) const
    {
        return QString::fromUtf8(store.items.value(account));
    }
};

TEST_F(RepositoryKeysTest, aFirstReplacementTakesTwoItems)
{
    put(Keychain::repositoryKey, "old");
    EXPECT_TRUE(RepositoryKeys::install(QStringLiteral("new"), QStringLiteral("old")));
    EXPECT_EQ(current(), QStringLiteral("new"));
    EXPECT_EQ(previous(), QStringLiteral("old"));
    EXPECT_EQ(store.items.size(), 2);
}

TEST_F(RepositoryKeysTest, aSecondReplacementKeepsTheFirstKey)
{
    put(Keychain::repositoryKey, "second");
    put(Keychain::previousRepositoryKey, "first");
    EXPECT_TRUE(RepositoryKeys::install(QStringLiteral("third"), QStringLiteral("second")));
    EXPECT_EQ(current(), QStringLiteral("third"));
    EXPECT_EQ(previous(), QStringLiteral("second"));
    EXPECT_EQ(earlier(1), QStringLiteral("first"));
}

TEST_F(RepositoryKeysTest, swappingForEverKeepsEachKeyOnce)
{
    put(Keychain::repositoryKey, "a");
    put(Keychain::previousRepositoryKey, "b");
    Program program(store);
    program.start();
    for (int i = 0; i < 10; ++i) {
        const QString before = current();
        const QString aside = previous();
        program.make(Step::goBack);
        EXPECT_EQ(current(), aside);
        EXPECT_EQ(previous(), before);
    }
    EXPECT_EQ(store.items.size(), 4);
}

TEST_F(RepositoryKeysTest, aKeyThatCouldNotBeReadIsKept)
{
    put(Keychain::repositoryKey, "unread");
    put(Keychain::previousRepositoryKey, "older");
    EXPECT_TRUE(RepositoryKeys::install(QStringLiteral("new"), QString()));
    EXPECT_EQ(current(), QStringLiteral("new"));
    EXPECT_EQ(previous(), QStringLiteral("older"));
    EXPECT_EQ(earlier(1), QStringLiteral("unread"));
}

TEST_F(RepositoryKeysTest, aKeyThatWasStoredMeanwhileIsKept)
{
    put(Keychain::repositoryKey, "of another keyring");
    EXPECT_TRUE(RepositoryKeys::install(QStringLiteral("new"), QStringLiteral("in memory")));
    EXPECT_EQ(previous(), QStringLiteral("in memory"));
    EXPECT_EQ(earlier(1), QStringLiteral("of another keyring"));
}

TEST_F(RepositoryKeysTest, aStoreThatCannotBeReadIsNotWrittenTo)
{
    put(Keychain::repositoryKey, "old");
    put(Keychain::previousRepositoryKey, "older");
    put(QStringLiteral("repository-key-earlier-1"), "oldest");
    const auto before = store.items;
    for (const QString &account :
         {QString(Keychain::repositoryKey), QString(Keychain::previousRepositoryKey),
          QStringLiteral("repository-key-earlier-1")}) {
        store.unreadable = account;
        const auto installed =
            RepositoryKeys::install(QStringLiteral("new"), QStringLiteral("old"));
        ASSERT_FALSE(installed) << account.toStdString();
        EXPECT_EQ(installed.error().status, refusal);
        EXPECT_EQ(store.items, before);
        EXPECT_EQ(store.writes, 0);
    }
}

TEST_F(RepositoryKeysTest, aSecondWriteThatIsRefusedLeavesBothAsTheyWere)
{
    put(Keychain::repositoryKey, "a");
    put(Keychain::previousRepositoryKey, "b");
    store.fault = FailingStore::Fault::refusesOne;
    store.faultyWrite = 3; // after the older key is kept and the previous one is written
    const auto installed = RepositoryKeys::install(QStringLiteral("b"), QStringLiteral("a"));
    ASSERT_FALSE(installed);
    EXPECT_EQ(installed.error().status, refusal);
    EXPECT_EQ(current(), QStringLiteral("a"));
    EXPECT_EQ(previous(), QStringLiteral("b"));
}

TEST_F(RepositoryKeysTest, goingBackAfterAStopAmidASwapFindsTheOtherKey)
{
    put(Keychain::repositoryKey, "a");
    put(Keychain::previousRepositoryKey, "b");
    store.fault = FailingStore::Fault::killedAfter;
    store.faultyWrite = 2;
    EXPECT_THROW(
        static_cast<void>(RepositoryKeys::install(QStringLiteral("b"), QStringLiteral("a"))),
        Killed);
    ASSERT_EQ(previous(), QStringLiteral("a"));
    EXPECT_EQ(RepositoryKeys::previous().value(), QStringLiteral("b"));
}

TEST_F(RepositoryKeysTest, goingBackNeedsThePreviousKey)
{
    put(Keychain::repositoryKey, "a");
    EXPECT_EQ(RepositoryKeys::previous().value(), std::nullopt);
    put(Keychain::previousRepositoryKey, "b");
    EXPECT_EQ(RepositoryKeys::previous().value(), QStringLiteral("b"));
    for (const QLatin1String account : {Keychain::repositoryKey, Keychain::previousRepositoryKey}) {
        store.unreadable = account;
        ASSERT_FALSE(RepositoryKeys::previous());
        EXPECT_EQ(RepositoryKeys::previous().error().status, refusal);
    }
}

/// Each sequence of up to three steps.
std::vector<std::vector<Step>> sequences()
{
    const std::vector<Step> steps{Step::installFirst, Step::installSecond, Step::goBack};
    std::vector<std::vector<Step>> all;
    for (const Step one : steps) {
        all.push_back({one});
        for (const Step two : steps) {
            all.push_back({one, two});
            for (const Step three : steps) {
                all.push_back({one, two, three});
            }
        }
    }
    return all;
}

/// What may be in the store at the beginning.
std::vector<QMap<QString, QByteArray>> beginnings()
{
    const QString current = Keychain::repositoryKey;
    const QString previous = Keychain::previousRepositoryKey;
    return {{},
            {{current, "a"}},
            {{previous, "b"}},
            {{current, "a"}, {previous, "b"}},
            {{current, "a"}, {previous, "a"}},
            {{current, "first"}, {previous, "second"}}};
}

TEST_F(RepositoryKeysTest, noKeyVanishesWhateverWriteOfWhateverSequenceFails)
{
    using Fault = FailingStore::Fault;
    int faults = 0;
    for (const auto &beginning : beginnings()) {
        for (const auto &sequence : sequences()) {
            for (const Fault fault :
                 {Fault::refusesOne, Fault::refusesAll, Fault::killedBefore, Fault::killedAfter}) {
                for (const bool canRead : {true, false}) {
                    // Until the fault is beyond the last write.
                    for (int write = 1;; ++write) {
                        store.items = beginning;
                        store.fault = fault;
                        store.faultyWrite = write;
                        store.writes = 0;
                        Program program(store);
                        program.start(canRead);
                        const auto makeAll = [&program, &sequence] {
                            for (const Step step : sequence) {
                                program.make(step);
                                ASSERT_TRUE(program.hasAll());
                            }
                        };
                        try {
                            makeAll();
                        } catch (const Killed &) {
                            ASSERT_TRUE(program.hasAll());
                            program.start();
                        }
                        const bool happened = store.writes >= write;
                        // The steps that follow have no faults.
                        store.fault = Fault::none;
                        makeAll();
                        if (HasFatalFailure()) {
                            return;
                        }
                        if (!happened) {
                            break;
                        }
                        ++faults;
                    }
                }
            }
        }
    }
    EXPECT_GT(faults, 5000);
}

} // namespace

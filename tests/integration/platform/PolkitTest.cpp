#include "platform/OwnerAuthentication.h"

#include "tests/support/OrdinaryUser.h"
#include "tests/support/PrivateBus.h"

#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <future>
#include <utility>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

// The real polkit, with the policy that the set-up has installed, on a system bus of its own.

namespace {

constexpr int patienceMilliseconds = 20000;
constexpr int nobody = 65534;
constexpr const char *question = "Vellomar vuole copiare la chiave di cifratura.\n";

/// A process of an ordinary user, whom polkit doesn't grant everything, that asks for one login
/// on request.
class Asker
{
public:
    explicit Asker(OwnerReason reason)
    {
        EXPECT_EQ(::pipe(m_go.data()), 0);
        m_process = ::fork();
        if (m_process == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            char word = 0;
            if (!becomeOrdinaryUser() || ::read(m_go[0], &word, 1) != 1) {
                ::_exit(failed);
            }
            OwnerAuthentication owner;
            std::promise<OwnerLogin> answer;
            owner.ask(reason, [&answer](OwnerLogin login) { answer.set_value(login); });
            ::_exit(static_cast<int>(answer.get_future().get()));
        }
    }
    ~Asker()
    {
        ::close(m_go[0]);
        ::close(m_go[1]);
    }
    Asker(const Asker &) = delete;
    Asker &operator=(const Asker &) = delete;
    Asker(Asker &&) = delete;
    Asker &operator=(Asker &&) = delete;

    [[nodiscard]] pid_t process() const { return m_process; }

    OwnerLogin answer()
    {
        EXPECT_EQ(::write(m_go[1], "!", 1), 1);
        int status = 0;
        EXPECT_EQ(::waitpid(m_process, &status, 0), m_process);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_NE(WEXITSTATUS(status), failed);
        return static_cast<OwnerLogin>(WEXITSTATUS(status));
    }

private:
    static constexpr int failed = 99;
    std::array<int, 2> m_go{};
    pid_t m_process = -1;
};

class PolkitTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(::geteuid(), 0U) << "polkit's daemon starts for root alone";
        ASSERT_TRUE(bus.isRunning());
        startWithTest(polkit, QStringLiteral("/usr/lib/polkit-1/polkitd"),
                      {QStringLiteral("--no-debug")});
        ASSERT_TRUE(bus.waitForName(QStringLiteral("org.freedesktop.PolicyKit1")));
    }
    void TearDown() override
    {
        endProcess(agent);
        endProcess(polkit);
    }

    /// Starts an agent that asks the user on behalf of a process.
    void startAgent(const QString &manner, pid_t process)
    {
        startWithTest(agent, QStringLiteral("/usr/bin/python3"),
                      {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/polkit_agent.py"), manner,
                       QString::number(process), QString::number(nobody)});
        ASSERT_EQ(nextLine(), "in place\n");
    }

    OwnerLogin answerOf(const QString &manner, OwnerReason reason = OwnerReason::copyKey)
    {
        Asker asker(reason);
        startAgent(manner, asker.process());
        return asker.answer();
    }

    /// What the agent says next: after its first line, what it showed the user.
    QByteArray nextLine()
    {
        while (!agent.canReadLine() && agent.waitForReadyRead(patienceMilliseconds)) {
        }
        return agent.readLine();
    }

    PrivateBus bus{PrivateBus::Kind::system};
    QProcess polkit;
    QProcess agent;
};

TEST_F(PolkitTest, knowsTheActionOfEachReasonAndAsksForTheOwnLogin)
{
    for (const OwnerReason reason :
         {OwnerReason::showKey, OwnerReason::copyKey, OwnerReason::replaceKey}) {
        QProcess list;
        startWithTest(list, QStringLiteral("pkaction"),
                      {QStringLiteral("--verbose"), QStringLiteral("--action-id"),
                       QString::fromLatin1(Polkit::action(reason))});
        ASSERT_TRUE(list.waitForFinished(patienceMilliseconds));
        EXPECT_EQ(list.exitCode(), 0) << Polkit::action(reason);
        const QByteArray words = list.readAllStandardOutput();
        EXPECT_TRUE(words.contains("vendor:            Vellomar\n")) << words.constData();
        EXPECT_EQ(words.count("auth_self\n"), 3) << words.constData();
    }
}

TEST_F(PolkitTest, aUserWhoLogsInIsGrantedEachReasonInItsOwnWords)
{
    const std::pair<OwnerReason, const char *> reasons[] = {
        {OwnerReason::showKey, "Vellomar vuole mostrare la chiave di cifratura.\n"},
        {OwnerReason::copyKey, question},
        {OwnerReason::replaceKey, "Vellomar vuole sostituire la chiave di cifratura.\n"}};
    for (const auto &[reason, words] : reasons) {
        EXPECT_EQ(answerOf(QStringLiteral("granting"), reason), OwnerLogin::granted);
        EXPECT_EQ(nextLine(), words);
        agent.kill();
        agent.waitForFinished(patienceMilliseconds);
    }
}

TEST_F(PolkitTest, aUserWhoCannotLogInIsRefused)
{
    EXPECT_EQ(answerOf(QStringLiteral("refusing")), OwnerLogin::refused);
    EXPECT_EQ(nextLine(), question);
}

TEST_F(PolkitTest, aUserWhoCancelsIsRefused)
{
    EXPECT_EQ(answerOf(QStringLiteral("cancelling")), OwnerLogin::refused);
    EXPECT_EQ(nextLine(), question);
}

TEST_F(PolkitTest, aDialogThatCrashesRefuses)
{
    EXPECT_EQ(answerOf(QStringLiteral("dying")), OwnerLogin::refused);
    EXPECT_EQ(nextLine(), question);
}

TEST_F(PolkitTest, withNobodyToShowADialogItIsImpossible)
{
    EXPECT_EQ(Asker(OwnerReason::copyKey).answer(), OwnerLogin::impossible);
}

TEST_F(PolkitTest, anAuthorityThatIsHeldUpRefuses)
{
    ASSERT_EQ(::kill(static_cast<pid_t>(polkit.processId()), SIGSTOP), 0);
    EXPECT_EQ(Asker(OwnerReason::copyKey).answer(), OwnerLogin::refused);
}

} // namespace

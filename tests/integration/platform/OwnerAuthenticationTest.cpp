#include "platform/OwnerAuthentication.h"

#include "tests/support/KeyringSession.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <memory>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// A question whose answer can be waited for.
class Question
{
public:
    void ask(OwnerAuthentication &owner, OwnerReason reason = OwnerReason::copyKey)
    {
        owner.ask(reason, [answer = m_answer](OwnerLogin login) {
            // There must not be two answers.
            EXPECT_EQ(answer->exchange(static_cast<int>(login)), none);
        });
    }
    [[nodiscard]] bool isAnswered() const { return *m_answer != none; }
    /// Fails when there was none.
    [[nodiscard]] OwnerLogin answer() const
    {
        EXPECT_TRUE(eventually([this] { return isAnswered(); }));
        return static_cast<OwnerLogin>(m_answer->load());
    }

private:
    static constexpr int none = -1;
    std::shared_ptr<std::atomic<int>> m_answer = std::make_shared<std::atomic<int>>(none);
};

/// A private system bus, with an authority on it that records its calls.
class OwnerAuthenticationTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(bus.isRunning());
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    }
    void TearDown() override
    {
        service.kill();
        service.waitForFinished(20000);
    }

    [[nodiscard]] bool startAuthority(const QString &manner)
    {
        service.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        service.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
        service.start(QStringLiteral("/usr/bin/python3"),
                      {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/polkit_service.py"),
                       manner, record});
        return service.waitForStarted(20000) &&
               QProcess::execute(QStringLiteral("gdbus"),
                                 {QStringLiteral("wait"), QStringLiteral("--system"),
                                  QStringLiteral("--timeout=20"),
                                  QStringLiteral("org.freedesktop.PolicyKit1")}) == 0;
    }

    /// What the authority noted, in order.
    [[nodiscard]] QList<QJsonObject> notes() const
    {
        QList<QJsonObject> found;
        QFile file(record);
        if (file.open(QIODevice::ReadOnly)) {
            for (const QByteArray &line : file.readAll().split('\n')) {
                if (!line.isEmpty()) {
                    found.append(QJsonDocument::fromJson(line).object());
                }
            }
        }
        return found;
    }
    /// The names of the calls alone.
    [[nodiscard]] QList<QJsonObject> questions() const
    {
        QList<QJsonObject> found;
        for (const QJsonObject &note : notes()) {
            if (note.contains(QLatin1String("action"))) {
                found.append(note);
            }
        }
        return found;
    }
    [[nodiscard]] bool personIsBeingAsked() const
    {
        return eventually([this] {
            const QList<QJsonObject> all = notes();
            return !all.isEmpty() && all.last().value(QLatin1String("asks")).toBool();
        });
    }

    OwnerLogin answerOf(const QString &manner)
    {
        EXPECT_TRUE(startAuthority(manner));
        OwnerAuthentication owner;
        Question question;
        question.ask(owner);
        return question.answer();
    }

    const QString record = QDir::homePath() + QLatin1String("/authority");
    KeyringSession bus{KeyringSession::Keyring::none};
    QProcess service;
};

TEST_F(OwnerAuthenticationTest, aUserWhoLogsInGrantsIt)
{
    EXPECT_EQ(answerOf(QStringLiteral("granting")), OwnerLogin::granted);
    const QList<QJsonObject> all = questions();
    ASSERT_EQ(all.size(), 2);
    EXPECT_FALSE(all.first().value(QLatin1String("asks")).toBool());
    EXPECT_TRUE(all.last().value(QLatin1String("asks")).toBool());
    for (const QJsonObject &note : all) {
        EXPECT_EQ(note.value(QLatin1String("kind")), QJsonValue(QStringLiteral("system-bus-name")));
        EXPECT_TRUE(note.value(QLatin1String("itself")).toBool());
        EXPECT_EQ(note.value(QLatin1String("action")),
                  QJsonValue(QStringLiteral("it.vellomar.key.copy")));
        // polkit refuses an ordinary program that sends any.
        EXPECT_EQ(note.value(QLatin1String("details")), QJsonValue(0));
    }
}

TEST_F(OwnerAuthenticationTest, aUserWhoDoesNotLogInRefusesIt)
{
    EXPECT_EQ(answerOf(QStringLiteral("refusing")), OwnerLogin::refused);
}

TEST_F(OwnerAuthenticationTest, aLoginThatStillCountsGrantsItUnasked)
{
    EXPECT_EQ(answerOf(QStringLiteral("retained")), OwnerLogin::granted);
    EXPECT_EQ(questions().size(), 1);
}

TEST_F(OwnerAuthenticationTest, whatIsForbiddenIsRefusedUnasked)
{
    EXPECT_EQ(answerOf(QStringLiteral("forbidding")), OwnerLogin::refused);
    EXPECT_EQ(questions().size(), 1);
}

TEST_F(OwnerAuthenticationTest, withoutAnyoneToAskTheUserItIsImpossible)
{
    EXPECT_EQ(answerOf(QStringLiteral("agentless")), OwnerLogin::impossible);
}

TEST_F(OwnerAuthenticationTest, anActionThatNobodyInstalledIsImpossible)
{
    EXPECT_EQ(answerOf(QStringLiteral("unknown")), OwnerLogin::impossible);
    EXPECT_EQ(questions().size(), 1);
}

TEST_F(OwnerAuthenticationTest, anErrorOverAnActionThatIsInstalledRefusesIt)
{
    EXPECT_EQ(answerOf(QStringLiteral("failing")), OwnerLogin::refused);
    EXPECT_EQ(questions().size(), 1);
}

TEST_F(OwnerAuthenticationTest, withoutAnAuthorityItIsImpossible)
{
    OwnerAuthentication owner;
    Question question;
    question.ask(owner);
    EXPECT_EQ(question.answer(), OwnerLogin::impossible);
}

TEST_F(OwnerAuthenticationTest, anAuthorityThatNeverAnswersRefusesIt)
{
    EXPECT_EQ(answerOf(QStringLiteral("mute")), OwnerLogin::refused);
}

TEST_F(OwnerAuthenticationTest, anAuthorityThatEndsWhileTheUserIsAskedRefusesIt)
{
    EXPECT_EQ(answerOf(QStringLiteral("leaving")), OwnerLogin::refused);
    EXPECT_EQ(questions().size(), 2);
}

TEST_F(OwnerAuthenticationTest, aBusThatHasEndedRefusesIt)
{
    // Its socket stays behind.
    bus.stopBus();
    const QByteArray path = QFile::encodeName(QDir::homePath()) + "/bus";
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), static_cast<qsizetype>(sizeof(address.sun_path)));
    std::copy(path.cbegin(), path.cend(), address.sun_path);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)), 0);
    ::close(socket);
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path);
    OwnerAuthentication owner;
    Question question;
    question.ask(owner);
    EXPECT_EQ(question.answer(), OwnerLogin::refused);
}

TEST_F(OwnerAuthenticationTest, aBusThatEndsWhileTheUserIsAskedRefusesIt)
{
    ASSERT_TRUE(startAuthority(QStringLiteral("hanging")));
    OwnerAuthentication owner;
    Question question;
    question.ask(owner);
    ASSERT_TRUE(personIsBeingAsked());
    bus.stopBus();
    EXPECT_EQ(question.answer(), OwnerLogin::refused);
}

TEST_F(OwnerAuthenticationTest, theUserIsAskedAnewEachTime)
{
    ASSERT_TRUE(startAuthority(QStringLiteral("granting")));
    OwnerAuthentication owner;
    for (int time = 1; time <= 2; ++time) {
        Question question;
        question.ask(owner);
        EXPECT_EQ(question.answer(), OwnerLogin::granted);
        EXPECT_EQ(questions().size(), 2 * time);
    }
}

TEST_F(OwnerAuthenticationTest, whoAsksGoesOnWhileTheUserThinks)
{
    ASSERT_TRUE(startAuthority(QStringLiteral("hanging")));
    OwnerAuthentication owner;
    Question question;
    question.ask(owner);
    ASSERT_TRUE(personIsBeingAsked());
    EXPECT_FALSE(question.isAnswered());
}

TEST_F(OwnerAuthenticationTest, theEndTakesAnOpenQuestionBack)
{
    ASSERT_TRUE(startAuthority(QStringLiteral("hanging")));
    Question question;
    {
        OwnerAuthentication owner;
        question.ask(owner);
        ASSERT_TRUE(personIsBeingAsked());
    }
    EXPECT_TRUE(question.isAnswered());
    EXPECT_EQ(question.answer(), OwnerLogin::refused);
    // The authority sees the asking process leave the bus, and closes its dialog.
    EXPECT_TRUE(
        eventually([this] { return notes().last().value(QLatin1String("left")).toBool(); }));
}

TEST_F(OwnerAuthenticationTest, aNewQuestionTakesTheOpenOneBack)
{
    ASSERT_TRUE(startAuthority(QStringLiteral("hanging")));
    OwnerAuthentication owner;
    Question first;
    first.ask(owner);
    ASSERT_TRUE(personIsBeingAsked());
    Question second;
    second.ask(owner, OwnerReason::replaceKey);
    EXPECT_EQ(first.answer(), OwnerLogin::refused);
    EXPECT_FALSE(second.isAnswered());
}

TEST(OwnerAuthenticationWithoutABus, isImpossible)
{
    OwnerAuthentication owner;
    Question question;
    question.ask(owner);
    EXPECT_EQ(question.answer(), OwnerLogin::impossible);
}

TEST(PolkitAction, eachReasonHasItsOwnWithItsWordsAndAsksForOnesOwnLogin)
{
    QFile file(QStringLiteral(VELLOMAR_SOURCE_DIR "/resources/it.vellomar.policy"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString policy = QString::fromUtf8(file.readAll());
    const std::pair<OwnerReason, QString> reasons[] = {
        {OwnerReason::showKey, QStringLiteral("mostrare la chiave di cifratura")},
        {OwnerReason::copyKey, QStringLiteral("copiare la chiave di cifratura")},
        {OwnerReason::replaceKey, QStringLiteral("sostituire la chiave di cifratura")}};
    EXPECT_EQ(policy.count(QStringLiteral("<action ")), static_cast<qsizetype>(std::size(reasons)));
    for (const auto &[reason, words] : reasons) {
        const QString action = QString::fromLatin1(Polkit::action(reason));
        const QString opening = QStringLiteral("<action id=\"%1\">").arg(action);
        ASSERT_EQ(policy.count(opening), 1) << action.toStdString();
        const QString body = policy.section(opening, 1).section(QStringLiteral("</action>"), 0, 0);
        EXPECT_TRUE(
            body.contains(QStringLiteral("<message>Vellomar vuole %1.</message>").arg(words)));
        EXPECT_EQ(body.count(QStringLiteral(">auth_self<")), 3);
    }
}

} // namespace

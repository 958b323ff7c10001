#include "tools/OneShotSecret.h"

#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/Installation.h"
#include "tools/ProcessRunner.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

ProcessResult program(const QStringList &arguments)
{
    return runProcess(Installation::builtProgram(), arguments);
}

ProcessResult delivered(const QString &path)
{
    return program({QStringLiteral("--secret"), path});
}

void expectRefused(const ProcessResult &result)
{
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.standardOutput, QString());
    EXPECT_EQ(result.standardError, QString());
}

QString pipeAt(const QString &path)
{
    EXPECT_EQ(::mkfifo(path.toUtf8().constData(), 0600), 0) << qPrintable(path);
    return path;
}

/// Keeps a pipe open and filled, as the object under test would.
class FilledPipe
{
public:
    explicit FilledPipe(const QString &path)
        : m_descriptor(::open(pipeAt(path).toUtf8().constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC))
    {
        EXPECT_EQ(::write(m_descriptor.get(), "planted", 7), 7);
    }

private:
    FileDescriptor m_descriptor;
};

TEST(OneShotSecret, isDeliveredOnceAndByteForByte)
{
    const QString secret = QString::fromUtf8("k \"ey'\n\xc3\xa8\xe6\x97\xa5 ");
    const auto channel = OneShotSecret::create(secret);
    ASSERT_TRUE(channel);
    const ProcessResult first = delivered(channel->path());
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.standardOutput, secret);
    EXPECT_EQ(first.standardError, QString());
    expectRefused(delivered(channel->path()));
    expectRefused(delivered(channel->path()));
}

TEST(OneShotSecret, isAPipeOfTheSupportFolderForTheOwnerAlone)
{
    const auto channel = OneShotSecret::create(QStringLiteral("key"));
    ASSERT_TRUE(channel);
    struct stat status = {};
    ASSERT_EQ(::lstat(channel->path().toUtf8().constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    const QRegularExpression name(
        QStringLiteral("\\A%1/k-[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}\\z")
            .arg(QRegularExpression::escape(Paths::support())));
    EXPECT_TRUE(name.match(channel->path()).hasMatch()) << qPrintable(channel->path());
    struct stat folder = {};
    ASSERT_EQ(::stat(Paths::support().toUtf8().constData(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 07777U, 0700U);
}

TEST(OneShotSecret, theEndOfTheObjectRemovesThePipeDrainedOrNot)
{
    auto drained = OneShotSecret::create(QStringLiteral("one"));
    auto untouched = OneShotSecret::create(QStringLiteral("two"));
    ASSERT_TRUE(drained && untouched);
    EXPECT_NE(drained->path(), untouched->path());
    EXPECT_EQ(delivered(drained->path()).standardOutput, QStringLiteral("one"));
    const QString path = untouched->path();
    drained.reset();
    EXPECT_EQ(supportFiles(), QStringList({QFileInfo(path).fileName()}));
    untouched.reset();
    EXPECT_EQ(supportFiles(), QStringList());
    expectRefused(delivered(path));
}

TEST(OneShotSecret, channelsShareNothing)
{
    const auto one = OneShotSecret::create(QStringLiteral("one"));
    const auto two = OneShotSecret::create(QStringLiteral("two"));
    ASSERT_TRUE(one && two);
    EXPECT_EQ(delivered(two->path()).standardOutput, QStringLiteral("two"));
    EXPECT_EQ(delivered(one->path()).standardOutput, QStringLiteral("one"));
}

TEST(OneShotSecret, aThousandAndTwentyFourBytesAreTheMostThatIsDelivered)
{
    const QString text = QString(1023, u'a') + u'z';
    auto channel = OneShotSecret::create(text);
    ASSERT_TRUE(channel);
    EXPECT_EQ(delivered(channel->path()).standardOutput, text);
    channel = OneShotSecret::create(text + u'!');
    ASSERT_TRUE(channel);
    EXPECT_EQ(delivered(channel->path()).standardOutput, text);
}

TEST(OneShotSecret, anEmptySecretDeliversNothing)
{
    const auto channel = OneShotSecret::create(QString());
    ASSERT_TRUE(channel);
    expectRefused(delivered(channel->path()));
}

TEST(OneShotSecret, aSecretThatDoesNotFitThePipeIsAbsentAndLeavesNothing)
{
    EXPECT_TRUE(OneShotSecret::create(QString(65536, u'k')));
    EXPECT_FALSE(OneShotSecret::create(QString(65537, u'k')));
    EXPECT_FALSE(OneShotSecret::create(QString(1000000, u'k')));
    EXPECT_EQ(supportFiles(), QStringList());
}

TEST(OneShotSecret, aSupportFolderThatIsGoneMeansAbsent)
{
    ASSERT_TRUE(QDir(Paths::support()).removeRecursively());
    EXPECT_FALSE(OneShotSecret::create(QStringLiteral("key")));
}

TEST(OneShotSecret, oneOfTwoReadersAtOnceGetsIt)
{
    for (int round = 0; round < 15; ++round) {
        const auto channel = OneShotSecret::create(QStringLiteral("the key"));
        ASSERT_TRUE(channel);
        std::vector<ProcessResult> results(2);
        {
            std::vector<std::jthread> readers;
            for (ProcessResult &result : results) {
                readers.emplace_back(
                    [&result, path = channel->path()] { result = delivered(path); });
            }
        }
        const size_t winner = results[0].status == 0 ? 0 : 1;
        EXPECT_EQ(results[winner].status, 0);
        EXPECT_EQ(results[winner].standardOutput, QStringLiteral("the key"));
        expectRefused(results[1 - winner]);
    }
}

TEST(OneShotSecret, pathsOutsideTheSupportFolderAreRefusedPipesToo)
{
    const FilledPipe beside(Paths::home() + QLatin1String("/k-outside"));
    expectRefused(delivered(Paths::home() + QLatin1String("/k-outside")));
    const FilledPipe unnamed(Paths::supportFile(QStringLiteral("other")));
    expectRefused(delivered(Paths::supportFile(QStringLiteral("other"))));
    const FilledPipe dotted(Paths::supportFile(QStringLiteral("k-dotted")));
    expectRefused(delivered(Paths::support() + QLatin1String("/./k-dotted")));
    expectRefused(delivered(QString()));
    expectRefused(delivered(QStringLiteral("k-dotted")));
}

TEST(OneShotSecret, aPathThatGoesOnBehindTheNameIsRefused)
{
    const QString folder = Paths::supportFile(QStringLiteral("k-x"));
    ASSERT_TRUE(QDir().mkpath(folder));
    const FilledPipe inside(folder + QLatin1String("/k-inside"));
    expectRefused(delivered(folder + QLatin1String("/k-inside")));
    const FilledPipe outside(Paths::home() + QLatin1String("/pipe"));
    expectRefused(delivered(folder + QLatin1String("/../") +
                            QDir(Paths::support()).relativeFilePath(Paths::home()) +
                            QLatin1String("/pipe")));
    const FilledPipe roundabout(Paths::supportFile(QStringLiteral("k-roundabout")));
    expectRefused(delivered(folder + QLatin1String("/../k-roundabout")));
    expectRefused(delivered(Paths::supportFile(QStringLiteral("k-roundabout/"))));
}

TEST(OneShotSecret, aLinkToAPipeIsRefusedOfEitherKind)
{
    const QString pipe = Paths::home() + QLatin1String("/pipe");
    const FilledPipe elsewhere(pipe);
    const QString symbolic = Paths::supportFile(QStringLiteral("k-symbolic"));
    ASSERT_TRUE(QFile::link(pipe, symbolic));
    expectRefused(delivered(symbolic));
    const QString hard = Paths::supportFile(QStringLiteral("k-hard"));
    ASSERT_EQ(::link(pipe.toUtf8().constData(), hard.toUtf8().constData()), 0);
    expectRefused(delivered(hard));
}

TEST(OneShotSecret, onlyAPipeIsRead)
{
    const QString regular = Paths::supportFile(QStringLiteral("k-regular"));
    ASSERT_TRUE(writeFile(regular, "not for you"));
    expectRefused(delivered(regular));
    const QString folder = Paths::supportFile(QStringLiteral("k-folder"));
    ASSERT_TRUE(QDir().mkpath(folder));
    expectRefused(delivered(folder));
    const QString link = Paths::supportFile(QStringLiteral("k-link"));
    ASSERT_TRUE(QFile::link(regular, link));
    expectRefused(delivered(link));
    expectRefused(delivered(Paths::supportFile(QStringLiteral("k-absent"))));
    expectRefused(delivered(Paths::supportFile(QStringLiteral("k-"))));
}

TEST(OneShotSecret, aPipeWhoseOwnerIsGoneHoldsNothing)
{
    expectRefused(delivered(pipeAt(Paths::supportFile(QStringLiteral("k-dead")))));
}

TEST(OneShotSecret, theFirstOptionWithItsArgumentDeliversBeforeEverythingElse)
{
    const auto channel = OneShotSecret::create(QStringLiteral("key"));
    ASSERT_TRUE(channel);
    const QString option = QStringLiteral("--secret");
    EXPECT_EQ(program({QStringLiteral("--backup"), QStringLiteral("--manual"), option,
                       channel->path(), QStringLiteral("--backup")})
                  .standardOutput,
              QStringLiteral("key"));
    expectRefused(program({option, QStringLiteral("x"), QStringLiteral("--backup")}));
    expectRefused(program({option, option, channel->path()}));
    // Only the pipe is there: no cycle has run.
    EXPECT_EQ(supportFiles(), QStringList({QFileInfo(channel->path()).fileName()}));
}

TEST(OneShotSecret, asTheLastArgumentTheOptionHasNoEffect)
{
    const ProcessResult with = program({QStringLiteral("--secret")});
    const ProcessResult without = program({});
    EXPECT_EQ(with.status, without.status);
    EXPECT_EQ(with.standardOutput, without.standardOutput);
    EXPECT_EQ(with.standardError, without.standardError);
    EXPECT_FALSE(with.standardError.isEmpty());
    program({QStringLiteral("--backup"), QStringLiteral("--manual"), QStringLiteral("--secret")});
    EXPECT_TRUE(supportFiles().contains(QLatin1String("backup.lock")));
}

TEST(OneShotSecret, theCommandHoldsBothPathsQuotedAndNoSecret)
{
    const auto channel = OneShotSecret::create(QStringLiteral("hidden"));
    ASSERT_TRUE(channel);
    const auto command = channel->command();
    ASSERT_TRUE(command);
    EXPECT_EQ(*command, u'"' + QFile::symLinkTarget(QStringLiteral("/proc/self/exe")) +
                            QLatin1String("\" --secret \"") + channel->path() + u'"');
    EXPECT_FALSE(command->contains(QLatin1String("hidden")));
}

TEST(OneShotSecret, theCommandWorks)
{
    const auto channel = OneShotSecret::create(QStringLiteral("the key"));
    ASSERT_TRUE(channel);
    const ProcessResult result = runProcess(
        QStringLiteral("/bin/sh"), {QStringLiteral("-c"), channel->command().value_or(QString())});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput, QStringLiteral("the key"));
}

TEST(OneShotSecret, noChildInheritsTheChannel)
{
    const auto channel = OneShotSecret::create(QStringLiteral("key"));
    ASSERT_TRUE(channel);
    const ProcessResult result =
        runProcess(QStringLiteral("/bin/sh"),
                   {QStringLiteral("-c"), QStringLiteral("for f in /proc/$$/fd/*; do readlink "
                                                         "\"$f\"; done")});
    EXPECT_FALSE(result.standardOutput.contains(QLatin1String("k-")));
}

} // namespace

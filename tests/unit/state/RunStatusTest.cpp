#include "state/RunStatus.h"

#include "platform/ExecutablePath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>
#include <future>
#include <limits>
#include <thread>

#include <unistd.h>

namespace {

RunStatus status()
{
    RunStatus status;
    status.pid = 4711;
    status.startedAt = QDateTime(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC);
    status.destination = DestinationID::Drive;
    status.phase = QStringLiteral("Copia in corso");
    status.percent = 0.25;
    status.filesDone = 1;
    status.totalFiles = 2;
    status.bytesDone = 3;
    status.totalBytes = std::numeric_limits<qint64>::max();
    return status;
}

RunStatus fullStatus()
{
    RunStatus full = status();
    full.secondsRemaining = 90;
    full.currentFile = QStringLiteral("/a\n\"b\"");
    return full;
}

bool isAlive(qint64 pid)
{
    RunStatus asked = status();
    asked.pid = static_cast<std::int32_t>(pid);
    return asked.isAlive();
}

// A process that waits for its standard input until it is ended; its executable is a copy of cat.
class Sleeper
{
public:
    explicit Sleeper(const QString &name, const QStringList &words = {QStringLiteral("--manual"),
                                                                      QStringLiteral("--backup")})
        : program(QDir::homePath() + u'/' + name)
    {
        QFile::copy(QFileInfo(QStringLiteral("/bin/cat")).canonicalFilePath(), program);
        process.start(program, QStringList{QStringLiteral("--"), QStringLiteral("-")} + words);
        // Qt reports the start once the new program has taken over.
        process.waitForStarted();
    }
    ~Sleeper() { end(); }
    Sleeper(const Sleeper &) = delete;
    Sleeper &operator=(const Sleeper &) = delete;
    Sleeper(Sleeper &&) = delete;
    Sleeper &operator=(Sleeper &&) = delete;

    void end()
    {
        process.kill();
        process.waitForFinished();
    }

    QString program;
    QProcess process;
};

QString ownName()
{
    return QFileInfo(ownExecutablePath().value()).fileName();
}

} // namespace

TEST(RunStatus, standsUnderTheNamesOfItsFields)
{
    const QJsonObject expected{
        {QStringLiteral("pid"), 4711},
        {QStringLiteral("startedAt"), QStringLiteral("2026-03-01T10:00:00Z")},
        {QStringLiteral("destination"), QStringLiteral("drive")},
        {QStringLiteral("phase"), QStringLiteral("Copia in corso")},
        {QStringLiteral("percent"), 0.25},
        {QStringLiteral("filesDone"), 1},
        {QStringLiteral("totalFiles"), 2},
        {QStringLiteral("bytesDone"), 3},
        {QStringLiteral("totalBytes"), std::numeric_limits<qint64>::max()},
    };
    EXPECT_EQ(status().toJSON(), expected);
    QJsonObject full = expected;
    full[QStringLiteral("secondsRemaining")] = 90;
    full[QStringLiteral("currentFile")] = QStringLiteral("/a\n\"b\"");
    EXPECT_EQ(fullStatus().toJSON(), full);
}

TEST(RunStatus, comesBackAsItWas)
{
    EXPECT_EQ(RunStatus::fromJSON(status().toJSON()), status());
    EXPECT_EQ(RunStatus::fromJSON(fullStatus().toJSON()), fullStatus());
}

TEST(RunStatus, onlyTheTwoEstimatesMayBeMissingOrNull)
{
    const QJsonObject whole = status().toJSON();
    for (const QString &key : whole.keys()) {
        QJsonObject changed = whole;
        changed.remove(key);
        EXPECT_FALSE(RunStatus::fromJSON(changed)) << key.toStdString();
        changed[key] = QJsonValue();
        EXPECT_FALSE(RunStatus::fromJSON(changed)) << key.toStdString();
    }
    QJsonObject changed = whole;
    changed[QStringLiteral("secondsRemaining")] = QJsonValue();
    changed[QStringLiteral("currentFile")] = QJsonValue();
    EXPECT_EQ(RunStatus::fromJSON(changed), status());
}

TEST(RunStatus, aWrongValueIsAbsent)
{
    struct Row
    {
        const char *key;
        QJsonValue value;
    };
    for (const Row &row : {
             Row{"pid", QStringLiteral("4711")},
             Row{"pid", 2147483648.0},
             Row{"pid", -2147483649.0},
             Row{"pid", 1.5},
             Row{"startedAt", 7},
             Row{"startedAt", QStringLiteral("now")},
             Row{"destination", QStringLiteral("disk")},
             Row{"phase", 7},
             Row{"percent", QStringLiteral("0.5")},
             Row{"percent", true},
             Row{"filesDone", 1.5},
             Row{"totalFiles", QStringLiteral("2")},
             Row{"bytesDone", QJsonArray()},
             Row{"totalBytes", 1e19},
             Row{"secondsRemaining", QStringLiteral("90")},
             Row{"secondsRemaining", 0.5},
             Row{"currentFile", 7},
         }) {
        QJsonObject changed = status().toJSON();
        changed[QLatin1String(row.key)] = row.value;
        EXPECT_FALSE(RunStatus::fromJSON(changed))
            << row.key << " " << row.value.toVariant().toString().toStdString();
    }
}

TEST(RunStatus, thisVeryProcessIsNotAlive)
{
    EXPECT_FALSE(isAlive(::getpid()));
}

TEST(RunStatus, aThreadOfThisProcessIsNotAlive)
{
    // Such a process may have the id in the status of a run that a power cut ended.
    std::promise<pid_t> number;
    std::promise<void> end;
    std::jthread thread([&] {
        number.set_value(::gettid());
        end.get_future().wait();
    });
    const pid_t id = number.get_future().get();
    EXPECT_NE(id, ::getpid());
    EXPECT_EQ(::kill(id, 0), 0);
    EXPECT_FALSE(isAlive(id));
    end.set_value();
}

TEST(RunStatus, aThreadOfAnotherProcessOfTheSameProgramIsNotAlive)
{
    QProcess python;
    const QString program = QDir::homePath() + u'/' + ownName();
    ASSERT_TRUE(
        QFile::copy(QFileInfo(QStringLiteral("/usr/bin/python3")).canonicalFilePath(), program));
    python.start(program, {QStringLiteral("-c"),
                           QStringLiteral("import threading, sys\n"
                                          "def wait():\n"
                                          "  print(threading.get_native_id(), flush=True)\n"
                                          "  sys.stdin.read()\n"
                                          "threading.Thread(target=wait).start()\n"),
                           QStringLiteral("--backup")});
    ASSERT_TRUE(python.waitForReadyRead());
    const qint64 thread = python.readLine().trimmed().toLongLong();
    EXPECT_TRUE(isAlive(python.processId()));
    EXPECT_FALSE(isAlive(thread));
    python.closeWriteChannel();
    python.waitForFinished();
}

TEST(RunStatus, theSameProgramWithoutABackupIsNotAlive)
{
    for (const QStringList &words :
         {QStringList(), {QStringLiteral("--backups")}, {QStringLiteral("--secret=--backup")}}) {
        const Sleeper window(ownName(), words);
        ASSERT_GT(window.process.processId(), 0);
        EXPECT_FALSE(isAlive(window.process.processId())) << words.join(u' ').toStdString();
    }
}

TEST(RunStatus, anotherProcessOfTheSameProgramIsAliveUntilItEnds)
{
    Sleeper same(ownName());
    const qint64 pid = same.process.processId();
    ASSERT_GT(pid, 0);
    EXPECT_TRUE(isAlive(pid));
    same.end();
    EXPECT_FALSE(isAlive(pid));
}

TEST(RunStatus, aProgramWhoseFileWasDeletedIsStillAlive)
{
    const Sleeper same(ownName());
    ASSERT_GT(same.process.processId(), 0);
    ASSERT_TRUE(QFile::remove(same.program));
    EXPECT_TRUE(isAlive(same.process.processId()));
}

TEST(RunStatus, aProcessOfAnotherProgramIsNotAlive)
{
    for (const QString &name : {QStringLiteral("other"), QString(ownName() + u'2')}) {
        const Sleeper other(name);
        ASSERT_GT(other.process.processId(), 0);
        EXPECT_FALSE(isAlive(other.process.processId())) << name.toStdString();
    }
    EXPECT_FALSE(isAlive(1));
}

TEST(RunStatus, whatIsNoSingleProcessIsNotAlive)
{
    for (const qint64 pid : {qint64{0}, qint64{-1}, -qint64{::getpgrp()},
                             qint64{std::numeric_limits<std::int32_t>::max()},
                             qint64{std::numeric_limits<std::int32_t>::min()}}) {
        EXPECT_FALSE(isAlive(pid)) << pid;
    }
}

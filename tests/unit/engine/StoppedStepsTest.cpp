#include "engine/BackupEngine.h"
#include "state/Keychain.h"
#include "state/Paths.h"
#include "state/StatusStore.h"
#include "tests/support/Files.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/ReadySettings.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

// Tools that hang, and take no notice of an interrupt either, in a run that is stopped.
namespace {

using namespace std::chrono_literals;

class StoppedSteps : public testing::TestWithParam<const char *>
{
protected:
    StoppedSteps()
    {
        qputenv("STANDIN_LOG", folder("calls").toUtf8());
        qputenv("STANDIN_PLAN", file("plan").toUtf8());
        secrets.items[{QStringLiteral("it.vellomar.app"), Keychain::repositoryKey}] = "the key";
        config.localEnabled = false;
        config.driveEnabled = true;
    }

    /// Lets the tools hang at this command.
    static void hangAt(const QByteArray &command)
    {
        writeFile(file("plan"),
                  "case \"$*\" in *'" + command +
                      "'*) trap '' INT; : >\"$HOME/hangs\"; while :; do sleep 0.02; done;; esac\n"
                      "case \"$*\" in\n"
                      "*'config dump') echo '{\"vellomar\":{\"token\":\"t\"}}';;\n"
                      "*'cat config') [ -e \"$HOME/made\" ] || exit 10;;\n"
                      "esac\n");
    }

    static QString file(const char *name) { return Paths::home() + u'/' + QString::fromUtf8(name); }
    static QString folder(const char *name)
    {
        QDir().mkpath(file(name));
        return file(name);
    }

    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    AppConfig config = readySettings();
};

TEST_P(StoppedSteps, endTheRunWithItsRecord)
{
    hangAt(GetParam());
    if (GetParam() != std::string_view("init")) {
        ASSERT_TRUE(writeFile(file("made")));
    }
    const auto handle =
        std::make_shared<ProcessHandle>(StopPatience{.byItself = 1ms, .interrupted = 1ms});
    BackupEngine engine(
        true, config, handle, [] { return false; }, [](const QString &, const QString &) {});
    std::jthread stopper([&handle] {
        EXPECT_TRUE(eventually([] { return QFile::exists(file("hangs")); }));
        handle->terminate();
    });
    EXPECT_EQ(engine.runAll(), 0);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 1);
    EXPECT_EQ(history.first().outcome, Outcome::Cancelled);
    EXPECT_EQ(history.first().message, QStringLiteral("Interrotto"));
    EXPECT_FALSE(StatusStore::loadStatus());
}

INSTANTIATE_TEST_SUITE_P(OfARun, StoppedSteps,
                         testing::Values("config encryption", "config dump", "cat config", "init",
                                         "unlock", "backup --json"),
                         [](const auto &step) {
                             QByteArray name(step.param);
                             return name.replace(' ', "").replace('-', "").toStdString();
                         });

} // namespace

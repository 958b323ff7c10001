#pragma once

#include "engine/BackupEngine.h"
#include "tests/support/Files.h"
#include "tests/support/ManualClock.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/ReadySettings.h"
#include "tests/support/ScriptedTools.h"

#include <gtest/gtest.h>

/// An engine with test doubles: scripted tools, a key in memory, a clock that stands still. Its
/// settings are ready. No destination is due for pruning or verification, and none has a version
/// of a later date.
class EngineFixture : public testing::Test
{
protected:
    EngineFixture();

    /// Runs one cycle with the settings of the moment and gives its exit code.
    int run(bool manual = true);

    /// Puts all three destinations in use, each of them reachable.
    void useAllDestinations();

    /// The one record of the history; fails the test when there isn't exactly one.
    static RunRecord onlyRecord();
    /// The destinations of the history with their outcomes, oldest first: "local ok".
    static QStringList outcomes();

    static QString supportFile(const char *name);
    /// The bytes of a file of the support folder; absent when there is none.
    static std::optional<QByteArray> content(const char *name);

    static QString folder(const char *name);

    ManualClock clock;
    ScopedClock clockInForce{clock};
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    ScriptedTools tools;
    AppConfig config = readySettings();
    std::shared_ptr<ProcessHandle> handle = std::make_shared<ProcessHandle>();
    QList<std::pair<QString, QString>> notifications; ///< titles and bodies
    bool onBattery = false;
    int batteryQuestions = 0;
};

#pragma once

#include "model/AppModel.h"
#include "tests/support/EventLoop.h"
#include "tests/support/Files.h"
#include "tests/support/ManualClock.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/ReadySettings.h"
#include "tests/support/ScriptedDesktop.h"
#include "tests/support/ScriptedTools.h"

#include <QCoreApplication>
#include <QProcess>

#include <gtest/gtest.h>

/// Counts how often a signal comes.
class SignalCount
{
public:
    template <typename Sender, typename Signal>
    SignalCount(Sender *sender, Signal signal)
    {
        QObject::connect(sender, signal, &m_context, [this] { ++m_count; });
    }
    [[nodiscard]] int count() const { return m_count; }

private:
    QObject m_context;
    int m_count = 0;
};

/// A process whose executable bears the name of this one's, as the engine's would.
class EngineLookalike
{
public:
    explicit EngineLookalike(const QString &name = {});
    ~EngineLookalike();
    EngineLookalike(const EngineLookalike &) = delete;
    EngineLookalike &operator=(const EngineLookalike &) = delete;
    EngineLookalike(EngineLookalike &&) = delete;
    EngineLookalike &operator=(EngineLookalike &&) = delete;

    [[nodiscard]] qint64 pid() const { return m_process.processId(); }
    [[nodiscard]] bool isRunning() { return !m_process.waitForFinished(0); }
    /// Waits for its end; whether a signal ended it.
    bool wasEndedBySignal();
    void kill();

private:
    QProcess m_process;
};

/// A model with test doubles: scripted tools and desktop, a keyring in memory, a clock that stands
/// still. Its settings are ready, with the key in the keyring. start() makes it, with the settings
/// and files as they are then.
class ModelFixture : public testing::Test
{
protected:
    ModelFixture();
    ~ModelFixture() override;

    /// Saves `config` and brings the model up.
    void start();
    /// The same, but returns while it waits for the keyring.
    void begin();
    /// The program ends and is started again; the settings on disk stay as they are.
    void restart();
    /// Waits until all background work has ended and been delivered.
    void settle();
    /// Polls the engine's files, as it does each second.
    void tick();
    /// Makes a change of the model's settings.
    template <typename Change>
    void change(Change change)
    {
        AppConfig changed = model->config();
        change(changed);
        model->setConfig(changed);
    }
    /// Makes a key the key in use, and waits for that; absent on success, otherwise what to show.
    std::optional<QString> install(const QString &key, bool saved);
    /// Puts all three destinations in use, each of them reachable.
    void useAllDestinations();

    static QString supportFile(const char *name);
    static QString folder(const char *name);
    /// Leaves a status as an engine with this process id would.
    static RunStatus leaveStatus(qint64 pid, double percent = 0.25);
    /// A record so many hours before now.
    [[nodiscard]] RunRecord record(double hoursAgo, Outcome outcome = Outcome::Ok,
                                   DestinationID destination = DestinationID::Local) const;
    /// Replaces history.json, newest first.
    static void writeHistory(const QList<RunRecord> &records);

    void storeKey(const QString &key, const QString &account);
    [[nodiscard]] QString storedKey(const QString &account) const;

    TestApplication application;
    ManualClock clock;
    ScopedClock clockInForce{clock};
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    ScriptedTools tools;
    std::shared_ptr<ScriptedDesktop> desktop = std::make_shared<ScriptedDesktop>();
    AppConfig config = readySettings();
    std::unique_ptr<AppModel> model;
};

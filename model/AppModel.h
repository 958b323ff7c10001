#pragma once

#include "model/Connections.h"
#include "model/DiskAccess.h"
#include "model/EncryptionKey.h"
#include "model/ForeignBackup.h"
#include "model/LocalFolder.h"
#include "model/Measurement.h"
#include "model/RecoveryKit.h"
#include "model/Repositories.h"
#include "model/RunWatch.h"
#include "model/Settings.h"
#include "model/SourceSelection.h"
#include "model/SpaceForecast.h"
#include "model/World.h"

#include <QDateTime>
#include <QObject>

#include <functional>
#include <optional>

/// The one long-lived object behind the window and the tray: the settings and what is known of key,
/// runs and destinations, each a part of its own, and every action of the user that changes
/// something outside a page.
///
/// It lives on one thread, which never waits for keyring, tools, network or disk, except that the
/// constructor reads settings and history. It may be destroyed at any time, even while work is
/// under way.
class AppModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Section section READ section WRITE setSection NOTIFY sectionChanged FINAL)
    Q_PROPERTY(AppConfig config READ config WRITE setConfig NOTIFY configChanged FINAL)
    Q_PROPERTY(bool starting READ isStarting NOTIFY startingChanged FINAL)
    Q_PROPERTY(bool showingForeignWizard READ isShowingForeignWizard WRITE setShowingForeignWizard
                   NOTIFY showingForeignWizardChanged FINAL)
    Q_PROPERTY(RunWatch *run READ run CONSTANT FINAL)
    Q_PROPERTY(Repositories *repositories READ repositories CONSTANT FINAL)
    Q_PROPERTY(Connections *connections READ connections CONSTANT FINAL)
    Q_PROPERTY(SourceSelection *sources READ sources CONSTANT FINAL)
    Q_PROPERTY(EncryptionKey *key READ key CONSTANT FINAL)
    Q_PROPERTY(RecoveryKit *kit READ kit CONSTANT FINAL)
    Q_PROPERTY(DiskAccess *access READ access CONSTANT FINAL)
    Q_PROPERTY(LocalFolder *localFolder READ localFolder CONSTANT FINAL)

public:
    /// The pages, in the order of the sidebar.
    enum class Section { Overview, Restore, Sources, Destinations, Activity, Settings };
    Q_ENUM(Section)

    using GatedAction = DiskAccess::GatedAction;
    using KeyResult = EncryptionKey::Result;

    /// Reads settings and history. Key, schedule, a run under way and repositories follow from the
    /// event loop. A program has one such object.
    explicit AppModel(World world, QObject *parent = nullptr);

    [[nodiscard]] Section section() const { return m_section; }
    void setSection(Section section);
    [[nodiscard]] const AppConfig &config() const { return m_settings.config(); }
    /// Has the settings saved soon, and the schedule updated if it depends on what has changed.
    void setConfig(const AppConfig &config);
    /// Whether the keyring hasn't answered yet. Until it does, no backup starts, no run is seen and
    /// no repository is read.
    [[nodiscard]] bool isStarting() const { return m_isStarting; }
    [[nodiscard]] const std::optional<ForeignBackup> &foreign() const { return m_foreign; }
    [[nodiscard]] bool isShowingForeignWizard() const { return m_isShowingForeignWizard; }
    void setShowingForeignWizard(bool showing);

    // The parts live as long as this.
    [[nodiscard]] Settings *settings() { return &m_settings; }
    [[nodiscard]] RunWatch *run() { return &m_run; }
    [[nodiscard]] const RunWatch *run() const { return &m_run; }
    [[nodiscard]] Repositories *repositories() { return &m_repositories; }
    [[nodiscard]] const Repositories *repositories() const { return &m_repositories; }
    [[nodiscard]] Connections *connections() { return &m_connections; }
    [[nodiscard]] const Connections *connections() const { return &m_connections; }
    [[nodiscard]] Measurement *measurement() { return &m_measurement; }
    [[nodiscard]] const Measurement *measurement() const { return &m_measurement; }
    [[nodiscard]] SourceSelection *sources() { return &m_sources; }
    [[nodiscard]] const SourceSelection *sources() const { return &m_sources; }
    [[nodiscard]] EncryptionKey *key() { return &m_key; }
    [[nodiscard]] const EncryptionKey *key() const { return &m_key; }
    [[nodiscard]] RecoveryKit *kit() { return &m_kit; }
    [[nodiscard]] DiskAccess *access() { return &m_access; }
    [[nodiscard]] const DiskAccess *access() const { return &m_access; }
    [[nodiscard]] LocalFolder *localFolder() { return &m_localFolder; }
    [[nodiscard]] const LocalFolder *localFolder() const { return &m_localFolder; }

    Q_INVOKABLE static QString title(Section section);

    /// The current time, by the clock that the whole model uses.
    [[nodiscard]] static QDateTime now();

    /// All that whether the destinations will hold goes by, at this moment.
    [[nodiscard]] SpaceForecast space() const;

    /// Reads a destination's repository again.
    Q_INVOKABLE void refresh(DestinationIDs::DestinationID destination);
    /// Asks the remote places that are connected how much room there is, and looks at the disk.
    Q_INVOKABLE void refreshQuota();

    /// Has the user choose the folder of the local backups, which is in use from then on.
    Q_INVOKABLE void chooseLocalFolder();
    // As the functions of Connections.
    Q_INVOKABLE void connectDrive();
    Q_INVOKABLE void cancelDriveConnection();
    Q_INVOKABLE void disconnectDrive();
    Q_INVOKABLE void connectServer(const QString &secret);
    Q_INVOKABLE void disconnectServer();
    // As the functions of SourceSelection.
    Q_INVOKABLE void addSources();
    Q_INVOKABLE void addDroppedSources(const QList<QUrl> &things);
    Q_INVOKABLE void removeSource(const QString &path);
    Q_INVOKABLE void addExclude(const QString &pattern);
    Q_INVOKABLE void removeExclude(const QString &pattern);
    Q_INVOKABLE void restoreDefaultExcludes();

    /// Starts a backup, or emits backupHindered() when the user has to do something first.
    Q_INVOKABLE void startBackup();
    /// Asks the run under way to stop.
    Q_INVOKABLE void cancelBackup();
    Q_INVOKABLE void checkPermissions();
    /// Measures the source folders, after the question about disk access.
    Q_INVOKABLE void measureSources();
    /// Measures them at once.
    Q_INVOKABLE void runMeasure();
    /// Performs the action that the access sheet asks about, without the access.
    Q_INVOKABLE void continueWithoutAccess();
    /// Opens the system's settings, and remembers the action that waits for the access.
    Q_INVOKABLE void requestAccessInSettings(DiskAccess::GatedAction action);
    Q_INVOKABLE void openFullDiskAccessSettings();
    /// Ends the program and starts it again.
    Q_INVOKABLE void relaunch();
    /// Closes open sheets and saves the settings before the program ends. Waits for that, for a
    /// limited time.
    Q_INVOKABLE void prepareToQuit();
    /// The window is hidden: the recovery kit closes, and the answer to an open login is ignored.
    Q_INVOKABLE void becomeHidden();
    /// The program has come to the front.
    Q_INVOKABLE void becomeActive();

    Q_INVOKABLE void openRecoveryKit();
    Q_INVOKABLE void saveRecoveryKit();
    Q_INVOKABLE void printRecoveryKit();
    /// Copies the key to the clipboard for one minute.
    Q_INVOKABLE void copyKey();
    /// copyKey() after the user's login.
    Q_INVOKABLE void requestKeyCopy();
    /// Records that the user has saved the key, and starts the backup that waited for that. Does
    /// nothing while the key is being changed.
    Q_INVOKABLE void confirmKeySaved();
    /// Restores the previous key, after the user's login.
    Q_INVOKABLE void requestPreviousKey();

    // As the functions of EncryptionKey.
    void useKey(const QString &typed, const KeyResult &done);
    void replaceKey(const QString &key, const KeyResult &done);
    void install(const QString &key, bool saved, const KeyResult &done);
    /// Runs an action after the user's login, or at once where there is no way to log in.
    void authenticated(OwnerReason reason, const std::function<void()> &action);

Q_SIGNALS:
    void sectionChanged();
    void configChanged();
    void startingChanged();
    void showingForeignWizardChanged();
    /// A backup that was asked for doesn't start; the window explains, or asks for, what is
    /// missing.
    void backupHindered();
    /// Something derived from settings, history, repositories or the time may have changed.
    void summaryChanged();

private:
    void connectParts();
    void begin();
    void goOn();
    void perform(GatedAction action);

    const World m_world;
    Settings m_settings{m_world, this};
    RunWatch m_run{m_world, m_settings, this};
    EncryptionKey m_key{m_world, m_settings, this};
    Repositories m_repositories{m_world, m_settings, m_key, m_run, this};
    Connections m_connections{m_world, m_settings, m_key, this};
    Measurement m_measurement{m_world, m_settings, this};
    SourceSelection m_sources{m_world, m_settings, m_measurement, this};
    RecoveryKit m_kit{m_world, m_settings, m_key, this};
    DiskAccess m_access{m_world, this};
    LocalFolder m_localFolder{m_world, m_settings, this};
    Section m_section = Section::Overview;
    bool m_isStarting = true;
    std::optional<ForeignBackup> m_foreign;
    bool m_isShowingForeignWizard = false;
    bool m_isBackupAfterKit = false; ///< a backup waits for the key to be saved
    quint64 m_absences = 0;          ///< how often the window was hidden
};

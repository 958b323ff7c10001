#pragma once

#include "model/Desktop.h"
#include "model/DestinationState.h"
#include "model/ForeignBackup.h"
#include "model/LocalFolder.h"
#include "model/Notice.h"
#include "model/RepoInfo.h"
#include "model/Tone.h"
#include "state/AppConfig.h"
#include "state/RunRecord.h"
#include "state/RunStatus.h"
#include "tools/Rclone.h"

#include <QMap>
#include <QObject>
#include <QSet>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

struct StoredKey;

/// The one long-lived object behind the window and the tray: the settings, the key, the picture of
/// each destination, and every action of the person that changes something outside a page.
///
/// It never talks to a running backup, which is a process of its own, but looks once a second at
/// the files that the engine leaves. It lives on one thread, which waits for no keyring, no tool,
/// no disk and no network but that of the user's home; it may be destroyed at any time, with work
/// under way too.
///
/// QML finds the properties; C++ finds the plain values by the functions of the same names. To QML
/// an absent text is empty, and a property beside each other optional value says whether it is
/// there.
class AppModel final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Section section READ section WRITE setSection NOTIFY sectionChanged FINAL)
    Q_PROPERTY(AppConfig config READ config WRITE setConfig NOTIFY configChanged FINAL)
    Q_PROPERTY(bool running READ isRunning NOTIFY statusChanged FINAL)
    Q_PROPERTY(RunStatus status READ statusOrNone NOTIFY statusChanged FINAL)
    Q_PROPERTY(bool starting READ isStarting NOTIFY startingChanged FINAL)
    Q_PROPERTY(bool launching READ isLaunching NOTIFY launchingChanged FINAL)
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged FINAL)
    Q_PROPERTY(QList<RunRecord> history READ history NOTIFY historyChanged FINAL)
    Q_PROPERTY(QList<DestinationState> destinations READ destinations NOTIFY summaryChanged FINAL)
    Q_PROPERTY(bool driveConnected READ isDriveConnected NOTIFY driveConnectedChanged FINAL)
    Q_PROPERTY(bool driveConnecting READ isDriveConnecting NOTIFY driveConnectingChanged FINAL)
    Q_PROPERTY(QString driveError READ driveErrorText NOTIFY driveErrorChanged FINAL)
    Q_PROPERTY(bool hasDriveQuota READ hasDriveQuota NOTIFY driveQuotaChanged FINAL)
    Q_PROPERTY(Rclone::Quota driveQuota READ driveQuotaOrNone NOTIFY driveQuotaChanged FINAL)
    Q_PROPERTY(bool serverConnected READ isServerConnected NOTIFY serverConnectedChanged FINAL)
    Q_PROPERTY(bool serverConnecting READ isServerConnecting NOTIFY serverConnectingChanged FINAL)
    Q_PROPERTY(QString serverError READ serverErrorText NOTIFY serverErrorChanged FINAL)
    Q_PROPERTY(bool hasServerQuota READ hasServerQuota NOTIFY serverQuotaChanged FINAL)
    Q_PROPERTY(Rclone::Quota serverQuota READ serverQuotaOrNone NOTIFY serverQuotaChanged FINAL)
    Q_PROPERTY(
        QString serverVersioning READ serverVersioningText NOTIFY serverVersioningChanged FINAL)
    Q_PROPERTY(bool fullDiskAccess READ hasFullDiskAccess NOTIFY fullDiskAccessChanged FINAL)
    Q_PROPERTY(GatedAction accessRequest READ accessRequest WRITE setAccessRequest NOTIFY
                   accessRequestChanged FINAL)
    Q_PROPERTY(bool showingForeignWizard READ isShowingForeignWizard WRITE setShowingForeignWizard
                   NOTIFY showingForeignWizardChanged FINAL)
    Q_PROPERTY(bool showingRecoveryKit READ isShowingRecoveryKit WRITE setShowingRecoveryKit NOTIFY
                   showingRecoveryKitChanged FINAL)
    Q_PROPERTY(bool localOnSystemDisk READ isLocalOnSystemDisk NOTIFY summaryChanged FINAL)
    Q_PROPERTY(QString supportError READ supportErrorText NOTIFY supportErrorChanged FINAL)
    Q_PROPERTY(bool hasKey READ hasKey NOTIFY passwordChanged FINAL)
    Q_PROPERTY(QString keyError READ keyErrorText NOTIFY keyErrorChanged FINAL)
    Q_PROPERTY(bool keyChecking READ isKeyChecking NOTIFY keyCheckingChanged FINAL)
    Q_PROPERTY(bool hasPreviousKey READ hasPreviousKey NOTIFY hasPreviousKeyChanged FINAL)
    Q_PROPERTY(bool keyCopied READ isKeyCopied NOTIFY keyCopiedChanged FINAL)
    Q_PROPERTY(Notice kitNotice READ shownKitNotice NOTIFY kitNoticeChanged FINAL)
    Q_PROPERTY(QVariantMap sourceSizes READ sourceSizesView NOTIFY sourceSizesChanged FINAL)
    Q_PROPERTY(bool measuring READ isMeasuring NOTIFY measuringChanged FINAL)
    Q_PROPERTY(qint64 measuredSoFar READ measuredSoFar NOTIFY measuredSoFarChanged FINAL)
    Q_PROPERTY(bool hasLastSuccess READ hasLastSuccess NOTIFY historyChanged FINAL)
    Q_PROPERTY(RunRecord lastSuccess READ lastSuccessOrNone NOTIFY historyChanged FINAL)
    Q_PROPERTY(bool hasLastCheck READ hasLastCheck NOTIFY historyChanged FINAL)
    Q_PROPERTY(RunRecord lastCheck READ lastCheckOrNone NOTIFY historyChanged FINAL)
    Q_PROPERTY(QString staleText READ staleTextOrNone NOTIFY summaryChanged FINAL)

public:
    /// The pages, in the order of the sidebar.
    enum class Section { Overview, Restore, Sources, Destinations, Activity, Settings };
    Q_ENUM(Section)

    /// What can wait for access to the whole disk.
    enum class GatedAction { None, Backup, Measure };
    Q_ENUM(GatedAction)

    /// What a model at rest shows.
    struct Shown
    {
        AppConfig config;
        std::optional<RunStatus> status;
        bool starting = false;
        bool launching = false;
        QList<RunRecord> history; ///< newest first
        QMap<DestinationID, RepoInfo> repos;
        bool localOnSystemDisk = false;
        bool fullDiskAccess = true;
        std::optional<QString> supportError;
        std::optional<QString> keyError;
        bool keyCopied = false;
        std::optional<Notice> kitNotice;
        QString password;
    };

    /// Brings everything up: key, schedule, a run under way, repositories; but for settings and
    /// history, behind the event loop. There is one such object in a program.
    explicit AppModel(std::shared_ptr<Desktop> desktop, QObject *parent = nullptr);
    /// One at rest, for galleries and for tests of what is on show: it reads nothing, looks at
    /// nothing by itself and keeps no settings.
    AppModel(std::shared_ptr<Desktop> desktop, const Shown &shown, QObject *parent = nullptr);
    ~AppModel() override;
    Q_DISABLE_COPY_MOVE(AppModel)

    // Fields

    [[nodiscard]] Section section() const { return m_section; }
    void setSection(Section section);
    [[nodiscard]] const AppConfig &config() const { return m_config; }
    /// Saves what has changed, and sees to the schedule where it depends on that.
    void setConfig(const AppConfig &config);
    [[nodiscard]] const std::optional<RunStatus> &status() const { return m_status; }
    /// Whether it is still coming up: the keyring hasn't answered. No backup starts meanwhile, no
    /// run is seen and no repository is read.
    [[nodiscard]] bool isStarting() const { return m_isStarting; }
    [[nodiscard]] bool isLaunching() const { return m_launching; }
    [[nodiscard]] const QList<RunRecord> &history() const { return m_history; }
    [[nodiscard]] const QMap<DestinationID, RepoInfo> &repos() const { return m_repos; }
    [[nodiscard]] bool isDriveConnected() const { return m_driveConnected; }
    [[nodiscard]] bool isDriveConnecting() const { return m_driveConnecting; }
    [[nodiscard]] const std::optional<QString> &driveError() const { return m_driveError; }
    [[nodiscard]] const std::optional<Rclone::Quota> &driveQuota() const { return m_driveQuota; }
    [[nodiscard]] bool isServerConnected() const { return m_serverConnected; }
    [[nodiscard]] bool isServerConnecting() const { return m_serverConnecting; }
    [[nodiscard]] const std::optional<QString> &serverError() const { return m_serverError; }
    [[nodiscard]] const std::optional<Rclone::Quota> &serverQuota() const { return m_serverQuota; }
    /// rclone's word for the versioning of an S3 bucket.
    [[nodiscard]] const std::optional<QString> &serverVersioning() const;
    /// Whether the folder of the local backups was last seen on the disk of the home folder.
    [[nodiscard]] bool isLocalOnSystemDisk() const { return m_localFolder.isOnSystemDisk(); }
    /// As checkPermissions() found it last.
    [[nodiscard]] bool hasFullDiskAccess() const { return m_fullDiskAccess; }
    /// The action that the access sheet is on show for.
    [[nodiscard]] GatedAction accessRequest() const { return m_accessRequest; }
    void setAccessRequest(GatedAction action);
    [[nodiscard]] const std::optional<ForeignBackup> &foreign() const { return m_foreign; }
    [[nodiscard]] bool isShowingForeignWizard() const { return m_showingForeignWizard; }
    void setShowingForeignWizard(bool showing);
    [[nodiscard]] bool isShowingRecoveryKit() const { return m_showingRecoveryKit; }
    /// Showing it asks the secret store once more where that gave no key.
    void setShowingRecoveryKit(bool showing);
    /// Why no backup can run: the support folder can't be written.
    [[nodiscard]] const std::optional<QString> &supportError() const { return m_supportError; }
    [[nodiscard]] const std::optional<QString> &keyError() const { return m_keyError; }
    [[nodiscard]] bool isKeyChecking() const { return m_keyChecking; }
    [[nodiscard]] bool hasPreviousKey() const { return m_hasPreviousKey; }
    /// Whether the key was copied and the clipboard is still to be cleared.
    [[nodiscard]] bool isKeyCopied() const { return m_keyCopied; }
    /// How saving the recovery kit came out.
    [[nodiscard]] const std::optional<Notice> &kitNotice() const { return m_kitNotice; }
    /// Bytes of each source folder that was measured, by its path.
    [[nodiscard]] const QMap<QString, qint64> &sourceSizes() const { return m_sourceSizes; }
    [[nodiscard]] bool isMeasuring() const { return m_measuring; }
    /// Bytes counted by the measurement under way.
    [[nodiscard]] qint64 measuredSoFar() const { return m_measuredSoFar; }
    /// Whether there is a key in use. Without one there is nothing to save, print, copy or confirm.
    [[nodiscard]] bool hasKey() const { return !m_password.isEmpty(); }
    /// The key in use; empty when the secret store didn't give it.
    [[nodiscard]] const QString &password() const { return m_password; }

    // Derived values

    /// Whether a run is under way or about to be.
    [[nodiscard]] bool isBusy() const { return m_status || m_launching; }
    /// The newest backup that left a version behind.
    [[nodiscard]] std::optional<RunRecord> lastSuccess() const;
    /// The newest backup of a destination, however it ended.
    [[nodiscard]] std::optional<RunRecord> lastRecord(DestinationID destination) const;
    /// The newest verification.
    [[nodiscard]] std::optional<RunRecord> lastCheck() const;
    /// The age of the last good backup while that is too old.
    [[nodiscard]] std::optional<QString> staleText() const;
    [[nodiscard]] QString stateText(DestinationID destination) const;
    [[nodiscard]] Tone stateTone(DestinationID destination) const;
    /// All three, in their order.
    [[nodiscard]] QList<DestinationState> destinations() const;
    /// The text of the recovery kit. It holds the key.
    [[nodiscard]] QString recoveryKitText() const;

    /// Puts other values on show; for models at rest.
    void show(const Shown &shown);

    Q_INVOKABLE static QString title(Section section);

    /// The present moment, by the clock that all of the model goes by.
    [[nodiscard]] static QDateTime now();

    // Operations

    /// Reads a destination's repository anew.
    Q_INVOKABLE void refresh(DestinationIDs::DestinationID destination);
    /// Asks the remote places that are connected how much room there is.
    void refreshQuota();

    /// Starts a backup, with the questions that come before it.
    Q_INVOKABLE void startBackup();
    /// Asks the run under way to stop.
    Q_INVOKABLE void cancelBackup();
    Q_INVOKABLE void checkPermissions();
    /// Measures the source folders, with the question that comes before it.
    Q_INVOKABLE void measureSources();
    /// Measures them at once.
    Q_INVOKABLE void runMeasure();
    /// Goes on with what the access sheet is on show for, without the access.
    Q_INVOKABLE void continueWithoutAccess();
    /// Sends the person to the system's settings, and remembers what waits for them.
    Q_INVOKABLE void requestAccessInSettings(GatedAction action);
    Q_INVOKABLE void openFullDiskAccessSettings();
    /// Ends the program and starts it again.
    Q_INVOKABLE void relaunch();
    /// What there is to clear up before the program ends. Open sheets close.
    Q_INVOKABLE void prepareToQuit();
    /// The window is out of sight: whoever brings it back logs in anew for the key.
    Q_INVOKABLE void becomeHidden();
    /// The program has come to the front.
    Q_INVOKABLE void becomeActive();

    Q_INVOKABLE void openRecoveryKit();
    Q_INVOKABLE void saveRecoveryKit();
    Q_INVOKABLE void printRecoveryKit();
    /// Copies the key to the clipboard for one minute.
    Q_INVOKABLE void copyKey();
    /// copyKey() behind the person's login.
    Q_INVOKABLE void requestKeyCopy();
    /// The person has the key in a safe place. A backup that waited for that starts.
    Q_INVOKABLE void confirmKeySaved();
    /// Takes back the previous key, behind the person's login.
    Q_INVOKABLE void requestPreviousKey();

    /// Absent on success, otherwise what to show.
    using KeyResult = std::function<void(const std::optional<QString> &message)>;

    /// What the person typed in as the key: blanks at the ends don't count, nothing and the key in
    /// use change nothing. `done` isn't called for nothing, nor while another key is being tried.
    void useKey(const QString &typed, KeyResult done);
    /// Tries a key on every destination that can be reached and installs it if none refuses.
    void replaceKey(const QString &key, KeyResult done);
    /// Makes a key the key in use, the former one the previous one. `saved`: whether the person is
    /// known to have it. Absent on success, otherwise what to show.
    std::optional<QString> install(const QString &key, bool saved);
    /// Runs an action behind the person's login, or at once where there is no way to log in.
    void authenticated(OwnerReason reason, std::function<void()> action);

Q_SIGNALS:
    void sectionChanged();
    void configChanged();
    void statusChanged();
    void startingChanged();
    void launchingChanged();
    void busyChanged();
    void historyChanged();
    void reposChanged();
    void driveConnectedChanged();
    void driveConnectingChanged();
    void driveErrorChanged();
    void driveQuotaChanged();
    void serverConnectedChanged();
    void serverConnectingChanged();
    void serverErrorChanged();
    void serverQuotaChanged();
    void serverVersioningChanged();
    void fullDiskAccessChanged();
    void accessRequestChanged();
    void foreignChanged();
    void showingForeignWizardChanged();
    void showingRecoveryKitChanged();
    void supportErrorChanged();
    void keyErrorChanged();
    void keyCheckingChanged();
    void hasPreviousKeyChanged();
    void keyCopiedChanged();
    void kitNoticeChanged();
    void sourceSizesChanged();
    void measuringChanged();
    void measuredSoFarChanged();
    /// Another key is in use.
    void passwordChanged();
    /// What follows from settings, history, repositories and the time may have changed.
    void summaryChanged();
    /// Another minute has begun: ages are to be told anew.
    void minutePassed();

private:
    using Signal = void (AppModel::*)();

    template <typename T>
    bool assign(T &field, const T &value, Signal changed)
    {
        if (field == value) {
            return false;
        }
        field = value;
        Q_EMIT(this->*changed)();
        return true;
    }

    void begin();
    void readKey(std::function<void()> done);
    void take(const StoredKey &stored);
    [[nodiscard]] bool withdrawConfirmation();
    void goOn();
    void syncSchedule();
    void readConnections();
    void checkSupportFolder();
    Q_INVOKABLE void poll();
    void pollStatus();
    bool pollHistory();
    void pollMinute();
    void setStatus(const std::optional<RunStatus> &status);
    void setLaunching(bool launching);
    void setHistory(const QList<RunRecord> &history);
    void store(DestinationID destination, const RepoInfo &info);
    void read(const Restic &restic, bool isThere, int use);
    void refreshAll();
    void lookAtLocalFolder();
    void launchBackup();
    Q_INVOKABLE void resumePendingAction();
    void run(GatedAction action);
    void endMeasurement();
    void setSourceSizes(const QMap<QString, qint64> &sizes);
    void saveRecoveryKitTo(const QString &path);
    void setKeySaved(bool saved);

    [[nodiscard]] bool isRunning() const { return m_status.has_value(); }
    [[nodiscard]] RunStatus statusOrNone() const { return m_status.value_or(RunStatus()); }
    [[nodiscard]] QString driveErrorText() const { return m_driveError.value_or(QString()); }
    [[nodiscard]] bool hasDriveQuota() const { return m_driveQuota.has_value(); }
    [[nodiscard]] Rclone::Quota driveQuotaOrNone() const
    {
        return m_driveQuota.value_or(Rclone::Quota());
    }
    [[nodiscard]] QString serverErrorText() const { return m_serverError.value_or(QString()); }
    [[nodiscard]] bool hasServerQuota() const { return m_serverQuota.has_value(); }
    [[nodiscard]] Rclone::Quota serverQuotaOrNone() const
    {
        return m_serverQuota.value_or(Rclone::Quota());
    }
    [[nodiscard]] QString serverVersioningText() const
    {
        return m_serverVersioning.value_or(QString());
    }
    [[nodiscard]] QString supportErrorText() const { return m_supportError.value_or(QString()); }
    [[nodiscard]] QString keyErrorText() const { return m_keyError.value_or(QString()); }
    [[nodiscard]] Notice shownKitNotice() const { return m_kitNotice.value_or(Notice()); }
    [[nodiscard]] QVariantMap sourceSizesView() const;
    [[nodiscard]] bool hasLastSuccess() const { return lastSuccess().has_value(); }
    [[nodiscard]] RunRecord lastSuccessOrNone() const
    {
        return lastSuccess().value_or(RunRecord());
    }
    [[nodiscard]] bool hasLastCheck() const { return lastCheck().has_value(); }
    [[nodiscard]] RunRecord lastCheckOrNone() const { return lastCheck().value_or(RunRecord()); }
    [[nodiscard]] QString staleTextOrNone() const { return staleText().value_or(QString()); }

    const std::shared_ptr<Desktop> m_desktop;
    const bool m_isAtRest = false;
    Section m_section = Section::Overview;
    AppConfig m_config;
    std::optional<RunStatus> m_status;
    bool m_isStarting = false;
    bool m_launching = false;
    quint64 m_launch = 0;      ///< number of the last launch from here
    QByteArray m_historyBytes; ///< history.json as it was at the last look
    QList<RunRecord> m_history;
    QByteArray m_statusBytes;               ///< status.json as it was at the last look
    std::optional<RunStatus> m_foundStatus; ///< what those bytes say
    qint64 m_minute = 0;                    ///< of the last look, since the epoch
    QMap<DestinationID, RepoInfo> m_repos;
    QMap<DestinationID, int> m_uses; ///< how often each destination went out of use
    QSet<QString> m_sought;          ///< repositories that are looked for now
    QSet<QString> m_soughtAgain;     ///< those of them that are to be read anew after that
    LocalFolder m_localFolder;
    bool m_driveConnected = false;
    bool m_driveConnecting = false;
    std::optional<QString> m_driveError;
    std::optional<Rclone::Quota> m_driveQuota;
    bool m_serverConnected = false;
    bool m_serverConnecting = false;
    std::optional<QString> m_serverError;
    std::optional<Rclone::Quota> m_serverQuota;
    std::optional<QString> m_serverVersioning;
    bool m_fullDiskAccess = true;
    GatedAction m_accessRequest = GatedAction::None;
    std::optional<ForeignBackup> m_foreign;
    bool m_showingForeignWizard = false;
    bool m_showingRecoveryKit = false;
    std::optional<QString> m_supportError;
    std::optional<QString> m_keyError;
    bool m_isReadingKey = false;
    bool m_keyChecking = false;
    bool m_hasPreviousKey = false;
    bool m_keyCopied = false;
    std::optional<Notice> m_kitNotice;
    QMap<QString, qint64> m_sourceSizes;
    bool m_measuring = false;
    std::stop_source m_measurement; ///< ends the one under way
    qint64 m_measuredSoFar = 0;
    bool m_backupAfterKit = false; ///< a backup waits for the key to be saved
    QString m_password;
    quint64 m_absences = 0; ///< number of times that the window went out of sight
};

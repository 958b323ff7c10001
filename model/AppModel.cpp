#include "model/AppModel.h"

#include "platform/Clock.h"
#include "platform/ExecutablePath.h"
#include "platform/VolumesFolder.h"
#include "state/Texts.h"

#include <QPointer>
#include <QTimer>

#include <utility>

AppModel::AppModel(World world, QObject *parent)
    : QObject(parent)
    , m_world(std::move(world))
{
    connectParts();
    m_run.checkSupportFolder();
    begin();
}

void AppModel::connectParts()
{
    connect(&m_settings, &Settings::changed, this, [this] {
        Q_EMIT configChanged();
        Q_EMIT summaryChanged();
    });
    connect(&m_run, &RunWatch::historyChanged, this, &AppModel::summaryChanged);
    connect(&m_run, &RunWatch::minutePassed, &m_localFolder, &LocalFolder::look);
    connect(&m_run, &RunWatch::minutePassed, this, &AppModel::summaryChanged);
    connect(&m_run, &RunWatch::launchFailed, this, &AppModel::backupHindered);
    connect(&m_run, &RunWatch::ended, &m_localFolder, &LocalFolder::look);
    connect(&m_repositories, &Repositories::changed, this, &AppModel::summaryChanged);
    connect(&m_localFolder, &LocalFolder::onSystemDiskChanged, this, &AppModel::summaryChanged);
    connect(&m_connections, &Connections::connected, this, &AppModel::refresh);
    connect(&m_access, &DiskAccess::resumed, this, &AppModel::perform);
}

// The keyring comes first, as all that follows needs the key, and it may wait for the user. The
// window is open meanwhile.
void AppModel::begin()
{
    m_key.read([this] {
        m_world.background.run(
            this,
            [world = m_world] {
                world.disks->removePreviews();
                world.tools->removeAbandoned();
                return true;
            },
            [this](bool) { m_access.check([this] { m_run.look([this] { goOn(); }); }); });
    });
}

void AppModel::goOn()
{
    // On the thread that saves the settings: on any other, this could delete a file being written.
    m_world.background.runInOrder(Background::Lane::Settings,
                                  [settings = m_world.settings] { settings->removeAbandoned(); });
    m_world.background.run([tools = m_world.tools] { tools->pinServer(); });
    m_settings.syncSchedule();
    m_isStarting = false;
    Q_EMIT startingChanged();
    m_localFolder.look();
    m_repositories.begin();
    m_connections.read();

    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, &m_run, [this] { m_run.look(); });
    timer->start(std::chrono::seconds(1));

    m_access.resume();
}

void AppModel::setConfig(const AppConfig &config)
{
    AppConfig made = config;
    if (m_key.isChanging()) {
        // Which key the user has is settled when that is over.
        made.keySaved = m_settings.config().keySaved;
    }
    m_settings.setConfig(made);
}

void AppModel::setSection(Section section)
{
    if (m_section != section) {
        m_section = section;
        Q_EMIT sectionChanged();
    }
}

void AppModel::setShowingForeignWizard(bool showing)
{
    if (m_isShowingForeignWizard != showing) {
        m_isShowingForeignWizard = showing;
        Q_EMIT showingForeignWizardChanged();
    }
}

QDateTime AppModel::now()
{
    return Clock::now();
}

SpaceForecast AppModel::space() const
{
    const std::optional<Disks::Volume> volume = m_localFolder.volume();
    return {.now = now(),
            .config = config(),
            .history = m_run.history(),
            .repos = m_repositories.all(),
            .sourceSizes = m_measurement.sizes(),
            .localFree = volume ? std::optional(volume->free) : std::nullopt,
            .driveQuota = m_connections.drive().quota,
            .serverQuota = m_connections.server().quota};
}

QString AppModel::title(Section section)
{
    switch (section) {
    case Section::Overview:
        return Texts::tr("Panoramica");
    case Section::Restore:
        return Texts::tr("Ripristina");
    case Section::Sources:
        return Texts::tr("Cartelle");
    case Section::Destinations:
        return Texts::tr("Destinazioni");
    case Section::Activity:
        return Texts::tr("Attività");
    case Section::Settings:
        return Texts::tr("Impostazioni");
    }
    return {};
}

void AppModel::refresh(DestinationID destination)
{
    m_repositories.refresh(destination);
}

void AppModel::refreshQuota()
{
    m_connections.refreshQuota();
    m_localFolder.look();
}

void AppModel::chooseLocalFolder()
{
    m_world.desktop->askFolder(
        {.prompt = Texts::tr("Usa questa cartella"),
         .message = Texts::tr("Scegli il disco o la cartella in cui salvare i backup"),
         .startFolder = volumesFolder()},
        [model = QPointer(this)](const std::optional<QString> &folder) {
            if (!model || !folder) {
                return;
            }
            AppConfig config = model->config();
            config.localFolder = *folder;
            config.localEnabled = true;
            model->setConfig(config);
            model->refresh(DestinationID::Local);
        });
}

void AppModel::connectDrive()
{
    m_connections.connectDrive();
}

void AppModel::cancelDriveConnection()
{
    m_connections.cancelDrive();
}

void AppModel::disconnectDrive()
{
    m_connections.disconnect(DestinationID::Drive);
    refresh(DestinationID::Drive); // out of use, its entry goes
}

void AppModel::connectServer(const QString &secret)
{
    m_connections.connectServer(secret);
}

void AppModel::disconnectServer()
{
    m_connections.disconnect(DestinationID::Server);
    refresh(DestinationID::Server);
}

void AppModel::addSources()
{
    m_sources.add();
}

void AppModel::addDroppedSources(const QList<QUrl> &things)
{
    m_sources.addDropped(things);
}

void AppModel::removeSource(const QString &path)
{
    m_sources.remove(path);
}

void AppModel::addExclude(const QString &pattern)
{
    m_sources.addExclude(pattern);
}

void AppModel::removeExclude(const QString &pattern)
{
    m_sources.removeExclude(pattern);
}

void AppModel::restoreDefaultExcludes()
{
    m_sources.restoreDefaultExcludes();
}

void AppModel::startBackup()
{
    if (m_run.isBusy() || m_isStarting) {
        return;
    }
    if (!config().keySaved) {
        // No backup before the user has saved the key.
        m_isBackupAfterKit = true;
        m_kit.setShowing(true);
        Q_EMIT backupHindered();
        return;
    }
    // The last result decides at first, so that the window reacts at once; the access is checked
    // again before the start.
    const auto ask = [this](const std::function<void()> &start) {
        m_access.check([this, start] {
            if (!m_access.isGranted()) {
                m_run.giveUp();
                m_access.setRequest(GatedAction::Backup);
                Q_EMIT backupHindered();
                return;
            }
            m_world.desktop->requestNotificationPermission();
            start();
        });
    };
    if (m_access.isGranted()) {
        m_run.launch(ask);
    } else {
        ask([this] { m_run.launch(); });
    }
}

void AppModel::cancelBackup()
{
    m_run.stop();
}

void AppModel::checkPermissions()
{
    m_access.check();
}

void AppModel::measureSources()
{
    if (m_measurement.isMeasuring()) {
        return;
    }
    m_access.check([this] {
        if (m_access.isGranted()) {
            m_measurement.start();
        } else {
            m_access.setRequest(GatedAction::Measure);
        }
    });
}

void AppModel::runMeasure()
{
    m_measurement.start();
}

void AppModel::perform(GatedAction action)
{
    switch (action) {
    case GatedAction::Backup:
        if (!m_isStarting) {
            m_run.launch();
        }
        return;
    case GatedAction::Measure:
        m_measurement.start();
        return;
    case GatedAction::None:
        return;
    }
}

void AppModel::continueWithoutAccess()
{
    const GatedAction action = m_access.request();
    m_access.setRequest(GatedAction::None);
    perform(action);
}

void AppModel::requestAccessInSettings(GatedAction action)
{
    if (action == GatedAction::None) {
        return;
    }
    m_access.keep(action);
    m_access.setRequest(GatedAction::None);
    m_world.desktop->openPrivacySettings();
}

void AppModel::openFullDiskAccessSettings()
{
    m_world.desktop->openPrivacySettings();
}

void AppModel::relaunch()
{
    if (const std::optional<QString> executable = ownExecutablePath()) {
        // The shell starts the program when this process has ended.
        m_world.desktop->startDetached(
            QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"), QStringLiteral("sleep 1; exec \"$0\""), *executable});
    }
    m_access.setRequest(GatedAction::None);
    const std::shared_ptr<Desktop> desktop = m_world.desktop;
    desktop->after(std::chrono::milliseconds(200), [desktop] { desktop->quit(); });
    // In case something delays the end.
    desktop->after(std::chrono::milliseconds(700), [desktop] { desktop->exitNow(); });
}

void AppModel::prepareToQuit()
{
    static constexpr std::chrono::seconds patience(2);
    m_access.setRequest(GatedAction::None);
    m_kit.setShowing(false);
    setShowingForeignWizard(false);
    m_world.background.runInOrder(Background::Lane::Settings,
                                  [disks = m_world.disks] { disks->removePreviews(); });
    m_connections.endSignIn(patience);
    m_settings.finish(patience);
}

void AppModel::becomeHidden()
{
    ++m_absences;
    m_kit.setShowing(false);
    m_connections.cancelDrive(); // nobody would see how it ends
}

void AppModel::becomeActive()
{
    if (m_isStarting) {
        return; // pending actions are resumed at the end of the start
    }
    // Not within the handling of this event: the resumed action may open panels.
    QMetaObject::invokeMethod(&m_access, "resume", Qt::QueuedConnection);
}

void AppModel::authenticated(OwnerReason reason, const std::function<void()> &action)
{
    m_world.desktop->authenticate(reason, [model = QPointer(this), absences = m_absences,
                                           action](Desktop::Authentication answer) {
        // Without a way to log in, the user must still get their own key.
        if (model && model->m_absences == absences && answer != Desktop::Authentication::refused) {
            action();
        }
    });
}

void AppModel::openRecoveryKit()
{
    if (!config().keySaved) {
        // No login before the first saving: the key must get out of this machine.
        m_kit.setShowing(true);
        return;
    }
    authenticated(OwnerReason::showKey, [this] { m_kit.setShowing(true); });
}

void AppModel::saveRecoveryKit()
{
    m_kit.save();
}

void AppModel::printRecoveryKit()
{
    m_kit.print();
}

void AppModel::copyKey()
{
    m_key.copy();
}

void AppModel::requestKeyCopy()
{
    if (m_key.hasKey()) {
        authenticated(OwnerReason::copyKey, [this] { copyKey(); });
    }
}

void AppModel::confirmKeySaved()
{
    // While the key is being replaced, the one that the user has saved isn't the new one.
    if (!m_key.hasKey() || m_key.isChanging()) {
        return;
    }
    m_settings.setKeySaved(true);
    m_kit.setShowing(false);
    if (std::exchange(m_isBackupAfterKit, false)) {
        startBackup();
    }
}

void AppModel::requestPreviousKey()
{
    authenticated(OwnerReason::replaceKey, [this] { m_key.goBack(); });
}

void AppModel::useKey(const QString &typed, const KeyResult &done)
{
    m_key.use(typed, done);
}

void AppModel::replaceKey(const QString &key, const KeyResult &done)
{
    m_key.replace(key, done);
}

void AppModel::install(const QString &key, bool saved, const KeyResult &done)
{
    m_key.install(key, saved, done);
}

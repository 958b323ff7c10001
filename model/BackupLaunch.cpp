#include "model/AppModel.h"

#include "engine/CycleLock.h"
#include "model/UserDefaults.h"
#include "platform/Clock.h"
#include "platform/ExecutablePath.h"
#include "state/Paths.h"
#include "state/Texts.h"

#include <QPointer>

#include <csignal>

// A backup never runs in the process of the window: it is this same program, started once more,
// that goes its own way. It is known again by the files that it leaves.

namespace {

QString rawValue(AppModel::GatedAction action)
{
    return action == AppModel::GatedAction::Measure ? QStringLiteral("measure")
                                                    : QStringLiteral("backup");
}

AppModel::GatedAction gatedAction(const QString &rawValue)
{
    if (rawValue == QLatin1String("backup")) {
        return AppModel::GatedAction::Backup;
    }
    return rawValue == QLatin1String("measure") ? AppModel::GatedAction::Measure
                                                : AppModel::GatedAction::None;
}

/// Whether the person was sent to the system's settings too long ago to be surprised by what they
/// wanted then.
bool hasExpired(const QDateTime &date)
{
    static constexpr qint64 patienceMilliseconds = qint64{900} * 1000;
    return !date.isValid() || date.msecsTo(Clock::now()) >= patienceMilliseconds;
}

} // namespace

void AppModel::startBackup()
{
    if (isBusy() || m_isStarting) {
        return;
    }
    if (!m_config.keySaved) {
        // No backup before the person has the key in hand.
        m_backupAfterKit = true;
        setShowingRecoveryKit(true);
        return;
    }
    checkPermissions();
    if (!m_fullDiskAccess) {
        setAccessRequest(GatedAction::Backup);
        return;
    }
    m_desktop->requestNotificationPermission();
    launchBackup();
}

void AppModel::launchBackup()
{
    // How long the engine has to come up and to leave a live status.
    static constexpr std::chrono::seconds patience(6);
    if (isBusy() || m_isStarting) {
        return;
    }
    checkSupportFolder();
    if (m_supportError) {
        return; // it would end without a word
    }
    const std::optional<QString> executable = ownExecutablePath();
    if (!executable || !m_desktop->startDetached(
                           *executable, {QStringLiteral("--backup"), QStringLiteral("--manual")})) {
        return;
    }
    setLaunching(true);
    ++m_launch;
    m_desktop->after(patience, [model = QPointer(this), launch = m_launch] {
        if (model && model->m_launch == launch) {
            model->setLaunching(false);
            model->checkSupportFolder();
        }
    });
}

void AppModel::checkSupportFolder()
{
    if (m_isAtRest) {
        return;
    }
    const std::optional<QString> fault = CycleLock::fault();
    const auto message = [&fault] {
        return Texts::tr("Vellomar non può scrivere nella sua cartella %1 (%2): i backup non "
                         "possono partire.")
            .arg(Paths::abbreviatedHome(Paths::support()), *fault);
    };
    assign(m_supportError, fault ? std::optional(message()) : std::nullopt,
           &AppModel::supportErrorChanged);
}

void AppModel::cancelBackup()
{
    // Asked anew: the process id may be somebody else's by now.
    if (m_status && m_status->isAlive()) {
        ::kill(m_status->pid, SIGTERM);
    }
}

void AppModel::checkPermissions()
{
    assign(m_fullDiskAccess, m_desktop->hasFullDiskAccess(), &AppModel::fullDiskAccessChanged);
}

void AppModel::run(GatedAction action)
{
    switch (action) {
    case GatedAction::Backup:
        launchBackup();
        return;
    case GatedAction::Measure:
        runMeasure();
        return;
    case GatedAction::None:
        return;
    }
}

void AppModel::continueWithoutAccess()
{
    const GatedAction action = m_accessRequest;
    setAccessRequest(GatedAction::None);
    run(action);
}

void AppModel::requestAccessInSettings(GatedAction action)
{
    if (action == GatedAction::None) {
        return;
    }
    UserDefaults::set(UserDefaults::pendingAction, rawValue(action));
    UserDefaults::set(UserDefaults::pendingActionDate, Clock::now());
    setAccessRequest(GatedAction::None);
    m_desktop->openPrivacySettings();
}

void AppModel::openFullDiskAccessSettings()
{
    m_desktop->openPrivacySettings();
}

void AppModel::resumePendingAction()
{
    const GatedAction action =
        gatedAction(UserDefaults::value(UserDefaults::pendingAction).toString());
    if (action == GatedAction::None) {
        return;
    }
    if (hasExpired(UserDefaults::value(UserDefaults::pendingActionDate).toDateTime())) {
        UserDefaults::remove(UserDefaults::pendingAction);
        return;
    }
    checkPermissions();
    if (!m_fullDiskAccess) {
        return;
    }
    UserDefaults::remove(UserDefaults::pendingAction);
    setAccessRequest(GatedAction::None);
    run(action);
}

void AppModel::relaunch()
{
    if (const std::optional<QString> executable = ownExecutablePath()) {
        // The shell outlives this process, and by then it is gone.
        m_desktop->startDetached(
            QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"), QStringLiteral("sleep 1; exec \"$0\""), *executable});
    }
    setAccessRequest(GatedAction::None);
    const std::shared_ptr<Desktop> desktop = m_desktop;
    m_desktop->after(std::chrono::milliseconds(200), [desktop] { desktop->quit(); });
    // In case something holds the end up.
    m_desktop->after(std::chrono::milliseconds(700), [desktop] { desktop->exitNow(); });
}

#include "model/AppModel.h"

#include "model/PreviewFolder.h"
#include "model/UserDefaults.h"
#include "platform/Clock.h"
#include "state/ConfigStore.h"
#include "state/StatusStore.h"
#include "state/Texts.h"

#include <QMetaType>

#include <utility>

namespace {

bool isNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

/// Sizes measured at an earlier start; none unless all that is kept are numbers.
QMap<QString, qint64> savedSizes()
{
    const QVariant saved = UserDefaults::value(UserDefaults::sourceSizes);
    if (saved.typeId() != QMetaType::QVariantMap) {
        return {};
    }
    const QVariantMap entries = saved.toMap();
    QMap<QString, qint64> sizes;
    for (auto entry = entries.cbegin(); entry != entries.cend(); ++entry) {
        if (!isNumber(entry.value())) {
            return {};
        }
        sizes.insert(entry.key(), entry.value().toLongLong());
    }
    return sizes;
}

/// Whether the schedule depends on anything that differs.
bool changesSchedule(const AppConfig &before, const AppConfig &now)
{
    return before.autoBackup != now.autoBackup || before.intervalHours != now.intervalHours ||
           before.hasDestination() != now.hasDestination() || before.keySaved != now.keySaved;
}

} // namespace

AppModel::AppModel(std::shared_ptr<Desktop> desktop, QObject *parent)
    : QObject(parent)
    , m_desktop(std::move(desktop))
    , m_config(ConfigStore::load())
    , m_isStarting(true)
    , m_historyBytes(StatusStore::historyBytes())
    , m_history(StatusStore::decodedHistory(m_historyBytes))
    , m_minute(Clock::now().toSecsSinceEpoch() / 60)
    , m_sourceSizes(savedSizes())
{
    connect(&m_localFolder, &LocalFolder::changed, this, &AppModel::summaryChanged);
    checkSupportFolder();
    lookAtLocalFolder();
    begin();
}

AppModel::~AppModel()
{
    m_measurement.request_stop();
}

AppModel::AppModel(std::shared_ptr<Desktop> desktop, const Shown &shown, QObject *parent)
    : QObject(parent)
    , m_desktop(std::move(desktop))
    , m_isAtRest(true)
{
    show(shown);
}

void AppModel::show(const Shown &shown)
{
    m_config = shown.config;
    Q_EMIT configChanged();
    setStatus(shown.status);
    assign(m_isStarting, shown.starting, &AppModel::startingChanged);
    setLaunching(shown.launching);
    m_localFolder.show(shown.localOnSystemDisk);
    m_repos = shown.repos;
    Q_EMIT reposChanged();
    assign(m_fullDiskAccess, shown.fullDiskAccess, &AppModel::fullDiskAccessChanged);
    assign(m_supportError, shown.supportError, &AppModel::supportErrorChanged);
    assign(m_keyError, shown.keyError, &AppModel::keyErrorChanged);
    assign(m_keyCopied, shown.keyCopied, &AppModel::keyCopiedChanged);
    assign(m_kitNotice, shown.kitNotice, &AppModel::kitNoticeChanged);
    assign(m_password, shown.password, &AppModel::passwordChanged);
    setHistory(shown.history);
}

void AppModel::setConfig(const AppConfig &config)
{
    const AppConfig before = std::exchange(m_config, config);
    if (before == config) {
        return;
    }
    if (!m_isAtRest) {
        ConfigStore::save(config);
        if (changesSchedule(before, config)) {
            syncSchedule();
        }
        if (before.localFolder != config.localFolder) {
            lookAtLocalFolder();
        }
    }
    for (const DestinationID destination : allDestinations) {
        if (before.isEnabled(destination) && !config.isEnabled(destination)) {
            ++m_uses[destination];
        }
    }
    if (before.sources != config.sources || before.excludes != config.excludes) {
        endMeasurement();
        setSourceSizes({});
    }
    Q_EMIT configChanged();
    Q_EMIT summaryChanged();
}

void AppModel::setKeySaved(bool saved)
{
    AppConfig config = m_config;
    config.keySaved = saved;
    setConfig(config);
}

void AppModel::setSection(Section section)
{
    assign(m_section, section, &AppModel::sectionChanged);
}

void AppModel::setAccessRequest(GatedAction action)
{
    assign(m_accessRequest, action, &AppModel::accessRequestChanged);
}

void AppModel::setShowingForeignWizard(bool showing)
{
    assign(m_showingForeignWizard, showing, &AppModel::showingForeignWizardChanged);
}

void AppModel::setShowingRecoveryKit(bool showing)
{
    if (assign(m_showingRecoveryKit, showing, &AppModel::showingRecoveryKitChanged) && showing &&
        !hasKey() && !m_isAtRest) {
        readKey([this] {
            if (hasKey()) {
                refreshAll();
            }
        });
    }
}

const std::optional<QString> &AppModel::serverVersioning() const
{
    return m_serverVersioning;
}

QDateTime AppModel::now()
{
    return Clock::now();
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

void AppModel::becomeActive()
{
    if (m_isStarting) {
        return; // what is pending is taken up at the end of that
    }
    // Not within the event that tells of it: what is resumed may open panels.
    QMetaObject::invokeMethod(this, "resumePendingAction", Qt::QueuedConnection);
}

void AppModel::becomeHidden()
{
    ++m_absences;
    setShowingRecoveryKit(false);
}

void AppModel::prepareToQuit()
{
    setAccessRequest(GatedAction::None);
    setShowingRecoveryKit(false);
    setShowingForeignWizard(false);
    PreviewFolder::remove();
}

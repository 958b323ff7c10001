#include "ui/glance/Summary.h"

#include "ui/summary/DialContent.h"
#include "ui/summary/ShellTexts.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace {

/// Whether the value has changed.
template <typename T>
bool assign(T &field, const T &value)
{
    if (field == value) {
        return false;
    }
    field = value;
    return true;
}

} // namespace

Summary::Summary(QObject *parent)
    : QObject(parent)
{
    update();
}

void Summary::setModel(AppModel *model)
{
    if (m_model == model) {
        return;
    }
    if (m_model) {
        for (QObject *sender : std::initializer_list<QObject *>{m_model, m_model->access(),
                                                                m_model->key(), m_model->run()}) {
            sender->disconnect(this);
        }
    }
    m_model = model;
    if (model != nullptr) {
        // summaryChanged comes with each change of a repository and with each minute, too.
        connect(model, &AppModel::summaryChanged, this, &Summary::update);
        connect(model, &AppModel::startingChanged, this, &Summary::update);
        connect(model->access(), &DiskAccess::grantedChanged, this, &Summary::update);
        connect(model->key(), &EncryptionKey::errorChanged, this, &Summary::update);
        connect(model->run(), &RunWatch::supportErrorChanged, this, &Summary::update);
        connect(model->run(), &RunWatch::statusChanged, this, &Summary::updateRun);
        connect(model->run(), &RunWatch::launchingChanged, this, &Summary::updateRun);
        connect(model, &QObject::destroyed, this, [this] {
            Q_EMIT modelChanged();
            update();
        });
    }
    Q_EMIT modelChanged();
    update();
}

void Summary::update()
{
    m_situation = m_model ? Situation::of(*m_model) : Situation();
    QList<QDateTime> versions;
    if (m_model) {
        for (const RepoInfo &repo : m_model->repositories()->all()) {
            for (const Snap &snapshot : repo.snapshots) {
                versions.append(snapshot.date);
            }
        }
    }
    m_versionTicks = DialContent::versionTicks(versions, AppModel::now());
    updateDestinations();
    publish();
}

void Summary::updateDestinations()
{
    const auto destinations =
        m_model ? m_model->repositories()->destinations() : QList<DestinationState>();
    m_destinationRows.assign(destinations);
    const QList<DestinationID> inPanel = ShellTexts::panelDestinations(m_situation);
    QList<DestinationState> rows;
    std::copy_if(destinations.cbegin(), destinations.cend(), std::back_inserter(rows),
                 [&inPanel](const DestinationState &state) { return inPanel.contains(state.id); });
    m_panelRows.assign(rows);
}

// Called each second during a run: no need to go through all versions for that.
void Summary::updateRun()
{
    m_situation.status = m_model->run()->status();
    m_situation.launching = m_model->run()->isLaunching();
    publish();
}

void Summary::publish()
{
    const bool valuesDiffer = assign(m_values, values());
    const bool ticksDiffer = assign(m_litTicks, ticks());
    const bool checksDiffer = assign(m_checks, ProtectionChecks::checks(m_situation));
    if (ticksDiffer) {
        Q_EMIT ticksChanged();
    }
    if (checksDiffer) {
        m_checkRows.assign(m_checks);
        Q_EMIT checksChanged();
    }
    if (valuesDiffer) {
        Q_EMIT changed();
    }
}

Summary::Values Summary::values() const
{
    return {
        .title = OverviewTexts::title(m_situation),
        .detail = OverviewTexts::detail(m_situation),
        .currentFile = OverviewTexts::currentFile(m_situation),
        .action = OverviewTexts::action(m_situation),
        .notice = OverviewTexts::notice(m_situation),
        .dialValue = DialContent::value(m_situation),
        .dialCaption = DialContent::caption(m_situation),
        .percent = m_situation.status ? m_situation.status->percent : 0,
        .nowFraction = DialContent::nowFraction(AppModel::now()),
        .running = m_situation.status.has_value(),
        .sidebarState = ShellTexts::sidebarState(m_situation),
        .sidebarTone = ShellTexts::sidebarTone(m_situation),
        .panelEyebrow = ShellTexts::panelEyebrow(m_situation),
        .panelHeadline = ShellTexts::panelHeadline(m_situation),
        .panelDetail = ShellTexts::panelDetail(m_situation),
    };
}

QList<bool> Summary::ticks() const
{
    const auto percent =
        m_situation.status ? std::optional(m_situation.status->percent) : std::nullopt;
    QList<bool> lit;
    for (int tick = 0; tick < DialContent::tickCount; ++tick) {
        lit.append(DialContent::isLit(tick, percent, m_versionTicks));
    }
    return lit;
}

QString Summary::actionLabel() const
{
    return OverviewTexts::label(m_values.action);
}

QString Summary::badge() const
{
    return ProtectionChecks::badge(m_checks);
}

bool Summary::isProtectedWell() const
{
    return std::all_of(m_checks.cbegin(), m_checks.cend(),
                       [](const ProtectionChecks::Check &check) { return check.ok; });
}

void Summary::act()
{
    if (!m_model) {
        return;
    }
    switch (action()) {
    case OverviewTexts::Action::Choose:
        m_model->setSection(AppModel::Section::Destinations);
        return;
    case OverviewTexts::Action::Start:
        m_model->startBackup();
        return;
    case OverviewTexts::Action::Starting:
        return;
    case OverviewTexts::Action::Stop:
        m_model->cancelBackup();
        return;
    }
}

void Summary::remedy(const QString &id)
{
    const auto check =
        std::find_if(m_checks.cbegin(), m_checks.cend(),
                     [&id](const ProtectionChecks::Check &row) { return row.id == id; });
    if (!m_model || check == m_checks.cend()) {
        return;
    }
    switch (check->remedy) {
    case ProtectionChecks::Remedy::none:
        return;
    case ProtectionChecks::Remedy::recoveryKit:
        m_model->openRecoveryKit();
        return;
    case ProtectionChecks::Remedy::destinations:
        m_model->setSection(AppModel::Section::Destinations);
        return;
    case ProtectionChecks::Remedy::settings:
        m_model->setSection(AppModel::Section::Settings);
        return;
    case ProtectionChecks::Remedy::access:
        m_model->openFullDiskAccessSettings();
        return;
    case ProtectionChecks::Remedy::activity:
        m_model->setSection(AppModel::Section::Activity);
        return;
    }
}

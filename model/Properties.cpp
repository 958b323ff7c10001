#include "model/AppModel.h"

#include "platform/Clock.h"
#include "state/Fmt.h"
#include "state/Texts.h"

#include <algorithm>

// What follows from the fields.

namespace {

template <typename Condition>
std::optional<RunRecord> firstRecord(const QList<RunRecord> &history, Condition condition)
{
    const auto found = std::find_if(history.cbegin(), history.cend(), condition);
    return found == history.cend() ? std::nullopt : std::optional(*found);
}

} // namespace

std::optional<RunRecord> AppModel::lastSuccess() const
{
    return firstRecord(m_history, [](const RunRecord &record) {
        return !record.isVerification() && isGood(record.outcome);
    });
}

std::optional<RunRecord> AppModel::lastRecord(DestinationID destination) const
{
    return firstRecord(m_history, [destination](const RunRecord &record) {
        return !record.isVerification() && record.destination == destination;
    });
}

std::optional<RunRecord> AppModel::lastCheck() const
{
    return firstRecord(m_history, [](const RunRecord &record) { return record.isVerification(); });
}

QString AppModel::stateText(DestinationID destination) const
{
    if (!m_config.isEnabled(destination)) {
        return Texts::tr("Non attiva");
    }
    const std::optional<QString> error = m_repos.value(destination).error;
    if (error) {
        return *error;
    }
    const std::optional<RunRecord> last = lastRecord(destination);
    if (!last) {
        return Texts::tr("In attesa del primo backup");
    }
    if (last->outcome == Outcome::Failed) {
        return Texts::tr("Ultimo backup non riuscito");
    }
    return Texts::tr("Backup %1").arg(Fmt::relative(last->date));
}

Tone AppModel::stateTone(DestinationID destination) const
{
    if (!m_config.isEnabled(destination)) {
        return Tone::Off;
    }
    if (m_repos.value(destination).error) {
        return Tone::Attention;
    }
    const std::optional<RunRecord> last = lastRecord(destination);
    if (!last) {
        return Tone::Attention;
    }
    return last->outcome == Outcome::Failed ? Tone::Wrong : Tone::Well;
}

std::optional<QString> AppModel::staleText() const
{
    static constexpr qint64 secondsPerHour = 3600;
    static constexpr qint64 hoursPerDay = 24;
    if (m_config.alertAfterHours < 0 || !m_config.hasDestination()) {
        return std::nullopt;
    }
    const std::optional<RunRecord> last = lastSuccess();
    if (!last) {
        return std::nullopt;
    }
    const qint64 hours = last->date.msecsTo(Clock::now()) / 1000 / secondsPerHour;
    // Half of each side, so that no interval is too long to be doubled.
    const bool isWithinTwoRuns = hours / 2 < m_config.intervalHours;
    if (isWithinTwoRuns || hours < m_config.alertAfterHours) {
        return std::nullopt;
    }
    if (hours < 2 * hoursPerDay) {
        return Texts::tr("%1 ore", nullptr, Texts::count(hours)).arg(hours);
    }
    const qint64 days = hours / hoursPerDay;
    return Texts::tr("%1 giorni", nullptr, Texts::count(days)).arg(days);
}

QList<DestinationState> AppModel::destinations() const
{
    QList<DestinationState> states;
    for (const DestinationID id : allDestinations) {
        const RepoInfo repo = m_repos.value(id);
        DestinationState state{.id = id,
                               .enabled = m_config.isEnabled(id),
                               .stateText = stateText(id),
                               .stateTone = stateTone(id),
                               .known = m_repos.contains(id),
                               .snapshotDates = {},
                               .size = repo.size.value_or(-1),
                               .error = repo.error.value_or(QString()),
                               .loading = repo.loading};
        for (const Snap &snapshot : repo.snapshots) {
            state.snapshotDates.append(snapshot.date);
        }
        states.append(state);
    }
    return states;
}

QVariantMap AppModel::sourceSizesView() const
{
    QVariantMap sizes;
    for (auto entry = m_sourceSizes.cbegin(); entry != m_sourceSizes.cend(); ++entry) {
        sizes.insert(entry.key(), entry.value());
    }
    return sizes;
}

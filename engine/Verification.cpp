#include "engine/Verification.h"

#include "engine/RepositoryVolume.h"
#include "platform/Clock.h"
#include "platform/WeekOfYear.h"
#include "state/StatusStore.h"
#include "state/Texts.h"
#include "tools/ResticCheck.h"

#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto checkInterval = 7 * 24h;

/// What the check that begins at this moment reads of the data: a different twentieth each week, so
/// that twenty weeks read all of them. Over a network that would be a download: none there.
std::optional<ResticCheck::Part> partToRead(DestinationID destination, const QDateTime &start)
{
    if (destination != DestinationID::Local) {
        return std::nullopt;
    }
    return ResticCheck::Part{.number = weekOfYear(start) % 20 + 1, .count = 20};
}

} // namespace

Verification::Verification(const Restic &restic, ProcessHandle &handle, Notifier::Send notify)
    : m_restic(restic)
    , m_handle(handle)
    , m_notify(std::move(notify))
{
}

void Verification::runIfDue() const
{
    const DestinationID destination = m_restic.dest;
    EngineState state = StatusStore::loadState();
    const QDateTime now = Clock::now();
    if (!EngineState::isDue(state.lastCheck, rawValue(destination), now, checkInterval)) {
        return;
    }
    const auto start = Clock::steady();
    RunRecord record = RunRecord::starting(destination);
    record.kind = QStringLiteral("check");
    // A check reports no progress, so this stands until its end.
    RunStatus status = RunStatus::starting(destination, record.date);
    status.phase = Texts::tr("Verifica dell'integrità");
    status.percent = 1.0;
    StatusStore::write(status);

    const RepositoryVolume volume(m_restic);
    const auto checked =
        ResticCheck::run(m_restic, partToRead(destination, record.date), &m_handle);
    if (m_handle.isCancelled()) {
        return;
    }
    if (!volume.isStillThere()) {
        record.message = Texts::tr("Il disco è stato scollegato durante la verifica");
    } else if (!checked) {
        record.message = checked.error().message;
    } else {
        record.outcome = Outcome::Ok;
        record.message = Texts::tr("Nessun errore trovato");
    }
    record.duration = std::chrono::duration<double>(Clock::steady() - start).count();
    StatusStore::append(record);
    if (record.outcome == Outcome::Ok) {
        state.lastCheck.insert(rawValue(destination), now);
        StatusStore::save(state);
    } else {
        m_notify(Texts::tr("Verifica del backup non riuscita"),
                 title(destination) + QLatin1String(": ") + record.message);
    }
}

#include "model/Views.h"

#include <algorithm>

void ConfigView::setServerKindText(const QString &text)
{
    serverKind = ::serverKind(text).value_or(serverKind);
}

bool ConfigView::hasDestination() const
{
    return std::any_of(allDestinations.begin(), allDestinations.end(),
                       [this](DestinationID id) { return isEnabled(id); });
}

QList<QDateTime> DestinationView::snapshotDates() const
{
    QList<QDateTime> dates;
    for (const Snap &snap : repo.snapshots) {
        dates.append(snap.date);
    }
    return dates;
}

#include "ui/summary/Situation.h"

#include <algorithm>
#include <iterator>

Situation Situation::of(const AppModel &model)
{
    return {
        .config = model.config(),
        .status = model.status(),
        .starting = model.isStarting(),
        .launching = model.isLaunching(),
        .lastSuccess = model.lastSuccess(),
        .lastCheck = model.lastCheck(),
        .staleText = model.staleText(),
        .fullDiskAccess = model.hasFullDiskAccess(),
        .localOnSystemDisk = model.isLocalOnSystemDisk(),
        .supportError = model.supportError(),
        .keyError = model.keyError(),
    };
}

QList<DestinationID> Situation::enabled() const
{
    QList<DestinationID> list;
    std::copy_if(allDestinations.begin(), allDestinations.end(), std::back_inserter(list),
                 [this](DestinationID destination) { return config.isEnabled(destination); });
    return list;
}

#include "ui/summary/Situation.h"

#include "state/LocalDisk.h"
#include "state/Paths.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

bool isOnSystemDisk(const AppConfig &config)
{
    const QString &folder = config.localFolder;
    return !folder.isEmpty() && QFileInfo::exists(folder) &&
           !LocalDisk::isAway(config.repository(DestinationID::local)) &&
           Paths::volume(folder) == Paths::volume(Paths::home());
}

} // namespace

Situation Situation::of(const AppModel &model)
{
    return {
        .config = model.config(),
        .status = model.status(),
        .launching = model.isLaunching(),
        .lastSuccess = model.lastSuccess(),
        .lastCheck = model.lastCheck(),
        .staleText = model.staleText(),
        .fullDiskAccess = model.hasFullDiskAccess(),
        .localOnSystemDisk = isOnSystemDisk(model.config()),
    };
}

QList<DestinationID> Situation::enabled() const
{
    QList<DestinationID> list;
    std::copy_if(allDestinations.begin(), allDestinations.end(), std::back_inserter(list),
                 [this](DestinationID destination) { return config.isEnabled(destination); });
    return list;
}

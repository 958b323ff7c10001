#include "ui/summary/DestinationsSituation.h"

DestinationsSituation DestinationsSituation::of(AppModel &model)
{
    const Measurement &measurement = *model.sources()->measurement();
    DestinationsSituation situation;
    SpaceForecast &space = situation.space;
    space.now = AppModel::now();
    space.config = model.config();
    space.history = model.run()->history();
    space.repos = model.repositories()->all();
    space.sourceSizes = measurement.sizes();
    situation.measuring = measurement.isMeasuring();
    situation.soFar = measurement.soFar();
    situation.drive = model.connections()->drive();
    situation.server = model.connections()->server();
    space.driveQuota = situation.drive.quota;
    space.serverQuota = situation.server.quota;
    situation.localKnown = model.localFolder()->isKnown();
    if (const auto volume = model.localFolder()->volume()) {
        space.localFree = volume->free;
        situation.localVolume =
            Rclone::Quota{.used = volume->total - volume->free, .total = volume->total};
    }
    return situation;
}

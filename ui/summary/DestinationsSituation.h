#pragma once

#include "model/AppModel.h"
#include "model/SpaceForecast.h"

/// What the texts of the destinations page go by: the model's values at one moment, as plain data.
struct DestinationsSituation
{
    SpaceForecast space;
    bool measuring = false;
    qint64 soFar = 0; ///< bytes counted by the measurement under way
    Connection drive;
    Connection server;
    bool localKnown = false;                  ///< the local folder has been looked at
    std::optional<Rclone::Quota> localVolume; ///< its disk; absent while that is away
    bool localOnSystemDisk = false;

    static DestinationsSituation of(AppModel &model);

    [[nodiscard]] const AppConfig &config() const { return space.config; }
};

#pragma once

#include "state/RawValue.h"

#include <QObject>
#include <QString>

#include <array>

namespace DestinationIDs {
Q_NAMESPACE

/// One of the three places that a backup can go to. The order here is the order of every run. Its
/// raw values are "local", "drive" and "server".
enum class DestinationID { Local, Drive, Server };
Q_ENUM_NS(DestinationID)

/// The name on screen.
QString title(DestinationID destination);

} // namespace DestinationIDs

using DestinationIDs::DestinationID;

inline constexpr std::array allDestinations = {DestinationID::Local, DestinationID::Drive,
                                               DestinationID::Server};

#pragma once

#include <QString>

#include <array>
#include <optional>

/// One of the three places that a backup can go to. The order here is the order of every run.
enum class DestinationID { Local, Drive, Server };

inline constexpr std::array allDestinations = {DestinationID::Local, DestinationID::Drive,
                                               DestinationID::Server};

/// The text that stands for a destination in our JSON files: "local", "drive" or "server".
QString rawValue(DestinationID destination);

/// The destination of a raw value; absent for any other text.
std::optional<DestinationID> destinationID(const QString &rawValue);

/// The name on screen.
QString title(DestinationID destination);

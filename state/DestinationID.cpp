#include "state/DestinationID.h"

#include "state/Localized.h"

QString rawValue(DestinationID destination)
{
    switch (destination) {
    case DestinationID::local:
        return QStringLiteral("local");
    case DestinationID::drive:
        return QStringLiteral("drive");
    case DestinationID::server:
        return QStringLiteral("server");
    }
    Q_UNREACHABLE();
}

std::optional<DestinationID> destinationID(const QString &raw)
{
    for (const DestinationID destination : allDestinations) {
        if (rawValue(destination) == raw) {
            return destination;
        }
    }
    return std::nullopt;
}

QString title(DestinationID destination)
{
    switch (destination) {
    case DestinationID::local:
        return localized("Disco esterno");
    case DestinationID::drive:
        return QStringLiteral("Google Drive");
    case DestinationID::server:
        return localized("Server privato");
    }
    Q_UNREACHABLE();
}

#include "state/DestinationID.h"

#include "state/Texts.h"

QString rawValue(DestinationID destination)
{
    switch (destination) {
    case DestinationID::Local:
        return QStringLiteral("local");
    case DestinationID::Drive:
        return QStringLiteral("drive");
    case DestinationID::Server:
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
    case DestinationID::Local:
        return Texts::tr("Disco esterno");
    case DestinationID::Drive:
        return QStringLiteral("Google Drive");
    case DestinationID::Server:
        return Texts::tr("Server privato");
    }
    Q_UNREACHABLE();
}

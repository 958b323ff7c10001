#include "state/DestinationID.h"

#include "state/Texts.h"

QString DestinationIDs::title(DestinationID destination)
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

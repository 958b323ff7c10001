#pragma once

#include "ui/summary/DestinationsTexts.h"

#include <QtQml/qqml.h>

// The values of the page under the names that QML has for them.

// NOLINTBEGIN(readability-identifier-naming): what the macros declare

struct SpaceFigureForeign
{
    Q_GADGET
    QML_FOREIGN(DestinationsTexts::Figure)
    QML_VALUE_TYPE(spaceFigure)
};

struct PlaceForeign
{
    Q_GADGET
    QML_FOREIGN(DestinationsTexts::Place)
    QML_VALUE_TYPE(place)
};

struct ServerFormForeign
{
    Q_GADGET
    QML_FOREIGN(DestinationsTexts::ServerForm)
    QML_VALUE_TYPE(serverForm)
};

// NOLINTEND(readability-identifier-naming)

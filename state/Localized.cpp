#include "state/Localized.h"

#include <QCoreApplication>

QString localized(const char *italian)
{
    return QCoreApplication::translate("Vellomar", italian);
}

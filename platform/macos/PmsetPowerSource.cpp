#include "platform/PowerSource.h"

bool Pmset::runsOnBattery(const OutputOf &outputOf)
{
    return outputOf(QStringLiteral("/usr/bin/pmset"), {QStringLiteral("-g"), QStringLiteral("ps")})
        .contains(QLatin1String("Battery Power"));
}

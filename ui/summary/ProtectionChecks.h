#pragma once

#include "ui/summary/Situation.h"

#include <QList>
#include <QString>

/// What the protection panel looks at, row by row.
namespace ProtectionChecks {

/// What a click on a row does.
enum class Remedy { none, recoveryKit, destinations, settings, access, activity };

struct Check
{
    QString id; ///< "key", "copies", "versions", "access" or "integrity"
    bool ok = false;
    QString title;
    QString detail;
    Remedy remedy = Remedy::none; ///< none: the row can't be clicked

    bool operator==(const Check &) const = default;
};

/// The rows in their order. That of the integrity is missing until something has been verified.
QList<Check> checks(const Situation &situation);

/// How many are to be put in order, in words.
QString badge(const QList<Check> &checks);

} // namespace ProtectionChecks

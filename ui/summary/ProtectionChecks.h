#pragma once

#include "ui/summary/Situation.h"

#include <QList>
#include <QObject>
#include <QString>

/// The rows of the protection panel.
namespace ProtectionChecks {

/// What a click on a row opens.
enum class Remedy { none, recoveryKit, destinations, settings, access, activity };

struct Check
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(bool ok MEMBER ok FINAL)
    Q_PROPERTY(QString title MEMBER title FINAL)
    Q_PROPERTY(QString detail MEMBER detail FINAL)
    Q_PROPERTY(bool hasRemedy READ hasRemedy FINAL)

public:
    QString id; ///< "key", "copies", "versions", "access" or "integrity"
    bool ok = false;
    QString title;
    QString detail;
    Remedy remedy = Remedy::none; ///< with none the row can't be clicked

    bool operator==(const Check &) const = default;

    [[nodiscard]] bool hasRemedy() const { return remedy != Remedy::none; }
};

/// The rows in their order. "integrity" is missing until a destination has been verified.
QList<Check> checks(const Situation &situation);

/// The text of how many checks aren't ok.
QString badge(const QList<Check> &checks);

} // namespace ProtectionChecks

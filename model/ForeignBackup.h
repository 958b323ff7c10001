#pragma once

#include "tools/Restic.h"

#include <QList>
#include <QString>

/// The backup of another machine, open for browsing.
struct ForeignBackup
{
    Restic restic;
    QString host;
    QList<Snap> snapshots;
};

#pragma once

#include "model/Connection.h"
#include "model/Disks.h"
#include "model/Notice.h"
#include "model/RepoInfo.h"
#include "state/AppConfig.h"
#include "state/RunRecord.h"
#include "state/RunStatus.h"

#include <QList>
#include <QMap>
#include <QString>

#include <optional>

/// All that a model can find in a prepared world.
struct PreparedState
{
    AppConfig config;
    std::optional<RunStatus> status; ///< of the run under way; absent when nothing runs
    bool starting = false;           ///< the keyring doesn't answer
    bool launching = false;          ///< a backup was started, and no run is seen yet
    QList<RunRecord> history;        ///< newest first
    QMap<DestinationID, RepoInfo> repos;
    Disks::LocalPlace localPlace;      ///< of the folder of the local backups
    bool localUnknown = false;         ///< the disk doesn't answer
    QMap<QString, qint64> sourceSizes; ///< bytes of the sources; those of the settings count as
                                       ///< measured already
    std::optional<qint64> measuring;   ///< bytes so far of the measurement under way; absent when
                                       ///< none is
    Connection drive;                  ///< what is found there, or comes of connecting it
    Connection server;
    QString typedExclude; ///< an exclusion that was typed
    QString dropped;      ///< a path that was dropped, which is no folder
    bool fullDiskAccess = true;
    std::optional<QString> supportFault; ///< why the support folder can't be written
    std::optional<QString> keyError;     ///< the keyring's answer instead of a key, or instead of
                                         ///< the previous key if there is a key
    std::optional<Notice> kitNotice;     ///< the result of saving the kit
    QString key;                         ///< empty when the keyring gives none
};

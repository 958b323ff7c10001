#pragma once

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
    bool localOnSystemDisk = false;
    bool fullDiskAccess = true;
    std::optional<QString> supportFault; ///< why the support folder can't be written
    std::optional<QString> keyError;     ///< the keyring's answer instead of a key, or instead of
                                         ///< the previous key if there is a key
    std::optional<Notice> kitNotice;     ///< the result of saving the kit
    QString key;                         ///< empty when the keyring gives none
};

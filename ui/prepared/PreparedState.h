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

/// What a prepared world holds for a model to find.
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
    std::optional<QString> keyError;     ///< what the keyring says in place of a key, or of the
                                         ///< previous one where there is a key
    std::optional<Notice> kitNotice;     ///< how saving the kit came out
    QString key;                         ///< empty when the keyring gives none
};

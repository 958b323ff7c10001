#pragma once

#include "model/AppModel.h"

/// The model's values at one moment, as plain data: all that the functions of this folder depend
/// on, except the time.
struct Situation
{
    AppConfig config;
    std::optional<RunStatus> status; ///< absent when nothing runs
    bool starting = false;           ///< the keyring hasn't answered yet
    bool launching = false;
    std::optional<RunRecord> lastSuccess;
    std::optional<RunRecord> lastCheck; ///< the newest verification
    std::optional<QString> staleText;   ///< age of the last good backup while that is too old
    bool fullDiskAccess = true;
    bool localOnSystemDisk = false;      ///< the local backups are on the disk of the home folder
    std::optional<QString> supportError; ///< why no backup can run
    std::optional<QString> keyError;     ///< the last failure concerning the key

    static Situation of(const AppModel &model);

    [[nodiscard]] bool isBusy() const { return status || launching; }
};

#include "ui/summary/Situation.h"

Situation Situation::of(const AppModel &model)
{
    return {
        .config = model.config(),
        .status = model.status(),
        .starting = model.isStarting(),
        .launching = model.isLaunching(),
        .lastSuccess = model.lastSuccess(),
        .lastCheck = model.lastCheck(),
        .staleText = model.staleText(),
        .fullDiskAccess = model.hasFullDiskAccess(),
        .localOnSystemDisk = model.isLocalOnSystemDisk(),
        .supportError = model.supportError(),
        .keyError = model.keyError(),
    };
}

#include "ui/summary/Situation.h"

Situation Situation::of(const AppModel &model)
{
    return {
        .config = model.config(),
        .status = model.run()->status(),
        .starting = model.isStarting(),
        .launching = model.run()->isLaunching(),
        .lastSuccess = model.run()->lastSuccess(),
        .lastCheck = model.run()->lastCheck(),
        .staleText = model.run()->staleText(),
        .fullDiskAccess = model.access()->isGranted(),
        .localOnSystemDisk = model.localFolder()->isOnSystemDisk(),
        .supportError = model.run()->supportError(),
        .keyError = model.key()->error(),
    };
}

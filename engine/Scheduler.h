#pragma once

#include "platform/PeriodicJob.h"
#include "state/AppConfig.h"

#include <QString>

#include <optional>

/// Keeps the system's periodic job, which starts `--backup` by itself, in line with the settings.
/// Without state of its own and silent: what failed is noticed at the next call.
namespace Scheduler {

/// Makes, changes or removes the job of this user. Waits for the system's tools.
void sync(const AppConfig &config);

/// The same with the job and the program to start handed in; without a program there is no job.
void sync(const AppConfig &config, PeriodicJob &job, const std::optional<QString> &executable);

} // namespace Scheduler

#pragma once

#include "platform/PeriodicJob.h"
#include "state/AppConfig.h"

#include <QString>

#include <optional>

/// Keeps the system's periodic job, which starts `--backup`, in line with the settings. It has no
/// state and reports nothing: what failed is tried again at the next call.
namespace Scheduler {

/// Makes, changes or removes the job of this user. Waits for the system's tools.
void sync(const AppConfig &config);

/// The same with the job and the program to start handed in; without a program there is no job.
void sync(const AppConfig &config, PeriodicJob &job, const std::optional<QString> &executable);

} // namespace Scheduler

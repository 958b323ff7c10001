#pragma once

/// A backup cycle without a window, as the schedule and the window's button start it.
namespace Headless {

/// Runs one cycle with the settings as saved and ends the process with its result. SIGTERM, SIGINT
/// and SIGHUP (unless nohup has it ignored) ask the cycle to stop; they never end the process
/// themselves, so that the cycle always cleans up behind it.
[[noreturn]] void run(bool manual);

} // namespace Headless

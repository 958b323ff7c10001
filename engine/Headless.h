#pragma once

/// A backup cycle without a window, as the schedule and the window's button start it.
namespace Headless {

/// Runs one cycle with the saved settings and ends the process with its result. SIGTERM, SIGINT and
/// SIGHUP (unless nohup made it ignored) ask the cycle to stop; they never end the process
/// themselves, so that the cycle always cleans up.
[[noreturn]] void run(bool manual);

} // namespace Headless

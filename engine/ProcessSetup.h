#pragma once

/// What the process needs before anything else, whatever it is started for.
namespace ProcessSetup {

/// Opens the null device in place of missing standard descriptors, turns the signal for a file that
/// grows too large into a failed write, raises the limit of open files as far as the system lets,
/// and makes sure that the environment names the home folder. False, with a line on standard error,
/// when the limit of open files is too low (libraries end the process when they get none), or no
/// home folder is known.
bool complete();

} // namespace ProcessSetup

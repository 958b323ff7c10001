#pragma once

/// What every face needs of its process before anything else.
namespace ProcessSetup {

/// Gives missing standard descriptors the null device; lets a file that grows beyond what the
/// system allows be a failed write, and not the end; raises the number of open files as far as the
/// system lets; sees to it that the environment names the home. False, with a line on standard
/// error, when the system lets open too few files (libraries end the process when they get none),
/// or nobody knows a home.
bool complete();

} // namespace ProcessSetup

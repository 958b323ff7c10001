#pragma once

/// What every face needs of its process before anything else.
namespace ProcessSetup {

/// Gives missing standard descriptors the null device; lets a file that grows beyond what the
/// system allows be a failed write, and not the end; raises the number of open files as far as the
/// system lets. False, with a line on standard error, when it lets open too few: libraries end the
/// process when they get none.
bool complete();

} // namespace ProcessSetup

#pragma once

/// The window is a module beside the program, in ../lib/vellomar, so that a process without a
/// window loads nothing of a window toolkit.
namespace WindowLoader {

/// Loads the module and runs the window with the words of the command line, from its opening to the
/// end of the program; gives the exit code. Without the module, says so on standard error.
int run(int argc, char *argv[]);

} // namespace WindowLoader

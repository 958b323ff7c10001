#pragma once

/// Keeps the memory of this process, and of all that it starts, from being written to a file or
/// handed to a collector of crashes: it holds keys. Called before anything else is done.
void switchOffCoreDumps();

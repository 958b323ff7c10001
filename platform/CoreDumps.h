#pragma once

/// Prevents that a crash writes the memory of this process, or of anything that it starts, to a
/// file or hands it to a collector of crashes: it holds keys. Called before anything else is done.
void switchOffCoreDumps();

#pragma once

/// Moves this process to a mount namespace of its own, once; its mounts end with it. Threads that
/// already run keep the old one. False when that isn't allowed.
bool takeOwnMounts();

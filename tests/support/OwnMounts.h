#pragma once

/// Gives this process mounts of its own, once, which nobody else sees and which go with it. Threads
/// that are there already keep the old ones. False when it may not have any.
bool takeOwnMounts();

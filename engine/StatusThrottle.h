#pragma once

#include <chrono>
#include <optional>

/// How often a cycle writes its live status while restic reports progress: at most about every
/// 0.7 seconds. One object serves all runs of a cycle.
class StatusThrottle
{
public:
    /// Whether it is time for a write; if so, the pause until the next one begins.
    bool takeTurn();

private:
    std::optional<std::chrono::steady_clock::time_point> m_lastTurn;
};

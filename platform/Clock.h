#pragma once

#include <QDateTime>

#include <chrono>

/// The one place that asks what time it is.
///
/// Rules that depend on time (throttles, intervals, ages) ask here, so that a test can set its own
/// clock and needn't sleep. It is the system's clock, unless a ScopedClock is alive.
class Clock
{
public:
    Clock() = default;
    virtual ~Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    Clock(Clock &&) = delete;
    Clock &operator=(Clock &&) = delete;

    /// The present moment, in UTC.
    [[nodiscard]] virtual QDateTime moment() const = 0;
    /// For lengths of time: never goes back, and goes on while the machine sleeps.
    [[nodiscard]] virtual std::chrono::steady_clock::time_point reading() const = 0;

    /// moment() of the current clock.
    static QDateTime now();
    /// reading() of the current clock.
    static std::chrono::steady_clock::time_point steady();
};

/// Replaces the current clock while this object lives. `clock` must outlive every use of it. Not to
/// be nested.
class ScopedClock
{
public:
    explicit ScopedClock(const Clock &clock);
    ~ScopedClock();
    ScopedClock(const ScopedClock &) = delete;
    ScopedClock &operator=(const ScopedClock &) = delete;
    ScopedClock(ScopedClock &&) = delete;
    ScopedClock &operator=(ScopedClock &&) = delete;
};

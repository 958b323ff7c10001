#pragma once

#include <QDateTime>

#include <chrono>

/// The one place that asks what time it is.
///
/// Rules that depend on time (throttles, intervals, ages) ask here, so that a test can hand in a
/// clock of its own and needs no sleeping. The system clock answers unless a ScopedClock lives.
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
    /// A reading that never goes back and counts the time asleep, for lengths of time.
    [[nodiscard]] virtual std::chrono::steady_clock::time_point reading() const = 0;

    /// moment() of the clock in force.
    static QDateTime now();
    /// reading() of the clock in force.
    static std::chrono::steady_clock::time_point steady();
};

/// Puts a clock in force for its own life; it must outlive every use of it. Not to be nested.
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

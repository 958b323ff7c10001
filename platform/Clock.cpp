#include "platform/Clock.h"

#include <atomic>

#include <ctime>

namespace {

class SystemClock final : public Clock
{
public:
    [[nodiscard]] QDateTime moment() const override { return QDateTime::currentDateTimeUtc(); }
    [[nodiscard]] std::chrono::steady_clock::time_point reading() const override
    {
#ifdef CLOCK_BOOTTIME
        static constexpr clockid_t clock = CLOCK_BOOTTIME;
#else
        // Where the other one is missing, this one goes on during sleep.
        static constexpr clockid_t clock = CLOCK_MONOTONIC;
#endif
        timespec time = {};
        ::clock_gettime(clock, &time);
        return std::chrono::steady_clock::time_point(std::chrono::seconds(time.tv_sec) +
                                                     std::chrono::nanoseconds(time.tv_nsec));
    }
};

const SystemClock systemClock;
std::atomic<const Clock *> clockInForce = &systemClock;

} // namespace

QDateTime Clock::now()
{
    return clockInForce.load()->moment();
}

std::chrono::steady_clock::time_point Clock::steady()
{
    return clockInForce.load()->reading();
}

ScopedClock::ScopedClock(const Clock &clock)
{
    clockInForce = &clock;
}

ScopedClock::~ScopedClock()
{
    clockInForce = &systemClock;
}

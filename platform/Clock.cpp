#include "platform/Clock.h"

#include <atomic>

namespace {

class SystemClock final : public Clock
{
public:
    [[nodiscard]] QDateTime moment() const override { return QDateTime::currentDateTimeUtc(); }
    [[nodiscard]] std::chrono::steady_clock::time_point reading() const override
    {
        return std::chrono::steady_clock::now();
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

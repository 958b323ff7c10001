#include "platform/linux/Patience.h"

Patience::Patience(std::chrono::milliseconds limit)
    : m_cancellable(g_cancellable_new())
    , m_limit(limit)
    , m_timer([this](const std::stop_token &stop) { cancelInTime(stop); })
{
}

void Patience::cancelInTime(const std::stop_token &stop)
{
    std::unique_lock lock(m_mutex);
    m_condition.wait_for(lock, stop, m_limit, [] { return false; });
    if (!stop.stop_requested()) {
        g_cancellable_cancel(m_cancellable.get());
    }
}

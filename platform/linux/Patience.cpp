#include "platform/linux/Patience.h"

Patience::Patience(std::optional<std::chrono::milliseconds> limit)
    : m_cancellable(g_cancellable_new())
{
    if (limit) {
        m_timer = std::jthread(
            [this, limit = *limit](const std::stop_token &stop) { endInTime(stop, limit); });
    }
}

void Patience::endInTime(const std::stop_token &stop, std::chrono::milliseconds limit)
{
    std::unique_lock lock(m_mutex);
    m_condition.wait_for(lock, stop, limit, [] { return false; });
    if (!stop.stop_requested()) {
        end();
    }
}

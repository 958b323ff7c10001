#pragma once

#include "platform/linux/GlibPointer.h"

#include <gio/gio.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

/// A limit of time for calls over D-Bus that may take long: cancels them when it has passed. All
/// calls that share it share the limit, which runs from its making.
class Patience
{
public:
    explicit Patience(std::chrono::milliseconds limit);

    [[nodiscard]] GCancellable *cancellable() const { return m_cancellable.get(); }

private:
    void cancelInTime(const std::stop_token &stop);

    GObjectPointer<GCancellable> m_cancellable;
    std::chrono::milliseconds m_limit;
    std::mutex m_mutex;
    std::condition_variable_any m_condition;
    std::jthread m_timer; // last: it uses all of the above
};

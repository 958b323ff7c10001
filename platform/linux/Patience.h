#pragma once

#include "platform/linux/GlibPointer.h"

#include <gio/gio.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

/// How long to wait for answers over D-Bus: cancels what waits by it when the time has passed. All
/// calls that share it share the limit, which runs from its making. May be ended from any thread.
class Patience
{
public:
    /// Without a limit only end() ends it.
    explicit Patience(std::optional<std::chrono::milliseconds> limit);

    [[nodiscard]] GCancellable *cancellable() const { return m_cancellable.get(); }

    /// Cancels at once what waits by it, and all that is asked later.
    void end() const { g_cancellable_cancel(m_cancellable.get()); }

private:
    void endInTime(const std::stop_token &stop, std::chrono::milliseconds limit);

    GObjectPointer<GCancellable> m_cancellable;
    std::mutex m_mutex;
    std::condition_variable_any m_condition;
    std::jthread m_timer; // last: it uses all of the above
};

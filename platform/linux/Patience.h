#pragma once

#include "platform/linux/GlibPointer.h"

#include <gio/gio.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

/// How long to wait for answers over D-Bus: cancels the calls that use it when the time has passed.
/// The time runs from the construction, for all calls that share the object. end() may be called
/// from any thread.
class Patience
{
public:
    /// Without a limit only end() cancels.
    explicit Patience(std::optional<std::chrono::milliseconds> limit);

    [[nodiscard]] GCancellable *cancellable() const { return m_cancellable.get(); }

    /// Cancels at once the calls that use it, and all later ones.
    void end() const { g_cancellable_cancel(m_cancellable.get()); }

private:
    void endInTime(const std::stop_token &stop, std::chrono::milliseconds limit);

    GObjectPointer<GCancellable> m_cancellable;
    std::mutex m_mutex;
    std::condition_variable_any m_condition;
    std::jthread m_timer; // last: it uses all of the above
};

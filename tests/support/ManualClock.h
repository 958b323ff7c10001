#pragma once

#include "platform/Clock.h"

#include <mutex>

/// A clock that stands still until a test moves it.
class ManualClock final : public Clock
{
public:
    explicit ManualClock(const QDateTime &moment = QDateTime::fromString(
                             QStringLiteral("2026-03-01T10:00:00Z"), Qt::ISODate))
        : m_moment(moment)
    {
    }

    [[nodiscard]] QDateTime moment() const override
    {
        const std::lock_guard lock(m_mutex);
        return m_moment;
    }
    [[nodiscard]] std::chrono::steady_clock::time_point reading() const override
    {
        const std::lock_guard lock(m_mutex);
        return std::chrono::steady_clock::time_point(m_steady);
    }

    /// Moves both readings.
    void advance(std::chrono::milliseconds time)
    {
        const std::lock_guard lock(m_mutex);
        m_moment = m_moment.addMSecs(time.count());
        m_steady += time;
    }

    /// Sets the date alone, as when the machine's clock is corrected.
    void set(const QDateTime &moment)
    {
        const std::lock_guard lock(m_mutex);
        m_moment = moment;
    }

private:
    mutable std::mutex m_mutex;
    QDateTime m_moment;
    std::chrono::nanoseconds m_steady{std::chrono::hours(1)};
};

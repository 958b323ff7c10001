#include "engine/StatusThrottle.h"

#include "platform/Clock.h"

bool StatusThrottle::takeTurn()
{
    static constexpr auto pause = std::chrono::milliseconds(700);
    const auto now = Clock::steady();
    if (m_lastTurn && now - *m_lastTurn <= pause) {
        return false;
    }
    m_lastTurn = now;
    return true;
}

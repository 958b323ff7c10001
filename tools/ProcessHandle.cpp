#include "tools/ProcessHandle.h"

ProcessHandle::ProcessHandle(StopPatience patience)
    : m_patience(patience)
{
}

void ProcessHandle::attach(const std::shared_ptr<ChildProcess> &child)
{
    const std::lock_guard lock(m_lock);
    m_process = child;
}

void ProcessHandle::release()
{
    {
        const std::lock_guard lock(m_lock);
        m_process.reset();
    }
    m_changed.notify_all();
}

void ProcessHandle::accompany(StopManner manner)
{
    const auto isOver = [this] { return !m_process; };
    std::unique_lock lock(m_lock);
    const std::shared_ptr<ChildProcess> child = m_process;
    m_changed.wait(lock, [&] { return isOver() || m_isCancelled; });
    if (isOver() ||
        (manner == StopManner::inTime && m_changed.wait_for(lock, m_patience.byItself, isOver))) {
        return;
    }
    lock.unlock();
    child->interrupt();
    lock.lock();
    if (m_changed.wait_for(lock, m_patience.interrupted, isOver)) {
        return;
    }
    lock.unlock();
    child->end();
    lock.lock();
    m_changed.wait(lock, isOver);
}

void ProcessHandle::terminate()
{
    {
        const std::lock_guard lock(m_lock);
        m_isCancelled = true;
    }
    m_changed.notify_all();
}

bool ProcessHandle::isCancelled() const
{
    const std::lock_guard lock(m_lock);
    return m_isCancelled;
}

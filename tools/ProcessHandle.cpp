#include "tools/ProcessHandle.h"

void ProcessHandle::attach(const std::shared_ptr<ChildProcess> &child)
{
    bool isCancelled = false;
    {
        const std::lock_guard lock(m_lock);
        m_process = child;
        isCancelled = m_isCancelled;
    }
    if (isCancelled) {
        child->interrupt();
    }
}

void ProcessHandle::terminate()
{
    std::shared_ptr<ChildProcess> process;
    {
        const std::lock_guard lock(m_lock);
        m_isCancelled = true;
        process = m_process;
    }
    if (process) {
        process->interrupt();
    }
}

bool ProcessHandle::isCancelled() const
{
    const std::lock_guard lock(m_lock);
    return m_isCancelled;
}

#pragma once

#include "tools/ChildProcess.h"

#include <memory>
#include <mutex>

/// What a run and its stop control share: the child that runs now, and whether a stop was asked
/// for.
///
/// One handle may serve several children in a row. It goes from not cancelled to cancelled, once
/// and for good: each further child is interrupted as soon as it is attached. Any thread may use
/// it.
class ProcessHandle
{
public:
    /// Takes the child that was just started in place of the one before.
    void attach(const std::shared_ptr<ChildProcess> &child);

    /// Asks the child, present or to come, to stop.
    void terminate();

    [[nodiscard]] bool isCancelled() const;

private:
    mutable std::mutex m_lock; ///< never held while a child is told to stop
    std::shared_ptr<ChildProcess> m_process;
    bool m_isCancelled = false;
};

#pragma once

#include "tools/ChildProcess.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

/// How a stop treats a child.
enum class StopManner {
    atOnce, ///< it is interrupted
    inTime, ///< it gets time to end by itself, and is interrupted after that
};

/// How long a stop waits.
struct StopPatience
{
    std::chrono::milliseconds byItself = std::chrono::seconds(10);    ///< for an end in time
    std::chrono::milliseconds interrupted = std::chrono::seconds(10); ///< until it ends the child
};

/// What a run and its stop control share: the child that runs now, and whether a stop was asked
/// for.
///
/// One handle may serve several children in a row. It goes from not cancelled to cancelled, once
/// and for good, and a stop concerns each further child as well. Any thread may use it. The stop is
/// carried out by the thread that runs the child: none of its own could fail to be made.
class ProcessHandle
{
public:
    explicit ProcessHandle(StopPatience patience = {});

    /// Takes the child that was just started, until release().
    void attach(const std::shared_ptr<ChildProcess> &child);

    /// Lets go of the child, which has ended, and all that it wrote was read.
    void release();

    /// Blocks until release(). Meanwhile carries out a stop: interrupts the child, and ends it with
    /// all that it has started when it goes on for too long.
    void accompany(StopManner manner);

    /// Asks the child, present or to come, to stop. Never blocks.
    void terminate();

    [[nodiscard]] bool isCancelled() const;

private:
    const StopPatience m_patience;
    mutable std::mutex m_lock; ///< never held while a child is told to stop
    std::condition_variable m_changed;
    std::shared_ptr<ChildProcess> m_process;
    bool m_isCancelled = false;
};

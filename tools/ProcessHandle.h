#pragma once

#include "tools/ChildProcess.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

/// How a stop treats a child.
enum class StopManner {
    atOnce, ///< it is interrupted
    inTime, ///< it gets time to end by itself, and is interrupted only then
};

/// How long a stop waits.
struct StopPatience
{
    std::chrono::milliseconds byItself = std::chrono::seconds(10);    ///< before it interrupts
    std::chrono::milliseconds interrupted = std::chrono::seconds(10); ///< before it kills
};

/// What a run shares with whoever may stop it: the child that runs now, and whether a stop was
/// asked for.
///
/// One handle may serve several children in a row. Once cancelled it stays so, and the stop applies
/// to each further child too. Any thread may use it. The thread that runs the child carries the
/// stop out, so that no thread has to be made for it, which could fail.
class ProcessHandle
{
public:
    explicit ProcessHandle(StopPatience patience = {});

    /// Takes the child that was just started, until release().
    void attach(const std::shared_ptr<ChildProcess> &child);

    /// Lets go of the child, when it has ended and all that it wrote has been read.
    void release();

    /// Blocks until release(). Meanwhile carries out a stop: interrupts the child and, when that
    /// takes too long, kills it with everything that it has started.
    void accompany(StopManner manner);

    /// Asks the present child and all later ones to stop. Never blocks.
    void terminate();

    [[nodiscard]] bool isCancelled() const;

private:
    const StopPatience m_patience;
    mutable std::mutex m_lock; ///< never held while a child gets a signal
    std::condition_variable m_changed;
    std::shared_ptr<ChildProcess> m_process;
    bool m_isCancelled = false;
};

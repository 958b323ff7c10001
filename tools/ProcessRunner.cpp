#include "tools/ProcessRunner.h"

#include "state/Texts.h"
#include "tools/GatheredOutput.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <latch>
#include <system_error>
#include <thread>
#include <utility>

#include <unistd.h>

namespace {

using Child = std::shared_ptr<ChildProcess>;

std::atomic<const ScopedProcessRunner::Runner *> replacement = nullptr;

thread_local ProcessHandle *handleOfSteps = nullptr;

ProcessResult notStarted(const QString &reason)
{
    return {.status = -1, .standardOutput = {}, .standardError = reason};
}

// Hands over every block until the end of the stream.
void readToEnd(int descriptor, const std::function<void(QByteArrayView)> &receive)
{
    std::array<char, 65536> buffer{};
    while (true) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count > 0) {
            receive(QByteArrayView(buffer.data(), count));
        } else if (count == 0 || errno != EINTR) {
            return;
        }
    }
}

/// Both streams of a child, each read on a thread of its own. The threads are made first: where
/// they can't be made, no child is started.
class Streams
{
public:
    explicit Streams(const LineReceiver &onLine)
        : m_onLine(onLine)
    {
    }
    ~Streams()
    {
        if (!m_child) {
            m_start.count_down();
        }
    }
    Streams(const Streams &) = delete;
    Streams &operator=(const Streams &) = delete;
    Streams(Streams &&) = delete;
    Streams &operator=(Streams &&) = delete;

    /// Makes the threads. Absent on success, otherwise the system's description of the failure.
    std::optional<QString> prepare()
    {
        try {
            m_outputReader = std::jthread([this] { readOutput(); });
            m_errorReader = std::jthread([this] { readError(); });
        } catch (const std::system_error &failure) {
            return qt_error_string(failure.code().value());
        }
        return std::nullopt;
    }

    /// Begins to read. `onEnd` is called when both streams and the child have ended.
    void read(const Child &child, std::function<void()> onEnd)
    {
        m_onEnd = std::move(onEnd);
        m_child = child;
        m_start.count_down();
    }

    /// What was written; to be called after `onEnd`.
    ProcessResult result(int status)
    {
        m_errorReader.join();
        if (m_output.isTooLong()) {
            return notStarted(Texts::tr("Risposta troppo lunga"));
        }
        return {
            .status = status, .standardOutput = m_output.text(), .standardError = m_error.text()};
    }

private:
    void readOutput()
    {
        m_start.wait();
        if (!m_child) {
            return;
        }
        if (!m_onLine) {
            readToEnd(m_child->standardOutput(),
                      [this](QByteArrayView block) { m_output.add(block); });
            return;
        }
        LineReader lines(m_onLine);
        readToEnd(m_child->standardOutput(), [&lines](QByteArrayView block) { lines.add(block); });
        lines.finish();
    }

    void readError()
    {
        m_start.wait();
        if (!m_child) {
            return;
        }
        readToEnd(m_child->standardError(), [this](QByteArrayView block) { m_error.add(block); });
        m_outputReader.join();
        m_child->awaitEnd();
        m_onEnd();
    }

    const LineReceiver &m_onLine;
    WholeOutput m_output;
    EndsOfOutput m_error;
    std::function<void()> m_onEnd;
    std::latch m_start{1};
    Child m_child; ///< none when the threads have nothing to read
    std::jthread m_outputReader;
    std::jthread m_errorReader;
};

ProcessResult runReally(const QString &path, const QStringList &arguments,
                        const ProcessOptions &options)
{
    Streams streams(options.onLine);
    if (const auto failure = streams.prepare()) {
        return notStarted(*failure);
    }
    const auto child = ChildProcess::start(path, arguments, options.env, options.input);
    if (!child) {
        return notStarted(child.error());
    }
    ProcessHandle unshared;
    ProcessHandle &handle = options.handle != nullptr ? *options.handle : unshared;
    handle.attach(*child);
    streams.read(*child, [&handle] { handle.release(); });
    handle.accompany(options.stop);
    return streams.result((*child)->wait());
}

ProcessResult runAnyhow(const QString &path, const QStringList &arguments,
                        const ProcessOptions &options)
{
    if (const ScopedProcessRunner::Runner *runner = replacement.load()) {
        return (*runner)(path, arguments, options);
    }
    return runReally(path, arguments, options);
}

} // namespace

ProcessResult runProcess(const QString &path, const QStringList &arguments,
                         const ProcessOptions &options)
{
    if (handleOfSteps == nullptr || options.handle != nullptr) {
        return runAnyhow(path, arguments, options);
    }
    if (handleOfSteps->isCancelled()) {
        return notStarted(Texts::tr("Interrotto"));
    }
    ProcessOptions step = options;
    step.handle = handleOfSteps;
    step.stop = StopManner::inTime;
    return runAnyhow(path, arguments, step);
}

StoppableSteps::StoppableSteps(ProcessHandle &handle)
{
    handleOfSteps = &handle;
}

StoppableSteps::~StoppableSteps()
{
    handleOfSteps = nullptr;
}

ScopedProcessRunner::ScopedProcessRunner(Runner runner)
    : m_runner(std::move(runner))
{
    replacement = &m_runner;
}

ScopedProcessRunner::~ScopedProcessRunner()
{
    replacement = nullptr;
}

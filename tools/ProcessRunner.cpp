#include "tools/ProcessRunner.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <thread>
#include <utility>

#include <unistd.h>

namespace {

std::atomic<const ScopedProcessRunner::Runner *> replacement = nullptr;

// Hands over every block that comes, until the end of the stream.
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

QByteArray readWhole(int descriptor)
{
    QByteArray whole;
    readToEnd(descriptor, [&whole](QByteArrayView block) { whole.append(block); });
    return whole;
}

void readLines(int descriptor, const LineReceiver &onLine)
{
    LineReader lines(onLine);
    readToEnd(descriptor, [&lines](QByteArrayView block) { lines.add(block); });
    lines.finish();
}

ProcessResult runReally(const QString &path, const QStringList &arguments,
                        const ProcessOptions &options)
{
    const auto started = ChildProcess::start(path, arguments, options.env, options.input);
    if (!started) {
        return {.status = -1, .standardOutput = {}, .standardError = started.error()};
    }
    const std::shared_ptr<ChildProcess> &child = *started;
    if (options.handle != nullptr) {
        options.handle->attach(child);
    }

    QByteArray output;
    QByteArray error;
    std::jthread outputReader([&] {
        if (options.onLine) {
            readLines(child->standardOutput(), options.onLine);
        } else {
            output = readWhole(child->standardOutput());
        }
    });
    std::jthread errorReader([&] { error = readWhole(child->standardError()); });
    const int status = child->wait();
    outputReader.join();
    errorReader.join();
    return {.status = status,
            .standardOutput = repairedText(output),
            .standardError = repairedText(error)};
}

} // namespace

ProcessResult runProcess(const QString &path, const QStringList &arguments,
                         const ProcessOptions &options)
{
    if (const ScopedProcessRunner::Runner *runner = replacement.load()) {
        return (*runner)(path, arguments, options);
    }
    return runReally(path, arguments, options);
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

// Times the --secret face as a whole process against a C program that only reads the pipe and
// prints. The two take turns, so that whatever else the machine does falls on both.
//
// usage: SecretBench ROUNDS VELLOMAR READ_PIPE
// Prints the medians in microseconds, the program's first, and their ratio.

#include "tools/FileDescriptor.h"
#include "tools/OneShotSecret.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <span>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Microseconds = std::chrono::duration<double, std::micro>;

const QString secret = QStringLiteral("abcdefghijkmnpqrstuvwxyz23456789");

std::optional<QByteArray> printedBy(char *program, const QByteArray &path)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, writing.get(), STDOUT_FILENO);
    std::array<char, 9> option{"--secret"};
    QByteArray place = path;
    const std::array<char *, 4> words{program, option.data(), place.data(), nullptr};
    pid_t pid = 0;
    const int failure = ::posix_spawn(&pid, program, &actions, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) {
        return std::nullopt;
    }
    writing.close();
    QByteArray printed;
    std::array<char, 2048> buffer{};
    ssize_t length = 0;
    while ((length = ::read(reading.get(), buffer.data(), buffer.size())) > 0) {
        printed.append(buffer.data(), length);
    }
    int status = 0;
    if (::waitpid(pid, &status, 0) != pid || status != 0) {
        return std::nullopt;
    }
    return printed;
}

/// From the start of the process to its end; absent when it didn't deliver.
std::optional<double> timed(char *program)
{
    const auto channel = OneShotSecret::create(secret);
    if (!channel) {
        return std::nullopt;
    }
    const QByteArray path = QFile::encodeName(channel->path());
    const auto start = std::chrono::steady_clock::now();
    const std::optional<QByteArray> printed = printedBy(program, path);
    const Microseconds taken = std::chrono::steady_clock::now() - start;
    if (printed != secret.toUtf8()) {
        return std::nullopt;
    }
    return taken.count();
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::span words(argv, static_cast<size_t>(argc));
    if (words.size() != 4) {
        static_cast<void>(std::fputs("usage: SecretBench ROUNDS VELLOMAR READ_PIPE\n", stderr));
        return EXIT_FAILURE;
    }
    const int rounds = QByteArray(words[1]).toInt();
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < rounds; ++round) {
        const std::optional<double> our = timed(words[2]);
        const std::optional<double> their = timed(words[3]);
        if (!our || !their) {
            static_cast<void>(std::fputs("a secret wasn't delivered\n", stderr));
            return EXIT_FAILURE;
        }
        ours.push_back(*our);
        theirs.push_back(*their);
    }
    if (ours.empty()) {
        static_cast<void>(std::fputs("no rounds\n", stderr));
        return EXIT_FAILURE;
    }
    std::printf("%.0f %.0f %.2f\n", median(ours), median(theirs), median(ours) / median(theirs));
    return EXIT_SUCCESS;
}

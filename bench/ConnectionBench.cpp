// Connects servers and reads the state of the connections, for bench/connections.
//
// usage: ConnectionBench connect HOST PORT USER KEY_FILE   connects an SFTP server
//        ConnectionBench remotes COUNT                     reads the connections so many times
// The second prints the seconds that all readings after the first took together.

#include "state/AppConfig.h"
#include "tools/OneShotSecret.h"
#include "tools/Rclone.h"

#include <QFile>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

namespace {

int connectServer(std::span<char *> words)
{
    AppConfig config;
    config.serverKind = ServerKind::Sftp;
    config.serverHost = QString::fromLocal8Bit(words[2]);
    config.serverPort = QString::fromLocal8Bit(words[3]);
    config.serverUser = QString::fromLocal8Bit(words[4]);
    config.serverKeyFile = QString::fromLocal8Bit(words[5]);
    const std::optional<QString> failure = Rclone::connectServer(config, {});
    if (failure) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(*failure));
    }
    return failure ? EXIT_FAILURE : EXIT_SUCCESS;
}

int readConnections(int count)
{
    if (!Rclone::remotes().contains(Rclone::serverRemote)) {
        return EXIT_FAILURE;
    }
    const auto begin = std::chrono::steady_clock::now();
    for (int reading = 0; reading < count; ++reading) {
        if (Rclone::isConfigured() || Rclone::remotes().isEmpty()) {
            return EXIT_FAILURE;
        }
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    std::printf("%.6f\n", taken.count());
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::span words(argv, static_cast<size_t>(argc));
    // rclone asks the process that started it for the configuration's key.
    if (words.size() == 3 && words[1] == std::string_view("--secret")) {
        OneShotSecret::deliver(QFile::decodeName(words[2]));
    }
    if (words.size() == 6 && words[1] == std::string_view("connect")) {
        return connectServer(words);
    }
    if (words.size() == 3 && words[1] == std::string_view("remotes")) {
        return readConnections(std::atoi(words[2]));
    }
    return EXIT_FAILURE;
}

#include "tools/OneShotSecret.h"
#include "tools/Rclone.h"

#include <QFile>

#include <array>
#include <cstdlib>
#include <span>
#include <string_view>

#include <unistd.h>

// Stores a remote whose password comes on standard input. Serves rclone with the configuration's
// key as the program itself does, since rclone asks the process that started it.
int main(int argc, char *argv[])
{
    const std::span words(argv, static_cast<size_t>(argc));
    if (words.size() == 3 && words[1] == std::string_view("--secret")) {
        OneShotSecret::deliver(QFile::decodeName(words[2]));
    }
    std::array<char, 1024> password{};
    const ssize_t length = ::read(STDIN_FILENO, password.data(), password.size());
    if (length < 1) {
        return EXIT_FAILURE;
    }
    const bool stored =
        Rclone::store(Rclone::serverRemote,
                      {{QStringLiteral("type"), QStringLiteral("webdav")},
                       {QStringLiteral("pass"), QString::fromUtf8(password.data(), length)}});
    return stored ? EXIT_SUCCESS : EXIT_FAILURE;
}

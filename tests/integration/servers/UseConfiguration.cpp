#include "tools/OneShotSecret.h"
#include "tools/Rclone.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

#include <poll.h>
#include <unistd.h>

// Another process that uses rclone's configuration, for tests that read while it stores or kill it:
//
//   store NAME          adds a remote
//   disconnect-server   removes the private server's
//   read                until standard input ends, writes the names of the remotes at each
//                       change of what it reads
//
// Serves rclone with the configuration's key as the program itself does, since rclone asks the
// process that started it.
namespace {

bool inputHasEnded()
{
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    return ::poll(&input, 1, 1) != 0; // a millisecond's rest at each look
}

int read()
{
    QString before;
    while (!inputHasEnded()) {
        QStringList names;
        const Rclone::Remotes remotes = Rclone::remotes();
        for (auto remote = remotes.cbegin(); remote != remotes.cend(); ++remote) {
            const bool isWhole =
                remote.value().value(QLatin1String("last")).toString() == QLatin1String("setting");
            names.append(isWhole ? remote.key() : QStringLiteral("half:") + remote.key());
        }
        const QString now = names.isEmpty() ? QStringLiteral("none") : names.join(u' ');
        if (now != before) {
            std::puts(now.toUtf8().constData());
            std::fflush(stdout);
        }
        before = now;
    }
    return EXIT_SUCCESS;
}

int store(const char *name)
{
    const bool isStored =
        Rclone::store(QString::fromUtf8(name),
                      {{QStringLiteral("type"), QStringLiteral("webdav")},
                       {QStringLiteral("pass"), QStringLiteral("PasswordOfTheRemote98765")},
                       {QStringLiteral("last"), QStringLiteral("setting")}});
    return isStored ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[])
{
    const std::span words(argv, static_cast<size_t>(argc));
    if (words.size() == 3 && words[1] == std::string_view("--secret")) {
        OneShotSecret::deliver(QFile::decodeName(words[2]));
    }
    if (words.size() == 3 && words[1] == std::string_view("store")) {
        return store(words[2]);
    }
    if (words.size() == 2 && words[1] == std::string_view("read")) {
        return read();
    }
    if (words.size() == 2 && words[1] == std::string_view("disconnect-server")) {
        Rclone::disconnectServer();
        return EXIT_SUCCESS;
    }
    return EXIT_FAILURE;
}

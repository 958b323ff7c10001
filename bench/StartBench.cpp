// Times the start of the model, with a private keyring.
//
// usage: StartBench [connected]
// Prints the milliseconds for which its constructor holds the window's thread, and those until the
// keyring has answered and all else is under way: with no remote place connected, or with both.

#include "model/AppModel.h"
#include "model/Background.h"
#include "state/Keychain.h"
#include "tests/support/KeyringSession.h"
#include "tests/support/PlainDesktop.h"
#include "tools/OneShotSecret.h"
#include "tools/Rclone.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <string_view>

int main(int argc, char *argv[])
{
    // rclone asks the executable that started it for its key.
    if (argc == 3 && std::string_view(argv[1]) == "--secret") {
        OneShotSecret::deliver(QFile::decodeName(argv[2]));
    }
    const std::string_view word = argc > 1 ? argv[1] : "";
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
        qunsetenv(name);
    }
    const KeyringSession session;
    const QCoreApplication application(argc, argv);
    // A first start makes files that later ones find.
    const bool isKeyThere = Keychain::loadOrCreate(Keychain::repositoryKey).has_value();
    bool isConnected = true;
    if (!word.empty()) {
        isConnected =
            Rclone::store(Rclone::driveRemote, {{QStringLiteral("type"), QStringLiteral("drive")},
                                                {QStringLiteral("token"), QStringLiteral("{}")}}) &&
            Rclone::store(Rclone::serverRemote, {{QStringLiteral("type"), QStringLiteral("alias")},
                                                 {QStringLiteral("remote"), home.path()}});
    }
    if (!session.isRunning() || !isKeyThere || !isConnected) {
        static_cast<void>(std::fputs("the home couldn't be made\n", stderr));
        return EXIT_FAILURE;
    }
    QElapsedTimer timer;
    timer.start();
    const AppModel model(World::real(std::make_shared<PlainDesktop>()));
    const qint64 held = timer.nsecsElapsed();
    while (model.isStarting()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    std::printf("%.1f %.1f\n", static_cast<double>(held) / 1e6,
                static_cast<double>(timer.nsecsElapsed()) / 1e6);
    Background::waitForAll();
    return EXIT_SUCCESS;
}

#include "engine/Headless.h"
#include "tools/OneShotSecret.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string_view>

// Every test process gets an empty home of its own, and no session bus, no keyring and no settings
// of whoever runs it.
int main(int argc, char *argv[])
{
    // rclone asks the executable that started it for its key, and in a test that is this one.
    if (argc == 3 && std::string_view(argv[1]) == "--secret") {
        OneShotSecret::deliver(QFile::decodeName(argv[2]));
    }
    // The window starts its own executable once more for a backup; the home is then its parent's.
    if (argc == 3 && std::string_view(argv[1]) == "--backup" &&
        std::string_view(argv[2]) == "--manual") {
        Headless::run(true);
    }
    const QTemporaryDir home;
    if (!home.isValid()) {
        std::fputs("no temporary home could be made\n", stderr);
        return 1;
    }
    qputenv("HOME", home.path().toUtf8());
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                             "XDG_RUNTIME_DIR", "DISPLAY", "WAYLAND_DISPLAY"}) {
        qunsetenv(name);
    }
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}

#include "ui/shell/SystemSettings.h"

#include <array>

namespace {

struct Settings
{
    QLatin1String desktop;
    QLatin1String program;
    QLatin1String page; ///< empty for the program's first page
};

// In the order in which they are tried.
constexpr std::array known{
    Settings{QLatin1String("GNOME"), QLatin1String("gnome-control-center"),
             QLatin1String("applications")},
    Settings{QLatin1String("Unity"), QLatin1String("gnome-control-center"),
             QLatin1String("applications")},
    Settings{QLatin1String("KDE"), QLatin1String("systemsettings"), QLatin1String("kcm_flatpak")},
    Settings{QLatin1String("KDE"), QLatin1String("systemsettings5"), QLatin1String("kcm_flatpak")},
    Settings{QLatin1String("X-Cinnamon"), QLatin1String("cinnamon-settings"), QLatin1String()},
    Settings{QLatin1String("MATE"), QLatin1String("mate-control-center"), QLatin1String()},
    Settings{QLatin1String("XFCE"), QLatin1String("xfce4-settings-manager"), QLatin1String()},
    Settings{QLatin1String("LXQt"), QLatin1String("lxqt-config"), QLatin1String()},
};

} // namespace

QStringList SystemSettings::privacyCommand(const QString &desktops, const Finder &find)
{
    for (const QString &desktop : desktops.split(u':', Qt::SkipEmptyParts)) {
        for (const Settings &settings : known) {
            if (desktop.compare(settings.desktop, Qt::CaseInsensitive) != 0) {
                continue;
            }
            const QString program = find(settings.program);
            if (program.isEmpty()) {
                continue;
            }
            QStringList command{program};
            if (!settings.page.isEmpty()) {
                command.append(settings.page);
            }
            return command;
        }
    }
    return {};
}

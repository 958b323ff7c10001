#include "tools/Restic.h"

#include "state/Localized.h"
#include "tools/Rclone.h"
#include "tools/Tools.h"

#include <QFileInfo>

bool Restic::isAvailable() const
{
    switch (dest) {
    case DestinationID::local:
        if (repositoryOverride) {
            return QFileInfo::exists(*repositoryOverride);
        }
        return !config.localFolder.isEmpty() && QFileInfo::exists(config.localFolder);
    case DestinationID::drive:
        return Rclone::isConfigured();
    case DestinationID::server:
        return Rclone::remotes().contains(Rclone::serverRemote);
    }
    Q_UNREACHABLE();
}

QString Restic::unavailableMessage() const
{
    switch (dest) {
    case DestinationID::local:
        return localized("Disco non collegato");
    case DestinationID::drive:
        return localized("Google Drive non collegato");
    case DestinationID::server:
        return localized("Server non collegato");
    }
    Q_UNREACHABLE();
}

ProcessResult Restic::run(const QStringList &arguments, ProcessHandle *handle,
                          const LineReceiver &onLine) const
{
    const std::optional<QString> restic = Tools::find(QStringLiteral("restic"));
    if (!restic) {
        return {
            .status = -1, .standardOutput = {}, .standardError = localized("restic non trovato")};
    }
    ChildProcess::Environment environment{
        {QStringLiteral("RESTIC_REPOSITORY"), repositoryOverride.value_or(config.repository(dest))},
        {QStringLiteral("PATH"),
         QFileInfo(*restic).path() +
             QLatin1String(":/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin")}};

    QStringList words = arguments;
    std::optional<Rclone::ConfigEnvironment> rcloneEnvironment; // lives until restic has ended
    const std::optional<QString> rclone =
        dest == DestinationID::local ? std::nullopt : Tools::find(QStringLiteral("rclone"));
    if (rclone) {
        words = QStringList{QStringLiteral("-o"), QLatin1String("rclone.program=") + *rclone} +
                arguments;
        Rclone::encrypted();
        rcloneEnvironment.emplace();
        environment.insert(rcloneEnvironment->variables());
    }
    return runProcess(*restic, words,
                      {.env = environment, .input = password, .handle = handle, .onLine = onLine});
}

tl::expected<void, ResticError> Restic::prepare() const
{
    const ProcessResult opened = run({QStringLiteral("cat"), QStringLiteral("config")});
    if (opened.status == ResticExit::noRepository) {
        const ProcessResult made = run({QStringLiteral("init")});
        if (made.status != 0) {
            return tl::unexpected(describe(made));
        }
        return {};
    }
    if (opened.status != 0) {
        return tl::unexpected(describe(opened));
    }
    // Clears a lock that a killed run left; one in use is left alone by restic.
    static_cast<void>(run({QStringLiteral("unlock")}));
    return {};
}

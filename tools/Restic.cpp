#include "tools/Restic.h"

#include "state/LocalDisk.h"
#include "state/Localized.h"
#include "tools/Rclone.h"
#include "tools/Tools.h"

#include <QFileInfo>

#include <algorithm>

namespace {

// restic takes the program for a line of words, parted at blanks and backslashes and joined by
// quotes of either kind, and the whole option for a line of comma-separated values. A path without
// any of these characters stands as it is.
QString programOption(const QString &program)
{
    const bool isOneWord = std::none_of(program.cbegin(), program.cend(), [](QChar character) {
        return character.isSpace() || character == u'\\' || character == u'"' || character == u'\'';
    });
    const QChar quote = program.contains(u'\'') ? u'"' : u'\'';
    QString option =
        QLatin1String("rclone.program=") + (isOneWord ? program : QString(quote + program + quote));
    if (option.contains(u'"') || option.contains(u',')) {
        option = u'"' + option.replace(u'"', QLatin1String("\"\"")) + u'"';
    }
    return option;
}

// In the words of programOption nothing can hold both kinds of quotes.
bool hasBothQuotes(const QString &program)
{
    return program.contains(u'"') && program.contains(u'\'');
}

} // namespace

bool Restic::isAvailable() const
{
    switch (dest) {
    case DestinationID::local:
        if (repositoryOverride) {
            return QFileInfo::exists(*repositoryOverride);
        }
        return !config.localFolder.isEmpty() && QFileInfo::exists(config.localFolder) &&
               !LocalDisk::isAway(config.repository(dest));
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
        QString program = *rclone;
        if (hasBothQuotes(program)) {
            const QFileInfo file(program);
            environment[QStringLiteral("PATH")].prepend(file.path() + u':');
            program = file.fileName(); // restic then looks for it there
        }
        words = QStringList{QStringLiteral("-o"), programOption(program)} + arguments;
        static_cast<void>(Rclone::encrypted());
        rcloneEnvironment.emplace();
        environment.insert(rcloneEnvironment->variables());
    }
    return runProcess(*restic, words,
                      {.env = environment, .input = password, .handle = handle, .onLine = onLine});
}

tl::expected<void, ResticError> Restic::prepare() const
{
    const QStringList open{QStringLiteral("cat"), QStringLiteral("config")};
    ProcessResult opened = run(open);
    if (opened.status == ResticExit::repositoryLocked) {
        // A check or a prune that was killed leaves a lock that shuts everybody out.
        unlock();
        opened = run(open);
    }
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
    unlock();
    return {};
}

void Restic::unlock() const
{
    static_cast<void>(run({QStringLiteral("unlock")}));
}

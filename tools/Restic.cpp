#include "tools/Restic.h"

#include "state/LocalDisk.h"
#include "state/Paths.h"
#include "state/Texts.h"
#include "tools/Rclone.h"
#include "tools/Tools.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>

namespace {

// restic splits the program at blanks and backslashes, except within quotes of either kind, and
// reads the whole option as a line of comma-separated values. A path without any of these
// characters needs no quotes.
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

// programOption can't quote such a path.
bool hasBothQuotes(const QString &program)
{
    return program.contains(u'"') && program.contains(u'\'');
}

/// Whether a path, or a part of it, is something other than a folder.
bool isBehindAFile(const QString &path)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(path).constData(), &info) == 0) {
        return !S_ISDIR(info.st_mode);
    }
    return errno == ENOTDIR || errno == ELOOP;
}

} // namespace

bool Restic::isAvailable() const
{
    switch (dest) {
    case DestinationID::Local:
        if (repositoryOverride) {
            return QFileInfo::exists(*repositoryOverride);
        }
        return !config.localFolder.isEmpty() && QFileInfo::exists(config.localFolder) &&
               !LocalDisk::isAway(config.repository(dest));
    case DestinationID::Drive:
        return Rclone::isConfigured();
    case DestinationID::Server:
        return Rclone::remotes().contains(Rclone::serverRemote);
    }
    Q_UNREACHABLE();
}

QString Restic::unavailableMessage() const
{
    switch (dest) {
    case DestinationID::Local:
        return Texts::tr("Disco non collegato");
    case DestinationID::Drive:
        return Texts::tr("Google Drive non collegato");
    case DestinationID::Server:
        return Texts::tr("Server non collegato");
    }
    Q_UNREACHABLE();
}

ProcessResult Restic::run(const QStringList &arguments, ProcessHandle *handle,
                          const LineReceiver &onLine) const
{
    const std::optional<QString> restic = Tools::find(QStringLiteral("restic"));
    if (!restic) {
        return {
            .status = -1, .standardOutput = {}, .standardError = Texts::tr("restic non trovato")};
    }
    const QString repository = repositoryOverride.value_or(config.repository(dest));
    if (dest == DestinationID::Local && isBehindAFile(repository)) {
        // restic would keep trying for a quarter of an hour.
        return {.status = -1,
                .standardOutput = {},
                .standardError = Texts::tr("Il backup non può stare in %1: non è una cartella")
                                     .arg(Paths::abbreviatedHome(repository))};
    }
    ChildProcess::Environment environment{
        {QStringLiteral("RESTIC_REPOSITORY"), repository},
        {QStringLiteral("PATH"),
         QFileInfo(*restic).path() +
             QLatin1String(":/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin")}};

    QStringList words = arguments;
    std::optional<Rclone::ConfigEnvironment> rcloneEnvironment; // lives until restic has ended
    const std::optional<QString> rclone =
        dest == DestinationID::Local ? std::nullopt : Tools::find(QStringLiteral("rclone"));
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

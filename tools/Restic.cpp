#include "tools/Restic.h"

#include "state/JSONFile.h"
#include "state/LocalDisk.h"
#include "state/Paths.h"
#include "state/Texts.h"
#include "tools/JSONValues.h"
#include "tools/Rclone.h"
#include "tools/RepositoryFiles.h"
#include "tools/ResticPattern.h"
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

/// The path of something in a folder.
QString insideOf(const QString &folder, const QString &name)
{
    return folder.endsWith(u'/') ? folder + name : QString(folder + u'/' + name);
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

tl::expected<void, ResticError> Restic::prepare() const
{
    const QStringList open{QStringLiteral("cat"), QStringLiteral("config")};
    ProcessResult opened = run(open);
    if (opened.status == ResticExit::repositoryLocked) {
        // A killed check or prune leaves a lock that keeps everybody out; unlock removes it. A lock
        // that stays is in use, perhaps by the restic of a killed run, which soon ends.
        unlock();
        const QString patience = QString::number(lockPatience.count()) + u's';
        opened = run(open + QStringList{QStringLiteral("--retry-lock"), patience});
    }
    if (opened.status == ResticExit::noRepository) {
        return make();
    }
    if (opened.status != 0) {
        return tl::unexpected(describe(opened));
    }
    unlock();
    return {};
}

bool Restic::refusesKey() const
{
    return run({QStringLiteral("cat"), QStringLiteral("config")}).status ==
           ResticExit::wrongPassword;
}

tl::expected<void, ResticError> Restic::make() const
{
    const QStringList init{QStringLiteral("init")};
    ProcessResult made = run(init);
    if (made.status != 0 && made.standardError.contains(QLatin1String("already contains"))) {
        // The config file is missing, but other files of a repository are there.
        const QString repository = repositoryOverride.value_or(config.repository(dest));
        const auto remains = RepositoryFiles::list(repository);
        if (remains && !std::all_of(remains->cbegin(), remains->cend(), RepositoryFiles::isKey)) {
            return tl::unexpected(ResticError{
                Texts::tr("Nella destinazione manca il file «config» del backup. I dati ci sono "
                          "ancora e non sono stati toccati.")});
        }
        // Keys alone open nothing: the making was interrupted before the config file was written.
        for (const QString &key : remains.value_or(QStringList())) {
            RepositoryFiles::remove(repository, key);
        }
        made = run(init);
    }
    if (made.status != 0) {
        return tl::unexpected(describe(made));
    }
    return {};
}

void Restic::unlock() const
{
    static_cast<void>(run({QStringLiteral("unlock")}));
}

tl::expected<QList<Snap>, ResticError> Restic::snapshots() const
{
    const ProcessResult result = run({QStringLiteral("snapshots"), QStringLiteral("--json")});
    if (result.status == ResticExit::noRepository) {
        return QList<Snap>();
    }
    const auto snaps = Snap::listFrom(result.standardOutput);
    if (result.status != 0 || !snaps) {
        return tl::unexpected(describe(result));
    }
    return *snaps;
}

std::optional<qint64> Restic::repositorySize() const
{
    const ProcessResult result = run({QStringLiteral("stats"), QStringLiteral("--json"),
                                      QStringLiteral("--mode"), QStringLiteral("raw-data")});
    const auto document = JSONFile::decode(result.standardOutput.toUtf8());
    if (result.status != 0 || !document || !document->isObject()) {
        return std::nullopt;
    }
    return int64(document->object(), QLatin1String("total_size"));
}

tl::expected<QList<Node>, ResticError> Restic::list(const QString &snapshot,
                                                    const QString &path) const
{
    const ProcessResult result =
        run({QStringLiteral("ls"), QStringLiteral("--json"), snapshot, path});
    if (result.status != 0) {
        return tl::unexpected(describe(result));
    }
    return Node::listedIn(path, result.standardOutput);
}

tl::expected<QList<Node>, ResticError> Restic::find(const QString &snapshot,
                                                    const QString &term) const
{
    const ProcessResult result =
        run({QStringLiteral("find"), QStringLiteral("--json"), QStringLiteral("-i"),
             QStringLiteral("--snapshot"), snapshot, QString(u'*' + escapedPattern(term) + u'*')});
    const auto nodes = Node::foundIn(result.standardOutput);
    if (result.status != 0 || !nodes) {
        return tl::unexpected(describe(result));
    }
    return *nodes;
}

QStringList Restic::restoreArguments(const QString &snapshot, const Node &node,
                                     const std::optional<QString> &target) const
{
    const QString restore = QStringLiteral("restore");
    const QString json = QStringLiteral("--json");
    const QString into = QStringLiteral("--target");
    if (node.isDir) {
        return {restore, snapshot + u':' + node.path, into,
                target ? insideOf(*target, node.name) : node.path, json};
    }
    const QString parent = QFileInfo(node.path).path();
    return {restore,
            snapshot + u':' + parent,
            QStringLiteral("--include"),
            QString(u'/' + escapedPattern(node.name)),
            into,
            target.value_or(parent),
            json};
}

ResticError Restic::describe(const ProcessResult &result)
{
    return ResticError::of(result);
}

#include "ui/prepared/PreparedStates.h"

#include "platform/Clock.h"
#include "state/Paths.h"

#include <QMap>

#include <functional>
#include <optional>

namespace {

constexpr qint64 secondsOfHour = 3600;
constexpr qint64 gigabyte = qint64{1000} * 1000 * 1000;

RunRecord record(double hoursAgo, DestinationID destination, Outcome outcome = Outcome::Ok)
{
    RunRecord made;
    made.id = QUuid::createUuid();
    made.date = Clock::now().addSecs(static_cast<qint64>(-hoursAgo * secondsOfHour));
    made.destination = destination;
    made.outcome = outcome;
    made.message = QStringLiteral("128 file nuovi, 12 modificati, 340 MB salvati");
    made.duration = 95;
    return made;
}

RunRecord check(double hoursAgo, DestinationID destination, Outcome outcome = Outcome::Ok)
{
    RunRecord made = record(hoursAgo, destination, outcome);
    made.kind = QStringLiteral("check");
    made.message = QStringLiteral("Verifica completata");
    return made;
}

/// A repository with a version in each of the last working hours, and older ones.
RepoInfo repository(int versions)
{
    RepoInfo info;
    for (int i = 0; i < versions; ++i) {
        const qint64 hours = i < 9 ? i : qint64{24} * (i - 8);
        info.snapshots.append(
            {.id = QString::number(i, 16).rightJustified(64, u'0'),
             .shortID = QString::number(i, 16).rightJustified(8, u'0'),
             .date = Clock::now().addSecs(-hours * secondsOfHour - qint64{12} * 60),
             .paths = {Paths::home()},
             .host = Paths::hostname()});
    }
    info.size = gigabyte * 214;
    return info;
}

RepoInfo unreadable(const QString &error)
{
    RepoInfo info;
    info.error = error;
    return info;
}

AppConfig ready()
{
    AppConfig config;
    config.localEnabled = true;
    config.localFolder = QStringLiteral("/Volumes/Archivio");
    config.driveEnabled = true;
    config.keySaved = true;
    return config;
}

RunStatus running()
{
    RunStatus status;
    status.startedAt = Clock::now().addSecs(-240);
    status.destination = DestinationID::Drive;
    status.phase = QStringLiteral("Copia dei file");
    status.percent = 0.424;
    status.filesDone = 48213;
    status.totalFiles = 113708;
    status.bytesDone = gigabyte * 31;
    status.totalBytes = gigabyte * 73;
    status.secondsRemaining = 372;
    status.currentFile = Paths::home() + QLatin1String("/Foto/2026/Estate/IMG_4211.heic");
    return status;
}

Disks::Volume disk(qint64 freeGigabytes, qint64 totalGigabytes)
{
    return {.free = freeGigabytes * gigabyte, .total = totalGigabytes * gigabyte};
}

/// One that is connected, and reports its room.
Connection account(qint64 usedGigabytes, qint64 totalGigabytes)
{
    Connection made;
    made.connected = true;
    made.quota =
        Rclone::Quota{.used = usedGigabytes * gigabyte, .total = totalGigabytes * gigabyte};
    return made;
}

PreparedState fresh()
{
    PreparedState state;
    state.key = QStringLiteral("h7Kp2mWxR9tQvZ4nYcBd8sGfJ3uLeA6T");
    return state;
}

PreparedState waiting()
{
    PreparedState state = fresh();
    state.config = ready();
    state.drive = account(31, 200);
    state.localPlace.volume = disk(700, 2000);
    state.repos = {{DestinationID::Local, {}}, {DestinationID::Drive, {}}};
    return state;
}

PreparedState well()
{
    PreparedState state = waiting();
    state.config.serverEnabled = true;
    state.server = account(800, 4000);
    state.history = {record(0.2, DestinationID::Server), record(0.3, DestinationID::Drive),
                     record(0.4, DestinationID::Local), check(50, DestinationID::Local)};
    state.repos = {{DestinationID::Local, repository(41)},
                   {DestinationID::Drive, repository(18)},
                   {DestinationID::Server, repository(1)}};
    return state;
}

PreparedState kit()
{
    PreparedState state = waiting();
    state.config.keySaved = false;
    return state;
}

PreparedState launching()
{
    PreparedState state = well();
    state.launching = true;
    return state;
}

PreparedState runningNow()
{
    PreparedState state = well();
    state.status = running();
    return state;
}

PreparedState scanning()
{
    PreparedState state = runningNow();
    state.status->phase = QStringLiteral("Analisi dei file");
    state.status->percent = 0;
    state.status->totalFiles = 0;
    state.status->currentFile = std::nullopt;
    return state;
}

PreparedState single()
{
    PreparedState state = well();
    state.config.driveEnabled = false;
    state.config.serverEnabled = false;
    state.config.localFolder = Paths::home();
    state.localPlace.isBesideHome = true;
    state.config.keepDays = -1;
    state.repos = {{DestinationID::Local, repository(1)}};
    return state;
}

PreparedState access()
{
    PreparedState state = well();
    state.fullDiskAccess = false;
    return state;
}

PreparedState stale()
{
    PreparedState state = well();
    state.history = {record(80, DestinationID::Drive), record(81, DestinationID::Local)};
    return state;
}

PreparedState staleRunning()
{
    PreparedState state = stale();
    state.status = running();
    return state;
}

PreparedState failed()
{
    PreparedState state = well();
    RunRecord failure = record(1, DestinationID::Drive, Outcome::Failed);
    failure.message = QStringLiteral("Connessione interrotta");
    RunRecord verification = check(2, DestinationID::Local, Outcome::Failed);
    verification.message = QStringLiteral("pack 3f2a1b0c: ciphertext verification failed");
    state.history = {failure, verification, record(30, DestinationID::Local)};
    state.repos[DestinationID::Server] =
        unreadable(QStringLiteral("Fatal: unable to open repository: connection refused"));
    return state;
}

PreparedState keyError()
{
    PreparedState state;
    state.keyError = QStringLiteral("Il portachiavi è bloccato (errore 3).");
    return state;
}

PreparedState starting()
{
    PreparedState state = well();
    state.starting = true;
    state.repos.clear();
    return state;
}

PreparedState support()
{
    PreparedState state = well();
    state.supportFault = QStringLiteral("permesso negato");
    return state;
}

PreparedState longTexts()
{
    PreparedState state = runningNow();
    state.status->phase = QStringLiteral("Copia <b>dei</b> file ").repeated(20);
    state.status->currentFile =
        Paths::home() + u'/' + QStringLiteral("<img src=x>&amp; \"molto lungo\"/").repeated(140);
    state.status->filesDone = 123456789012;
    state.status->totalFiles = 987654321098;
    state.status->bytesDone = gigabyte * 123456;
    state.status->totalBytes = gigabyte * 987654;
    state.status->secondsRemaining = qint64{3600} * 999;
    RunRecord verification = check(2, DestinationID::Local, Outcome::Failed);
    verification.message = QStringLiteral("<i>errore</i> senza spazi ").repeated(30);
    state.history.prepend(verification);
    state.repos[DestinationID::Server] =
        unreadable(QStringLiteral("<a href=\"x\">Fatal</a>: a very long error ").repeated(20));
    state.keyError =
        QStringLiteral("<b>Errore</b> del portachiavi che non finisce mai. ").repeated(8);
    state.kitNotice = Notice{QStringLiteral("Kit <u>salvato</u> in ~/") +
                                 QStringLiteral("cartella/").repeated(40),
                             true};
    return state;
}

// The sources.

PreparedState unmeasured()
{
    PreparedState state = fresh();
    state.config.sources = {Paths::home(), Paths::home() + QLatin1String("/Foto"),
                            QStringLiteral("/srv/archivio")};
    return state;
}

PreparedState noSources()
{
    PreparedState state = fresh();
    state.config.sources.clear();
    state.config.excludes.clear();
    return state;
}

PreparedState partlyMeasured()
{
    PreparedState state = unmeasured();
    state.sourceSizes.insert(Paths::home(), gigabyte * 214);
    return state;
}

PreparedState measured()
{
    PreparedState state = partlyMeasured();
    state.sourceSizes.insert(state.config.sources.at(1), gigabyte * 48);
    state.sourceSizes.insert(state.config.sources.at(2), 4200);
    return state;
}

PreparedState measuring()
{
    PreparedState state = unmeasured();
    state.measuring = gigabyte * 37;
    return state;
}

PreparedState wrongExclude()
{
    PreparedState state = measured();
    state.config.excludes.append(QStringLiteral("foto [2019"));
    state.typedExclude = QStringLiteral("*.[jp");
    return state;
}

PreparedState refusedDrop()
{
    PreparedState state = measured();
    state.dropped = Paths::home() + QLatin1String("/Lettera alla nonna.odt");
    return state;
}

PreparedState many()
{
    PreparedState state = measured();
    for (int i = 0; i < 40; ++i) {
        const QString folder =
            Paths::home() +
            QStringLiteral("/Una cartella dal nome <b>molto</b> lungo").repeated(i % 5 + 1) +
            QString::number(i);
        state.config.sources.append(folder);
        state.sourceSizes.insert(folder, gigabyte * i);
        state.config.excludes.append(QStringLiteral("*.parte%1").arg(i));
    }
    return state;
}

// The destinations.

/// A disk alone, with nothing on it yet.
PreparedState onDisk()
{
    PreparedState state = unmeasured();
    state.config.localEnabled = true;
    state.config.localFolder = QStringLiteral("/media/anna/Archivio");
    state.config.keySaved = true;
    state.localPlace.volume = disk(700, 2000);
    state.repos = {{DestinationID::Local, {}}};
    return state;
}

PreparedState onSystemDisk()
{
    PreparedState state = onDisk();
    state.config.localFolder = Paths::home() + QLatin1String("/Backup");
    state.localPlace.isBesideHome = true;
    return state;
}

PreparedState diskAway()
{
    PreparedState state = onDisk();
    state.localPlace = {};
    state.repos = {
        {DestinationID::Local, unreadable(QStringLiteral("Il disco dei backup non è collegato."))}};
    return state;
}

PreparedState diskUnknown()
{
    PreparedState state = onDisk();
    state.localUnknown = true;
    return state;
}

PreparedState measuringForDisk()
{
    PreparedState state = onDisk();
    state.measuring = gigabyte * 37;
    return state;
}

PreparedState fits()
{
    PreparedState state = onDisk();
    state.sourceSizes = measured().sourceSizes;
    return state;
}

PreparedState tooSmall()
{
    PreparedState state = fits();
    state.localPlace.volume = disk(120, 500);
    return state;
}

/// A disk that has versions, to which ten days have added so many bytes each.
PreparedState growing(qint64 bytesPerDay, std::optional<qint64> freeGigabytes = 700)
{
    static constexpr int days = 10;
    PreparedState state = fits();
    state.repos = {{DestinationID::Local, repository(41)}};
    for (int day = 0; day < days; ++day) {
        RunRecord run = record(24.0 * (day + 1), DestinationID::Local);
        run.dataAdded = bytesPerDay;
        state.history.append(run);
    }
    state.localPlace.volume =
        freeGigabytes ? std::optional(disk(*freeGigabytes, 2000)) : std::nullopt;
    return state;
}

PreparedState growthUnknown()
{
    PreparedState state = growing(gigabyte);
    state.history = {record(2, DestinationID::Local)};
    return state;
}

PreparedState growthNegligible()
{
    return growing(1000);
}

PreparedState growthAlone()
{
    return growing(gigabyte, std::nullopt);
}

PreparedState growthDays()
{
    return growing(gigabyte * 20);
}

PreparedState growthMonths()
{
    return growing(gigabyte * 3);
}

PreparedState growthYears()
{
    return growing(gigabyte / 2);
}

PreparedState driveConnecting()
{
    PreparedState state = onDisk();
    state.drive.connecting = true;
    state.drive.quota = account(31, 200).quota;
    return state;
}

PreparedState driveError()
{
    PreparedState state = onDisk();
    state.drive.error = QStringLiteral("Autorizzazione non completata");
    return state;
}

PreparedState driveConnected()
{
    PreparedState state = fits();
    state.drive = account(31, 200);
    state.config.driveEnabled = true;
    return state;
}

PreparedState driveVersions()
{
    PreparedState state = driveConnected();
    state.repos.insert(DestinationID::Drive, repository(18));
    return state;
}

PreparedState driveNoQuota()
{
    PreparedState state = driveVersions();
    state.drive.quota.reset();
    return state;
}

/// The form of a server, filled in for its kind.
PreparedState server(ServerKind kind)
{
    PreparedState state = onDisk();
    state.config.serverKind = kind;
    state.config.serverUser = QStringLiteral("anna");
    state.config.serverPath = QStringLiteral("backup/Vellomar");
    switch (kind) {
    case ServerKind::Webdav:
        state.config.serverHost =
            QStringLiteral("https://nuvola.example.org/remote.php/dav/files/anna");
        return state;
    case ServerKind::S3:
        state.config.serverHost = QStringLiteral("https://s3.example.org");
        return state;
    case ServerKind::Sftp:
    case ServerKind::Smb:
        state.config.serverHost = QStringLiteral("nas.example.org");
        return state;
    }
    return state;
}

PreparedState serverConnecting(ServerKind kind)
{
    PreparedState state = server(kind);
    state.server.connecting = true;
    state.server.quota = account(800, 4000).quota;
    return state;
}

PreparedState serverError(ServerKind kind)
{
    PreparedState state = server(kind);
    state.server.error = QStringLiteral("Accesso rifiutato: controlla utente e password.");
    return state;
}

PreparedState serverConnected(ServerKind kind)
{
    PreparedState state = server(kind);
    state.config.serverEnabled = true;
    state.server = account(800, 4000);
    state.repos.insert(DestinationID::Server, repository(7));
    return state;
}

PreparedState s3(const QString &versioning)
{
    PreparedState state = serverConnected(ServerKind::S3);
    state.server.versioning = versioning;
    return state;
}

PreparedState allConnected()
{
    PreparedState state = growthMonths();
    state.config.driveEnabled = true;
    state.config.serverEnabled = true;
    state.config.serverHost = QStringLiteral("nas.example.org");
    state.config.serverUser = QStringLiteral("anna");
    state.drive = account(31, 200);
    state.server = account(800, 4000);
    state.repos.insert(DestinationID::Drive, repository(18));
    state.repos.insert(DestinationID::Server, repository(7));
    return state;
}

struct Entry
{
    QString name;
    std::function<PreparedState()> make;
};

const QList<Entry> &entries()
{
    static const QList<Entry> list{{QStringLiteral("fresh"), fresh},
                                   {QStringLiteral("kit"), kit},
                                   {QStringLiteral("waiting"), waiting},
                                   {QStringLiteral("launching"), launching},
                                   {QStringLiteral("scanning"), scanning},
                                   {QStringLiteral("running"), runningNow},
                                   {QStringLiteral("well"), well},
                                   {QStringLiteral("single"), single},
                                   {QStringLiteral("access"), access},
                                   {QStringLiteral("stale"), stale},
                                   {QStringLiteral("staleRunning"), staleRunning},
                                   {QStringLiteral("failed"), failed},
                                   {QStringLiteral("keyError"), keyError},
                                   {QStringLiteral("starting"), starting},
                                   {QStringLiteral("support"), support},
                                   {QStringLiteral("long"), longTexts}};
    return list;
}

QList<Entry> serverEntries()
{
    QList<Entry> list;
    for (const ServerKind kind :
         {ServerKind::Sftp, ServerKind::Webdav, ServerKind::S3, ServerKind::Smb}) {
        const QString name = rawValue(kind);
        list.append({name, [kind] { return server(kind); }});
        list.append(
            {name + QLatin1String("Connecting"), [kind] { return serverConnecting(kind); }});
        list.append({name + QLatin1String("Error"), [kind] { return serverError(kind); }});
        list.append({name + QLatin1String("Connected"), [kind] { return serverConnected(kind); }});
    }
    return list;
}

const QList<Entry> &sourcesEntries()
{
    static const QList<Entry> list{{QStringLiteral("noSources"), noSources},
                                   {QStringLiteral("unmeasured"), unmeasured},
                                   {QStringLiteral("measuring"), measuring},
                                   {QStringLiteral("partlyMeasured"), partlyMeasured},
                                   {QStringLiteral("measured"), measured},
                                   {QStringLiteral("wrongExclude"), wrongExclude},
                                   {QStringLiteral("refusedDrop"), refusedDrop},
                                   {QStringLiteral("many"), many}};
    return list;
}

const QList<Entry> &destinationsEntries()
{
    static const QList<Entry> list =
        QList<Entry>{{QStringLiteral("noDisk"), unmeasured},
                     {QStringLiteral("disk"), onDisk},
                     {QStringLiteral("systemDisk"), onSystemDisk},
                     {QStringLiteral("diskAway"), diskAway},
                     {QStringLiteral("diskUnknown"), diskUnknown},
                     {QStringLiteral("diskMeasuring"), measuringForDisk},
                     {QStringLiteral("fits"), fits},
                     {QStringLiteral("tooSmall"), tooSmall},
                     {QStringLiteral("growthUnknown"), growthUnknown},
                     {QStringLiteral("growthNegligible"), growthNegligible},
                     {QStringLiteral("growthAlone"), growthAlone},
                     {QStringLiteral("growthDays"), growthDays},
                     {QStringLiteral("growthMonths"), growthMonths},
                     {QStringLiteral("growthYears"), growthYears},
                     {QStringLiteral("driveConnecting"), driveConnecting},
                     {QStringLiteral("driveError"), driveError},
                     {QStringLiteral("driveConnected"), driveConnected},
                     {QStringLiteral("driveVersions"), driveVersions},
                     {QStringLiteral("driveNoQuota"), driveNoQuota}} +
        serverEntries() +
        QList<Entry>{
            {QStringLiteral("s3Unversioned"), [] { return s3(QStringLiteral("Unversioned")); }},
            {QStringLiteral("s3Versioned"), [] { return s3(QStringLiteral("Enabled")); }},
            {QStringLiteral("allConnected"), allConnected}};
    return list;
}

QStringList namesOf(const QList<Entry> &list)
{
    QStringList names;
    for (const Entry &entry : list) {
        names.append(entry.name);
    }
    return names;
}

} // namespace

QStringList PreparedStates::names()
{
    return namesOf(entries());
}

QStringList PreparedStates::sourcesNames()
{
    return namesOf(sourcesEntries());
}

QStringList PreparedStates::destinationsNames()
{
    return namesOf(destinationsEntries());
}

PreparedState PreparedStates::state(const QString &name)
{
    for (const Entry &entry : entries() + sourcesEntries() + destinationsEntries()) {
        if (entry.name == name) {
            return entry.make();
        }
    }
    return fresh();
}

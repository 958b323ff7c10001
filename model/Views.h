#pragma once

#include "state/AppConfig.h"
#include "state/RunRecord.h"
#include "state/RunStatus.h"
#include "tools/Rclone.h"
#include "tools/Restic.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

// The plain values of the model in the form that QML reads: the same fields as properties. A
// destination is a value of AppModel.Destination, an outcome and a kind of server their raw texts,
// an absent field is undefined.

/// An optional as QML knows it.
template <typename T>
QVariant variant(const std::optional<T> &value)
{
    return value ? QVariant::fromValue(*value) : QVariant();
}

/// What is known of a destination's repository.
struct RepoInfo
{
    QList<Snap> snapshots;        ///< of this machine, newest first
    std::optional<qint64> size;   ///< bytes of the whole repository
    std::optional<QString> error; ///< shown as it stands
    bool loading = false;

    bool operator==(const RepoInfo &) const = default;
};

/// The backup of another machine, open for browsing.
struct ForeignBackup
{
    Restic restic;
    QString host;
    QList<Snap> snapshots;
};

/// A line that tells how something came out.
struct Notice
{
    Q_GADGET
    Q_PROPERTY(QString text MEMBER text FINAL)
    Q_PROPERTY(bool warning MEMBER warning FINAL)

public:
    QString text;
    bool warning = false;

    bool operator==(const Notice &) const = default;
};

/// The settings; written back as a whole.
struct ConfigView : AppConfig
{
    Q_GADGET
    Q_PROPERTY(QStringList sources MEMBER sources FINAL)
    Q_PROPERTY(QStringList excludes MEMBER excludes FINAL)
    Q_PROPERTY(bool excludeCaches MEMBER excludeCaches FINAL)
    Q_PROPERTY(bool localEnabled MEMBER localEnabled FINAL)
    Q_PROPERTY(QString localFolder MEMBER localFolder FINAL)
    Q_PROPERTY(bool serverEnabled MEMBER serverEnabled FINAL)
    Q_PROPERTY(QString serverKind READ serverKindText WRITE setServerKindText FINAL)
    Q_PROPERTY(QString serverHost MEMBER serverHost FINAL)
    Q_PROPERTY(QString serverPort MEMBER serverPort FINAL)
    Q_PROPERTY(QString serverUser MEMBER serverUser FINAL)
    Q_PROPERTY(QString serverKeyFile MEMBER serverKeyFile FINAL)
    Q_PROPERTY(QString serverPath MEMBER serverPath FINAL)
    Q_PROPERTY(bool driveEnabled MEMBER driveEnabled FINAL)
    Q_PROPERTY(QString driveFolder MEMBER driveFolder FINAL)
    Q_PROPERTY(QString driveClientID MEMBER driveClientID FINAL)
    Q_PROPERTY(QString driveClientSecret MEMBER driveClientSecret FINAL)
    Q_PROPERTY(bool autoBackup MEMBER autoBackup FINAL)
    Q_PROPERTY(qint64 intervalHours MEMBER intervalHours FINAL)
    Q_PROPERTY(bool skipOnBattery MEMBER skipOnBattery FINAL)
    Q_PROPERTY(qint64 alertAfterHours MEMBER alertAfterHours FINAL)
    Q_PROPERTY(bool keySaved MEMBER keySaved FINAL)
    Q_PROPERTY(qint64 keepDays MEMBER keepDays FINAL)
    Q_PROPERTY(QString retentionLabel READ retentionLabel FINAL)
    Q_PROPERTY(bool hasDestination READ hasDestination FINAL)

public:
    ConfigView() = default;
    explicit ConfigView(const AppConfig &config)
        : AppConfig(config)
    {
    }

    [[nodiscard]] QString serverKindText() const { return rawValue(serverKind); }
    /// An unknown text changes nothing.
    void setServerKindText(const QString &text);
    /// Whether any of the three is in use.
    [[nodiscard]] bool hasDestination() const;
};

/// A run in progress.
struct StatusView : RunStatus
{
    Q_GADGET
    Q_PROPERTY(QDateTime startedAt MEMBER startedAt CONSTANT FINAL)
    Q_PROPERTY(int destination READ destinationNumber CONSTANT FINAL)
    Q_PROPERTY(QString destinationTitle READ destinationTitle CONSTANT FINAL)
    Q_PROPERTY(QString phase MEMBER phase CONSTANT FINAL)
    Q_PROPERTY(double percent MEMBER percent CONSTANT FINAL)
    Q_PROPERTY(qint64 filesDone MEMBER filesDone CONSTANT FINAL)
    Q_PROPERTY(qint64 totalFiles MEMBER totalFiles CONSTANT FINAL)
    Q_PROPERTY(qint64 bytesDone MEMBER bytesDone CONSTANT FINAL)
    Q_PROPERTY(qint64 totalBytes MEMBER totalBytes CONSTANT FINAL)
    Q_PROPERTY(QVariant secondsRemaining READ remaining CONSTANT FINAL)
    Q_PROPERTY(QVariant currentFile READ file CONSTANT FINAL)

public:
    StatusView() = default;
    explicit StatusView(const RunStatus &status)
        : RunStatus(status)
    {
    }

    [[nodiscard]] int destinationNumber() const { return static_cast<int>(destination); }
    [[nodiscard]] QString destinationTitle() const { return title(destination); }
    [[nodiscard]] QVariant remaining() const { return variant(secondsRemaining); }
    [[nodiscard]] QVariant file() const { return variant(currentFile); }
};

/// An entry of the history.
struct RecordView : RunRecord
{
    Q_GADGET
    Q_PROPERTY(QString id READ idText CONSTANT FINAL)
    Q_PROPERTY(QDateTime date MEMBER date CONSTANT FINAL)
    Q_PROPERTY(int destination READ destinationNumber CONSTANT FINAL)
    Q_PROPERTY(QString destinationTitle READ destinationTitle CONSTANT FINAL)
    Q_PROPERTY(QString outcome READ outcomeText CONSTANT FINAL)
    Q_PROPERTY(QString message MEMBER message CONSTANT FINAL)
    Q_PROPERTY(qint64 filesNew MEMBER filesNew CONSTANT FINAL)
    Q_PROPERTY(qint64 filesChanged MEMBER filesChanged CONSTANT FINAL)
    Q_PROPERTY(qint64 dataAdded MEMBER dataAdded CONSTANT FINAL)
    Q_PROPERTY(double duration MEMBER duration CONSTANT FINAL)
    Q_PROPERTY(QVariant kind READ kindText CONSTANT FINAL)

public:
    RecordView() = default;
    explicit RecordView(const RunRecord &record)
        : RunRecord(record)
    {
    }

    [[nodiscard]] QString idText() const { return id.toString(QUuid::WithoutBraces); }
    [[nodiscard]] int destinationNumber() const { return static_cast<int>(destination); }
    [[nodiscard]] QString destinationTitle() const { return title(destination); }
    [[nodiscard]] QString outcomeText() const { return rawValue(outcome); }
    [[nodiscard]] QVariant kindText() const { return variant(kind); }
};

/// A destination with all that a row about it shows.
struct DestinationView
{
    Q_GADGET
    Q_PROPERTY(int id MEMBER id CONSTANT FINAL)
    Q_PROPERTY(QString title MEMBER title CONSTANT FINAL)
    Q_PROPERTY(bool enabled MEMBER enabled CONSTANT FINAL)
    Q_PROPERTY(QString stateText MEMBER stateText CONSTANT FINAL)
    Q_PROPERTY(int stateTone MEMBER stateTone CONSTANT FINAL)
    Q_PROPERTY(bool known MEMBER known CONSTANT FINAL)
    Q_PROPERTY(int snapshotCount READ snapshotCount CONSTANT FINAL)
    Q_PROPERTY(QList<QDateTime> snapshotDates READ snapshotDates CONSTANT FINAL)
    Q_PROPERTY(QVariant size READ size CONSTANT FINAL)
    Q_PROPERTY(QVariant error READ error CONSTANT FINAL)
    Q_PROPERTY(bool loading READ isLoading CONSTANT FINAL)

public:
    int id = 0; ///< a value of AppModel.Destination
    QString title;
    bool enabled = false;
    QString stateText;
    int stateTone = 0;  ///< a value of AppModel.Tone
    bool known = false; ///< whether anything is known of its repository
    RepoInfo repo;

    [[nodiscard]] int snapshotCount() const { return static_cast<int>(repo.snapshots.size()); }
    [[nodiscard]] QList<QDateTime> snapshotDates() const;
    [[nodiscard]] QVariant size() const { return variant(repo.size); }
    [[nodiscard]] QVariant error() const { return variant(repo.error); }
    [[nodiscard]] bool isLoading() const { return repo.loading; }
};

/// Room on a remote.
struct QuotaView : Rclone::Quota
{
    Q_GADGET
    Q_PROPERTY(qint64 used MEMBER used CONSTANT FINAL)
    Q_PROPERTY(qint64 total MEMBER total CONSTANT FINAL)

public:
    QuotaView() = default;
    explicit QuotaView(const Rclone::Quota &quota)
        : Rclone::Quota(quota)
    {
    }
};

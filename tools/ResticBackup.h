#pragma once

#include "tools/Restic.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

#include <tl/expected.hpp>

/// One run of `restic backup`: what restic is asked for, and what its messages mean.
class ResticBackup
{
public:
    /// How far the run has come. A number that restic doesn't give is 0; none is held to the range
    /// that it should have.
    struct Status
    {
        double fractionDone = 0; ///< from 0 to 1
        qint64 filesDone = 0;
        qint64 totalFiles = 0;
        qint64 bytesDone = 0;
        qint64 totalBytes = 0;
        std::optional<qint64> secondsRemaining; ///< absent when restic gives no estimate
        std::optional<QString> currentFile;     ///< full path; absent when restic names none

        bool operator==(const Status &) const = default;
    };

    /// What came of a run that made a version. A number that restic doesn't give is 0.
    struct Result
    {
        QString version; ///< full id; empty when restic names none
        qint64 filesNew = 0;
        qint64 filesChanged = 0;
        qint64 dataAdded = 0; ///< bytes added to the repository
        int unreadable = 0;   ///< how many files couldn't be read

        bool operator==(const Result &) const = default;
    };

    using StatusReceiver = std::function<void(const Status &)>;

    /// `onStatus` gets each status on the thread that reads restic's output.
    explicit ResticBackup(StatusReceiver onStatus);

    /// Backs up files and folders, given by their full paths, without what matches the patterns in
    /// `excludeFile`. Blocks until restic has ended; all calls of `onStatus` come before that.
    tl::expected<Result, ResticError> run(const Restic &restic, const QStringList &sources,
                                          const QString &excludeFile, ProcessHandle *handle);

    /// One line of restic's standard output.
    void handleLine(const QString &line);
    /// All of restic's standard error, of which only the errors count.
    void handleErrors(const QString &standardError);

    /// What the lines so far come to: the last summary, and how many errors there were.
    [[nodiscard]] const Result &result() const { return m_result; }

private:
    StatusReceiver m_onStatus;
    Result m_result;
};

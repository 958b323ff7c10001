#pragma once

#include "state/RunStatus.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

/// What can be seen of the engine, which is a process of its own, and the one request to it: to
/// stop.
class EngineFiles
{
public:
    /// The files in the support folder.
    static std::shared_ptr<EngineFiles> real();

    EngineFiles() = default;
    virtual ~EngineFiles() = default;
    EngineFiles(const EngineFiles &) = delete;
    EngineFiles &operator=(const EngineFiles &) = delete;
    EngineFiles(EngineFiles &&) = delete;
    EngineFiles &operator=(EngineFiles &&) = delete;

    /// status.json and history.json as they stand; empty when there are none.
    virtual QByteArray statusBytes() = 0;
    virtual QByteArray historyBytes() = 0;
    /// Whether the run of a status is still under way.
    virtual bool isAlive(const RunStatus &status) = 0;
    /// Asks the run of a status to stop. Nothing happens where it has ended.
    virtual void stop(const RunStatus &status) = 0;
    /// Where the files are, as the user reads it.
    virtual QString folder() = 0;
    /// Why no run can write its files, as the user reads it; absent when it can.
    virtual std::optional<QString> fault() = 0;
};

#pragma once

#include "tools/ProcessRunner.h"

/// Every child process gives one and the same answer, for the object's life; the arguments of the
/// last one are kept.
class ScriptedAnswer
{
public:
    ProcessResult result;
    QStringList arguments;

private:
    ScopedProcessRunner m_runner{
        [this](const QString &, const QStringList &words, const ProcessOptions &) {
            arguments = words;
            return result;
        }};
};

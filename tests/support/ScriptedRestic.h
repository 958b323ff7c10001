#pragma once

#include "tests/support/Cycle.h"
#include "tests/support/CycleHome.h"

/// A home whose program runs a shell script as restic, for what the real one can't do on demand.
/// The script notes its commands in the file "commands" of the home, and the signals that it gets
/// in the file "signals".
class ScriptedRestic : public CycleHome
{
protected:
    ScriptedRestic();

    /// What `restic backup` does, in shell; `cat config` is `opening`, other commands succeed.
    /// The word `await` waits in there until letGo() was called, and notes that it waits.
    void script(const QByteArray &backup, const QByteArray &opening = "exit 0");

    /// Waits until the script has come to its `await`.
    [[nodiscard]] bool isAwaiting() const;
    /// Lets it and every later one go on.
    void letGo() const;

    [[nodiscard]] QByteArray commands() const;
    [[nodiscard]] QByteArray signalsNoted() const;

    /// Runs one cycle with this restic and gives its exit code.
    int runCycle() const;

    Installation installation;
};

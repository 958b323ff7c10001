#include "tests/support/ScriptedRestic.h"

#include <QFileInfo>

ScriptedRestic::ScriptedRestic()
{
    script("exit 0");
}

void ScriptedRestic::script(const QByteArray &backup, const QByteArray &opening)
{
    // Signals are noted before they are obeyed as restic would.
    installation.addScript(QStringLiteral("restic"),
                           "#!/bin/bash\n"
                           "trap 'echo INT >>\"$HOME/signals\"; exit 130' INT\n"
                           "trap 'echo TERM >>\"$HOME/signals\"; exit 143' TERM\n"
                           "await() {\n"
                           "  touch \"$HOME/awaiting\"\n"
                           "  until [ -e \"$HOME/go\" ]; do sleep 0.02; done\n"
                           "}\n"
                           "[ \"$1\" != -o ] || shift 2\n"
                           "echo \"$1\" >>\"$HOME/commands\"\n"
                           "case $1 in\n"
                           "cat) " +
                               opening + "\n;;\nbackup) " + backup + "\n;;\nesac\nexit 0\n");
}

bool ScriptedRestic::isAwaiting() const
{
    return eventually([] { return QFileInfo::exists(home() + QLatin1String("/awaiting")); });
}

void ScriptedRestic::letGo() const
{
    writeFile(home() + QLatin1String("/go"), "");
}

QByteArray ScriptedRestic::commands() const
{
    return readFile(home() + QLatin1String("/commands"));
}

QByteArray ScriptedRestic::signalsNoted() const
{
    return readFile(home() + QLatin1String("/signals"));
}

int ScriptedRestic::runCycle() const
{
    return Cycle(installation.program()).run();
}

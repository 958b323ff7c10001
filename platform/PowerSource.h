#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// Whether this machine runs on its battery now. No answer counts as mains power.
bool runsOnBattery();

namespace Pmset {

/// Runs a program with arguments and gives its standard output.
using OutputOf = std::function<QString(const QString &path, const QStringList &arguments)>;

/// The answer on macOS, from `/usr/bin/pmset -g ps`, whose first line names the source of power:
/// "Now drawing from 'Battery Power'".
bool runsOnBattery(const OutputOf &outputOf);

} // namespace Pmset

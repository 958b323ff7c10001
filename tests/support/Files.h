#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Files as tests want them. What can't be written fails the test.

/// Replaces what a file holds, and makes the folders that lead to it; false when it couldn't.
bool writeFile(const QString &path, const QByteArray &content = {});
/// The same for a program that its owner may run.
bool writeProgram(const QString &path, const QByteArray &content);
/// All that a file holds; null when it can't be read.
QByteArray readFile(const QString &path);
/// Whether a file in a folder, or in one below it, holds these bytes.
bool isInAnyFile(const QString &folder, const QByteArray &bytes);

/// The path of a folder of the home, which is made where it is missing.
QString homeFolder(const char *name);
/// Writes a file of the support folder.
bool writeSupportFile(const char *name, const QByteArray &content = {});
/// The names of all in the support folder, hidden files, pipes and folders too, sorted.
QStringList supportFiles();

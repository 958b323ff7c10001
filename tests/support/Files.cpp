#include "tests/support/Files.h"

#include "state/Paths.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

bool writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    const bool isWritten = file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                           file.write(content) == content.size() && file.flush();
    EXPECT_TRUE(isWritten) << qPrintable(path) << ": " << qPrintable(file.errorString());
    return isWritten;
}

bool writeProgram(const QString &path, const QByteArray &content)
{
    // A program of this name may be running.
    QFile::remove(path);
    return writeFile(path, content) &&
           QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                           QFileDevice::ExeOwner);
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool isInAnyFile(const QString &folder, const QByteArray &bytes)
{
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        if (readFile(files.next()).contains(bytes)) {
            return true;
        }
    }
    return false;
}

QString homeFolder(const char *name)
{
    QString path = Paths::home() + u'/' + QString::fromUtf8(name);
    QDir().mkpath(path);
    return path;
}

bool writeSupportFile(const char *name, const QByteArray &content)
{
    return writeFile(Paths::supportFile(QString::fromUtf8(name)), content);
}

QStringList supportFiles()
{
    return QDir(Paths::support())
        .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot,
                   QDir::Name);
}

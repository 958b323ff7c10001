#include "ui/prepared/NotedDesktop.h"

void NotedDesktop::askSavePath(const QString & /*proposedName*/, const QString & /*message*/,
                               std::function<void(const std::optional<QString> &)> answer)
{
    asked.append(QStringLiteral("save"));
    answer(savePath);
}

void NotedDesktop::askFolder(const FolderQuestion & /*question*/,
                             std::function<void(const std::optional<QString> &)> answer)
{
    asked.append(QStringLiteral("folder"));
    answer(folders.isEmpty() ? std::nullopt : std::optional(folders.first()));
}

void NotedDesktop::askFolders(const FolderQuestion & /*question*/,
                              std::function<void(const QStringList &)> answer)
{
    asked.append(QStringLiteral("folders"));
    answer(folders);
}

void NotedDesktop::print(const QString & /*text*/, std::function<void(const Printing &)> /*answer*/)
{
    asked.append(QStringLiteral("print"));
}

qint64 NotedDesktop::copyConcealed(const QString & /*text*/)
{
    asked.append(QStringLiteral("copy"));
    return 1;
}

qint64 NotedDesktop::clipboardChangeCount()
{
    return 1;
}

void NotedDesktop::clearClipboard()
{
    asked.append(QStringLiteral("clear"));
}

void NotedDesktop::authenticate(OwnerReason /*reason*/, std::function<void(Authentication)> answer)
{
    asked.append(QStringLiteral("authenticate"));
    answer(Authentication::granted);
}

void NotedDesktop::openPrivacySettings()
{
    asked.append(QStringLiteral("settings"));
}

void NotedDesktop::quit()
{
    asked.append(QStringLiteral("quit"));
}

void NotedDesktop::exitNow()
{
    asked.append(QStringLiteral("exit"));
}

bool NotedDesktop::hasFullDiskAccess()
{
    return fullDiskAccess;
}

void NotedDesktop::requestNotificationPermission()
{
    asked.append(QStringLiteral("notify"));
}

bool NotedDesktop::startDetached(const QString & /*program*/, const QStringList & /*arguments*/)
{
    asked.append(QStringLiteral("start"));
    return true;
}

void NotedDesktop::after(std::chrono::milliseconds /*delay*/, std::function<void()> /*task*/) {}

#pragma once

#include "model/Desktop.h"

#include <QStringList>

/// A desktop that does nothing but record the requests.
class NotedDesktop final : public Desktop
{
public:
    /// The requests in their order: "folder", "folders", "save", "print", "copy", "clear",
    /// "authenticate", "settings", "quit", "exit", "notify", "start" and "stop".
    QStringList asked;
    bool fullDiskAccess = true;
    std::optional<QString> savePath; ///< where the user saves; absent cancels
    QStringList folders;             ///< which the user chooses; none cancels

    void askSavePath(const QString &proposedName, const QString &message,
                     std::function<void(const std::optional<QString> &)> answer) override;
    void askFolder(const FolderQuestion &question,
                   std::function<void(const std::optional<QString> &)> answer) override;
    void askFolders(const FolderQuestion &question,
                    std::function<void(const QStringList &)> answer) override;
    void print(const QString &text, std::function<void(const Printing &)> answer) override;
    qint64 copyConcealed(const QString &text) override;
    qint64 clipboardChangeCount() override;
    void clearClipboard() override;
    void authenticate(OwnerReason reason, std::function<void(Authentication)> answer) override;
    void openPrivacySettings() override;
    void quit() override;
    void exitNow() override;
    bool hasFullDiskAccess() override;
    void requestNotificationPermission() override;
    bool startDetached(const QString &program, const QStringList &arguments) override;
    /// Never calls the function, so that a state on the screen doesn't end by itself.
    void after(std::chrono::milliseconds delay, std::function<void()> task) override;
};

#pragma once

#include "model/Desktop.h"

#include <QList>

#include <atomic>
#include <utility>

/// A desktop without windows: it notes every request, answers as the test wants, and its time
/// passes only by pass().
class ScriptedDesktop final : public Desktop
{
public:
    std::atomic_bool fullDiskAccess = true;
    std::atomic_int probes = 0; ///< how often it was asked for that
    bool canStart = true;
    std::optional<QString> savePath; ///< the user's answer; absent cancels
    QStringList folders;             ///< the user's answer to a panel for folders; none cancels
    Authentication authentication = Authentication::granted;
    Printing printing;         ///< how it comes out
    bool answersLater = false; ///< whether panels and logins wait for answer()

    QStringList savePanels;             ///< proposed name and message, joined by a line feed
    QList<FolderQuestion> folderPanels; ///< those for one folder and those for several
    QStringList printed;
    QList<OwnerReason> reasons; ///< of logins
    QString clipboard;
    qint64 clipboardChanges = 7;
    bool isConcealed = false;
    QList<QStringList> started;    ///< program and arguments
    std::function<void()> onStart; ///< called before a program is started
    int privacySettingsOpened = 0;
    int permissionRequests = 0;
    int quits = 0;
    int exits = 0;

    /// Answers what waits for an answer.
    void answer();
    /// What the user does: a different text on the clipboard.
    void copy(const QString &text);
    /// Lets time pass and runs the tasks that fall due, in order.
    void pass(std::chrono::milliseconds time);
    [[nodiscard]] qsizetype waitingTasks() const { return m_tasks.size(); }
    /// Drops all waiting tasks and answers, which may own this desktop.
    void forget();

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
    void after(std::chrono::milliseconds delay, std::function<void()> task) override;

private:
    void give(std::function<void()> answer);

    std::chrono::milliseconds m_now{0};
    QList<std::pair<std::chrono::milliseconds, std::function<void()>>> m_tasks;
    QList<std::function<void()>> m_answers;
};

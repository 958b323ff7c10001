#pragma once

#include "model/Desktop.h"
#include "model/Login.h"
#include "ui/shell/ConcealedClipboard.h"

#include <QDialog>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QWindow>

/// The desktop around the real window. It lives on the window's thread. Its destructor closes open
/// dialogs without an answer.
class WindowDesktop : public QObject, public Desktop
{
    Q_OBJECT

public:
    WindowDesktop() = default;
    ~WindowDesktop() override;
    WindowDesktop(const WindowDesktop &) = delete;
    WindowDesktop &operator=(const WindowDesktop &) = delete;
    WindowDesktop(WindowDesktop &&) = delete;
    WindowDesktop &operator=(WindowDesktop &&) = delete;

    /// Sets the window that dialogs belong to; none at first.
    void setWindow(QWindow *window) { m_window = window; }

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

private:
    void askForFolders(const FolderQuestion &question, bool several,
                       std::function<void(const QStringList &)> answer);
    void show(QDialog *dialog);

    QPointer<QWindow> m_window;
    ConcealedClipboard m_clipboard;
    QList<QPointer<QDialog>> m_dialogs;
    Login m_login;
};

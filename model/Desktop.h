#pragma once

#include "platform/OwnerAuthentication.h"
#include "state/AppConfig.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

/// What the model needs of the desktop around it: panels, the clipboard, the user's login, other
/// programs, time. The window hands in the real one, tests one of their own.
///
/// All calls except hasFullDiskAccess() come from the model's thread and return soon. An answer
/// that the user gives comes by a function, which is called once on that same thread, later or at
/// once. The functions may outlive the model. What needs no window toolkit is implemented here.
class Desktop
{
public:
    /// How the user answered the question for their login.
    enum class Authentication {
        granted,
        refused,    ///< or cancelled
        impossible, ///< this machine has no way to ask
    };

    /// The result of printing.
    struct Printing
    {
        std::optional<QString> failure; ///< the reason, absent on success
        std::optional<QString> file;    ///< what was written instead of paper
    };

    /// How a panel asks for folders.
    struct FolderQuestion
    {
        QString prompt;      ///< on the button that takes what is chosen
        QString message;     ///< above the folders; none when empty
        QString startFolder; ///< where it opens; the desktop's choice when empty
    };

    Desktop() = default;
    virtual ~Desktop() = default;
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;
    Desktop(Desktop &&) = delete;
    Desktop &operator=(Desktop &&) = delete;

    /// Asks where to save a file: a full path, absent when the user cancelled.
    virtual void askSavePath(const QString &proposedName, const QString &message,
                             std::function<void(const std::optional<QString> &)> answer) = 0;

    /// Asks for one folder, which the user may make there: a full path, absent when the user
    /// cancelled.
    virtual void askFolder(const FolderQuestion &question,
                           std::function<void(const std::optional<QString> &)> answer) = 0;
    /// Asks for folders: full paths in the order of the panel, none when the user cancelled.
    virtual void askFolders(const FolderQuestion &question,
                            std::function<void(const QStringList &)> answer) = 0;

    /// Prints a text with a dialog of the system, in a monospaced font of 12 points. A file that is
    /// printed to can be read by its owner alone. There is no answer when the user cancelled.
    virtual void print(const QString &text, std::function<void(const Printing &)> answer) = 0;

    /// Replaces the general clipboard by a text that clipboard managers are asked not to keep, and
    /// gives the clipboard's change count.
    virtual qint64 copyConcealed(const QString &text) = 0;
    /// A number that changes with each change of the clipboard by any program.
    virtual qint64 clipboardChangeCount() = 0;
    virtual void clearClipboard() = 0;

    /// Asks the user to log in.
    virtual void authenticate(OwnerReason reason, std::function<void(Authentication)> answer) = 0;

    /// Opens the page of the system's settings where access to the whole disk is granted.
    virtual void openPrivacySettings() = 0;

    /// Ends the program as its menu does.
    virtual void quit() = 0;
    /// Ends the process at once.
    virtual void exitNow() = 0;

    /// Whether this program may read all of the user's files. Called on other threads, as it waits
    /// for the disk.
    virtual bool hasFullDiskAccess();

    /// Asks the system for the right to notify, without waiting for its answer.
    virtual void requestNotificationPermission();

    /// Starts a program that outlives this one: it gets this one's environment and folder, and the
    /// null device for its output. False when it couldn't be started.
    virtual bool startDetached(const QString &program, const QStringList &arguments);

    /// Calls a function later, on this thread, even if the model has been destroyed by then.
    virtual void after(std::chrono::milliseconds delay, std::function<void()> task);
};

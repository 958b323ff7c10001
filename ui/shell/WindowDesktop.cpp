#include "ui/shell/WindowDesktop.h"

#include "ui/shell/SystemSettings.h"
#include "ui/shell/TextPrinter.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>

#include <cstdlib>
#include <memory>
#include <utility>

namespace {

Desktop::Authentication authenticationOf(OwnerLogin login)
{
    switch (login) {
    case OwnerLogin::granted:
        return Desktop::Authentication::granted;
    case OwnerLogin::refused:
        return Desktop::Authentication::refused;
    case OwnerLogin::impossible:
        return Desktop::Authentication::impossible;
    }
    return Desktop::Authentication::refused;
}

} // namespace

WindowDesktop::WindowDesktop()
{
    connect(
        this, &WindowDesktop::loginAnswered, this,
        [](const std::function<void()> &deliver) { deliver(); }, Qt::QueuedConnection);
}

WindowDesktop::~WindowDesktop()
{
    for (const QPointer<QDialog> &dialog : std::as_const(m_dialogs)) {
        delete dialog;
    }
}

void WindowDesktop::askSavePath(const QString &proposedName, const QString &message,
                                std::function<void(const std::optional<QString> &)> answer)
{
    auto *dialog = new QFileDialog;
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setSupportedSchemes({QStringLiteral("file")});
    dialog->setWindowTitle(message);
    dialog->setDirectory(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    dialog->selectFile(proposedName);
    connect(dialog, &QDialog::finished, this, [dialog, answer = std::move(answer)](int result) {
        const QList<QUrl> chosen = dialog->selectedUrls();
        const QString path = result == QDialog::Accepted && !chosen.isEmpty()
                                 ? chosen.first().toLocalFile()
                                 : QString();
        answer(path.isEmpty() ? std::nullopt : std::optional(path));
    });
    show(dialog);
}

void WindowDesktop::print(const QString &text)
{
    const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    auto *dialog = new QPrintDialog(printer.get());
    // The dialog uses the printer until it is gone.
    connect(dialog, &QObject::destroyed, this, [printer] {});
    connect(dialog, &QDialog::accepted, this,
            [printer, text] { TextPrinter::print(text, *printer); });
    show(dialog);
}

qint64 WindowDesktop::copyConcealed(const QString &text)
{
    return m_clipboard.copy(text);
}

qint64 WindowDesktop::clipboardChangeCount()
{
    return m_clipboard.changeCount();
}

void WindowDesktop::clearClipboard()
{
    m_clipboard.clear();
}

void WindowDesktop::authenticate(OwnerReason reason, std::function<void(Authentication)> answer)
{
    m_owner.ask(reason, [this, answer = std::move(answer)](OwnerLogin login) {
        // This runs on the question's thread, which ends before this object does.
        Q_EMIT loginAnswered([answer, login] { answer(authenticationOf(login)); });
    });
}

void WindowDesktop::openPrivacySettings()
{
    const QStringList command = SystemSettings::privacyCommand(
        qEnvironmentVariable("XDG_CURRENT_DESKTOP"),
        [](const QString &name) { return QStandardPaths::findExecutable(name); });
    if (!command.isEmpty()) {
        startDetached(command.first(), command.mid(1));
    }
}

void WindowDesktop::quit()
{
    // Unlike quit(), no window is asked whether it agrees.
    QCoreApplication::exit(EXIT_SUCCESS);
}

void WindowDesktop::exitNow()
{
    // Nothing that could hold the end up: it is called where something did already.
    std::_Exit(EXIT_SUCCESS);
}

void WindowDesktop::show(QDialog *dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    m_dialogs.removeAll(QPointer<QDialog>());
    m_dialogs.append(dialog);
    if (m_window) {
        dialog->winId(); // makes its window
        if (QWindow *own = dialog->windowHandle()) {
            own->setTransientParent(m_window);
        }
    }
    dialog->open();
}

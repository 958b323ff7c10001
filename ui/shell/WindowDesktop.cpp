#include "ui/shell/WindowDesktop.h"

#include "state/PrivateFile.h"
#include "state/Texts.h"
#include "ui/shell/SystemSettings.h"
#include "ui/shell/TextPrinter.h"

#include <QAbstractItemView>
#include <QBuffer>
#include <QCoreApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>

#include <cstdlib>
#include <memory>
#include <utility>

namespace {

/// Not by QPrinter's own file, which everybody could read and which wouldn't report a full disk.
Desktop::Printing printedToFile(const QString &text, const QPrinter &printer)
{
    QBuffer content;
    content.open(QIODevice::WriteOnly);
    QPdfWriter writer(&content);
    writer.setPageLayout(printer.pageLayout());
    TextPrinter::print(text, writer);
    const QString path = printer.outputFileName();
    return {.failure = PrivateFile::write(path, content.data()), .file = path};
}

Desktop::Printing printed(const QString &text, QPrinter &printer)
{
    if (printer.outputFormat() == QPrinter::PdfFormat) {
        return printedToFile(text, printer);
    }
    const bool isDone =
        TextPrinter::print(text, printer) && printer.printerState() != QPrinter::Error;
    return {.failure = isDone ? std::nullopt
                              : std::optional(Texts::tr("la stampante non lo ha accettato.")),
            .file = {}};
}

} // namespace

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

void WindowDesktop::askFolder(const FolderQuestion &question,
                              std::function<void(const std::optional<QString> &)> answer)
{
    askForFolders(question, false, [answer = std::move(answer)](const QStringList &folders) {
        answer(folders.isEmpty() ? std::nullopt : std::optional(folders.first()));
    });
}

void WindowDesktop::askFolders(const FolderQuestion &question,
                               std::function<void(const QStringList &)> answer)
{
    askForFolders(question, true, std::move(answer));
}

void WindowDesktop::askForFolders(const FolderQuestion &question, bool several,
                                  std::function<void(const QStringList &)> answer)
{
    auto *dialog = new QFileDialog;
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setSupportedSchemes({QStringLiteral("file")});
    dialog->setLabelText(QFileDialog::Accept, question.prompt);
    if (!question.message.isEmpty()) {
        dialog->setWindowTitle(question.message);
    }
    if (!question.startFolder.isEmpty()) {
        dialog->setDirectory(question.startFolder);
    }
    if (several) {
        // Qt has no mode for this; its own panel can do it all the same.
        dialog->setOption(QFileDialog::DontUseNativeDialog);
        const auto views = dialog->findChildren<QAbstractItemView *>();
        for (QAbstractItemView *view : views) {
            if (view->objectName() == QLatin1String("listView") ||
                view->objectName() == QLatin1String("treeView")) {
                view->setSelectionMode(QAbstractItemView::ExtendedSelection);
            }
        }
    }
    connect(dialog, &QDialog::finished, this, [dialog, answer = std::move(answer)](int result) {
        QStringList folders;
        const QList<QUrl> chosen =
            result == QDialog::Accepted ? dialog->selectedUrls() : QList<QUrl>();
        for (const QUrl &folder : chosen) {
            folders.append(folder.adjusted(QUrl::StripTrailingSlash).toLocalFile());
        }
        answer(folders);
    });
    show(dialog);
}

void WindowDesktop::print(const QString &text, std::function<void(const Printing &)> answer)
{
    const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    auto *dialog = new QPrintDialog(printer.get());
    // Keeps the printer for as long as the dialog exists.
    connect(dialog, &QObject::destroyed, this, [printer] {});
    connect(dialog, &QDialog::accepted, this,
            [printer, text, answer = std::move(answer)] { answer(printed(text, *printer)); });
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
    m_login.ask(reason, std::move(answer));
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
    // Unlike quit(), this asks no window for its consent.
    QCoreApplication::exit(EXIT_SUCCESS);
}

void WindowDesktop::exitNow()
{
    // Without destructors, as something has already delayed the end.
    std::_Exit(EXIT_SUCCESS);
}

void WindowDesktop::show(QDialog *dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    m_dialogs.removeAll(QPointer<QDialog>());
    m_dialogs.append(dialog);
    if (m_window) {
        dialog->winId(); // creates its window
        if (QWindow *own = dialog->windowHandle()) {
            own->setTransientParent(m_window);
        }
    }
    dialog->open();
}

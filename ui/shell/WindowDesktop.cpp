#include "ui/shell/WindowDesktop.h"

#include "state/Paths.h"
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
#include <QFileInfo>
#include <QFileSystemModel>
#include <QListView>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>

#include <algorithm>
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

/// Whether a Flatpak sandbox hides the user's files from Qt's own panels.
bool isConfined()
{
    return QFileInfo::exists(QStringLiteral("/.flatpak-info"));
}

/// Lets several rows of Qt's own panel be selected, for which it has no mode when it asks for
/// folders. Other panels have no such rows.
void selectSeveral(const QFileDialog &dialog)
{
    for (const QString &name : {QStringLiteral("listView"), QStringLiteral("treeView")}) {
        if (auto *rows = dialog.findChild<QAbstractItemView *>(name)) {
            rows->setSelectionMode(QAbstractItemView::ExtendedSelection);
        }
    }
}

/// The folders that were chosen, in the order in which the panel shows them.
QStringList chosenFolders(const QFileDialog &dialog)
{
    QStringList folders;
    if (const auto *rows = dialog.findChild<QListView *>(QStringLiteral("listView"))) {
        QModelIndexList selected = rows->selectionModel()->selectedIndexes();
        selected.removeIf([](const QModelIndex &cell) { return cell.column() != 0; });
        std::sort(selected.begin(), selected.end());
        for (const QModelIndex &row : std::as_const(selected)) {
            folders.append(row.data(QFileSystemModel::FilePathRole).toString());
        }
    }
    if (folders.size() > 1) {
        return folders; // which Qt gives in the order of the clicks
    }
    folders.clear();
    const QList<QUrl> chosen = dialog.selectedUrls();
    for (const QUrl &folder : chosen) {
        folders.append(folder.adjusted(QUrl::StripTrailingSlash).toLocalFile());
    }
    return folders;
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

// Where the program is confined, Qt's platform theme brings the panel of the portal. Like the other
// native ones it gives Qt one folder at a time, so that several are asked for by Qt's own panel
// wherever that sees the user's files.
void WindowDesktop::askForFolders(const FolderQuestion &question, bool several,
                                  std::function<void(const QStringList &)> answer)
{
    auto *dialog = new QFileDialog;
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setOption(QFileDialog::DontUseNativeDialog, several && !isConfined());
    dialog->setSupportedSchemes({QStringLiteral("file")});
    dialog->setLabelText(QFileDialog::Accept, question.prompt);
    dialog->setWindowTitle(question.message.isEmpty() ? question.prompt : question.message);
    dialog->setDirectory(question.startFolder.isEmpty() ? Paths::home() : question.startFolder);
    if (several) {
        selectSeveral(*dialog);
    }
    connect(dialog, &QDialog::finished, this, [dialog, answer = std::move(answer)](int result) {
        answer(result == QDialog::Accepted ? chosenFolders(*dialog) : QStringList());
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

#pragma once

#include "model/Desktop.h"

/// A desktop without windows: only what needs none is real, the rest does nothing.
class PlainDesktop final : public Desktop
{
public:
    void askSavePath(const QString &, const QString &,
                     std::function<void(const std::optional<QString> &)>) override
    {
    }
    void askFolder(const FolderQuestion &,
                   std::function<void(const std::optional<QString> &)>) override
    {
    }
    void askFolders(const FolderQuestion &, std::function<void(const QStringList &)>) override {}
    void print(const QString &, std::function<void(const Printing &)>) override {}
    qint64 copyConcealed(const QString &) override { return 0; }
    qint64 clipboardChangeCount() override { return 0; }
    void clearClipboard() override {}
    void authenticate(OwnerReason, std::function<void(Authentication)>) override {}
    void openPrivacySettings() override {}
    void quit() override {}
    void exitNow() override {}
};

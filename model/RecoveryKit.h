#pragma once

#include "model/EncryptionKey.h"
#include "model/Notice.h"
#include "model/Settings.h"
#include "model/World.h"

#include <QObject>
#include <QString>

#include <optional>

/// The sheet by which the user saves the key outside of this machine, so that the backups can be
/// read after the machine is lost.
class RecoveryKit final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool showing READ isShowing WRITE setShowing NOTIFY showingChanged FINAL)
    Q_PROPERTY(Notice notice READ currentNotice NOTIFY noticeChanged FINAL)

public:
    /// `settings` and `key` outlive this.
    RecoveryKit(World world, Settings &settings, EncryptionKey &key, QObject *parent = nullptr);

    [[nodiscard]] bool isShowing() const { return m_isShowing; }
    /// Showing the sheet asks the secret store again if it gave no key before.
    void setShowing(bool showing);
    /// The result of saving or printing.
    [[nodiscard]] const std::optional<Notice> &notice() const { return m_notice; }
    /// The text to save or print. It contains the key.
    [[nodiscard]] QString text() const;

    /// Asks for a file name and saves the text there.
    void save();
    void print();

Q_SIGNALS:
    void showingChanged();
    void noticeChanged();

private:
    void saveTo(const QString &path);
    void takePrinting(const Desktop::Printing &printing);
    template <typename Work>
    void report(Work work);
    void setNotice(const std::optional<Notice> &notice);
    [[nodiscard]] Notice currentNotice() const { return m_notice.value_or(Notice()); }

    const World m_world;
    Settings &m_settings;
    EncryptionKey &m_key;
    bool m_isShowing = false;
    std::optional<Notice> m_notice;
};

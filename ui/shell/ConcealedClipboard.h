#pragma once

#include <QClipboard>
#include <QMimeData>
#include <QObject>
#include <QPointer>
#include <QString>

/// The general clipboard, for texts that clipboard managers are asked not to keep. What of it is
/// still there at the program's end goes before it, so that the desktop doesn't take it over.
class ConcealedClipboard : public QObject
{
    Q_OBJECT

public:
    explicit ConcealedClipboard(QObject *parent = nullptr);
    ~ConcealedClipboard() override;
    ConcealedClipboard(const ConcealedClipboard &) = delete;
    ConcealedClipboard &operator=(const ConcealedClipboard &) = delete;
    ConcealedClipboard(ConcealedClipboard &&) = delete;
    ConcealedClipboard &operator=(ConcealedClipboard &&) = delete;

    /// Replaces what the clipboard holds, and gives the change count.
    qint64 copy(const QString &text);
    void clear();
    /// Another number after each change of the clipboard, whoever made it.
    qint64 changeCount();

private:
    void noticeChange();
    void forget();
    [[nodiscard]] bool holdsOurs() const;

    QPointer<QClipboard> m_clipboard; ///< gone when the program is past its end
    QPointer<QMimeData> m_ours; ///< what copy() put there; the clipboard deletes it when it goes
    bool m_ownsClipboard = false;
    qint64 m_changes = 0;
};

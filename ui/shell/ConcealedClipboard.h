#pragma once

#include <QClipboard>
#include <QMimeData>
#include <QObject>
#include <QPointer>
#include <QString>

/// The general clipboard, for texts that clipboard managers are asked not to keep. A text that is
/// still there at the program's end is removed, so that the desktop doesn't keep it.
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

    /// Replaces the clipboard's content, and returns the change count.
    qint64 copy(const QString &text);
    void clear();
    /// A number that changes with each change of the clipboard by any program.
    qint64 changeCount();

private:
    void noticeChange();
    void forget();
    [[nodiscard]] bool holdsOurs() const;

    QPointer<QClipboard> m_clipboard; ///< null after the application object is destroyed
    QPointer<QMimeData> m_ours; ///< what copy() put there; the clipboard deletes it when it goes
    bool m_ownsClipboard = false;
    qint64 m_changes = 0;
};

#include "ui/shell/ConcealedClipboard.h"

#include <QGuiApplication>

ConcealedClipboard::ConcealedClipboard(QObject *parent)
    : QObject(parent)
    , m_clipboard(QGuiApplication::clipboard())
{
    connect(m_clipboard, &QClipboard::dataChanged, this, &ConcealedClipboard::noticeChange);
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            &ConcealedClipboard::forget);
}

ConcealedClipboard::~ConcealedClipboard()
{
    forget();
}

qint64 ConcealedClipboard::copy(const QString &text)
{
    if (!m_clipboard) {
        return m_changes;
    }
    auto *data = new QMimeData;
    data->setText(text);
    // The types by which macOS and the free desktops mark passwords.
    data->setData(QStringLiteral("org.nspasteboard.ConcealedType"), QByteArray());
    data->setData(QStringLiteral("x-kde-passwordManagerHint"), QByteArrayLiteral("secret"));
    m_ours = data;
    m_clipboard->setMimeData(data);
    m_ownsClipboard = holdsOurs();
    return ++m_changes;
}

void ConcealedClipboard::clear()
{
    if (m_clipboard) {
        m_clipboard->clear();
    }
    m_ownsClipboard = false;
    ++m_changes;
}

qint64 ConcealedClipboard::changeCount()
{
    // Some systems don't notify a program in the background that it has lost the clipboard.
    if (m_ownsClipboard && !holdsOurs()) {
        noticeChange();
    }
    return m_changes;
}

void ConcealedClipboard::noticeChange()
{
    // The system may report our own text with a delay; that is no change.
    if (!holdsOurs()) {
        m_ownsClipboard = false;
        ++m_changes;
    }
}

void ConcealedClipboard::forget()
{
    if (holdsOurs()) {
        clear();
    }
}

bool ConcealedClipboard::holdsOurs() const
{
    return m_clipboard && m_ours && m_clipboard->ownsClipboard() &&
           m_clipboard->mimeData() == m_ours;
}

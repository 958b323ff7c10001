#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A server on loopback that lives as long as this object: a real program in the foreground on its
/// own port, with a folder for its settings and data. It is ended with all its children.
class Daemon
{
public:
    Daemon();
    ~Daemon();
    Daemon(const Daemon &) = delete;
    Daemon &operator=(const Daemon &) = delete;
    Daemon(Daemon &&) = delete;
    Daemon &operator=(Daemon &&) = delete;

    /// A port on which nothing listened a moment ago.
    static quint16 freePort();

    /// Starts the program and waits until it accepts connections on the port. False when it
    /// doesn't; output() has the reason.
    bool start(const QString &program, const QStringList &arguments);
    /// Ends the server; start() may follow.
    void stop();

    [[nodiscard]] quint16 port() const { return m_port; }
    [[nodiscard]] QString portText() const { return QString::number(m_port); }
    /// Full path of a file or folder of the server's own folder.
    [[nodiscard]] QString path(const QString &name) const;
    /// Makes a folder in the server's own folder and gives its full path.
    [[nodiscard]] QString makeFolder(const QString &name) const;
    /// Writes a file of the server's own folder and gives its full path; only the owner may read
    /// it.
    QString write(const QString &name, const QByteArray &content) const;
    /// All that the server has written.
    [[nodiscard]] QString output();

private:
    QTemporaryDir m_folder;
    quint16 m_port = freePort();
    QProcess m_process;
    QByteArray m_output;
};

#pragma once

#include <QString>
#include <QTemporaryDir>

/// A copy of the program in a folder of its own, with the tools that a test chooses beside it.
class Installation
{
public:
    /// bin/vellomar in a new folder, and an empty share/vellomar/bin.
    explicit Installation(const QString &name = QStringLiteral("a place with blanks"));

    /// The folder that holds everything else.
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    [[nodiscard]] QString program() const;
    /// Full path of a tool in the private bin/, whether it is there or not.
    [[nodiscard]] QString tool(const QString &name) const;

    /// Puts in the real tool, "restic" or "rclone".
    void addReal(const QString &name);
    /// Puts in a copy of the real tool, for a user who may not reach the original.
    void addCopy(const QString &name);
    /// Puts in an executable script with this text.
    void addScript(const QString &name, const QByteArray &text);

    /// Puts in the window, and the icon that it has.
    void addWindow();

    /// Full path of the real tool of this build.
    static QString realTool(const QString &name);
    /// Full path of the program of this build, or of the release build where ctest says so.
    static QString builtProgram();

private:
    QTemporaryDir m_folder;
    QString m_root;
};

#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QStringList>

/// Runs a program under strace and searches what it and its children did for secrets: each
/// execution with its arguments and environment, each file opened for writing, each write with its
/// bytes and its target.
class SecretWitness
{
public:
    /// Runs a program to its end. `input` goes to its standard input.
    SecretWitness(const QString &program, const QStringList &arguments,
                  const QByteArray &input = {});

    /// Of the program; -1 when it couldn't be watched.
    [[nodiscard]] int exitCode() const { return m_exitCode; }
    /// What it wrote on its standard output.
    [[nodiscard]] const QByteArray &output() const { return m_output; }
    /// All that was seen, a system call a line; a write has its descriptor's path in it.
    [[nodiscard]] const QByteArrayList &calls() const { return m_calls; }

    /// The calls in which a secret appears, but for those that write to a pipe or a socket.
    [[nodiscard]] QByteArrayList leaks(const QByteArrayList &secrets) const;
    /// The writes to pipes and sockets with this text in them.
    [[nodiscard]] QByteArrayList handOvers(const QByteArray &text) const;
    /// The calls of this name with this text in them.
    [[nodiscard]] QByteArrayList calls(const QByteArray &name, const QByteArray &text) const;

private:
    [[nodiscard]] bool goesToPipe(const QByteArray &call) const;

    QByteArray m_output;
    int m_exitCode = -1;
    QByteArrayList m_calls;
    QByteArrayList m_namedPipes; ///< as they stand behind the descriptor of a write
};

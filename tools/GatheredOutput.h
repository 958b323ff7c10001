#pragma once

#include <QByteArray>
#include <QString>

/// What a tool writes, gathered up to a limit, so that no tool can fill the memory.

/// All of a stream, or the fact that it was too long: a part of an answer is of no use.
class WholeOutput
{
public:
    /// In bytes. The list of a folder with half a million files is shorter.
    static constexpr qsizetype most = qsizetype{256} * 1024 * 1024;

    void add(QByteArrayView block);
    /// Whether there was more than `most`.
    [[nodiscard]] bool isTooLong() const { return m_isTooLong; }
    /// Empty when there was too much.
    [[nodiscard]] QString text() const;

private:
    QByteArray m_bytes;
    bool m_isTooLong = false;
};

/// The beginning and the end of a stream of messages, with a line feed in place of what was left
/// out between them: the last message says what went wrong, and the first ones often say why.
class EndsOfOutput
{
public:
    /// In bytes, of each of the two.
    static constexpr qsizetype most = qsizetype{32} * 1024 * 1024;

    explicit EndsOfOutput(qsizetype longest = most);

    void add(QByteArrayView block);
    [[nodiscard]] QString text() const;

private:
    qsizetype m_longest;
    QByteArray m_beginning;
    QByteArray m_end; ///< up to twice its limit, so that it isn't moved at each block
    bool m_isCut = false;
};

#pragma once

#include <QByteArray>
#include <QString>

/// What a tool writes, gathered whole as long as it is of a sensible length: a tool that has gone
/// wild can't fill the memory.

/// All of a stream, or the news that it was too long: a part of an answer is none.
class WholeOutput
{
public:
    /// A folder of half a million files is listed in less.
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

/// The beginning and the end of a stream of messages, with a line feed for what is left out between
/// them: the last one says what went wrong, and the first ones often why.
class EndsOfOutput
{
public:
    /// Bytes of each of the two.
    static constexpr qsizetype most = qsizetype{32} * 1024 * 1024;

    explicit EndsOfOutput(qsizetype longest = most);

    void add(QByteArrayView block);
    [[nodiscard]] QString text() const;

private:
    qsizetype m_longest;
    QByteArray m_beginning;
    QByteArray m_end; ///< up to twice as long as its limit, so that it isn't moved at each block
    bool m_isCut = false;
};

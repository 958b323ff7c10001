#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/// Text of bytes that should be UTF-8: every other byte becomes a replacement character, and
/// nothing else is changed or left out.
QString repairedText(QByteArrayView bytes);

/// Receives one line of a tool's output, without its line feed.
using LineReceiver = std::function<void(const QString &line)>;

/// Cuts a stream of bytes into lines and passes them on one by one.
///
/// A line ends at a line feed; a carriage return is a character like any other. Bytes that aren't
/// UTF-8 become replacement characters. Blocks may be cut anywhere. Of a line that is too long its
/// beginning is passed on, so that no tool can fill the memory.
class LineReader
{
public:
    /// Bytes of a line that are passed on. The tools' own lines hold a path or two.
    static constexpr qsizetype longestLine = qsizetype{32} * 1024 * 1024;

    explicit LineReader(LineReceiver receiver, qsizetype longest = longestLine);

    /// Passes on every line that this block completes.
    void add(QByteArrayView block);

    /// The end of the stream: passes on what is left, unless it is nothing.
    void finish();

private:
    void keep(QByteArrayView part);
    void deliver(QByteArrayView line) const;

    LineReceiver m_receiver;
    qsizetype m_longest;
    QByteArray m_rest; ///< begin of a line whose end hasn't come yet
};

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
/// UTF-8 become replacement characters. Blocks may be cut anywhere.
class LineReader
{
public:
    explicit LineReader(LineReceiver receiver);

    /// Passes on every line that this block completes.
    void add(QByteArrayView block);

    /// The end of the stream: passes on what is left, unless it is nothing.
    void finish();

private:
    void deliver(QByteArrayView line) const;

    LineReceiver m_receiver;
    QByteArray m_rest; ///< begin of a line whose end hasn't come yet
};

#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/// Text of bytes that should be UTF-8. Bytes that aren't become replacement characters; nothing
/// else is changed or left out.
QString repairedText(QByteArrayView bytes);

/// Receives one line of a tool's output, without its line feed.
using LineReceiver = std::function<void(const QString &line)>;

/// Splits a stream of bytes into lines and passes them on one by one.
///
/// A line ends at a line feed; a carriage return is an ordinary character. Bytes that aren't UTF-8
/// become replacement characters. Blocks may end anywhere. Of a line that is too long only the
/// beginning is passed on, so that no tool can fill the memory.
class LineReader
{
public:
    /// How many bytes of a line are passed on. Lines of restic and rclone hold a path or two.
    static constexpr qsizetype longestLine = qsizetype{32} * 1024 * 1024;

    explicit LineReader(LineReceiver receiver, qsizetype longest = longestLine);

    /// Passes on every line that this block completes.
    void add(QByteArrayView block);

    /// To be called at the end of the stream: passes on a last line without a line feed.
    void finish();

private:
    void keep(QByteArrayView part);
    void deliver(QByteArrayView line) const;

    LineReceiver m_receiver;
    qsizetype m_longest;
    QByteArray m_rest; ///< beginning of a line whose end hasn't come yet
};

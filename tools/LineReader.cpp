#include "tools/LineReader.h"

#include <QStringConverter>

#include <utility>

QString repairedText(QByteArrayView bytes)
{
    // QString::fromUtf8 would take a byte order mark at the beginning away.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

LineReader::LineReader(LineReceiver receiver)
    : m_receiver(std::move(receiver))
{
}

void LineReader::add(QByteArrayView block)
{
    qsizetype end = block.indexOf('\n');
    if (end >= 0 && !m_rest.isEmpty()) {
        m_rest.append(block.first(end));
        deliver(m_rest);
        m_rest.clear();
        block = block.sliced(end + 1);
        end = block.indexOf('\n');
    }
    while (end >= 0) {
        deliver(block.first(end));
        block = block.sliced(end + 1);
        end = block.indexOf('\n');
    }
    m_rest.append(block);
}

void LineReader::finish()
{
    if (!m_rest.isEmpty()) {
        deliver(m_rest);
        m_rest.clear();
    }
}

void LineReader::deliver(QByteArrayView line) const
{
    m_receiver(repairedText(line));
}

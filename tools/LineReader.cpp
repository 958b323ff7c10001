#include "tools/LineReader.h"

#include <QStringConverter>

#include <utility>

QString repairedText(QByteArrayView bytes)
{
    // QString::fromUtf8 would drop a byte order mark at the beginning.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

LineReader::LineReader(LineReceiver receiver, qsizetype longest)
    : m_receiver(std::move(receiver))
    , m_longest(longest)
{
}

void LineReader::add(QByteArrayView block)
{
    qsizetype end = block.indexOf('\n');
    if (end >= 0 && !m_rest.isEmpty()) {
        keep(block.first(end));
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
    keep(block);
}

void LineReader::finish()
{
    if (!m_rest.isEmpty()) {
        deliver(m_rest);
        m_rest.clear();
    }
}

void LineReader::keep(QByteArrayView part)
{
    m_rest.append(part.first(qMin(part.size(), m_longest - m_rest.size())));
}

void LineReader::deliver(QByteArrayView line) const
{
    m_receiver(repairedText(line.first(qMin(line.size(), m_longest))));
}

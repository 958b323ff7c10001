#include "tools/GatheredOutput.h"

#include "tools/LineReader.h"

void WholeOutput::add(QByteArrayView block)
{
    m_isTooLong = m_isTooLong || m_bytes.size() + block.size() > most;
    if (m_isTooLong) {
        m_bytes.clear();
    } else {
        m_bytes.append(block);
    }
}

QString WholeOutput::text() const
{
    return repairedText(m_bytes);
}

EndsOfOutput::EndsOfOutput(qsizetype longest)
    : m_longest(longest)
{
}

void EndsOfOutput::add(QByteArrayView block)
{
    const qsizetype room = qMin(block.size(), m_longest - m_beginning.size());
    m_beginning.append(block.first(room));
    m_end.append(block.sliced(room));
    if (m_end.size() > 2 * m_longest) {
        m_end.remove(0, m_end.size() - m_longest);
        m_isCut = true;
    }
}

QString EndsOfOutput::text() const
{
    const bool isCut = m_isCut || m_end.size() > m_longest;
    const QByteArray gap = isCut ? QByteArray(1, '\n') : QByteArray();
    const QByteArray whole = m_beginning + gap + m_end.right(m_longest);
    return repairedText(whole);
}

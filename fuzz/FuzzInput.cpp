#include "FuzzInput.h"

FuzzInput::FuzzInput(const std::uint8_t* data, std::size_t size, Header header)
{
    const std::size_t headerSize = header == Header::SplitAndPanel ? 4 : 1;
    if (size < headerSize)
        return;
    m_usable = true;
    m_control = data[0];
    if (header == Header::SplitAndPanel)
        m_panel = PanelAddress(static_cast<qint16>(1 + data[1] % 64), static_cast<quint16>(data[2] << 8 | data[3]));
    m_stream
        = QByteArrayView(reinterpret_cast<const char*>(data + headerSize), static_cast<qsizetype>(size - headerSize));
}

QList<QByteArrayView> FuzzInput::arrivals() const
{
    QList<QByteArrayView> pieces;
    // A small linear congruential sequence: the same input always arrives in the same pieces.
    quint32 state = m_control * 2654435761u + 1u;
    qsizetype at = 0;
    while (at < m_stream.size()) {
        state = state * 1664525u + 1013904223u;
        const qsizetype want = 1 + static_cast<qsizetype>((state >> 16) % 64);
        const qsizetype take = qMin(want, m_stream.size() - at);
        pieces.append(m_stream.sliced(at, take));
        at += take;
    }
    return pieces;
}

#pragma once

#include "protocol/PanelAddress.h"

#include <QByteArrayView>
#include <QList>
#include <cstddef>
#include <cstdint>

// A fuzzer's input read as a short header and a stream. The first byte chooses how the stream is
// split into arrivals; with a panel header the next three bytes choose the panel the stream comes
// from (number 1..64, then the serial's high and low byte). What the header leaves is the stream.
class FuzzInput
{
public:
    enum class Header
    {
        SplitOnly,
        SplitAndPanel,
    };

    FuzzInput(const std::uint8_t* data, std::size_t size, Header header);

    // False when the input is shorter than its header: nothing to try.
    bool usable() const { return m_usable; }
    quint8 control() const { return m_control; }
    PanelAddress panel() const { return m_panel; }
    QByteArrayView stream() const { return m_stream; }
    // The stream cut into consecutive pieces of 1 to 64 bytes, sizes drawn from the control byte,
    // the way a socket may hand over what the other side wrote at once.
    QList<QByteArrayView> arrivals() const;

private:
    bool m_usable = false;
    quint8 m_control = 0;
    PanelAddress m_panel;
    QByteArrayView m_stream;
};

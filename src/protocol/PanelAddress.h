#pragma once

#include <QByteArray>
#include <QByteArrayView>

// What a request needs to reach one panel: its number and its serial. The serial is one number of
// up to four hex digits; its high byte travels first.
class PanelAddress
{
public:
    PanelAddress() = default;
    PanelAddress(qint16 panelNumber, quint16 serial);

    qint16 panelNumber() const { return m_panelNumber; }
    quint16 serial() const { return m_serial; }

    // The serial as four hex digits, high byte first ("12AB").
    QByteArray serialText() const;
    // "%" + code + serial + panel number: the 10 characters every addressed request starts with.
    QByteArray head(QByteArrayView code) const;
    // code + serial + panel number: what follows the "$" of this panel's answer to code. Answers
    // are looked for by it, so that another panel's answer is never taken for this one's.
    QByteArray answerCode(QByteArrayView code) const;
    // A whole request: head, the command's fields, "**" and a carriage return.
    QByteArray request(QByteArrayView code, const QByteArray& fields = {}) const;

    bool operator==(const PanelAddress&) const = default;

private:
    qint16 m_panelNumber = 0;
    quint16 m_serial = 0;
};

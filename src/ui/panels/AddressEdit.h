#pragma once

#include <QList>
#include <QWidget>
#include <array>

class QLineEdit;

// The four octet fields of an address ("txtLocalIPAddress0" .. "txtLocalIPAddress3"): digits
// 0..255 only, each field selecting its whole text when it gets the focus.
class AddressEdit : public QWidget
{
    Q_OBJECT

public:
    AddressEdit(const QString& name, QWidget* parent);

    std::array<qint32, 4> octets() const;
    void setOctets(const std::array<qint32, 4>& octets);
    // Empty fields (a removed panel has no address).
    void clear();
    QLineEdit* field(int index) const { return m_fields.at(index); }

private:
    QList<QLineEdit*> m_fields;
};

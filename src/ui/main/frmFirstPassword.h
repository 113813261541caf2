#pragma once

#include <QDialog>

class Message;
class QLabel;
class QLineEdit;

// Asks the person on a station's first start to choose the administrator password, typed twice.
// The start-up checks the two entries and brings the dialog back with a hint when refused.
class frmFirstPassword : public QDialog
{
    Q_OBJECT

public:
    explicit frmFirstPassword(QWidget* parent = nullptr);

    // What to do, or why the last choice was refused.
    void setHint(const Message& hint);
    QString password() const;
    QString repeated() const;

private:
    QLabel* m_hint = nullptr;
    QLineEdit* m_password = nullptr;
    QLineEdit* m_repeated = nullptr;
};

#pragma once

#include <QObject>

class QLineEdit;

// Makes a field select its whole text when it receives the focus, so a new value replaces it.
class SelectOnFocus : public QObject
{
    Q_OBJECT

public:
    static void install(QLineEdit* edit);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit SelectOnFocus(QObject* parent);
};

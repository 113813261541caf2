#pragma once

#include "store/Operator.h"

#include <QPointer>

class QLabel;

// An operator that shows status lines in a label of a page instead of the main window's status
// line, and passes everything else on to the window's operator. Callable from the worker thread.
class LabelStatusOperator : public Operator
{
public:
    LabelStatusOperator(Operator& inner, QLabel* label);

    bool ask(const Message& question) override;
    void tell(const Message& message, Kind kind = Kind::Information) override;
    void progress(int value, int maximum) override;
    void status(const Message& line) override;
    void requestLogin() override;
    bool cancelRequested() const override;

    // The Turkish text of the line a label shows (kept beside the translated text).
    static QString turkishText(const QLabel* label);

private:
    Operator& m_inner;
    QPointer<QLabel> m_label;
};

#pragma once

#include "store/Operator.h"

// The person in the loop when nobody is there: every question is answered No (nothing is risked
// without an operator), every message and status line is logged, progress a line per tenth, and
// nothing is cancelled except by stopping the service.
class ServiceOperator : public Operator
{
public:
    bool ask(const Message& question) override;
    void tell(const Message& message, Kind kind = Kind::Information) override;
    void progress(int value, int maximum) override;
    void status(const Message& line) override;
    void requestLogin() override;
    bool cancelRequested() const override;

private:
    // The last tenth logged of the progress in hand; -1 when none is.
    int m_loggedTenth = -1;
};

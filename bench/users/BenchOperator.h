#pragma once

#include "store/Operator.h"

// Says Yes to everything and shows nothing: the person out of the measurement.
class BenchOperator : public Operator
{
public:
    bool ask(const Message& question) override;
    void tell(const Message& message, Kind kind = Kind::Information) override;
    void progress(int value, int maximum) override;
    void status(const Message& line) override;
    void requestLogin() override;
    bool cancelRequested() const override;

    int questions() const { return m_questions; }

private:
    int m_questions = 0;
};

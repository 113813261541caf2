#pragma once

#include "store/Operator.h"

#include <QPointer>

class frmSendingUsersAllPanels;

// The person as the unattended daily send sees them: nobody is asked anything, progress and
// messages go to the progress window, and its Cancel button is the cancel request.
class SendingUsersOperator : public Operator
{
public:
    explicit SendingUsersOperator(frmSendingUsersAllPanels* window);

    // The unattended run asks nothing; should a question come, it goes on.
    bool ask(const Message& question) override;
    void tell(const Message& message, Kind kind = Kind::Information) override;
    void progress(int value, int maximum) override;
    void status(const Message& line) override;
    void requestLogin() override;
    bool cancelRequested() const override;

private:
    QPointer<frmSendingUsersAllPanels> m_window;
};

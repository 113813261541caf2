#pragma once

#include "store/Message.h"

// The person in the loop, as every operation sees them. The windows, the command line, the
// scheduler and the tests each provide one; operations never show anything themselves.
// Methods may be called from the worker thread; implementations cross to their own thread.
class Operator
{
public:
    enum class Kind
    {
        Information,
        Warning,
        Error
    };

    virtual ~Operator() = default;

    // A Yes/No question; true means Yes.
    virtual bool ask(const Message& question) = 0;
    // A message that only needs acknowledging.
    virtual void tell(const Message& message, Kind kind = Kind::Information) = 0;
    // Progress of a long operation (value of maximum); maximum 0 clears it.
    virtual void progress(int value, int maximum) = 0;
    // Progress of the work on one panel; by default the same as progress(), for those who show
    // the panel elsewhere (the window's roster) or not at all.
    virtual void panelProgress(qint32 panelNumber, int value, int maximum);
    // The status line under the main window (or stderr on the command line).
    virtual void status(const Message& line) = 0;
    // Brings up the login when administrator rights are not in force; the caller then checks the
    // session again (see OperatorSession / RightsCheck).
    virtual void requestLogin() = 0;
    // True once the person asked to stop a long operation.
    virtual bool cancelRequested() const = 0;
};

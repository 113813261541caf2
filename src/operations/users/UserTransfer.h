#pragma once

#include "operations/panels/PanelTarget.h"
#include "operations/panels/ParallelWalk.h"
#include "operations/panels/WalkResult.h"
#include "operations/users/UserSelection.h"
#include "store/Message.h"

#include <functional>

struct OperationContext;

// Users between the database and the panels' card memory: sending all, a range or the selected
// user ("%NC" per user in ID order, then "%MU" with the highest ID), erasing the card memory
// ("%EC"), deleting the selected user ("%DC"), and reading users back into Users ("%UC").
// Selected users are named by their record number ("Kayit No"); 0 means none is selected.
// A user whose stored card number does not fit the panels' card field is never sent: the person
// is told its ID before the first panel, the rest of the list is sent, and the result counts it
// in membersRefused.
class UserTransfer
{
public:
    // Where the unattended send writes its failures (the progress window's message label).
    using MessageSink = std::function<void(const Message&)>;

    explicit UserTransfer(OperationContext& context);

    WalkResult sendUsers(PanelTarget target, const UserSelection& selection);
    WalkResult sendSelectedUser(PanelTarget target, qint64 recordNo);
    WalkResult eraseCardMemory(PanelTarget target);
    WalkResult deleteSelectedUser(PanelTarget target, qint64 recordNo);
    // The selected panel only. An ID the panel holds no card for leaves its row untouched; the
    // rows read are committed together when the range has been walked, so a receive given up
    // half-way leaves Users as it was.
    WalkResult receiveUsers(const UserIdRange& range);
    WalkResult receiveSelectedUser(qint64 recordNo);

    // How an unattended send walks: how many panels at once, when a dead panel is given up, and
    // whether each panel gets only what changed since it last acknowledged its users.
    struct Unattended
    {
        ParallelWalk::Options walk;
        // Only the users added or changed since the panel's last send, and "%DC" for those
        // removed since, then the count.
        bool changedOnly = false;
    };

    // The daily send to all panels: no questions and no rights check; cancel is tested before
    // each user; a failing "%NC" is tried twice; failures go to the sink and the walk goes on.
    WalkResult scheduledSend(const MessageSink& sink);
    WalkResult scheduledSend(const MessageSink& sink, const Unattended& options);
    // The same, with each failing panel and its reason in the result; the failures are also told
    // to the sink together at the end. The sink is called from the walk's threads, one at a time.
    ParallelWalk::Result sendUnattended(const Unattended& options, const MessageSink& sink);
    // The unattended send started by a person (the command line): the send question and the
    // administrator check first, then sendUnattended.
    ParallelWalk::Result sendAllPanels(const Unattended& options, const MessageSink& sink);

private:
    OperationContext& m_context;
};

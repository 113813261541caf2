#pragma once

#include "operations/records/RecordErasures.h"
#include "operations/records/RecordImport.h"
#include "protocol/CommandResult.h"
#include "protocol/PanelAddress.h"
#include "protocol/RecordDownload.h"
#include "store/Message.h"

#include <QDateTime>
#include <functional>
#include <optional>

class Clock;
class Database;
class PanelLink;

// One panel's records brought into AccessDatas over an open link: the download, then the import
// in one transaction, and whatever could not be read kept apart for the operator. The panel's
// memory is left as it is; erasing is the caller's decision, taken with erase() below.
class RecordFetch
{
public:
    struct Result
    {
        RecordDownload::Result download;
        RecordImport::Summary import;
        // The downloaded records and the unread pieces are committed (true also when there were
        // none).
        bool stored = false;
        QString error;

        // The stream ended with the panel's end marker, every record the panel held was taken,
        // read and committed: the panel's memory may be erased once its count still equals
        // download.received.
        bool mayErasePanel() const;
    };
    // The status line while the panel is read.
    using Status = std::function<void(const Message& line)>;

    // clock: when what could not be read is noted as received.
    static Result run(PanelLink& link, Database& db, const Clock& clock, qint32 panelNumber,
                      const PanelAddress& address, const Status& status = {});

    // Erases the panel's record memory ("%EM") and notes the moment, so that what the panel holds
    // afterwards is compared only with rows stored from then on. Returns the command's result:
    // accepted when erased; another code when the panel did not take it; no answer when none came
    // (the panel may have erased: the moment is noted too) or when the moment could not be read
    // (nothing is sent then).
    static CommandResult<> erase(PanelLink& link, Database& db, qint32 panelNumber, const PanelAddress& address,
                                 const QDateTime& now, QString* error = nullptr);
    // The same after a count just read (`held`): the mark (read before that count) is given, and
    // the erase goes at once, so that the time in which a passage could be made and erased
    // unstored is one round trip. When no answer comes, the count is read again: a panel still
    // holding `held` records did not erase, and no erase is noted.
    static CommandResult<> eraseAtOnce(PanelLink& link, Database& db, qint32 panelNumber, const PanelAddress& address,
                                       const QDateTime& now, const RecordErasures::Mark& mark, qint32 held,
                                       QString* error = nullptr);

    // stage text + " Panel:" + panel + ",   " + "BEKLEYİNİZ..."
    static Message waitLine(const QString& stageText, qint32 panelNumber, const QString& panelLabel = QString());
    // n + " kayıt okunamadı; ayrı tutuldu.", then a line for each reason with its count: what
    // of a download was kept apart, and why.
    static Message keptBackLine(const RecordDownload::Result& download);

private:
    static CommandResult<> eraseMarked(PanelLink& link, Database& db, qint32 panelNumber, const PanelAddress& address,
                                       const QDateTime& now, const RecordErasures::Mark& mark,
                                       std::optional<qint32> held, QString* error);
};

#pragma once

#include "operations/RecordImport.h"
#include "protocol/PanelAddress.h"
#include "protocol/RecordDownload.h"
#include "store/Message.h"

#include <functional>

class Database;
class PanelLink;

// One panel's records brought into AccessDatas over an open link: the download, then the import
// in one transaction. The panel's memory is left as it is; erasing is the caller's decision.
class RecordFetch
{
public:
    struct Result
    {
        RecordDownload::Result download;
        RecordImport::Summary import;
        // The downloaded records are committed (true also when there were none).
        bool stored = false;
        QString error;

        // The stream ended properly, every record the panel held was taken and committed: the
        // panel's memory may be erased.
        bool mayErasePanel() const;
    };
    // The status line while the panel is read.
    using Status = std::function<void(const Message& line)>;

    static Result run(PanelLink& link, Database& db, qint32 panelNumber, const PanelAddress& address,
                      const Status& status = {});

    // stage text + " Panel:" + panel + ",   " + "BEKLEYİNİZ..."
    static Message waitLine(const QString& stageText, qint32 panelNumber, const QString& panelLabel = QString());
};

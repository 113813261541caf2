#pragma once

#include "protocol/DownloadedRecord.h"
#include "protocol/PanelAddress.h"
#include "protocol/RecordDownloadCollector.h"

#include <QList>
#include <QString>
#include <functional>

class PanelLink;

// Downloading a panel's stored passage records over an open link.
class RecordDownload
{
public:
    enum class Stage
    {
        Receiving, // "Offline Kayıtlar Alınıyor..."
        Cutting, // "Offline Geçici Kayıtlar Düzenleniyor..."
        Decoding, // "Offline Gerçek Kayıtlar Oluşturuluyor..."
        Done, // "Offline Geçici Kayıtlar Düzenlendi"
    };

    struct Result
    {
        RecordDownloadCollector::Outcome outcome = RecordDownloadCollector::TimedOut;
        QList<DownloadedRecord> records;
        // Whole records the stream held, readable or not: what the panel's record count counts.
        int received = 0;
        // More than the cap were held: the panel must not be erased.
        bool capReached = false;
        // What was not stored as a record: unreadable pieces and records without a user (the
        // first of them with their text), and how many there were in all.
        QList<RecordDownloadCollector::UnreadPiece> unread;
        int unreadCount = 0;
        // Unread pieces other than records without a user: each may be a lost passage.
        int unreadable = 0;
        // True when the stream ended with this panel's end marker, everything the panel held was
        // taken and every piece of it could be read.
        bool mayErasePanel() const;
    };

    // Told at each stage and every 100 records cut; the operation turns it into its status line.
    using Progress = std::function<void(Stage stage, int recordsSoFar)>;

    // The fixed text of a stage, in Turkish.
    static QString stageText(Stage stage);
    // What follows the stage text on the status line: " Panel:" (", Panel:" once done).
    static QString panelLabel(Stage stage);
    // The waiting tail of the status line: ",   " and "BEKLEYİNİZ...".
    static QString waitSeparator();
    static QString waitText();

    static QByteArray buildFrame(const PanelAddress& panel);
};

// Asks the panel for its stored records and collects them until the end marker or until 2 s pass
// without a new byte (each arrival moves the deadline).
RecordDownload::Result DownloadRecords(PanelLink& link, const PanelAddress& panel,
                                       const RecordDownloadCollector::CardLookup& lookup,
                                       const RecordDownload::Progress& progress = {});

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
        // More than the cap were held: the panel must not be erased.
        bool capReached = false;
        // Raw records not decoded (user ID 0, unreadable fields).
        int skipped = 0;
        // True when the stream ended properly and everything the panel held was taken.
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

#pragma once

#include <QGroupBox>

class Database;
class PanelTargetBox;
class PanelWorkerBridge;
class QCheckBox;
class QPushButton;

// Reading the panels' offline records: cmdReadData hands the retrieval to the panel worker for
// the panels chosen in opsPanelOptionR; chkClearRAM erases each panel's memory once its rows are
// stored. The window stays usable meanwhile; the status line and PrBar tell the progress.
// cmdUnreadRecords shows what downloads brought that could not be stored as passages.
class RecordRetrievalBox : public QGroupBox
{
    Q_OBJECT

public:
    RecordRetrievalBox(PanelWorkerBridge& bridge, PanelTargetBox& target, Database* db, QWidget* parent = nullptr);

    // Starts the retrieval; false when another panel operation is running.
    bool readData();
    // Opens the list of unread pieces.
    void showUnread();

Q_SIGNALS:
    // The retrieval ended; `added` rows went into AccessDatas.
    void retrievalFinished(int added);

private:
    PanelWorkerBridge& m_bridge;
    PanelTargetBox& m_target;
    Database* m_db = nullptr;
    QPushButton* m_readData = nullptr;
    QCheckBox* m_clearRam = nullptr;
};

#pragma once

#include "operations/records/RecordRow.h"
#include "ui/records/PassageNames.h"

#include <QWidget>

class AccessRecordModel;
class LiveMonitor;
class QCheckBox;
class QLabel;
class QTableView;
class RecordRetrievalBox;
struct PageServices;

// The access-record page: the stored passages, newest first, read a page at a time as the
// operator scrolls. With chkRefreshAtOnce set, passages stored live go on top as they come;
// without it they wait (lblWaitingRecords counts them) until cmdRefresh reads the table again.
class AccessRecordsPage : public QWidget
{
    Q_OBJECT

public:
    explicit AccessRecordsPage(const PageServices& services, QWidget* parent = nullptr);

    // Takes the passages a live monitor stores.
    void watch(LiveMonitor& monitor);
    // Reads the table again when a retrieval has brought records in.
    void follow(RecordRetrievalBox& retrieval);

    void addPassages(const QList<RecordRow>& rows);
    // Reads the newest page again; waiting passages are shown then.
    void refresh();
    bool refreshesAtOnce() const;
    // Live passages stored since the grid was last read and not shown yet.
    int waitingRows() const { return m_waiting; }

    AccessRecordModel* model() const { return m_model; }
    QTableView* grid() const { return m_grid; }

    void retranslate();

private:
    void showWaiting();

    PassageNames m_names;
    AccessRecordModel* m_model = nullptr;
    QTableView* m_grid = nullptr;
    QCheckBox* m_refreshAtOnce = nullptr;
    QLabel* m_waitingLabel = nullptr;
    int m_waiting = 0;
};

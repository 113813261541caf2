#pragma once

#include "reports/ReportExport.h"
#include "reports/ReportFilter.h"
#include "reports/ReportKind.h"
#include "reports/ReportStatement.h"
#include "ui/reports/ReportContext.h"

#include <QFuture>
#include <QFutureWatcher>
#include <QWidget>

class Database;
class QGridLayout;
class QLabel;
class QListWidget;
class QTableView;
class ReportDatabaseBox;
class ReportGridModel;

// What every report window shares: the database choice, the grid over the report's rows, the
// record count, the fields to export and the buttons (make, print, export, close). A window
// adds its filter boxes and says which report its choices make.
class ReportWindow : public QWidget
{
    Q_OBJECT

public:
    ~ReportWindow() override;

    // Builds the report from the choices made and shows its first rows and its count.
    void makeReport();
    // Everything chosen on the window now.
    ReportFilter filter() const;
    // Reads the window's lists (panels, zones, groups, ...) again.
    void reload();

    ReportGridModel* model() const { return m_model; }
    // The report's number of rows; waits for the count when it is still being made.
    qint64 recordCount();
    const ReportStatement& statement() const { return m_statement; }
    // The report the choices make now.
    virtual ReportKind kind() const = 0;

protected:
    ReportWindow(const QString& objectName, const QString& title, const ReportContext& context,
                 const QString& databaseBoxName, QWidget* parent);

    virtual void fillFilter(ReportFilter& filter) const = 0;
    virtual void reloadLists(const Database& db) = 0;
    // After a report was shown (a window may mark the grid).
    virtual void reportShown(const ReportFilter& filter);

    // Places a filter box in the window's filter area.
    void addFilter(QWidget* box, int row, int column, int rowSpan = 1, int columnSpan = 1);
    QTableView* grid() const { return m_grid; }
    const ReportContext& context() const { return m_context; }
    void changeEvent(QEvent* event) override;

private:
    void clearReport();
    bool ensureReport();
    // Makes the report when none is shown and reads all of its rows into the grid.
    bool readWholeReport();
    void print();
    void exportAs(ReportExport::Format format);
    ReportDocument document();
    void startCount(const Database& db, const ReportStatement& statement);
    void showCount();
    void fillFields(const QList<ReportColumn>& columns);
    QStringList chosenFields() const;

    ReportContext m_context;
    ReportDatabaseBox* m_databaseBox = nullptr;
    QGridLayout* m_filters = nullptr;
    QTableView* m_grid = nullptr;
    ReportGridModel* m_model = nullptr;
    QListWidget* m_fields = nullptr;
    QLabel* m_countLabel = nullptr;
    QLabel* m_recordCount = nullptr;
    // The last report shown: its statement and its filter.
    ReportStatement m_statement;
    ReportFilter m_filter;
    bool m_haveReport = false;
    // -1 while the database counts the rows.
    qint64 m_count = 0;
    QFutureWatcher<qint64> m_counting;
};

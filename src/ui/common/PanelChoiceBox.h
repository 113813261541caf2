#pragma once

#include <QGroupBox>

class Database;
class QCheckBox;
class QListWidget;
struct ReportContext;
struct ReportFilter;

// Panels of a report: chkAllStations, or the panels ticked in lstPanel. A client station lists
// only the panels it watches (and the report never reads others).
class PanelChoiceBox : public QGroupBox
{
    Q_OBJECT

public:
    explicit PanelChoiceBox(QWidget* parent = nullptr);

    void reload(const Database& db, const ReportContext& context);
    void fill(ReportFilter& filter) const;
    // Ticks exactly the given panels (and clears chkAllStations).
    void choose(const QList<int>& panels);

private:
    QCheckBox* m_all = nullptr;
    QListWidget* m_list = nullptr;
};

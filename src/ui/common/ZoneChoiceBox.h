#pragma once

#include <QGroupBox>

class Database;
class QCheckBox;
class QComboBox;
class QLabel;
struct ReportContext;
struct ReportFilter;

// The global door zone of a report: chkAllZones, or the zone chosen by name in cmbZones;
// lblZoneInfo shows which panels and doors make up the chosen zone.
class ZoneChoiceBox : public QGroupBox
{
    Q_OBJECT

public:
    explicit ZoneChoiceBox(QWidget* parent = nullptr);

    void reload(const Database& db, const ReportContext& context);
    void fill(ReportFilter& filter) const;
    // Chooses a zone by number (and clears chkAllZones); false when it is not listed.
    bool choose(int zone);

private:
    void showInfo();

    const Database* m_db = nullptr;
    bool m_client = false;
    QList<int> m_watched;
    QCheckBox* m_all = nullptr;
    QComboBox* m_zones = nullptr;
    QLabel* m_info = nullptr;
};

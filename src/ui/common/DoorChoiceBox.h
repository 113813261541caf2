#pragma once

#include <QGroupBox>
#include <QList>

class QCheckBox;
struct ReportFilter;

// Doors of a report: chkAllReaders, or the doors 1..4 ticked in chkReaders0..chkReaders3.
class DoorChoiceBox : public QGroupBox
{
    Q_OBJECT

public:
    explicit DoorChoiceBox(QWidget* parent = nullptr);

    void fill(ReportFilter& filter) const;

private:
    QCheckBox* m_all = nullptr;
    QList<QCheckBox*> m_doors;
};

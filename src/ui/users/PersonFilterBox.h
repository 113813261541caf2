#pragma once

#include <QGroupBox>
#include <optional>

class Database;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
struct ReportFilter;

// The person filters of a report. Each has its "all" box; the narrower choice counts only while
// that box is clear: one person found through the search dialog (cmdAra), the access group, the
// company, the department, the plate typed in txtPlate, the block and the flat typed in txtDaire.
class PersonFilterBox : public QGroupBox
{
    Q_OBJECT

public:
    enum Part
    {
        Person = 0x01,
        Group = 0x02,
        Company = 0x04,
        Department = 0x08,
        Plate = 0x10,
        Block = 0x20,
        Flat = 0x40,
        Everything = 0x7f
    };

    explicit PersonFilterBox(int parts, QWidget* parent = nullptr);

    // Fills the lists from the database (the choices made are kept where they still exist).
    void reload(const Database& db);
    void fill(ReportFilter& filter) const;
    // The person chosen for the report (and chkAllPersonel cleared).
    void setPerson(int id, const QString& name);
    int person() const { return m_person; }

private:
    QComboBox* addList(const QString& allName, const QString& allCaption, const QString& listName, int row);
    QLineEdit* addText(const QString& allName, const QString& allCaption, const QString& editName, int row);
    void searchPerson();
    static void fillList(QComboBox* list, const QList<QVariantList>& rows);
    static std::optional<int> chosen(const QComboBox* list);

    int m_parts = 0;
    const Database* m_db = nullptr;
    int m_person = 0;
    QCheckBox* m_allPersons = nullptr;
    QPushButton* m_search = nullptr;
    QComboBox* m_criteria = nullptr;
    QLabel* m_personNumber = nullptr;
    QLabel* m_personName = nullptr;
    QComboBox* m_groups = nullptr;
    QComboBox* m_companies = nullptr;
    QComboBox* m_departments = nullptr;
    QComboBox* m_blocks = nullptr;
    QLineEdit* m_plate = nullptr;
    QLineEdit* m_flat = nullptr;
};

#pragma once

#include "operations/configuration/GroupDetailRow.h"
#include "operations/configuration/GroupMasterRow.h"
#include "store/Message.h"

#include <QList>
#include <QString>
#include <optional>

class Database;

// The access groups (GroupsMaster) and what each may do on each panel (GroupsDetail). A group
// keeps one detail row per panel number 1..64; rows of a panel slot not in use carry serial 0 and
// are neither listed nor sent. Every change runs in one transaction, so a refused or failed
// change leaves both tables as they were. Rights are the caller's business.
class GroupRepository
{
public:
    static constexpr int FirstNumber = 1;
    static constexpr int LastNumber = 1280;
    static constexpr int PanelSlots = 64;

    struct Row
    {
        int number = 0;
        QString name; // as stored, blanks included
    };

    struct Result
    {
        bool ok = false;
        int number = 0; // the group concerned
        Message message; // for the person when refused or failed
        QString error; // database text, for the log
    };

    // Reading only: changes fail.
    explicit GroupRepository(const Database& db);
    explicit GroupRepository(Database& db);

    // Every group's number and name in number order.
    QList<Row> list(QString* error = nullptr) const;
    // Every group with all its settings, in number order (the order they are sent in).
    QList<GroupMasterRow> masters(QString* error = nullptr) const;
    std::optional<GroupMasterRow> find(int number, QString* error = nullptr) const;
    // The group's rows of the panels in use (serial above 0, panel 1..64) in panel order, with the
    // panel's and doors' names.
    QList<GroupDetailRow> details(int number, QString* error = nullptr) const;
    // The group's rows for one panel in the order they are sent.
    QList<GroupDetailRow> detailsForPanel(int number, int panelNo, QString* error = nullptr) const;
    // One row per panel in use, every door closed, no time group, zone 1: what a new group starts
    // with.
    QList<GroupDetailRow> freshDetails(QString* error = nullptr) const;
    // The number after the highest stored one; refused with "Grup No değeri 1280'i geçemez!".
    Result nextNumber() const;

    // A new group: its master row and its 64 detail rows, the panels' rows as in `details` (rows
    // not given start closed). A number out of range or in use is refused.
    Result add(const GroupMasterRow& master, const QList<GroupDetailRow>& details = {}) const;
    // The stored group's settings and the given detail rows (found by panel number); missing
    // detail rows are added.
    Result update(const GroupMasterRow& master, const QList<GroupDetailRow>& details = {}) const;
    // Only the given detail rows' doors, time groups and zones (found by group and panel).
    Result storeDetails(const QList<GroupDetailRow>& details) const;
    // The detail rows first, then the group.
    Result remove(int number) const;

    static bool inRange(int number);
    static Message deleteQuestion();
    // "n nolu grup bulunamadı."
    static Message notFound(int number);

private:
    QList<GroupMasterRow> selectMasters(const QString& where, const QVariantList& params, QString* error) const;
    QList<GroupDetailRow> selectDetails(const QString& where, const QVariantList& params, const QString& order,
                                        QString* error) const;
    bool writeDetails(const GroupMasterRow& master, const QList<GroupDetailRow>& details, bool fresh,
                      QString* error) const;

    const Database& m_db;
    // Null for a reading-only repository.
    Database* m_writable = nullptr;
};

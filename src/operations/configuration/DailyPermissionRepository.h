#pragma once

#include <QList>
#include <QString>

class Database;

// The daily passage approval of the members of an access group (Users.[Gunluk Gecis Onayi]).
// A group whose [Gunluk Onay Gerekli] is set lets its members pass only while approved.
class DailyPermissionRepository
{
public:
    struct Member
    {
        qint32 id = 0;
        qint64 card = 0;
        QString name;
        QString surname;
        bool approved = false;
        bool operator==(const Member&) const = default;
    };

    explicit DailyPermissionRepository(Database& db);

    // The members of the group in ID order.
    QList<Member> members(int group, QString* error = nullptr) const;
    // The group's name as stored (blanks trimmed); empty when there is no such group.
    QString groupName(int group, QString* error = nullptr) const;
    // Stores each member's approval in one transaction: all or nothing.
    bool store(const QList<Member>& members, QString* error = nullptr) const;
    // Every member of the group approved, or none.
    bool setAll(int group, bool approved, QString* error = nullptr) const;
    // Every approval back to no; returns how many changed, -1 on failure.
    int resetAll(QString* error = nullptr) const;
    // The members of every group that needs the daily approval, in ID order.
    QList<Member> membersNeedingApproval(QString* error = nullptr) const;

private:
    QList<Member> select(const QString& where, const QVariantList& params, QString* error) const;

    Database& m_db;
};

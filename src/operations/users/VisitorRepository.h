#pragma once

#include "operations/users/VisitRow.h"
#include "store/Message.h"

#include <QHash>
#include <QList>
#include <optional>

class Database;

// Visits: registering one (the visitor card must be a Users row of type visitor card or any
// existing user ID), listing a day's visits and removing one.
class VisitorRepository
{
public:
    explicit VisitorRepository(const Database& db);

    // Stores the visit and sets visitNo; the card number is taken from the visitor card's Users
    // row when it is 0. Refuses a card user ID that is not in Users ("Kullanıcı ID hatalı!").
    bool registerVisit(VisitRow& visit, Message* error = nullptr);
    // Visits of one day (every day when the date is null), newest first.
    QList<VisitRow> list(const QDate& day = QDate(), QString* error = nullptr) const;
    std::optional<VisitRow> byVisitNo(qint64 visitNo) const;
    // Visit number -> the visitor's name ("Adi Soyadi") of those of these visits that are stored.
    QHash<qint64, QString> namesOf(const QList<qint64>& visitNos, QString* error = nullptr) const;
    bool remove(qint64 visitNo, Message* error = nullptr);

private:
    const Database& m_db;
};

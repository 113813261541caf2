#pragma once

#include "operations/panels/PanelSlot.h"

#include <QDateTime>
#include <QString>
#include <optional>

class Database;

// Every statement the panel settings need: one PanelSettings row read and written whole, the
// serial carried into the panel's access group rows, a slot for a new panel and the clock offsets.
class PanelSettingsRepository
{
public:
    explicit PanelSettingsRepository(Database& db);

    // The row with that "Sira No"; nullopt when there is none (or on a failure, with *error).
    std::optional<PanelSlot> slot(qint32 order, QString* error = nullptr) const;
    // The first row (in list order) holding that panel number.
    std::optional<PanelSlot> slotOfPanel(qint32 panelNumber, QString* error = nullptr) const;
    // Writes the slot's columns into its row. "Panel Remote TCP Port", "Panel Local Capacity
    // Clear", "Gece Kapasiteyi Sil" and "Global APB Grup" are kept as they are, and so are the
    // clock offsets. False with *missing set when no row has the slot's "Sira No"; existing rows
    // only are written.
    bool store(const PanelSlot& slot, QString* error = nullptr, bool* missing = nullptr) const;
    // Puts the serial into the access group rows of that panel ("GroupsDetail").
    bool carrySerial(qint32 panelNumber, quint16 serial, QString* error = nullptr) const;
    // Sets *taken when a row other than order's holds that panel number; false on a failure.
    bool numberTakenElsewhere(qint32 panelNumber, qint32 order, bool* taken, QString* error = nullptr) const;
    // The first row not in use (no serial) among the first 64, else a new row after the last while
    // the list holds fewer than 64; the new row starts with the values a removed panel has.
    // 0 when every slot is in use, -1 on a failure.
    qint32 freeSlot(QString* error = nullptr) const;
    bool storeClockOffset(qint32 order, qint32 seconds, const QDateTime& readAt, QString* error = nullptr) const;

private:
    std::optional<PanelSlot> first(const QString& where, const QVariantList& params, QString* error) const;

    Database& m_db;
};

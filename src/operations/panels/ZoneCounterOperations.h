#pragma once

#include "operations/panels/WalkResult.h"

#include <QString>

struct OperationContext;

// The vehicle/person counter of a local zone (1 or 2) of the selected panel, against the zone's
// capacity. A zone of 0 means none is chosen ("Bir Lokal Bölge seçiniz").
class ZoneCounterOperations
{
public:
    explicit ZoneCounterOperations(OperationContext& context);

    // "%GR"; the count read comes back through *count (as a number when it reads as one).
    WalkResult read(qint32 zone, QString* count = nullptr);
    // Administrator check, "Mevcut araç/kullanıcı sayısını düzeltmek istiyor musunuz?", then the
    // value must be a whole number from 0 to below the capacity; "%GW" with it.
    WalkResult write(qint32 zone, const QString& value, const QString& capacity);
    // Administrator check, "Mevcut araç/kullanıcı sayısını silmek istiyor musunuz?", "%GW" with 0.
    WalkResult clear(qint32 zone);

private:
    WalkResult writeCount(qint32 zone, qint32 count);

    OperationContext& m_context;
};

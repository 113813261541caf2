#pragma once

#include "SimRecord.h"

#include <deque>

// The panel's passage memory. When it is full the oldest passage makes room for the newest, as the
// panel's ring memory does; the station is expected to fetch and erase in time.
class SimRecordMemory
{
public:
    static constexpr int kCapacity = 40000;
    static constexpr int kCapacityWithTemporaryGroups = 30000;

    explicit SimRecordMemory(int capacity = kCapacity);

    void append(const SimRecord& record);
    void clear();
    int count() const;
    int capacity() const;
    // A smaller capacity drops the oldest passages that no longer fit.
    void setCapacity(int capacity);
    const SimRecord& at(int index) const;
    int overwritten() const;

private:
    std::deque<SimRecord> m_records;
    int m_capacity;
    int m_overwritten = 0;
};

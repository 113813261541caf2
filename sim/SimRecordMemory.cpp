#include "SimRecordMemory.h"

#include <algorithm>

SimRecordMemory::SimRecordMemory(int capacity)
    : m_capacity(std::max(1, capacity))
{ }

void SimRecordMemory::append(const SimRecord& record)
{
    if (static_cast<int>(m_records.size()) >= m_capacity) {
        m_records.pop_front();
        ++m_overwritten;
    }
    m_records.push_back(record);
}

void SimRecordMemory::clear()
{
    m_records.clear();
}

int SimRecordMemory::count() const
{
    return static_cast<int>(m_records.size());
}

int SimRecordMemory::capacity() const
{
    return m_capacity;
}

void SimRecordMemory::setCapacity(int capacity)
{
    m_capacity = std::max(1, capacity);
    while (static_cast<int>(m_records.size()) > m_capacity) {
        m_records.pop_front();
        ++m_overwritten;
    }
}

const SimRecord& SimRecordMemory::at(int index) const
{
    return m_records.at(static_cast<size_t>(index));
}

int SimRecordMemory::overwritten() const
{
    return m_overwritten;
}

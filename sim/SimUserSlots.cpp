#include "SimUserSlots.h"

void SimUserSlots::insert(int id)
{
    if (m_positions.contains(id))
        return;
    m_positions.insert(id, m_ids.size());
    m_ids.append(id);
}

void SimUserSlots::remove(int id)
{
    const auto it = m_positions.find(id);
    if (it == m_positions.end())
        return;
    const qsizetype place = it.value();
    m_positions.erase(it);
    // The last number takes the freed place, so removal is constant time too.
    const int last = m_ids.takeLast();
    if (last != id) {
        m_ids[place] = last;
        m_positions.insert(last, place);
    }
}

void SimUserSlots::clear()
{
    m_ids.clear();
    m_positions.clear();
}

int SimUserSlots::size() const
{
    return int(m_ids.size());
}

bool SimUserSlots::contains(int id) const
{
    return m_positions.contains(id);
}

int SimUserSlots::at(int index) const
{
    return m_ids.at(index);
}

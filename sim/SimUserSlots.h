#pragma once

#include <QHash>
#include <QList>

// The numbers of the user slots that hold someone, packed so that any one of them is one index
// away: a random card holder is one draw, however few of the 20000 slots are used.
class SimUserSlots
{
public:
    void insert(int id);
    void remove(int id);
    void clear();
    int size() const;
    bool contains(int id) const;
    // The number at position index (0 .. size() - 1); the order is arbitrary.
    int at(int index) const;

private:
    QList<int> m_ids;
    QHash<int, qsizetype> m_positions; // number -> its place in m_ids
};

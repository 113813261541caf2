#include "SimProgrammedSlot.h"

#include "SimText.h"

bool SimProgrammedSlot::covers(int dayOfWeek, const QTime& time) const
{
    return active && dayOfWeek == weekday && time >= start && time < end;
}

std::optional<SimProgrammedSlot> SimProgrammedSlot::fromFields(const QByteArray& f)
{
    if (f.size() < kFieldsSize)
        return std::nullopt;
    const auto weekday = SimText::digits(f, 0, 1);
    const auto slot = SimText::digits(f, 1, 2);
    const auto active = SimText::flag(f, 3);
    const auto sh = SimText::digits(f, 4, 2);
    const auto sm = SimText::digits(f, 6, 2);
    const auto eh = SimText::digits(f, 8, 2);
    const auto em = SimText::digits(f, 10, 2);
    if (!weekday || !slot || !active || !sh || !sm || !eh || !em)
        return std::nullopt;
    if (*weekday < 1 || *weekday > 7 || *slot < 1 || *slot > kSlotsPerDay || *sh > 23 || *eh > 24 || *sm > 59
        || *em > 59)
        return std::nullopt;
    SimProgrammedSlot s;
    s.weekday = *weekday;
    s.slot = *slot;
    s.active = *active;
    s.start = QTime(*sh, *sm);
    // 24:00 closes the slot at the end of the day.
    s.end = *eh == 24 ? QTime(23, 59, 59, 999) : QTime(*eh, *em);
    for (int i = 0; i < 4; ++i) {
        const auto door = SimText::flag(f, 12 + i);
        const auto relay = SimText::flag(f, 20 + i);
        if (!door || !relay)
            return std::nullopt;
        s.doors[i] = *door;
        s.relays[i] = *relay;
    }
    return s;
}

QByteArray SimProgrammedSlot::toFields() const
{
    QByteArray f = SimText::number(weekday, 1) + SimText::number(slot, 2) + (active ? "1" : "0");
    f += SimText::number(start.hour(), 2) + SimText::number(start.minute(), 2);
    const bool endOfDay = end == QTime(23, 59, 59, 999);
    f += endOfDay ? QByteArray("2400") : SimText::number(end.hour(), 2) + SimText::number(end.minute(), 2);
    for (bool door : doors)
        f += door ? '1' : '0';
    f += "0000";
    for (bool relay : relays)
        f += relay ? '1' : '0';
    f += "0000";
    return f;
}

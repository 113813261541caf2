#pragma once

#include <QString>

// One column of a report: its key (stable, used by the command line and the field choice), its
// Turkish caption (translated when shown) and how its values are shown.
struct ReportColumn
{
    enum class Type
    {
        Integer,
        Text,
        DateTime, // QDateTime values
        Date, // QDate values
        Direction, // stored 0/1, shown "Giriş"/"Çıkış"
        PassageResult, // the passage code, shown as what the panel decided ("Geçiş Onaylandı", ...)
        Performer, // a door operation's code, shown as who carried it out (operator, button, program)
        StationText, // a station text kept in the database (an operation's name), shown translated
        Presence, // inside/outside state, shown "İçeride"/"Dışarıda"
        ZoneName, // filled with the chosen global zone's name
        Duration // whole minutes, shown "HH:mm"
    };

    QString key;
    QString caption;
    Type type = Type::Text;
    // A typical width in characters, for print layouts and spreadsheets.
    int width = 10;

    bool operator==(const ReportColumn&) const = default;
};

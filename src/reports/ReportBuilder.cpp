#include "reports/ReportBuilder.h"

#include "protocol/Direction.h"
#include "reports/ReportCatalogue.h"
#include "reports/ZoneDoors.h"
#include "store/Database.h"
#include "store/Whereabouts.h"

#include <QRegularExpression>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// A panel number that no panel has: every list starts with it, so a list of no chosen panels
// is still valid and matches nothing.
constexpr int kNoPanel = 200;

// Statement text made of fixed pieces, with the values bound in order.
struct Sql
{
    QString text;
    QVariantList params;

    void put(const QString& piece) { text += piece; }
    void put(const QString& piece, const QVariant& value)
    {
        text += piece;
        params << value;
    }
    // " AND column IN (?, ?, ...)" with the dummy first member.
    void inList(const QString& column, const QList<int>& members)
    {
        text += u" AND "_s + column + u" IN (?"_s;
        params << kNoPanel;
        for (int m : members) {
            text += u", ?"_s;
            params << m;
        }
        text += u')';
    }
};

const QString kUsersJoins = u" LEFT JOIN \"GroupsMaster\" g ON g.\"Grup No\" = u.\"Grup No\""
                            u" LEFT JOIN \"Sirketler\" s ON s.\"Sirket No\" = u.\"Sirket No\""
                            u" LEFT JOIN \"Departmanlar\" d ON d.\"Departman No\" = u.\"Departman No\""
                            u" LEFT JOIN \"Bloklar\" b ON b.\"Blok No\" = u.\"Blok No\""_s;

const QString kDate = u"a.\"Tarih\""_s;
const QString kNewestFirst = u" ORDER BY a.\"Tarih\" DESC, a.\"Kayit No\" DESC"_s;

QList<int> panelChoice(const ReportFilter& f, bool* restrict)
{
    if (!f.clientStation) {
        *restrict = !f.allPanels;
        return f.panels;
    }
    // A client never sees the records of panels it does not watch.
    *restrict = true;
    if (f.allPanels)
        return f.watchedPanels;
    QList<int> both;
    for (int p : f.panels) {
        if (f.watchedPanels.contains(p))
            both << p;
    }
    return both;
}

void addPanels(Sql& sql, const ReportFilter& f)
{
    bool restrict = false;
    const QList<int> panels = panelChoice(f, & restrict);
    if (restrict)
        sql.inList(u"a.\"Panel ID\""_s, panels);
}

void addDoors(Sql& sql, const ReportFilter& f)
{
    if (!f.allDoors)
        sql.inList(u"a.\"Kapi ID\""_s, f.doors);
}

// The doors of the chosen zone as (panel and its doors) terms; a zone without doors matches nothing.
void addZone(Sql& sql, const Database& db, const ReportFilter& f)
{
    if (f.zone <= 0)
        return;
    const ZoneDoors zone = ZoneDoors::load(db, f.zone, f.clientStation ? &f.watchedPanels : nullptr);
    if (zone.isEmpty()) {
        sql.put(u" AND 1 = 0"_s);
        return;
    }
    sql.put(u" AND ("_s);
    bool first = true;
    for (auto it = zone.doors().cbegin(); it != zone.doors().cend(); ++it) {
        sql.put(first ? u"(a.\"Panel ID\" = ?"_s : u" OR (a.\"Panel ID\" = ?"_s, it.key());
        Sql doors;
        doors.inList(u"a.\"Kapi ID\""_s, it.value());
        sql.put(doors.text);
        sql.params += doors.params;
        sql.put(u")"_s);
        first = false;
    }
    sql.put(u")"_s);
}

void addResult(Sql& sql, const ReportFilter& f)
{
    switch (f.result) {
    case ReportFilter::Result::All:
        return;
    case ReportFilter::Result::Granted:
        sql.put(u" AND a.\"Kod\" = ?"_s, storedNumber(PassageCode::Granted));
        return;
    case ReportFilter::Result::AntiPassback:
        sql.put(u" AND a.\"Kod\" = ?"_s, storedNumber(PassageCode::AntiPassback));
        return;
    case ReportFilter::Result::Denied:
        sql.put(u" AND a.\"Kod\" = ?"_s, storedNumber(PassageCode::Denied));
        return;
    case ReportFilter::Result::Unknown:
        sql.put(u" AND a.\"Kod\" = ?"_s, storedNumber(PassageCode::UnknownCard));
        return;
    }
}

void addDirection(Sql& sql, const ReportFilter& f)
{
    if (f.direction != ReportFilter::Direction::All)
        sql.put(u" AND a.\"Gecis Tipi\" = ?"_s,
                storedNumber(f.direction == ReportFilter::Direction::Entry ? Direction::Entry : Direction::Exit));
}

void addWindow(Sql& sql, const Database& db, const QDateTime& start, const QDateTime& end)
{
    sql.put(u" AND a.\"Tarih\" >= ?"_s, db.toSql(start));
    sql.put(u" AND a.\"Tarih\" <= ?"_s, db.toSql(end));
}

// Group, company, department, plate, block and flat of the person, each when chosen.
// Returns false when the flat is not a number.
bool addPersonFilters(Sql& sql, const ReportFilter& f, const QString& users, const QString& plateColumn)
{
    if (f.group)
        sql.put(u" AND "_s + users + u".\"Grup No\" = ?"_s, *f.group);
    if (f.company)
        sql.put(u" AND "_s + users + u".\"Sirket No\" = ?"_s, *f.company);
    if (f.department)
        sql.put(u" AND "_s + users + u".\"Departman No\" = ?"_s, *f.department);
    if (f.plate)
        sql.put(u" AND "_s + plateColumn + u" = ?"_s, *f.plate);
    if (f.block)
        sql.put(u" AND "_s + users + u".\"Blok No\" = ?"_s, *f.block);
    if (f.flat) {
        static const QRegularExpression digits(u"^[0-9]{1,9}$"_s);
        const QString typed = f.flat->trimmed();
        if (!digits.match(typed).hasMatch())
            return false;
        sql.put(u" AND "_s + users + u".\"Daire\" = ?"_s, typed.toInt());
    }
    return true;
}

void addOnlyGroupCompanyDepartment(Sql& sql, const ReportFilter& f, const QString& users)
{
    ReportFilter narrow;
    narrow.group = f.group;
    narrow.company = f.company;
    narrow.department = f.department;
    addPersonFilters(sql, narrow, users, {});
}

QString countOf(const QString& select)
{
    return u"SELECT count(*) FROM ("_s + select + u") t"_s;
}

ReportStatement refused(ReportStatement st, const Message& why)
{
    st.refusal = why;
    st.sql.clear();
    st.params.clear();
    st.pageSelect.clear();
    st.pageFrom.clear();
    st.pageParams.clear();
    st.pageOrder.clear();
    st.countSql.clear();
    st.countParams.clear();
    st.paging = ReportStatement::Paging::Whole;
    return st;
}

// The passage reports share their shape: filters, then newest first, read page by page. Every
// stored record is a row of its own.
void finishPaged(ReportStatement& st, const QString& select, const Sql& from)
{
    st.paging = ReportStatement::Paging::ByRecord;
    st.pageSelect = select;
    st.pageFrom = from.text;
    st.pageParams = from.params;
    st.sql = select + from.text + kNewestFirst;
    st.params = from.params;
    st.countSql = u"SELECT count(*)"_s + from.text;
    st.countParams = from.params;
}

// A passage report that lists each distinct row of its columns once, so records stored twice
// (a live frame sent again, a granted and a denied request of the same second) show once. The
// rows of one second are ordered by their other columns, so every reading gives the same order.
// `extra` adds columns that are filled in later (the zone's name).
void finishDistinct(ReportStatement& st, const QStringList& columns, const QString& extra, const Sql& from)
{
    const QString select = u"SELECT DISTINCT "_s + columns.join(u", "_s) + extra;
    QString order = u" ORDER BY "_s + kDate + u" DESC"_s;
    for (const QString& column : columns) {
        // Empty values first on both engines, which do not agree by themselves.
        if (column != kDate)
            order += u", "_s + column + u" NULLS FIRST"_s;
    }
    st.paging = ReportStatement::Paging::BySecond;
    st.pageSelect = select;
    st.pageFrom = from.text;
    st.pageParams = from.params;
    st.pageOrder = order;
    st.sql = select + from.text + order;
    st.params = from.params;
    st.countSql = countOf(select + from.text);
    st.countParams = from.params;
}

bool accessWindow(const ReportFilter& f, Sql& sql, const Database& db, ReportStatement& st)
{
    if (f.allDates)
        return true;
    QDateTime start;
    QDateTime end;
    ReportBuilder::dateWindow(f, &start, &end);
    if (!start.isValid() || !end.isValid()) {
        st.refusal = ReportBuilder::noDayMessage();
        return false;
    }
    if (start > end) {
        st.refusal = ReportBuilder::dateOrderMessage();
        return false;
    }
    addWindow(sql, db, start, end);
    return true;
}

// The end the passage reports share: the date window and the direction.
bool finishFilters(const Database& db, const ReportFilter& f, ReportStatement& st, Sql& from)
{
    if (!accessWindow(f, from, db, st))
        return false;
    addDirection(from, f);
    return true;
}

ReportStatement finishPassages(const Database& db, const ReportFilter& f, ReportStatement st, const QString& select,
                               Sql& from)
{
    if (!finishFilters(db, f, st, from))
        return refused(st, st.refusal);
    finishPaged(st, select, from);
    return st;
}

ReportStatement access(const Database& db, const ReportFilter& f, ReportStatement st)
{
    const QStringList columns = { u"a.\"ID\""_s,       u"a.\"Kart ID\""_s,    u"u.\"Adi\""_s,      u"u.\"Soyadi\""_s,
                                  u"u.\"TCKimlik\""_s, u"s.\"Adi\""_s,        u"d.\"Adi\""_s,      u"u.\"Plaka\""_s,
                                  u"b.\"Adi\""_s,      u"u.\"Daire\""_s,      u"g.\"Grup Adi\""_s, u"a.\"Panel ID\""_s,
                                  u"a.\"Kapi ID\""_s,  u"a.\"Gecis Tipi\""_s, u"a.\"Kod\""_s,      kDate };
    Sql from;
    from.put(u" FROM \"AccessDatas\" a LEFT JOIN \"Users\" u ON u.\"ID\" = a.\"ID\""_s + kUsersJoins);
    from.put(u" WHERE a.\"Kullanici Tipi\" = 0"_s);
    addPanels(from, f);
    addDoors(from, f);
    addZone(from, db, f);
    if (f.person > 0)
        from.put(u" AND a.\"ID\" = ?"_s, f.person);
    if (!addPersonFilters(from, f, u"u"_s, u"u.\"Plaka\""_s))
        return refused(st, ReportBuilder::flatNotNumberMessage());
    addResult(from, f);
    if (!finishFilters(db, f, st, from))
        return refused(st, st.refusal);
    finishDistinct(st, columns, f.zone > 0 ? u", NULL"_s : QString(), from);
    return st;
}

ReportStatement visitors(const Database& db, const ReportFilter& f, ReportStatement st)
{
    const QString select
        = u"SELECT a.\"Kart ID\", v.\"Adi\", v.\"Soyadi\", v.\"TCKimlik\", v.\"Plaka\", v.\"Ziyaret Sebebi\","
          u" COALESCE(h.\"Adi\", '') || ' ' || COALESCE(h.\"Soyadi\", ''), v.\"Tarih\", a.\"Panel ID\", a.\"Kapi ID\","
          u" a.\"Gecis Tipi\", a.\"Tarih\""_s
        + (f.zone > 0 ? u", NULL"_s : QString());
    Sql from;
    from.put(u" FROM \"AccessDatas\" a LEFT JOIN \"Visitors\" v ON v.\"Kayit No\" = a.\"Visitor No\""
             u" LEFT JOIN \"Users\" h ON h.\"ID\" = v.\"ID\""
             u" WHERE a.\"Kullanici Tipi\" = 1"_s);
    addPanels(from, f);
    addDoors(from, f);
    addZone(from, db, f);
    if (f.person > 0)
        from.put(u" AND v.\"ID\" = ?"_s, f.person);
    if (f.plate)
        from.put(u" AND v.\"Plaka\" = ?"_s, *f.plate);
    addResult(from, f);
    return finishPassages(db, f, std::move(st), select, from);
}

ReportStatement doorOperations(const Database& db, const ReportFilter& f, ReportStatement st)
{
    // The text of the operation number the record carries; panels that carry the operation's
    // source there (a door or relay) are named by the record's event code instead.
    const QString select = u"SELECT a.\"ID\", a.\"Panel ID\", a.\"Kapi ID\", a.\"Gecis Tipi\","
                           u" COALESCE(o.\"Operasyon\", c.\"Operasyon\"), a.\"Kod\", a.\"Tarih\""_s;
    Sql from;
    // The operation's text is joined from the side of the records: a code without text is kept.
    from.put(u" FROM \"AccessDatas\" a LEFT JOIN \"CodeOperation\" o ON o.\"TKod\" = a.\"ID\""
             u" LEFT JOIN \"CodeDefinition\" c ON c.\"TKod\" = a.\"Kod\""_s);
    if (f.operation && isDoorOperation(*f.operation))
        from.put(u" WHERE a.\"Kod\" = ?"_s, storedNumber(*f.operation));
    else
        from.put(u" WHERE a.\"Kod\" >= 5 AND a.\"Kod\" <= 10"_s);
    addPanels(from, f);
    addDoors(from, f);
    return finishPassages(db, f, std::move(st), select, from);
}

ReportStatement cameOrNot(const Database& db, const ReportFilter& f, ReportStatement st, bool came)
{
    if (!f.day.isValid())
        return refused(st, ReportBuilder::noDayMessage());
    Sql sql;
    sql.put(u"SELECT u.\"ID\", u.\"Kart ID\", u.\"Adi\", u.\"Soyadi\", u.\"TCKimlik\", s.\"Adi\", d.\"Adi\","
            u" u.\"Plaka\", b.\"Adi\", u.\"Daire\", g.\"Grup Adi\", u.\"Tmp\" FROM \"Users\" u"_s
            + kUsersJoins + u" WHERE u.\"ID\" > 0"_s);
    addOnlyGroupCompanyDepartment(sql, f, u"u"_s);
    // Judged by the card the person holds now: any granted entry with it in the day window.
    // The sub-select skips empty card numbers, which would make NOT IN match nobody.
    sql.put(came ? u" AND u.\"Kart ID\" IN (SELECT a.\"Kart ID\" FROM \"AccessDatas\" a"_s
                 : u" AND u.\"Kart ID\" NOT IN (SELECT a.\"Kart ID\" FROM \"AccessDatas\" a"_s);
    sql.put(u" WHERE a.\"Kullanici Tipi\" = 0 AND a.\"Kod\" = 1 AND a.\"Kart ID\" IS NOT NULL"_s);
    addZone(sql, db, f);
    QDateTime start;
    QDateTime end;
    ReportBuilder::dayWindow(f.day, &start, &end);
    addWindow(sql, db, start, end);
    sql.put(u" AND a.\"Gecis Tipi\" = 0)"_s);
    st.countSql = countOf(sql.text);
    st.countParams = sql.params;
    st.sql = sql.text + u" ORDER BY u.\"ID\""_s;
    st.params = sql.params;
    return st;
}

ReportStatement firstInLastOut(const Database& db, const ReportFilter& f, ReportStatement st)
{
    if (!f.day.isValid())
        return refused(st, ReportBuilder::noDayMessage());
    Sql sql;
    sql.put(u"SELECT a.\"ID\", a.\"Kart ID\", u.\"Adi\", u.\"Soyadi\", s.\"Adi\", d.\"Adi\", b.\"Adi\","
            u" g.\"Grup Adi\", MIN(a.\"Tarih\"), MAX(a.\"Tarih\")"_s
            + (f.zone > 0 ? u", NULL"_s : QString())
            + u" FROM \"AccessDatas\" a"
              u" LEFT JOIN \"Users\" u ON u.\"ID\" = a.\"ID\""_s
            + kUsersJoins + u" WHERE a.\"Kullanici Tipi\" = 0 AND a.\"Kod\" = 1"_s);
    addZone(sql, db, f);
    addOnlyGroupCompanyDepartment(sql, f, u"u"_s);
    if (f.person > 0)
        sql.put(u" AND a.\"ID\" = ?"_s, f.person);
    QDateTime start;
    QDateTime end;
    ReportBuilder::dayWindow(f.day, &start, &end);
    addWindow(sql, db, start, end);
    // Earliest and latest granted passage in either direction; a second card gives a second row.
    sql.put(u" GROUP BY a.\"ID\", a.\"Kart ID\", u.\"Adi\", u.\"Soyadi\", s.\"Adi\", d.\"Adi\", b.\"Adi\","
            u" g.\"Grup Adi\""_s);
    st.countSql = countOf(sql.text);
    st.countParams = sql.params;
    st.sql = sql.text + u" ORDER BY a.\"ID\", a.\"Kart ID\""_s;
    st.params = sql.params;
    return st;
}

ReportStatement personnel(const ReportFilter& f, ReportStatement st)
{
    Sql sql;
    sql.put(u"SELECT u.\"ID\", u.\"Kart ID\", u.\"Adi\", u.\"Soyadi\", u.\"TCKimlik\", s.\"Adi\", d.\"Adi\","
            u" u.\"Plaka\", b.\"Adi\", u.\"Daire\", g.\"Grup Adi\" FROM \"Users\" u"_s
            + kUsersJoins + u" WHERE u.\"ID\" > 0 AND u.\"Kullanici Tipi\" = 0"_s);
    if (f.person > 0)
        sql.put(u" AND u.\"ID\" = ?"_s, f.person);
    if (!addPersonFilters(sql, f, u"u"_s, u"u.\"Plaka\""_s))
        return refused(st, ReportBuilder::flatNotNumberMessage());
    st.countSql = countOf(sql.text);
    st.countParams = sql.params;
    st.sql = sql.text + u" ORDER BY u.\"ID\""_s;
    st.params = sql.params;
    return st;
}

// Each person's latest kept whereabouts per zone among the chosen panels: no later row of the same
// person and zone exists. Read in the order of the table's (zone, person) index, the statement
// gives its first rows at once, without reading the rest.
Sql keptWhereabouts(const ReportFilter& f)
{
    bool restrict = false;
    const QList<int> panels = panelChoice(f, & restrict);
    Sql sql;
    sql.put(u"SELECT a.\"ID\", a.\"Kart ID\", a.\"Global Bolge No\", a.\"Panel ID\", a.\"Kapi ID\","
            u" a.\"Gecis Tipi\", a.\"Tarih\", 1 AS rn FROM \"Whereabouts\" a WHERE NOT EXISTS (SELECT 1 FROM"
            u" \"Whereabouts\" n WHERE n.\"ID\" = a.\"ID\" AND n.\"Global Bolge No\" = a.\"Global Bolge No\""
            u" AND (n.\"Tarih\" > a.\"Tarih\" OR (n.\"Tarih\" = a.\"Tarih\" AND n.\"Kayit No\" > a.\"Kayit No\"))"_s);
    if (restrict)
        sql.inList(u"n.\"Panel ID\""_s, panels);
    sql.put(u")"_s);
    if (restrict)
        sql.inList(u"a.\"Panel ID\""_s, panels);
    if (f.zone > 0)
        sql.put(u" AND a.\"Global Bolge No\" = ?"_s, f.zone);
    if (f.person > 0)
        sql.put(u" AND a.\"ID\" = ?"_s, f.person);
    return sql;
}

ReportStatement inOut(const Database& db, const ReportFilter& f, ReportStatement st)
{
    // The latest granted passage of each person in each zone says where they are; a stored
    // anti-passback state of the person in that zone (1 inside, 0 outside) has the last word,
    // since resetting anti-passback sets everyone outside. Without a date range the kept
    // whereabouts give the same rows as the whole history at the cost of a row per person; a
    // backup made before they were kept has only the history.
    Sql inner;
    const bool kept = f.allDates && db.tableExists(Whereabouts::table());
    if (kept) {
        inner = keptWhereabouts(f);
    } else {
        inner.put(u"SELECT a.\"ID\", a.\"Kart ID\", a.\"Global Bolge No\", a.\"Panel ID\", a.\"Kapi ID\","
                  u" a.\"Gecis Tipi\", a.\"Tarih\", ROW_NUMBER() OVER (PARTITION BY a.\"ID\", a.\"Global Bolge No\""
                  u" ORDER BY a.\"Tarih\" DESC, a.\"Kayit No\" DESC) AS rn FROM \"AccessDatas\" a"
                  u" WHERE a.\"Kullanici Tipi\" = 0 AND a.\"Kod\" = 1"_s);
        addPanels(inner, f);
        if (f.zone > 0)
            inner.put(u" AND a.\"Global Bolge No\" = ?"_s, f.zone);
        if (f.person > 0)
            inner.put(u" AND a.\"ID\" = ?"_s, f.person);
        if (!accessWindow(f, inner, db, st))
            return refused(st, st.refusal);
    }
    const QString state = u"CASE WHEN p.\"APB\" IS NOT NULL THEN (CASE WHEN p.\"APB\" = 1 THEN 1 ELSE 0 END)"
                          u" WHEN t.\"Gecis Tipi\" = 0 THEN 1 ELSE 0 END"_s;
    Sql sql;
    sql.put(u"SELECT z.\"Global Bolge Adi\", t.\"ID\", t.\"Kart ID\", u.\"Adi\", u.\"Soyadi\", s.\"Adi\", d.\"Adi\", "_s
            + state + u", t.\"Panel ID\", t.\"Kapi ID\", t.\"Tarih\" FROM ("_s + inner.text + u") t"_s
            + u" LEFT JOIN \"UsersAPB\" p ON p.\"ID\" = t.\"ID\" AND p.\"Global Bolge No\" = t.\"Global Bolge No\""
              u" LEFT JOIN \"GlobalZones\" z ON z.\"Global Bolge No\" = t.\"Global Bolge No\""
              u" LEFT JOIN \"Users\" u ON u.\"ID\" = t.\"ID\""_s
            + kUsersJoins + u" WHERE t.rn = 1"_s);
    sql.params = inner.params;
    addOnlyGroupCompanyDepartment(sql, f, u"u"_s);
    // The state written out as conditions on the stored anti-passback row rather than on the
    // joined one, whose missing rows the server cannot estimate: with a fair estimate it walks
    // the key for the first rows instead of sorting them all.
    const QString apb = u"EXISTS (SELECT 1 FROM \"UsersAPB\" q WHERE q.\"ID\" = t.\"ID\""
                        u" AND q.\"Global Bolge No\" = t.\"Global Bolge No\" AND q.\"APB\" "_s;
    if (f.presence == ReportFilter::Presence::Inside)
        sql.put(u" AND ("_s + apb + u"= 1) OR (t.\"Gecis Tipi\" = 0 AND NOT "_s + apb + u"IS NOT NULL)))"_s);
    else if (f.presence == ReportFilter::Presence::Outside)
        sql.put(u" AND ("_s + apb + u"<> 1) OR (COALESCE(t.\"Gecis Tipi\", 1) <> 0 AND NOT "_s + apb
                + u"IS NOT NULL)))"_s);
    st.countSql = countOf(sql.text);
    st.countParams = sql.params;
    st.sql = sql.text + u" ORDER BY t.\"Global Bolge No\", t.\"ID\""_s;
    st.params = sql.params;
    if (kept) {
        // One row per zone and person: read in pages along that key.
        st.paging = ReportStatement::Paging::ByZoneAndPerson;
        st.pageSelect = sql.text.left(sql.text.indexOf(u" FROM ("_s));
        st.pageFrom = sql.text.mid(st.pageSelect.size());
        st.pageParams = sql.params;
    }
    return st;
}

ReportStatement monthly(const Database& db, const ReportFilter& f, ReportStatement st)
{
    if (!f.day.isValid())
        return refused(st, ReportBuilder::noDayMessage());
    const QDate first(f.day.year(), f.day.month(), 1);
    st.monthStart = first;
    const QString dayOf = db.isPostgreSQL() ? u"CAST(a.\"Tarih\" AS date)"_s : u"substr(a.\"Tarih\", 1, 10)"_s;
    Sql where;
    where.put(u" FROM \"AccessDatas\" a LEFT JOIN \"Users\" u ON u.\"ID\" = a.\"ID\""
              u" LEFT JOIN \"Departmanlar\" d ON d.\"Departman No\" = u.\"Departman No\""
              u" WHERE a.\"Kullanici Tipi\" = 0 AND a.\"Kod\" = 1"_s);
    where.put(u" AND a.\"Tarih\" >= ?"_s, db.toSql(QDateTime(first, QTime(0, 0))));
    where.put(u" AND a.\"Tarih\" < ?"_s, db.toSql(QDateTime(first.addMonths(1), QTime(0, 0))));
    addPanels(where, f);
    addZone(where, db, f);
    if (f.person > 0)
        where.put(u" AND a.\"ID\" = ?"_s, f.person);
    addOnlyGroupCompanyDepartment(where, f, u"u"_s);
    st.shape = ReportStatement::Shape::Monthly;
    st.sql = u"SELECT a.\"ID\", u.\"Adi\", u.\"Soyadi\", d.\"Adi\", "_s + dayOf
        + u", MIN(a.\"Tarih\"), MAX(a.\"Tarih\")"_s + where.text + u" GROUP BY a.\"ID\", u.\"Adi\", u.\"Soyadi\","
        + u" d.\"Adi\", "_s + dayOf + u" ORDER BY a.\"ID\", "_s + dayOf;
    st.params = where.params;
    st.countSql = u"SELECT count(DISTINCT a.\"ID\")"_s + where.text;
    st.countParams = where.params;
    for (int day = 1; day <= first.daysInMonth(); ++day)
        st.columns << ReportColumn{ u"day"_s + QString::number(day), QString::number(day).rightJustified(2, u'0'),
                                    ReportColumn::Type::Text, 11 };
    st.columns << ReportColumn{ u"days"_s, u"Gün"_s, ReportColumn::Type::Integer, 4 }
               << ReportColumn{ u"total"_s, u"Toplam Süre"_s, ReportColumn::Type::Duration, 7 };
    return st;
}

} // namespace

ReportStatement ReportBuilder::build(const Database& db, ReportKind kind, const ReportFilter& filter)
{
    ReportStatement st;
    st.kind = kind;
    const bool zoneColumn = filter.zone > 0;
    st.columns = ReportCatalogue::columns(kind, zoneColumn);
    if (filter.zone > 0)
        st.zoneName = ZoneDoors::zoneName(db, filter.zone);
    switch (kind) {
    case ReportKind::Access:
        return access(db, filter, st);
    case ReportKind::Visitors:
        return visitors(db, filter, st);
    case ReportKind::DoorOperations:
        return doorOperations(db, filter, st);
    case ReportKind::Came:
        return cameOrNot(db, filter, st, true);
    case ReportKind::NotCome:
        return cameOrNot(db, filter, st, false);
    case ReportKind::FirstInLastOut:
        return firstInLastOut(db, filter, st);
    case ReportKind::Personnel:
        return personnel(filter, st);
    case ReportKind::InOut:
        return inOut(db, filter, st);
    case ReportKind::Monthly:
        return monthly(db, filter, st);
    }
    return st;
}

void ReportBuilder::dateWindow(const ReportFilter& f, QDateTime* start, QDateTime* end)
{
    if (f.allDates) {
        *start = QDateTime();
        *end = QDateTime();
        return;
    }
    const QDate last = f.twoDates ? f.dateEnd : f.dateStart;
    const QTime from = f.twoHours ? f.hourStart : QTime(0, 0, 0);
    const QTime to = f.twoHours ? f.hourEnd : QTime(23, 59, 59);
    *start = f.dateStart.isValid() && from.isValid() ? QDateTime(f.dateStart, from) : QDateTime();
    *end = last.isValid() && to.isValid() ? QDateTime(last, to) : QDateTime();
}

void ReportBuilder::dayWindow(const QDate& day, QDateTime* start, QDateTime* end)
{
    // A passage stamped exactly at midnight does not count for the day.
    *start = QDateTime(day, QTime(0, 0, 1));
    *end = QDateTime(day, QTime(23, 59, 59));
}

Message ReportBuilder::flatNotNumberMessage()
{
    return Message(u"Daire numarası bir sayı olmalıdır!"_s);
}

Message ReportBuilder::dateOrderMessage()
{
    return Message(u"Başlangıç tarihi bitiş tarihinden sonra olamaz!"_s);
}

Message ReportBuilder::noDayMessage()
{
    return Message(u"Lütfen geçerli bir tarih seçiniz!"_s);
}

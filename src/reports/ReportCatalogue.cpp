#include "reports/ReportCatalogue.h"

#include "store/Translate.h"

using namespace Qt::StringLiterals;

namespace {

using Type = ReportColumn::Type;

ReportColumn col(const QString& key, const QString& caption, Type type, int width)
{
    return { key, caption, type, width };
}

const QList<ReportColumn>& accessColumns()
{
    static const QList<ReportColumn> c = {
        col(u"id"_s, u"ID"_s, Type::Integer, 6),
        col(u"card"_s, u"Kart ID"_s, Type::Integer, 11),
        col(u"name"_s, u"Adı"_s, Type::Text, 12),
        col(u"surname"_s, u"Soyadı"_s, Type::Text, 12),
        col(u"identity"_s, u"TCKimlik"_s, Type::Text, 12),
        col(u"company"_s, u"Sirket"_s, Type::Text, 12),
        col(u"department"_s, u"Departman"_s, Type::Text, 12),
        col(u"plate"_s, u"Plaka_Sicil"_s, Type::Text, 10),
        col(u"block"_s, u"Blok"_s, Type::Text, 8),
        col(u"flat"_s, u"Daire"_s, Type::Integer, 5),
        col(u"group"_s, u"Grup Adı"_s, Type::Text, 12),
        col(u"panel"_s, u"Panel"_s, Type::Integer, 5),
        col(u"door"_s, u"Kapı"_s, Type::Integer, 4),
        col(u"direction"_s, u"Geçiş"_s, Type::Direction, 6),
        col(u"result"_s, u"Sonuç"_s, Type::PassageResult, 14),
        col(u"date"_s, u"Tarih"_s, Type::DateTime, 18),
    };
    return c;
}

const QList<ReportColumn>& visitorColumns()
{
    static const QList<ReportColumn> c = {
        col(u"card"_s, u"Kart ID"_s, Type::Integer, 11),     col(u"name"_s, u"Adı"_s, Type::Text, 12),
        col(u"surname"_s, u"Soyadı"_s, Type::Text, 12),      col(u"identity"_s, u"TCKimlik"_s, Type::Text, 12),
        col(u"plate"_s, u"Plaka"_s, Type::Text, 10),         col(u"reason"_s, u"Ziyaret Sebebi"_s, Type::Text, 14),
        col(u"host"_s, u"Ziyaret Edilen"_s, Type::Text, 16), col(u"visit"_s, u"Ziyaret Tarihi"_s, Type::DateTime, 18),
        col(u"panel"_s, u"Panel"_s, Type::Integer, 5),       col(u"door"_s, u"Kapı"_s, Type::Integer, 4),
        col(u"direction"_s, u"Geçiş"_s, Type::Direction, 6), col(u"date"_s, u"Tarih"_s, Type::DateTime, 18),
    };
    return c;
}

const QList<ReportColumn>& operationColumns()
{
    static const QList<ReportColumn> c = {
        col(u"id"_s, u"ID"_s, Type::Integer, 5),
        col(u"panel"_s, u"Panel"_s, Type::Integer, 5),
        col(u"door"_s, u"Kapı"_s, Type::Integer, 4),
        col(u"direction"_s, u"Geçiş"_s, Type::Direction, 6),
        col(u"operation"_s, u"Operasyon"_s, Type::StationText, 18),
        col(u"performer"_s, u"Yapan"_s, Type::Performer, 12),
        col(u"date"_s, u"Tarih"_s, Type::DateTime, 18),
    };
    return c;
}

const QList<ReportColumn>& presenceColumns()
{
    static const QList<ReportColumn> c = {
        col(u"id"_s, u"ID"_s, Type::Integer, 6),
        col(u"card"_s, u"Kart ID"_s, Type::Integer, 11),
        col(u"name"_s, u"Adı"_s, Type::Text, 12),
        col(u"surname"_s, u"Soyadı"_s, Type::Text, 12),
        col(u"identity"_s, u"TCKimlik"_s, Type::Text, 12),
        col(u"company"_s, u"Şirket"_s, Type::Text, 12),
        col(u"department"_s, u"Departman"_s, Type::Text, 12),
        col(u"plate"_s, u"Plaka"_s, Type::Text, 10),
        col(u"block"_s, u"Blok"_s, Type::Text, 8),
        col(u"flat"_s, u"Daire"_s, Type::Integer, 5),
        col(u"group"_s, u"Geçiş Grubu"_s, Type::Text, 12),
        col(u"zone"_s, u"Global Bölge Adı"_s, Type::ZoneName, 12),
    };
    return c;
}

const QList<ReportColumn>& firstLastColumns()
{
    static const QList<ReportColumn> c = {
        col(u"id"_s, u"ID"_s, Type::Integer, 6),
        col(u"card"_s, u"Kart ID"_s, Type::Integer, 11),
        col(u"name"_s, u"Adı"_s, Type::Text, 12),
        col(u"surname"_s, u"Soyadı"_s, Type::Text, 12),
        col(u"company"_s, u"Şirket"_s, Type::Text, 12),
        col(u"department"_s, u"Departman"_s, Type::Text, 12),
        col(u"block"_s, u"Blok"_s, Type::Text, 8),
        col(u"group"_s, u"Grup"_s, Type::Text, 12),
        col(u"first"_s, u"İlk Kayıt"_s, Type::DateTime, 18),
        col(u"last"_s, u"Son Kayıt"_s, Type::DateTime, 18),
    };
    return c;
}

const QList<ReportColumn>& personnelColumns()
{
    static const QList<ReportColumn> c = {
        col(u"id"_s, u"ID"_s, Type::Integer, 6),
        col(u"card"_s, u"Kart ID"_s, Type::Integer, 11),
        col(u"name"_s, u"Adı"_s, Type::Text, 12),
        col(u"surname"_s, u"Soyadı"_s, Type::Text, 12),
        col(u"identity"_s, u"TCKimlik"_s, Type::Text, 12),
        col(u"company"_s, u"Şirket"_s, Type::Text, 12),
        col(u"department"_s, u"Departman"_s, Type::Text, 12),
        col(u"plate"_s, u"Plaka_Sicil"_s, Type::Text, 10),
        col(u"block"_s, u"Blok"_s, Type::Text, 8),
        col(u"flat"_s, u"Daire"_s, Type::Integer, 5),
        col(u"group"_s, u"Grup Adı"_s, Type::Text, 12),
    };
    return c;
}

const QList<ReportColumn>& inOutColumns()
{
    static const QList<ReportColumn> c = {
        col(u"zone"_s, u"Global Bölge Adı"_s, Type::Text, 12), col(u"id"_s, u"ID"_s, Type::Integer, 6),
        col(u"card"_s, u"Kart ID"_s, Type::Integer, 11),       col(u"name"_s, u"Adı"_s, Type::Text, 12),
        col(u"surname"_s, u"Soyadı"_s, Type::Text, 12),        col(u"company"_s, u"Şirket"_s, Type::Text, 12),
        col(u"department"_s, u"Departman"_s, Type::Text, 12),  col(u"state"_s, u"Durum"_s, Type::Presence, 9),
        col(u"panel"_s, u"Panel"_s, Type::Integer, 5),         col(u"door"_s, u"Kapı"_s, Type::Integer, 4),
        col(u"date"_s, u"Son Geçiş"_s, Type::DateTime, 18),
    };
    return c;
}

} // namespace

QList<ReportKind> ReportCatalogue::all()
{
    return { ReportKind::Access,    ReportKind::Visitors, ReportKind::DoorOperations,
             ReportKind::Came,      ReportKind::NotCome,  ReportKind::FirstInLastOut,
             ReportKind::Personnel, ReportKind::InOut,    ReportKind::Monthly };
}

QString ReportCatalogue::cliName(ReportKind kind)
{
    switch (kind) {
    case ReportKind::Access:
        return u"access"_s;
    case ReportKind::Visitors:
        return u"visitors"_s;
    case ReportKind::DoorOperations:
        return u"door-operations"_s;
    case ReportKind::Came:
        return u"came"_s;
    case ReportKind::NotCome:
        return u"not-came"_s;
    case ReportKind::FirstInLastOut:
        return u"first-last"_s;
    case ReportKind::Personnel:
        return u"personnel"_s;
    case ReportKind::InOut:
        return u"in-out"_s;
    case ReportKind::Monthly:
        return u"monthly"_s;
    }
    return {};
}

std::optional<ReportKind> ReportCatalogue::fromCliName(const QString& name)
{
    for (ReportKind kind : all()) {
        if (cliName(kind) == name)
            return kind;
    }
    return std::nullopt;
}

QString ReportCatalogue::formTitle(ReportKind kind)
{
    switch (kind) {
    case ReportKind::Access:
        return u"Personel Raporları"_s;
    case ReportKind::Came:
    case ReportKind::NotCome:
    case ReportKind::FirstInLastOut:
        return u"Gelen-Gelmeyen ve Ilk Giriş-Son Çıkış Raporları"_s;
    case ReportKind::DoorOperations:
        return u"Diğer Geçiş Raporları"_s;
    default:
        return reportName(kind);
    }
}

QString ReportCatalogue::reportName(ReportKind kind)
{
    switch (kind) {
    case ReportKind::Access:
        return u"Personel Raporu"_s;
    case ReportKind::Visitors:
        return u"Ziyaretçi Raporu"_s;
    case ReportKind::DoorOperations:
        return u"Diğer Geçiş Raporu"_s;
    case ReportKind::Came:
        return u"Gelen Personel Raporu"_s;
    case ReportKind::NotCome:
        return u"Gelmeyen Personel Raporu"_s;
    case ReportKind::FirstInLastOut:
        return u"İlk Giriş - Son Çıkış Raporu"_s;
    case ReportKind::Personnel:
        return u"Personel Listesi"_s;
    case ReportKind::InOut:
        return u"Bölgedeki Personel Raporu"_s;
    case ReportKind::Monthly:
        return u"Aylık Giriş-Çıkış Raporu"_s;
    }
    return {};
}

QString ReportCatalogue::printTitle(ReportKind kind, const ReportFilter& filter)
{
    QString title = Translate(reportName(kind));
    if (kind == ReportKind::Access)
        title += u" - "_s + Translate(resultTitle(filter.result));
    return title;
}

QString ReportCatalogue::sheetTitle(ReportKind kind, const QString& zoneName)
{
    QString title = Translate(reportName(kind));
    if (!zoneName.isEmpty())
        title += u' ' + Translate(u"Global Bölge"_s) + u": "_s + zoneName;
    return title;
}

QString ReportCatalogue::titleRange(ReportKind kind)
{
    return kind == ReportKind::DoorOperations ? u"A1:E1"_s : u"A1:F1"_s;
}

QList<ReportColumn> ReportCatalogue::columns(ReportKind kind, bool withZone)
{
    QList<ReportColumn> c;
    switch (kind) {
    case ReportKind::Access:
        c = accessColumns();
        break;
    case ReportKind::Visitors:
        c = visitorColumns();
        break;
    case ReportKind::DoorOperations:
        return operationColumns();
    case ReportKind::Came:
    case ReportKind::NotCome:
        // The zone column is always there; it stays blank without a zone.
        return presenceColumns();
    case ReportKind::FirstInLastOut:
        c = firstLastColumns();
        break;
    case ReportKind::Personnel:
        return personnelColumns();
    case ReportKind::InOut:
        return inOutColumns();
    case ReportKind::Monthly:
        // The day columns depend on the month: the builder adds them.
        return { col(u"id"_s, u"ID"_s, Type::Integer, 6), col(u"name"_s, u"Adı"_s, Type::Text, 12),
                 col(u"surname"_s, u"Soyadı"_s, Type::Text, 12), col(u"department"_s, u"Departman"_s, Type::Text, 12) };
    }
    if (withZone)
        c << col(u"zone"_s, u"Global Bölge Adı"_s, Type::ZoneName, 12);
    return c;
}

QString ReportCatalogue::resultCaption(ReportFilter::Result result)
{
    switch (result) {
    case ReportFilter::Result::All:
        return u"Tüm Kayıtlar"_s;
    case ReportFilter::Result::Granted:
        return u"Onaylanan Geçişler"_s;
    case ReportFilter::Result::AntiPassback:
        return u"Antibassback İhlalleri"_s;
    case ReportFilter::Result::Denied:
        return u"Engellenen İstekler"_s;
    case ReportFilter::Result::Unknown:
        return u"Tanımsız Kartlar"_s;
    }
    return {};
}

QString ReportCatalogue::resultTitle(ReportFilter::Result result)
{
    if (result == ReportFilter::Result::AntiPassback)
        return u"Antipassback İhlalleri"_s;
    return resultCaption(result);
}

QString ReportCatalogue::operationCaption(PassageCode code)
{
    switch (code) {
    case PassageCode::OperatorTrigger:
        return u"Operatör Tetiklemeleri"_s;
    case PassageCode::OperatorOpen:
        return u"Operatör Açma"_s;
    case PassageCode::OperatorClose:
        return u"Operatör Kapatma"_s;
    case PassageCode::ButtonTrigger:
        return u"Buton Tetiklemeleri"_s;
    case PassageCode::ProgrammedOpen:
        return u"Programlı Açma"_s;
    case PassageCode::ProgrammedClose:
        return u"Programlı Kapama"_s;
    default:
        return {};
    }
}

QString ReportCatalogue::directionText(Direction direction)
{
    return direction == Direction::Entry ? u"Giriş"_s : u"Çıkış"_s;
}

QString ReportCatalogue::resultText(PassageCode code)
{
    switch (code) {
    case PassageCode::Denied:
        return u"Geçiş Reddedildi"_s;
    case PassageCode::Granted:
        return u"Geçiş Onaylandı"_s;
    case PassageCode::AntiPassback:
        return u"Antipassback İhlali"_s;
    case PassageCode::OutOfTime:
        return u"Zaman Dışı Geçiş"_s;
    case PassageCode::UnknownCard:
        return u"Tanımsız Kart"_s;
    default:
        return {};
    }
}

QString ReportCatalogue::performerText(PassageCode code)
{
    switch (code) {
    case PassageCode::OperatorTrigger:
    case PassageCode::OperatorOpen:
    case PassageCode::OperatorClose:
        return u"Operatör"_s;
    case PassageCode::ButtonTrigger:
        return u"Çıkış Butonu"_s;
    case PassageCode::ProgrammedOpen:
    case PassageCode::ProgrammedClose:
        return u"Haftalık Program"_s;
    default:
        return {};
    }
}

QString ReportCatalogue::presenceText(bool inside)
{
    return inside ? u"İçeride"_s : u"Dışarıda"_s;
}

QString ReportCatalogue::recordCountText()
{
    return u"Kayıt Sayısı"_s;
}

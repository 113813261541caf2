#include "ui/common/ColumnHeading.h"

#include <QHash>

using namespace Qt::StringLiterals;

QString columnHeading(const QString& column)
{
    static const QHash<QString, QString> headings{
        { u"Adi"_s, u"Adı"_s },
        { u"Soyadi"_s, u"Soyadı"_s },
        { u"Kullanici Tipi"_s, u"Kullanıcı Tipi"_s },
        { u"Sifre"_s, u"Şifre"_s },
        { u"Gecis Modu"_s, u"Geçiş Modu"_s },
        { u"Gecici Grup Aktif"_s, u"Geçici Grup Aktif"_s },
        { u"Gecici Grup No"_s, u"Geçici Grup No"_s },
        { u"Gecici Grup Tarih"_s, u"Geçici Grup Tarihi"_s },
        { u"Gecici Grup Saat"_s, u"Geçici Grup Saati"_s },
        { u"Sirket No"_s, u"Şirket No"_s },
        { u"TCKimlik"_s, u"TC Kimlik No"_s },
        { u"Kayit No"_s, u"Kayıt No"_s },
    };
    return headings.value(column, column);
}

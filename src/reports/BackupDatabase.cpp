#include "reports/BackupDatabase.h"

#include "reports/ReportConnections.h"

using namespace Qt::StringLiterals;

bool BackupDatabase::open(const QString& location, Message* fallback, QString* error)
{
    close();
    QString why;
    if (location.trimmed().isEmpty()) {
        why = u"No backup database was chosen."_s;
    } else if (m_db.open(location, Database::OpenMode::ReadOnly, &why)) {
        // A database without passage records cannot stand in for the main one.
        if (!m_db.tableExists(u"AccessDatas"_s)) {
            why = u"The chosen database holds no passage records: "_s + location;
            m_db.close();
        }
    }
    if (m_db.isOpen())
        return true;
    if (fallback)
        *fallback = fallbackMessage();
    if (error)
        *error = why;
    return false;
}

void BackupDatabase::close()
{
    // The reports' kept connections to the backup go with it.
    if (m_db.isOpen())
        ReportConnections::close(m_db.location());
    m_db.close();
}

bool BackupDatabase::isOpen() const
{
    return m_db.isOpen();
}

const Database& BackupDatabase::choose(const Database& main) const
{
    return m_db.isOpen() ? m_db : main;
}

Message BackupDatabase::fallbackMessage()
{
    return Message(u"Seçilen veritabanına bağlantı sağlanamadı, Ana veritabanı kullanılacak."_s);
}

Message BackupDatabase::invalidFileMessage()
{
    return Message(u"Geçersiz dosya adı!"_s);
}

QString BackupDatabase::dialogTitle()
{
    return u"Yedek Veritabanı Seç"_s;
}

QString BackupDatabase::fileFilter()
{
    return u"Veritabanı Dosyaları"_s;
}

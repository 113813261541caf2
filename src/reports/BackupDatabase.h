#pragma once

#include "store/Database.h"
#include "store/Message.h"

#include <QString>

// A backup database chosen for a report instead of the main one. When it cannot be opened or
// holds no passage records the report falls back on the main database, and the operator is told
// "Seçilen veritabanına bağlantı sağlanamadı, Ana veritabanı kullanılacak.".
class BackupDatabase
{
public:
    // Opens the backup; false when the main database must be used (fallback says so, error says
    // why for the log).
    bool open(const QString& location, Message* fallback = nullptr, QString* error = nullptr);
    void close();
    bool isOpen() const;

    // The backup when open, otherwise the main database.
    const Database& choose(const Database& main) const;

    static Message fallbackMessage();
    // "Geçersiz dosya adı!" for an empty choice of file.
    static Message invalidFileMessage();
    // Title and filter of the file choice.
    static QString dialogTitle();
    static QString fileFilter();

private:
    Database m_db;
};

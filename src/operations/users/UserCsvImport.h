#pragma once

#include "store/Message.h"

#include <QList>

class Database;
class QIODevice;

// Imports users from a semicolon-separated text file, one user a line (UTF-8):
//
//   ID;Kart ID;Adi;Soyadi;Grup No;Sifre;Gecis Modu;Kullanici Tipi;Sirket No;Departman No;Plaka
//
// ID and card are required (the card from 1 to the largest number the panels carry); the columns
// after Soyadi may be left out or empty (0 / blank). A first line that starts with "ID" is a
// header and skipped, as are empty lines. A user whose ID exists already is updated (names
// included), others are added. Every line is checked first: a bad line is reported with its
// number and nothing at all is stored.
class UserCsvImport
{
public:
    struct Result
    {
        bool ok = false;
        int added = 0;
        int updated = 0;
        // One message per refused line ("<line> nolu satır: ..."), or the database error.
        QList<Message> errors;
    };

    explicit UserCsvImport(Database& db);

    Result run(QIODevice& input);

private:
    Database& m_db;
};

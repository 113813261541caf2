#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class Translator;

// The language database (KX-410_Lang.db): table ChLS with the columns BaseTR, BaseEN, BaseAR,
// built from the text table shipped with the program (i18n/texts.tsv, UTF-8, tab-separated,
// one header line) and read whole into a Translator at start.
class LanguageDatabase
{
public:
    struct Row
    {
        QString turkish;
        QString english;
        QString arabic;
        bool operator==(const Row&) const = default;
    };

    // The text table compiled into the program.
    static QString shippedTablePath();

    // Parses the tab-separated table; fails on a row with fewer than three columns.
    static bool parseTable(const QByteArray& tsv, QList<Row>* rows, QString* error = nullptr);
    static bool readTable(const QString& tsvPath, QList<Row>* rows, QString* error = nullptr);

    // Builds the database at dbPath from the table, replacing any file there only once the new
    // one is complete. The table's checksum is kept in the database to tell when it is outdated.
    static bool build(const QString& dbPath, const QString& tsvPath, QString* error = nullptr);
    // Builds the database when it is missing or was built from another table. A file that is
    // there but is not a readable database is left alone and reported.
    static bool ensureCurrent(const QString& dbPath, const QString& tsvPath, QString* error = nullptr);
    // Reads every row of ChLS into the translator (replacing its rows; the language is kept).
    static bool load(const QString& dbPath, Translator& translator, QString* error = nullptr);

    static QByteArray checksum(const QByteArray& tsv);
};

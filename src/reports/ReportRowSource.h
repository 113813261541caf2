#pragma once

#include "reports/ReportColumn.h"
#include "reports/ReportStatement.h"
#include "store/Database.h"

#include <QHash>
#include <QList>
#include <QSqlQuery>
#include <QVariant>
#include <memory>

// The rows of a report, read as they are asked for: a screen of rows comes back without the
// whole result being read, more follow on demand, and the count is a statement of its own.
// The source reads over a connection of its own (kept open for the next report when it closes),
// so the reading goes on undisturbed by whatever else runs on the caller's connection. Use it on
// the thread that opened it.
//
// Values come back ready to show: date-times as QDateTime holding the stored wall-clock reading
// in UTC (compare date() and time(), not instants with local date-times), directions and states as their
// texts in the current language (as is the passage result and a door operation's text and
// performer), the zone name filled in, the monthly view folded into one row per person.
struct ReportPageKey;

class ReportRowSource
{
public:
    ReportRowSource();
    ~ReportRowSource();
    ReportRowSource(const ReportRowSource&) = delete;
    ReportRowSource& operator=(const ReportRowSource&) = delete;

    // How the rows will be asked for.
    enum class Reading
    {
        Screens, // a screen at a time, perhaps never to the end: pages that each start at once
        Through // every row, for a file or a printer: on PostgreSQL one statement streamed row by
                // row, since each page would cost the server a plan and a round trip of its own
    };

    // Runs the statement on a connection of its own to db's database. A refused statement opens
    // as an empty source.
    bool open(const Database& db, const ReportStatement& statement, QString* error = nullptr,
              Reading reading = Reading::Screens);
    // Hands out rows read before (shaped already, station texts in Turkish, as a grid holds them)
    // instead of reading the database: a file written from a window holds exactly the rows the
    // window shows.
    void openRows(const ReportStatement& statement, const QList<QVariantList>& rows);
    // Keeps station texts (directions, results, ...) in Turkish, for a grid that translates them
    // as it shows them and so follows a change of language. Set before open().
    void keepTurkishTexts(bool keep) { m_keepTurkish = keep; }
    // Columns whose values are station texts.
    static bool isStationText(ReportColumn::Type type);
    void close();
    bool isOpen() const;

    const ReportStatement& statement() const { return m_statement; }
    const QList<ReportColumn>& columns() const { return m_statement.columns; }

    // Up to maxRows further rows; fewer (or none) at the end.
    QList<QVariantList> fetch(int maxRows);
    bool atEnd() const { return m_atEnd; }
    qint64 fetchedCount() const { return m_fetched; }
    // A reading error met while fetching, if any.
    QString error() const { return m_error; }

    // The number of rows of the whole report, counted by the database.
    static qint64 count(const Database& db, const ReportStatement& statement, QString* error = nullptr);
    // Whole minutes as "HH:mm" (the monthly view's totals).
    static QString durationText(qint64 minutes);

private:
    void readPage(int limit);
    // A page continuing after the last row read by the given key (passages, or zone and person).
    void readKeyedPage(const ReportPageKey& key, int limit);
    void readSecondsPage(int limit);
    bool readRaw(QVariantList* row);
    QVariantList shaped(const QVariantList& raw) const;
    // A Turkish station text in the current language.
    QString shown(const QString& turkish) const;
    bool nextMonthlyRow(QVariantList* row);

    ReportStatement m_statement;
    std::unique_ptr<Database> m_db;
    std::unique_ptr<QSqlQuery> m_query;
    int m_width = -1;
    bool m_atEnd = true;
    qint64 m_fetched = 0;
    QString m_error;
    // Paged reading: where the last page ended (date as bound, record number), the rows of the
    // page read but not yet handed out, and whether the database holds no further page.
    bool m_havePosition = false;
    QVariant m_lastDate;
    QVariant m_lastNumber;
    QList<QVariantList> m_page;
    qsizetype m_pageNext = 0;
    bool m_lastPage = false;
    bool m_fromRows = false;
    bool m_keepTurkish = false;
    QList<int> m_textColumns;
    // Monthly view: the first raw row of the next person, read ahead.
    QVariantList m_pending;
    mutable QHash<QString, QString> m_shown;
};

#pragma once

#include "WindowDriver.h"
#include "store/Clock.h"
#include "store/Database.h"
#include "support/TestDatabases.h"
#include "ui/reports/ReportContext.h"

#include <QAbstractButton>
#include <QStringList>
#include <QWidget>

class ReportGridModel;
class ReportWindow;

// A fresh SQLite database holding the small site of the report tests (see ReportFixture), and
// the helpers the report window tests share: finding and working controls by name, reading the
// grid as the person sees it, and pictures of the windows when KX_SCREENSHOT_DIR is set.
// Message boxes are answered with OK and recorded.
class ReportWindowFixture
{
public:
    ReportWindowFixture();
    ~ReportWindowFixture();

    bool isReady() const { return m_ready; }
    QString error() const { return m_error; }
    Database& db() { return m_db; }
    // A server station's context, or a client's watching the given panels.
    ReportContext context() const;
    ReportContext clientContext(const QList<int>& watched) const;
    // A folder for written files and backups.
    QString folder() const;

    // Adds `count` granted entries of person 3 at panel 3, ten seconds apart from 06:00 of the site's day.
    bool addPassages(int count);
    // A second database holding one passage of its own, as a backup copy would.
    QString makeBackup(QString* error = nullptr);

    template <typename T> static T* find(const QWidget* window, const QString& name)
    {
        return WindowDriver::find<T>(window, name);
    }
    // Clicks the named button (false when missing or disabled).
    static bool click(const QWidget* window, const QString& name);
    // Sets a check box or option by name (false when missing or disabled).
    static bool setChecked(const QWidget* window, const QString& name, bool on);
    // Ticks exactly these entries (by their data) of a checkable list.
    static void tickList(const QWidget* window, const QString& name, const QList<QVariant>& values);

    // Every row read and the texts of one column, by the column's key.
    static QStringList columnTexts(ReportGridModel* model, const QString& key);
    static int columnOf(ReportGridModel* model, const QString& key);
    static QString recordCount(const QWidget* window);
    // Makes the report and gives one column's texts ("(not made)" when the button is missing or
    // disabled).
    static QStringList made(const ReportWindow& window, const QString& key);

    static void screenshot(QWidget* window, const QString& name);

private:
    TestDatabases m_databases;
    Database m_db;
    ManualClock m_clock{ QDateTime(QDate(2016, 1, 31), QTime(9, 5, 3)) };
    bool m_ready = false;
    QString m_error;
};

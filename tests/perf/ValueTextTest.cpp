#include "reports/ReportValueText.h"

#include <QTest>

class ValueTextTest : public QObject
{
    Q_OBJECT

private slots:
    void datesAreWrittenAsTheGeneralFormatWouldWriteThem()
    {
        // Dates are put together digit by digit; the result must be the general formatter's, for
        // single and double digits and years of fewer or more than four digits.
        ReportColumn dateTime;
        dateTime.type = ReportColumn::Type::DateTime;
        ReportColumn date;
        date.type = ReportColumn::Type::Date;
        const QList<QDateTime> samples
            = { QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5), Qt::UTC),
                QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59)), QDateTime(QDate(987, 6, 5), QTime(4, 3, 2), Qt::UTC),
                QDateTime(QDate(10000, 1, 1), QTime(0, 0), Qt::UTC), QDateTime(QDate(-5, 3, 1), QTime(0, 0), Qt::UTC) };
        for (const QDateTime& dt : samples) {
            QCOMPARE(ReportValueText::text(QVariant(dt), dateTime), dt.toString(ReportValueText::dateTimeFormat()));
            QCOMPARE(ReportValueText::text(QVariant(dt.date()), date),
                     dt.date().toString(ReportValueText::dateFormat()));
        }
        // Empty, null and invalid values give nothing.
        QCOMPARE(ReportValueText::text(QVariant(), dateTime), QString());
        QCOMPARE(ReportValueText::text(QVariant(QDateTime()), dateTime), QString());
        QCOMPARE(ReportValueText::text(QVariant(QDate()), date), QString());
    }
};

QTEST_GUILESS_MAIN(ValueTextTest)
#include "ValueTextTest.moc"

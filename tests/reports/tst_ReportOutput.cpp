#include <QTest>
class ReportOutputTest : public QObject
{
    Q_OBJECT
};
QTEST_MAIN(ReportOutputTest)
#include "tst_ReportOutput.moc"

#include "ReportWindowFixture.h"

#include "ReportFixture.h"
#include "ShippedLanguage.h"
#include "ui/common/MessageBox.h"
#include "ui/reports/ReportGridModel.h"
#include "ui/reports/ReportWindow.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>

using namespace Qt::StringLiterals;

ReportWindowFixture::ReportWindowFixture()
{
    MessageBox::setDefaultAnswer(QMessageBox::Ok);
    MessageBox::clearShownTexts();
    m_ready = m_databases.openFresh(TestDatabases::SQLite, m_db, true, &m_error) && ReportFixture::seed(m_db, &m_error);
}

ReportWindowFixture::~ReportWindowFixture()
{
    m_db.close();
}

ReportContext ReportWindowFixture::context() const
{
    ReportContext c;
    c.db = const_cast<Database*>(&m_db);
    c.backupFolder = folder();
    c.clock = &m_clock;
    return c;
}

ReportContext ReportWindowFixture::clientContext(const QList<int>& watched) const
{
    ReportContext c = context();
    c.clientStation = true;
    c.watchedPanels = watched;
    return c;
}

QString ReportWindowFixture::folder() const
{
    return m_databases.tempPath();
}

bool ReportWindowFixture::addPassages(int count)
{
    QList<QVariantList> rows;
    const QDateTime first(ReportFixture::day(), QTime(6, 0, 0));
    for (int i = 0; i < count; ++i)
        rows.append({ 3, 1, 1, 3, 1003, m_db.toSql(first.addSecs(10 * i)), 0, 1, 0, 0 });
    return ReportFixture::addRecords(m_db, rows, &m_error);
}

QString ReportWindowFixture::makeBackup(QString* error)
{
    // A database with the station's tables and one passage the main one does not have.
    Database backup;
    if (!m_databases.openFresh(TestDatabases::SQLite, backup, true, error))
        return QString();
    const bool ok = ReportFixture::addRecords(
        backup, { { 9, 4, 0, 77, 7777, backup.toSql(QDateTime(ReportFixture::day(), QTime(12, 0))), 1, 1, 0, 0 } },
        error);
    const QString path = backup.location();
    backup.close();
    return ok ? path : QString();
}

bool ReportWindowFixture::click(const QWidget* window, const QString& name)
{
    return WindowDriver::clickEnabled(window, name);
}

bool ReportWindowFixture::setChecked(const QWidget* window, const QString& name, bool on)
{
    auto* button = find<QAbstractButton>(window, name);
    if (!button || !button->isEnabled())
        return false;
    button->setChecked(on);
    return true;
}

void ReportWindowFixture::tickList(const QWidget* window, const QString& name, const QList<QVariant>& values)
{
    auto* list = find<QListWidget>(window, name);
    if (!list)
        return;
    for (int row = 0; row < list->count(); ++row) {
        QListWidgetItem* item = list->item(row);
        item->setCheckState(values.contains(item->data(Qt::UserRole)) ? Qt::Checked : Qt::Unchecked);
    }
}

int ReportWindowFixture::columnOf(ReportGridModel* model, const QString& key)
{
    for (int i = 0; i < model->columns().size(); ++i) {
        if (model->columns().at(i).key == key)
            return i;
    }
    return -1;
}

QStringList ReportWindowFixture::columnTexts(ReportGridModel* model, const QString& key)
{
    model->fetchAll();
    const int column = columnOf(model, key);
    QStringList texts;
    for (int row = 0; column >= 0 && row < model->rowCount(); ++row)
        texts.append(model->index(row, column).data().toString());
    return texts;
}

QString ReportWindowFixture::recordCount(const QWidget* window)
{
    auto* label = find<QLabel>(window, u"lblRecordCount"_s);
    if (!label)
        return {};
    // The count is made on a thread of its own and shown when it is ready; one that never comes
    // reads as "...".
    const bool counted = QTest::qWaitFor([label] { return label->text() != u"..."_s; }, 60000);
    Q_UNUSED(counted);
    return label->text();
}

QStringList ReportWindowFixture::made(const ReportWindow& window, const QString& key)
{
    if (!click(&window, u"cmdMakeReport"_s))
        return { u"(not made)"_s };
    return columnTexts(window.model(), key);
}

void ReportWindowFixture::screenshot(QWidget* window, const QString& name)
{
    ShippedLanguage::screenshot(window, name);
}

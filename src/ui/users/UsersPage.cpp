#include "ui/users/UsersPage.h"

#include "operations/configuration/GroupRepository.h"
#include "operations/users/CalendarChoices.h"
#include "operations/users/UserRepository.h"
#include "store/CodeTable.h"
#include "store/LookupTable.h"
#include "store/RightsCheck.h"
#include "store/Translate.h"
#include "ui/common/Caption.h"
#include "ui/common/ChoiceDelegate.h"
#include "ui/common/FileDialog.h"
#include "ui/common/MessageBox.h"
#include "ui/main/WindowOperator.h"
#include "ui/users/UserFilterModel.h"
#include "ui/users/UserTableModel.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
QMap<int, QString> codeNames(const Database& db, CodeTable::Kind kind)
{
    QMap<int, QString> names;
    for (const CodeTable::Row& row : CodeTable(kind).rows(db))
        names.insert(row.code, Translate(row.name.trimmed()));
    return names;
}

QMap<int, QString> lookupNames(const Database& db, LookupTable::Kind kind)
{
    QMap<int, QString> names;
    for (const LookupTable::Row& row : LookupTable(kind).rows(db))
        names.insert(row.key, row.name.trimmed());
    return names;
}

QMap<int, QString> groupNames(const Database& db)
{
    QMap<int, QString> names;
    for (const GroupRepository::Row& group : GroupRepository(db).list())
        names.insert(group.number, group.name.trimmed());
    return names;
}
} // namespace

UsersPage::UsersPage(const PageServices& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
{
    setObjectName(u"tabUsers"_s);

    m_search = new QLineEdit(this);
    m_search->setObjectName(u"txtSearchUser"_s);
    setCaption(m_search, u"Kullanıcı Arama"_s);
    m_search->setClearButtonEnabled(true);

    m_model = new UserTableModel(this);
    m_proxy = new UserFilterModel(this);
    m_proxy->setSourceModel(m_model);
    m_grid = new QTableView(this);
    m_grid->setObjectName(u"grdUsers"_s);
    m_grid->setModel(m_proxy);
    m_grid->setItemDelegate(new ChoiceDelegate(m_grid));
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                            | QAbstractItemView::AnyKeyPressed);
    m_grid->verticalHeader()->setVisible(false);
    connect(m_search, &QLineEdit::textChanged, m_proxy, &UserFilterModel::setSearchText);
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentChanged, this, &UsersPage::showPicture);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &UsersPage::showPicture);

    m_picture = new QLabel(this);
    m_picture->setObjectName(u"imgUser"_s);
    m_picture->setFixedSize(160, 200);
    m_picture->setFrameShape(QFrame::StyledPanel);
    m_picture->setAlignment(Qt::AlignCenter);

    auto* add = new QPushButton(this);
    add->setObjectName(u"cmdAddUser"_s);
    setCaption(add, u"Yeni"_s);
    auto* saveButton = new QPushButton(this);
    saveButton->setObjectName(u"cmdSaveUser"_s);
    setCaption(saveButton, u"Kaydet"_s);
    auto* remove = new QPushButton(this);
    remove->setObjectName(u"cmdDeleteUser"_s);
    setCaption(remove, u"Sil"_s);
    auto* refresh = new QPushButton(this);
    refresh->setObjectName(u"cmdRefreshUsers"_s);
    setCaption(refresh, u"Yenile"_s);
    auto* picture = new QPushButton(this);
    picture->setObjectName(u"cmdSelectPicture"_s);
    setCaption(picture, u"Resim Seç"_s);
    connect(add, &QPushButton::clicked, this, &UsersPage::addUser);
    connect(saveButton, &QPushButton::clicked, this, &UsersPage::save);
    connect(remove, &QPushButton::clicked, this, &UsersPage::deleteUser);
    connect(refresh, &QPushButton::clicked, this, &UsersPage::reload);
    connect(picture, &QPushButton::clicked, this, &UsersPage::choosePicture);

    auto* side = new QVBoxLayout;
    side->addWidget(m_picture);
    side->addWidget(picture);
    side->addSpacing(12);
    side->addWidget(add);
    side->addWidget(saveButton);
    side->addWidget(remove);
    side->addWidget(refresh);
    side->addStretch();
    auto* main = new QVBoxLayout;
    main->addWidget(m_search);
    main->addWidget(m_grid);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(main, 1);
    layout->addLayout(side);

    reload();
}

void UsersPage::loadChoices()
{
    const Database& db = *m_services.db;
    m_model->setChoices(UserTableModel::UserType, codeNames(db, CodeTable::Kind::UserTypes));
    m_model->setChoices(UserTableModel::PassageMode, codeNames(db, CodeTable::Kind::PassageModes));
    m_model->setChoices(UserTableModel::Group, groupNames(db));
    m_model->setChoices(UserTableModel::CalendarNo, CalendarChoices::read(db));
    m_model->setChoices(UserTableModel::Company, lookupNames(db, LookupTable::Kind::Companies));
    m_model->setChoices(UserTableModel::Department, lookupNames(db, LookupTable::Kind::Departments));
    m_model->setChoices(UserTableModel::Block, lookupNames(db, LookupTable::Kind::Blocks));
}

void UsersPage::reload()
{
    const qint64 current = selectedRecordNo();
    loadChoices();
    m_model->setRows(UserRepository(*m_services.db).list());
    m_grid->resizeColumnsToContents();
    if (!selectRecordNo(current) && m_proxy->rowCount() > 0)
        m_grid->setCurrentIndex(m_proxy->index(0, 0));
    showPicture();
}

int UsersPage::currentSourceRow() const
{
    const QModelIndex current = m_grid->currentIndex();
    return current.isValid() ? m_proxy->mapToSource(current).row() : -1;
}

qint64 UsersPage::selectedRecordNo() const
{
    const int row = currentSourceRow();
    return row >= 0 ? m_model->row(row).recordNo : 0;
}

bool UsersPage::selectRecordNo(qint64 recordNo)
{
    if (recordNo <= 0)
        return false;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_model->row(row).recordNo != recordNo)
            continue;
        const QModelIndex at = m_proxy->mapFromSource(m_model->index(row, 0));
        if (!at.isValid())
            return false;
        m_grid->setCurrentIndex(at);
        return true;
    }
    return false;
}

bool UsersPage::save()
{
    const QList<int> pending = m_model->pendingRows();
    if (pending.isEmpty())
        return true;
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return false;
    UserRepository users(*m_services.db);
    const QMap<int, QString> groups = groupNames(*m_services.db);
    QList<Message> refusals;
    QList<qint32> withoutGroup;
    for (int index : pending) {
        UserRow row = m_model->row(index);
        Message refusal = UserRepository::validate(row);
        if (refusal.isEmpty()) {
            const bool stored = row.recordNo == 0 ? users.add(row, &refusal) : users.update(row, &refusal);
            if (stored) {
                m_model->markSaved(index, row);
                // Stored all the same: the group may be made later, but the panels refuse the
                // card until then.
                if (!groups.contains(row.groupNo))
                    withoutGroup.append(row.id);
                continue;
            }
        }
        refusals.append(refusal);
    }
    if (refusals.size() == 1)
        MessageBox::warning(this, refusals.constFirst());
    else if (refusals.size() > 1)
        MessageBox::warning(this, Message(u"Çoklu hatalı işlem yürütüldü, Tekrar deneyiniz!"_s));
    if (!withoutGroup.isEmpty()) {
        Message warning;
        for (qint32 id : std::as_const(withoutGroup)) {
            if (!warning.isEmpty())
                warning.newLine();
            warning.value(id).add(u" nolu kullanıcının geçiş grubu tanımlı değil! Kullanıcı panellerden geçemez."_s);
        }
        MessageBox::warning(this, warning);
    }
    if (refusals.size() < pending.size()) {
        if (refusals.isEmpty())
            MessageBox::information(this, Message(u"Kullanıcı bilgileri kaydedildi."_s));
        Q_EMIT usersChanged();
    }
    return refusals.isEmpty();
}

void UsersPage::addUser()
{
    qint32 next = UserRepository(*m_services.db).highestId();
    for (int row = 0; row < m_model->rowCount(); ++row)
        next = qMax(next, m_model->row(row).id);
    UserRow row;
    row.id = next + 1;
    // The search would hide the new row.
    m_search->clear();
    const int at = m_model->appendRow(row);
    const QModelIndex card = m_proxy->mapFromSource(m_model->index(at, UserTableModel::Card));
    m_grid->setCurrentIndex(card);
    m_grid->scrollTo(card);
}

void UsersPage::deleteUser()
{
    const int row = currentSourceRow();
    if (row < 0) {
        MessageBox::warning(this, Message(u"Kullanıcı listesi boş!"_s));
        return;
    }
    if (MessageBox::question(this, Message(u"Bu kaydı silmek istiyor musunuz?"_s)) != QMessageBox::Yes)
        return;
    const qint64 recordNo = m_model->row(row).recordNo;
    if (recordNo == 0) {
        // Never saved: nothing to remove from the database.
        m_model->removeRowAt(row);
        return;
    }
    if (!checkAdministratorRights(*m_services.session, *m_services.op))
        return;
    Message error;
    if (!UserRepository(*m_services.db).remove(recordNo, &error)) {
        MessageBox::warning(this, error);
        return;
    }
    m_model->removeRowAt(row);
    Q_EMIT usersChanged();
}

void UsersPage::showPicture()
{
    const int row = currentSourceRow();
    const QString name = row >= 0 ? m_model->row(row).picture.trimmed() : QString();
    const QDir folder(m_services.pictureFolder);
    QString file = name.isEmpty() ? QString() : folder.filePath(name);
    if (file.isEmpty() || !QFileInfo::exists(file))
        file = folder.filePath(u"NoImage.jpg"_s);
    if (file == m_shownPicture)
        return;
    m_shownPicture = file;
    const QPixmap pixmap(file);
    if (pixmap.isNull())
        m_picture->clear();
    else
        m_picture->setPixmap(pixmap.scaled(m_picture->size(), Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

void UsersPage::choosePicture()
{
    const int row = currentSourceRow();
    if (row < 0) {
        MessageBox::warning(this, Message(u"Kullanıcı listesi boş!"_s));
        return;
    }
    const QString chosen
        = FileDialog::getOpenFileName(this, Translate(u"Resim Seç"_s), m_services.pictureFolder,
                                      Translate(u"Resim Dosyaları"_s) + u" (*.jpg *.jpeg *.png *.bmp)"_s);
    if (chosen.isEmpty())
        return;
    const QFileInfo source(chosen);
    const QDir folder(m_services.pictureFolder);
    // Only a file name is stored: a picture from elsewhere is copied into the picture folder.
    if (QFileInfo(folder.filePath(source.fileName())).absoluteFilePath() != source.absoluteFilePath()) {
        folder.mkpath(u"."_s);
        QFile::remove(folder.filePath(source.fileName()));
        QFile::copy(source.absoluteFilePath(), folder.filePath(source.fileName()));
    }
    UserRow changed = m_model->row(row);
    changed.picture = source.fileName();
    m_model->replaceRow(row, changed);
}

void UsersPage::retranslate()
{
    loadChoices();
    m_model->retranslate();
    // Captions and chosen names change length with the language.
    m_grid->resizeColumnsToContents();
}

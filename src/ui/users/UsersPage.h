#pragma once

#include "ui/main/PageServices.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QTableView;
class UserFilterModel;
class UserTableModel;

// The users page: every card holder in a grid whose columns are edited in place, a search box
// that narrows the grid while typing, the person's photograph, and new / save / delete / refresh.
// Saving and deleting need administrator rights; the checks of a row (ID 1..20000, unique ID and
// card) are the user store's, and a refused row stays in the grid, still marked unsaved.
class UsersPage : public QWidget
{
    Q_OBJECT

public:
    explicit UsersPage(const PageServices& services, QWidget* parent = nullptr);

    // Reads Users and the tables behind the picker columns again (unsaved edits are dropped).
    void reload();
    // "Kayit No" of the user selected in the grid; 0 when none is selected or it is not saved.
    qint64 selectedRecordNo() const;
    // Makes the row of this record number the current one (false when it is not listed).
    bool selectRecordNo(qint64 recordNo);
    UserTableModel* model() const { return m_model; }
    QTableView* grid() const { return m_grid; }

    // Saves every changed or new row; false when one was refused or rights were missing.
    bool save();
    void addUser();
    void deleteUser();
    // The file shown in the photograph box (the person's picture or NoImage.jpg).
    QString shownPicture() const { return m_shownPicture; }

    void retranslate();

Q_SIGNALS:
    void usersChanged();

private:
    void loadChoices();
    void showPicture();
    void choosePicture();
    int currentSourceRow() const;

    PageServices m_services;
    UserTableModel* m_model = nullptr;
    UserFilterModel* m_proxy = nullptr;
    QTableView* m_grid = nullptr;
    QLineEdit* m_search = nullptr;
    QLabel* m_picture = nullptr;
    QString m_shownPicture;
};

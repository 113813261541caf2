#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

class QTabWidget;

// A tab whose page is made the first time it is needed: when the tab is first chosen, or when
// code asks for the page. Until then an empty stand-in holds the tab's place and caption; the
// page then takes the stand-in's place. A station window opens on its first tab, and making every
// other page (grids, their first reading of the database, their styling) before it is shown would
// only delay the window.
class LazyPage : public QObject
{
    Q_OBJECT

public:
    using Factory = std::function<QWidget*()>;

    // Adds the stand-in to the tabs, captioned with `turkish`.
    LazyPage(QTabWidget* tabs, const QString& turkish, Factory factory, QObject* parent);

    // The page, made now when it was not yet.
    QWidget* page();
    bool isBuilt() const { return m_page != nullptr; }

private:
    void tabChosen(int index);

    QTabWidget* m_tabs;
    QString m_turkish;
    Factory m_factory;
    QPointer<QWidget> m_standIn;
    QPointer<QWidget> m_page;
};

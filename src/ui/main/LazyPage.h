#pragma once

#include <QWidget>
#include <functional>

class QTabWidget;

// A tab page whose contents are made the first time they are needed: when the tab is first
// shown, or when code asks for the page. A station window opens on its first tab, and making every
// other page (grids, their first reading of the database, their styling) before it is shown would
// only delay the window.
class LazyPage : public QWidget
{
    Q_OBJECT

public:
    using Factory = std::function<QWidget*(LazyPage* holder)>;

    // Adds a holder for the page to the tabs, captioned with `turkish`.
    static LazyPage* add(QTabWidget* tabs, const QString& turkish, Factory factory);

    // The page, made now when it was not yet.
    QWidget* page();
    bool isBuilt() const { return m_page != nullptr; }

Q_SIGNALS:
    void built(QWidget* page);

protected:
    void showEvent(QShowEvent* event) override;

private:
    explicit LazyPage(Factory factory);

    Factory m_factory;
    QWidget* m_page = nullptr;
};

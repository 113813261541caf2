#include "ui/main/LazyPage.h"

#include "ui/common/Caption.h"

#include <QSignalBlocker>
#include <QTabWidget>

LazyPage::LazyPage(QTabWidget* tabs, const QString& turkish, Factory factory, QObject* parent)
    : QObject(parent)
    , m_tabs(tabs)
    , m_turkish(turkish)
    , m_factory(std::move(factory))
{
    m_standIn = new QWidget;
    tabs->addTab(m_standIn, QString());
    setCaption(m_standIn, turkish);
    connect(tabs, &QTabWidget::currentChanged, this, &LazyPage::tabChosen);
}

QWidget* LazyPage::page()
{
    if (m_page || !m_factory)
        return m_page;
    // Made once; a factory that asks for its own page while it runs gets null.
    const Factory factory = std::exchange(m_factory, {});
    QWidget* made = factory();
    m_page = made;
    const int at = m_tabs->indexOf(m_standIn);
    {
        // The tab stays where it was and stays chosen if it was: nobody is told of a change of tab.
        const QSignalBlocker quiet(m_tabs);
        const bool chosen = at >= 0 && m_tabs->currentIndex() == at;
        if (at >= 0) {
            m_tabs->insertTab(at, made, m_tabs->tabText(at));
            m_tabs->removeTab(at + 1);
        } else {
            m_tabs->addTab(made, QString());
        }
        if (chosen)
            m_tabs->setCurrentIndex(at);
    }
    setCaption(made, m_turkish);
    // Perhaps inside the stand-in's own change of tab.
    if (m_standIn)
        m_standIn->deleteLater();
    disconnect(m_tabs, &QTabWidget::currentChanged, this, &LazyPage::tabChosen);
    return made;
}

void LazyPage::tabChosen(int index)
{
    if (m_standIn && m_tabs->widget(index) == m_standIn)
        page();
}

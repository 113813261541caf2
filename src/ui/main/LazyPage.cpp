#include "ui/main/LazyPage.h"

#include "ui/common/Caption.h"

#include <QTabWidget>
#include <QVBoxLayout>

LazyPage::LazyPage(Factory factory)
    : m_factory(std::move(factory))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

LazyPage* LazyPage::add(QTabWidget* tabs, const QString& turkish, Factory factory)
{
    auto* holder = new LazyPage(std::move(factory));
    tabs->addTab(holder, QString());
    setCaption(holder, turkish);
    return holder;
}

QWidget* LazyPage::page()
{
    if (!m_page) {
        // Made once; a factory that asks for its own page while it runs gets null.
        Factory factory = std::exchange(m_factory, {});
        if (!factory)
            return nullptr;
        m_page = factory(this);
        layout()->addWidget(m_page);
        Q_EMIT built(m_page);
    }
    return m_page;
}

void LazyPage::showEvent(QShowEvent* event)
{
    page();
    QWidget::showEvent(event);
}

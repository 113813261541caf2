#include "ui/main/WindowOperator.h"

#include "store/Translate.h"
#include "ui/common/MessageBox.h"

#include <QLabel>
#include <QProgressBar>
#include <QThread>

using namespace Qt::StringLiterals;

WindowOperator::WindowOperator(QWidget* window, QProgressBar* progressBar, QLabel* statusLine, QObject* parent)
    : QObject(parent)
    , m_window(window)
    , m_progressBar(progressBar)
    , m_statusLine(statusLine)
{ }

void WindowOperator::setLoginHandler(std::function<void()> handler)
{
    m_loginHandler = std::move(handler);
}

template <typename F> void WindowOperator::onWindowThread(F f)
{
    if (QThread::currentThread() == thread())
        f();
    else
        QMetaObject::invokeMethod(this, f, Qt::BlockingQueuedConnection);
}

bool WindowOperator::ask(const Message& question)
{
    bool yes = false;
    onWindowThread([&] { yes = MessageBox::question(m_window, question) == QMessageBox::Yes; });
    return yes;
}

void WindowOperator::tell(const Message& message, Kind kind)
{
    onWindowThread([&] {
        switch (kind) {
        case Kind::Information:
            MessageBox::information(m_window, message);
            break;
        case Kind::Warning:
            MessageBox::warning(m_window, message);
            break;
        case Kind::Error:
            MessageBox::critical(m_window, message);
            break;
        }
    });
}

void WindowOperator::progress(int value, int maximum)
{
    onWindowThread([&] {
        if (!m_progressBar)
            return;
        if (maximum <= 0) {
            m_progressBar->reset();
            m_progressBar->setVisible(false);
            return;
        }
        m_progressBar->setRange(0, maximum);
        m_progressBar->setValue(qBound(0, value, maximum));
        m_progressBar->setVisible(true);
    });
}

void WindowOperator::status(const Message& line)
{
    onWindowThread([&] {
        // One line: a message of several lines would grow the status bar and stay half visible.
        if (m_statusLine)
            m_statusLine->setText(Translate(line).split(u'\n', Qt::SkipEmptyParts).join(u"  "_s));
    });
}

void WindowOperator::requestLogin()
{
    onWindowThread([&] {
        if (m_loginHandler)
            m_loginHandler();
    });
}

bool WindowOperator::cancelRequested() const
{
    return m_cancel.load();
}

void WindowOperator::requestCancel()
{
    m_cancel.store(true);
}

void WindowOperator::clearCancel()
{
    m_cancel.store(false);
}

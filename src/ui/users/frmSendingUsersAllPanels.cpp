#include "ui/users/frmSendingUsersAllPanels.h"

#include "store/Translate.h"
#include "ui/common/Caption.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

frmSendingUsersAllPanels::frmSendingUsersAllPanels(QWidget* parent)
    : QDialog(parent)
{
    setObjectName(u"frmSendingUsersAllPanels"_s);
    setCaption(this, u"Tüm Panellere Kullanıcılar Gönderiliyor ..."_s);
    setModal(false);

    m_progress = new QProgressBar(this);
    m_progress->setObjectName(u"prgSending"_s);
    m_progress->setRange(0, 1);
    m_progress->setValue(0);

    m_message = new QLabel(this);
    m_message->setObjectName(u"lblMessage"_s);
    m_message->setWordWrap(true);
    m_message->setMinimumWidth(360);

    m_cancelButton = new QPushButton(this);
    m_cancelButton->setObjectName(u"cmdCancel"_s);
    setCaption(m_cancelButton, u"İptal"_s);
    connect(m_cancelButton, &QPushButton::clicked, this, [this] {
        m_cancel.store(true);
        Q_EMIT cancelPressed();
    });

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_progress);
    layout->addWidget(m_message);
    layout->addWidget(m_cancelButton, 0, Qt::AlignHCenter);
}

template <typename F> void frmSendingUsersAllPanels::onWindowThread(F f)
{
    if (QThread::currentThread() == thread())
        f();
    else
        QMetaObject::invokeMethod(this, f, Qt::BlockingQueuedConnection);
}

void frmSendingUsersAllPanels::setProgress(int value, int maximum)
{
    onWindowThread([&] {
        m_progress->setRange(0, qMax(1, maximum));
        m_progress->setValue(qBound(0, value, qMax(1, maximum)));
    });
}

void frmSendingUsersAllPanels::setMessage(const Message& message)
{
    onWindowThread([&] {
        m_message->setProperty("kxTurkish", message.turkish());
        m_message->setText(Translate(message));
    });
}

QString frmSendingUsersAllPanels::messageText() const
{
    return m_message->property("kxTurkish").toString();
}

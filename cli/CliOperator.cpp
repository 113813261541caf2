#include "CliOperator.h"

#include "CliConsole.h"
#include "store/OperatorSession.h"
#include "store/Translate.h"

#include <QMutexLocker>

using namespace Qt::Literals::StringLiterals;

std::atomic<bool> CliOperator::s_cancel{ false };

CliOperator::CliOperator(const CliGlobalOptions& options)
    : m_answers(options.answers)
    , m_answer(options.answer)
{ }

void CliOperator::setLogin(OperatorSession& session, const OperatorAccounts& accounts, const QString& userName,
                           const QString& password)
{
    m_session = &session;
    m_accounts = accounts;
    m_userName = userName;
    m_password = password;
}

bool CliOperator::ask(const Message& question)
{
    const int index = m_questions++;
    const QString text = Translate(question);
    CliGlobalOptions::Answer answer = m_answer;
    if (index < m_answers.size())
        answer = m_answers.at(index) ? CliGlobalOptions::Answer::Yes : CliGlobalOptions::Answer::No;
    // The answer in the language of the question, so that a run reads in one language.
    switch (answer) {
    case CliGlobalOptions::Answer::Yes:
        CliConsole::errLine(u"? "_s + text + u" -> "_s + Translate(u"Evet"_s));
        return true;
    case CliGlobalOptions::Answer::No:
        CliConsole::errLine(u"? "_s + text + u" -> "_s + Translate(u"Hayır"_s));
        return false;
    case CliGlobalOptions::Answer::Unset:
        break;
    }
    {
        QMutexLocker lock(&m_mutex);
        if (m_unanswered.isEmpty())
            m_unanswered = question;
    }
    CliConsole::errLine(u"? "_s + text);
    return false;
}

void CliOperator::tell(const Message& message, Kind kind)
{
    const QString text = Translate(message);
    if (kind == Kind::Information) {
        CliConsole::endProgress();
        CliConsole::outLine(text);
    } else {
        CliConsole::errLine(text);
    }
}

void CliOperator::progress(int value, int maximum)
{
    QMutexLocker lock(&m_mutex);
    if (maximum <= 0) {
        m_lastMaximum = -1;
        m_lastShown = -1;
        m_progressPanel = 0;
        CliConsole::endProgress();
        return;
    }
    // A line per tenth off a terminal, a rewrite per hundredth on one: a 20000-user send must not
    // flood a log.
    const int steps = CliConsole::errIsTerminal() ? 100 : 10;
    const int step = static_cast<int>(static_cast<qint64>(value) * steps / maximum);
    if (maximum == m_lastMaximum && step == m_lastShown)
        return;
    m_lastMaximum = maximum;
    m_lastShown = step;
    // "Panel 3: 120/400", so a walk over many panels says which one is being served.
    const QString panel
        = m_progressPanel > 0 ? Translate(u"Panel"_s) + u' ' + QString::number(m_progressPanel) + u": "_s : QString();
    CliConsole::errProgress(panel + QString::number(value) + u'/' + QString::number(maximum));
}

void CliOperator::panelProgress(qint32 panelNumber, int value, int maximum)
{
    {
        QMutexLocker lock(&m_mutex);
        m_progressPanel = panelNumber;
    }
    progress(value, maximum);
}

void CliOperator::status(const Message& line)
{
    // A cleared status line is nothing to print on a terminal.
    if (line.isEmpty())
        return;
    CliConsole::errLine(Translate(line));
}

void CliOperator::requestLogin()
{
    if (m_session && m_session->isAdministrator())
        return;
    if (!m_session || m_password.isEmpty()) {
        m_loginFailed = true;
        CliConsole::errLine(
            Translate(Message(u"Yönetici şifresi gerekli: --admin-password N verin veya KX410_ADMIN_PASSWORD "
                              u"ortam değişkenini ayarlayın."_s)));
        return;
    }
    const OperatorAccounts::LoginResult result = m_accounts.login(m_userName, m_password);
    m_session->beginLogin();
    m_session->apply(result);
    if (!result.succeeded()) {
        m_loginFailed = true;
        if (!result.message.isEmpty())
            CliConsole::errLine(Translate(result.message));
    } else if (!result.isAdministrator()) {
        m_loginFailed = true;
    }
}

bool CliOperator::cancelRequested() const
{
    return s_cancel.load();
}

void CliOperator::requestCancel()
{
    s_cancel = true;
}

Message CliOperator::unansweredQuestion() const
{
    QMutexLocker lock(&m_mutex);
    return m_unanswered;
}

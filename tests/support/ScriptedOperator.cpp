#include "ScriptedOperator.h"

#include <QTest>

ScriptedOperator& ScriptedOperator::yes(int count)
{
    for (int i = 0; i < count; ++i)
        m_answers << true;
    return *this;
}

ScriptedOperator& ScriptedOperator::no()
{
    m_answers << false;
    return *this;
}

void ScriptedOperator::setLoginHandler(std::function<void()> handler)
{
    m_login = std::move(handler);
}

void ScriptedOperator::setCancelAfter(int checks)
{
    m_cancelAfter = checks;
    m_cancelChecks = 0;
}

bool ScriptedOperator::ask(const Message& question)
{
    m_questions << question.turkish();
    if (m_answers.isEmpty()) {
        QTest::qFail(qPrintable(QStringLiteral("unexpected question: ") + question.turkish()), __FILE__, __LINE__);
        return false;
    }
    return m_answers.takeFirst();
}

void ScriptedOperator::tell(const Message& message, Kind)
{
    m_told << message.turkish();
}

void ScriptedOperator::progress(int value, int maximum)
{
    m_progress << qMakePair(value, maximum);
}

void ScriptedOperator::status(const Message& line)
{
    m_status << line.turkish();
}

void ScriptedOperator::requestLogin()
{
    ++m_logins;
    if (m_login)
        m_login();
}

bool ScriptedOperator::cancelRequested() const
{
    if (m_cancelAfter < 0)
        return false;
    return m_cancelChecks++ >= m_cancelAfter;
}

QString ScriptedOperator::lastTold() const
{
    return m_told.isEmpty() ? QString() : m_told.last();
}

void ScriptedOperator::clearRecords()
{
    m_questions.clear();
    m_told.clear();
    m_status.clear();
    m_progress.clear();
    m_logins = 0;
}

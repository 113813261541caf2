#include "ScriptedStartupUi.h"

using namespace Qt::StringLiterals;

bool ScriptedStartupUi::askInitialSettings(StationSettings& settings)
{
    events << u"dialog"_s;
    return dialog ? dialog(settings) : false;
}

bool ScriptedStartupUi::chooseAdminPassword(const Message& hint, QString* password, QString* repeated)
{
    events << u"password: "_s + hint.turkish();
    if (passwords.isEmpty())
        return false;
    const QPair<QString, QString> next = passwords.takeFirst();
    *password = next.first;
    *repeated = next.second;
    return true;
}

void ScriptedStartupUi::showMessage(const Message& message)
{
    events << u"message: "_s + message.turkish();
}

QStringList ScriptedStartupUi::messages() const
{
    QStringList out;
    for (const QString& e : events) {
        if (e.startsWith(u"message: "_s))
            out << e.mid(9);
    }
    return out;
}

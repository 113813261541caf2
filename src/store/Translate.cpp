#include "store/Translate.h"

#include "store/Message.h"
#include "store/Translator.h"

#include <QReadLocker>
#include <QReadWriteLock>
#include <QWriteLocker>

namespace {

struct Current
{
    QReadWriteLock lock;
    Translator translator;
};

Current& current()
{
    static Current c;
    return c;
}

} // namespace

QString Translate(const QString& text)
{
    Current& c = current();
    QReadLocker locker(&c.lock);
    return c.translator.translate(text);
}

QString Translate(const Message& message)
{
    Current& c = current();
    QReadLocker locker(&c.lock);
    return message.render(c.translator);
}

QString ToTurkish(const QString& text)
{
    Current& c = current();
    QReadLocker locker(&c.lock);
    return c.translator.toTurkish(text);
}

void SetCurrentTranslator(const Translator& translator)
{
    Current& c = current();
    QWriteLocker locker(&c.lock);
    c.translator = translator;
}

void SetCurrentLanguage(int language)
{
    Current& c = current();
    QWriteLocker locker(&c.lock);
    c.translator.setLanguage(language);
}

int CurrentLanguage()
{
    Current& c = current();
    QReadLocker locker(&c.lock);
    return c.translator.language();
}

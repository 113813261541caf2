#include "store/SearchFilter.h"

#include "store/Database.h"
#include "store/SearchText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

bool SearchFilter::isNumber(const QString& text, double* value)
{
    static const QRegularExpression pattern(u"^[+-]?(\\d+([.,]\\d*)?|[.,]\\d+)$"_s);
    const QString t = text.trimmed();
    if (!pattern.match(t).hasMatch())
        return false;
    bool ok = false;
    const double v = QString(t).replace(u',', u'.').toDouble(&ok);
    if (ok && value)
        *value = v;
    return ok;
}

bool SearchFilter::isDate(const QString& text, QDateTime* value, bool* hasTime)
{
    const QString t = text.trimmed().simplified();
    static const QStringList dateForms
        = { u"d/M/yyyy"_s, u"d.M.yyyy"_s, u"d-M-yyyy"_s, u"yyyy-M-d"_s, u"d/M/yy"_s, u"d.M.yy"_s };
    static const QStringList timeForms = { u"H:mm:ss"_s, u"H:mm"_s };
    const qsizetype blank = t.indexOf(u' ');
    const QString datePart = blank < 0 ? t : t.left(blank);
    const QString timePart = blank < 0 ? QString() : t.mid(blank + 1);
    QDate date;
    for (const QString& form : dateForms) {
        date = QDate::fromString(datePart, form);
        if (date.isValid()) {
            // Two-digit years mean this century, as people type them.
            if (form.endsWith(u"yy"_s) && !form.endsWith(u"yyyy"_s) && date.year() < 2000)
                date = date.addYears(100);
            break;
        }
    }
    if (!date.isValid())
        return false;
    QTime time(0, 0);
    if (!timePart.isEmpty()) {
        time = QTime();
        for (const QString& form : timeForms) {
            time = QTime::fromString(timePart, form);
            if (time.isValid())
                break;
        }
        if (!time.isValid())
            return false;
    }
    if (value)
        *value = QDateTime(date, time);
    if (hasTime)
        *hasTime = !timePart.isEmpty();
    return true;
}

SearchFilter::Typing SearchFilter::whileTyping(const QString& column, const QString& text)
{
    Typing result;
    const QString t = text.trimmed();
    if (column.trimmed().isEmpty() || t.isEmpty())
        return result; // remove the filter
    Criterion c;
    c.text = t;
    if (isNumber(t, &c.number)) {
        c.match = Match::Number;
    } else if (isDate(t)) {
        // A date is only looked for on Enter; typing it leaves the list as it is.
        result.action = TypingAction::KeepFilter;
        return result;
    } else {
        c.match = Match::Prefix;
    }
    result.action = TypingAction::SetFilter;
    result.criterion = c;
    return result;
}

SearchFilter::Find SearchFilter::onEnter(const QString& text)
{
    Find result;
    const QString t = text.trimmed();
    if (t.isEmpty()) {
        result.message = Message(u"Lütfen bir değer giriniz."_s);
        return result;
    }
    Criterion c;
    c.text = t;
    if (isNumber(t, &c.number))
        c.match = Match::Number;
    else if (isDate(t, &c.moment, &c.hasTime))
        c.match = Match::Date;
    else
        c.match = Match::Text;
    result.ok = true;
    result.criterion = c;
    return result;
}

bool SearchFilter::Criterion::matches(const QVariant& value) const
{
    switch (match) {
    case Match::None:
        return true;
    case Match::Number: {
        if (value.isNull())
            return false;
        double v = 0;
        if (isNumber(value.toString(), &v))
            return v == number;
        return false;
    }
    case Match::Prefix:
        return !value.isNull() && SearchText::startsWith(value.toString(), text);
    case Match::Text:
        return !value.isNull() && SearchText::equals(value.toString(), text);
    case Match::Date: {
        QDateTime stored = Database::dateTime(value);
        if (!stored.isValid()) {
            bool ignored = false;
            isDate(value.toString(), &stored, &ignored);
        }
        if (!stored.isValid())
            return false;
        return hasTime ? stored == moment : stored.date() == moment.date();
    }
    }
    return false;
}

int SearchFilter::findRow(const Criterion& criterion, const QList<QVariant>& values, int from)
{
    for (qsizetype i = qMax(0, from); i < values.size(); ++i) {
        if (criterion.matches(values.at(i)))
            return static_cast<int>(i);
    }
    return -1;
}

Message SearchFilter::notFoundMessage()
{
    return Message(u"Girilen değere ilişkin kayıt bulunamadı"_s);
}

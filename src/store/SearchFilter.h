#pragma once

#include "store/Message.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariant>

// The search dialog's rules over the values of one column, as pure logic: the window applies the
// resulting criterion to its model, so typed text never reaches SQL.
//
// While typing: a blank text removes the filter; a number filters on equality; a date leaves the
// filter as it was; any other text keeps the rows that begin with it.
// On Enter: a blank text is refused; a number, a date or a text looks for the first equal value.
class SearchFilter
{
public:
    enum class Match
    {
        None, // no filter: every row
        Number, // numeric equality
        Prefix, // text beginning with the value (letter case ignored)
        Date, // same day; with a time typed, the same moment
        Text // equal text (letter case ignored)
    };

    struct Criterion
    {
        Match match = Match::None;
        QString text; // the trimmed text typed
        double number = 0;
        QDateTime moment;
        bool hasTime = false;
        bool matches(const QVariant& value) const;
    };

    enum class TypingAction
    {
        RemoveFilter,
        KeepFilter,
        SetFilter
    };
    struct Typing
    {
        TypingAction action = TypingAction::RemoveFilter;
        Criterion criterion;
    };

    struct Find
    {
        bool ok = false;
        Criterion criterion;
        Message message; // "Lütfen bir değer giriniz." when nothing was typed
    };

    static Typing whileTyping(const QString& column, const QString& text);
    static Find onEnter(const QString& text);
    // First row (from `from` on) whose value matches; -1 when none.
    static int findRow(const Criterion& criterion, const QList<QVariant>& values, int from = 0);
    static Message notFoundMessage();

    // A number as the dialog understands it: optional sign, digits, at most one decimal mark.
    static bool isNumber(const QString& text, double* value = nullptr);
    // A date as typed ("14/03/2016", "14.03.2016", "2016-03-14", optionally with "HH:mm[:ss]").
    static bool isDate(const QString& text, QDateTime* value = nullptr, bool* hasTime = nullptr);
};

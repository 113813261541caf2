#pragma once

#include <QList>
#include <QString>
#include <optional>

class QWidget;

// A number and a name, as the pickers of zones, time groups and groups list them.
struct NumberedName
{
    int number = 0;
    QString name;
};

// The search dialog over a list of numbered names: titled `title`, its two columns headed by the
// Turkish column names given (the dialog translates them), opened on `current` when listed.
// Returns the chosen row, or nothing when the person closed the dialog or the list is empty.
std::optional<NumberedName> pickNumberedName(QWidget* parent, const QString& title, const QString& numberColumn,
                                             const QString& nameColumn, const QList<NumberedName>& rows, int current);

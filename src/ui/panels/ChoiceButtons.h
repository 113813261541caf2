#pragma once

#include "operations/panels/PanelChoices.h"

#include <QList>
#include <QWidget>

class QAbstractButton;
class QButtonGroup;
class QGridLayout;
class QRadioButton;

// An option group of the settings window (objectName "opsXxx", options "opsXxx0", "opsXxx1", ...)
// over a list of coded choices: the value is the chosen code, -1 while none is chosen.
class ChoiceButtons : public QWidget
{
    Q_OBJECT

public:
    // columns: options per row.
    ChoiceButtons(const QString& name, const QList<PanelChoices::Choice>& choices, int columns, QWidget* parent);

    // Makes new options (captions through the text table) unless they are the ones shown; new
    // options start with none chosen.
    void setChoices(const QList<PanelChoices::Choice>& choices);
    qint32 value() const;
    // Chooses the option with that code; a code not offered leaves none chosen.
    void setValue(qint32 code);
    // Options with these codes can be chosen; the others are shown greyed.
    void enableCodes(const QList<qint32>& codes);

Q_SIGNALS:
    // The person chose another option (not sent for setValue).
    void chosen(qint32 code);

private:
    QButtonGroup* m_group = nullptr;
    QGridLayout* m_layout = nullptr;
    QList<PanelChoices::Choice> m_choices;
    QList<QRadioButton*> m_buttons;
    int m_columns = 1;
};

#pragma once

#include <QGroupBox>
#include <QList>
#include <QStringList>

class QButtonGroup;
class QCheckBox;
class QRadioButton;

// A row of options of a report window (named prefix0, prefix1, ...), optionally with an "all"
// box in front that sets the options aside while it is ticked.
class OptionGroupBox : public QGroupBox
{
    Q_OBJECT

public:
    // captions: the Turkish caption of each option. allName empty: no "all" box.
    OptionGroupBox(const QString& objectName, const QString& title, const QString& prefix, const QStringList& captions,
                   QWidget* parent = nullptr, const QString& allName = QString(),
                   const QString& allCaption = QString());

    // The chosen option; -1 while the "all" box is ticked.
    int chosen() const;
    void setChosen(int index);
    void setAll(bool all);

signals:
    void changed();

private:
    QCheckBox* m_all = nullptr;
    QButtonGroup* m_group = nullptr;
    QList<QRadioButton*> m_options;
};

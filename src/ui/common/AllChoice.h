#pragma once

#include <QList>

class QCheckBox;
class QWidget;

// The "all" boxes of the report windows: while one is ticked, the controls that make a narrower
// choice are disabled and take no part in the report.
class AllChoice
{
public:
    static void link(QCheckBox* all, const QList<QWidget*>& controls);
};

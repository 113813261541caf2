#pragma once

#include "ui/common/OptionGroupBox.h"

struct ReportFilter;

// The direction of the passages: chkAllTypes, or entries (opsType0) or exits (opsType1).
class DirectionBox : public OptionGroupBox
{
    Q_OBJECT

public:
    explicit DirectionBox(QWidget* parent = nullptr);

    void fill(ReportFilter& filter) const;
};

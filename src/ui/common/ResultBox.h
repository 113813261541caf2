#pragma once

#include "ui/common/OptionGroupBox.h"

struct ReportFilter;

// The result of the passages: every record (opsAccessResult0), granted passages, anti-passback
// violations, denied requests or unknown cards.
class ResultBox : public OptionGroupBox
{
    Q_OBJECT

public:
    explicit ResultBox(QWidget* parent = nullptr);

    void fill(ReportFilter& filter) const;
};

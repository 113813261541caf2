#pragma once

#include <QGroupBox>

class QButtonGroup;

// The two-way choice of where a panel operation goes: index 0 "Seçilen Panel" (the panel
// selected in the grid), index 1 "Tüm Paneller" (every panel of the roster). The button group
// carries the given name (opsPanelOption, opsPanelOptionR, opsPanelK) and its buttons that name
// followed by 0 and 1.
class PanelTargetBox : public QGroupBox
{
    Q_OBJECT

public:
    PanelTargetBox(const QString& name, QWidget* parent = nullptr);

    // 0 for the selected panel, 1 for all panels.
    int index() const;
    void setIndex(int index);
    bool allPanels() const { return index() == 1; }
    QButtonGroup* group() const { return m_group; }

private:
    QButtonGroup* m_group = nullptr;
};

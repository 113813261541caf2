#pragma once

// Which panels an operation works on: the one selected in the panel list ("Seçilen Panel") or
// every usable panel of the roster in roster order ("Tüm Paneller").
enum class PanelTarget
{
    Selected = 0,
    All = 1
};

#pragma once

// Puts an interface language in force for the whole program: the translation, the writing
// direction (right to left for Arabic) and every caption of every open window.
class LanguageSwitch
{
public:
    static void apply(int language);
};

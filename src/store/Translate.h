#pragma once

#include <QString>

class Message;
class Translator;

// The station-wide translation of interface texts. One translator serves the whole process;
// reading it is safe from any thread, replacing it or changing the language takes a write lock.

// The displayed form of a Turkish text in the current language (the text itself when unknown).
QString Translate(const QString& text);
// A message rendered in the current language, each fixed fragment translated on its own.
QString Translate(const Message& message);
// The Turkish text of a text displayed in the current language.
QString ToTurkish(const QString& text);

// Replaces the process-wide rows and language with those of the given translator.
void SetCurrentTranslator(const Translator& translator);
void SetCurrentLanguage(int language);
int CurrentLanguage();

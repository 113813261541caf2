#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// The options that hold for every command, taken from anywhere on the command line; what is
// left (the command, its words and its own options) stays in `rest` in its order.
struct CliGlobalOptions
{
    enum class Answer
    {
        Unset, // a question is an error that names the flag to pass
        Yes,
        No
    };

    QString dataDir;
    QString database;
    // Answers to the first questions, in order (--answers yes,no); later ones take `answer`.
    QList<bool> answers;
    Answer answer = Answer::Unset;
    QString broadcast;
    QString adminPassword;
    QString userName = QStringLiteral("admin");
    // -1 keeps the language of the settings; 0 Turkish, 1 English, 2 Arabic.
    int language = -1;
    bool help = false;
    QStringList rest;

    // Fills the options from the arguments (without the program name). The administrator password
    // and the broadcast address fall back to the variables KX410_ADMIN_PASSWORD and KX410_BROADCAST. Returns false with
    // a reason for a missing value, an unknown language or --yes given together with --no.
    bool parse(const QStringList& arguments, QString* error);

    // "tr", "en", "ar" (or "0".."2") to the language index; -1 when unknown.
    static int languageIndex(const QString& text);
    static QString helpText();
};

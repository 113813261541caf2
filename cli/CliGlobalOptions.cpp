#include "CliGlobalOptions.h"

#include <QHostAddress>

using namespace Qt::Literals::StringLiterals;

bool CliGlobalOptions::parse(const QStringList& arguments, QString* error)
{
    adminPassword = qEnvironmentVariable("KX410_ADMIN_PASSWORD");
    broadcast = qEnvironmentVariable("KX410_BROADCAST");
    bool sawYes = false;
    bool sawNo = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& arg = arguments.at(i);
        QString name = arg;
        QString inlineValue;
        bool hasInline = false;
        if (arg.startsWith(u"--"_s) && arg.contains(u'=')) {
            name = arg.left(arg.indexOf(u'='));
            inlineValue = arg.mid(arg.indexOf(u'=') + 1);
            hasInline = true;
        }
        const auto value = [&](QString* target) {
            if (hasInline) {
                *target = inlineValue;
                return true;
            }
            if (i + 1 >= arguments.size()) {
                *error = name + u" needs a value"_s;
                return false;
            }
            *target = arguments.at(++i);
            return true;
        };

        if (name == u"--data-dir"_s) {
            if (!value(&dataDir))
                return false;
        } else if (name == u"--db"_s) {
            if (!value(&database))
                return false;
        } else if (name == u"--broadcast"_s) {
            if (!value(&broadcast))
                return false;
            if (QHostAddress(broadcast).isNull()) {
                *error = u"--broadcast needs an IPv4 address, not "_s + broadcast;
                return false;
            }
        } else if (name == u"--admin-password"_s) {
            if (!value(&adminPassword))
                return false;
        } else if (name == u"--login"_s) {
            if (!value(&userName))
                return false;
        } else if (name == u"--lang"_s) {
            QString text;
            if (!value(&text))
                return false;
            language = languageIndex(text);
            if (language < 0) {
                *error = u"--lang takes tr, en or ar, not "_s + text;
                return false;
            }
        } else if (name == u"--answers"_s) {
            QString text;
            if (!value(&text))
                return false;
            for (const QString& word : text.split(u',', Qt::SkipEmptyParts)) {
                const QString w = word.trimmed().toLower();
                if (w != u"yes"_s && w != u"no"_s && w != u"y"_s && w != u"n"_s) {
                    *error = u"--answers takes yes and no separated by commas, not "_s + word;
                    return false;
                }
                answers.append(w.startsWith(u'y'));
            }
        } else if (arg == u"--yes"_s || arg == u"-y"_s) {
            sawYes = true;
        } else if (arg == u"--no"_s) {
            sawNo = true;
        } else if (arg == u"--help"_s || arg == u"-h"_s) {
            help = true;
        } else {
            rest.append(arg);
        }
    }
    if (sawYes && sawNo) {
        *error = u"--yes and --no cannot be given together"_s;
        return false;
    }
    answer = sawYes ? Answer::Yes : sawNo ? Answer::No : Answer::Unset;
    return true;
}

int CliGlobalOptions::languageIndex(const QString& text)
{
    const QString t = text.trimmed().toLower();
    if (t == u"tr"_s || t == u"0"_s || t == u"turkish"_s)
        return 0;
    if (t == u"en"_s || t == u"1"_s || t == u"english"_s)
        return 1;
    if (t == u"ar"_s || t == u"2"_s || t == u"arabic"_s)
        return 2;
    return -1;
}

QString CliGlobalOptions::helpText()
{
    return u"Options for every command:\n"
           "  --data-dir DIR         the station's data folder (default: the per-user folder)\n"
           "  --db URL               the main database: a file path or postgresql://user@host:port/name\n"
           "  --yes, -y              answer Yes to every question\n"
           "  --no                   answer No to every question\n"
           "  --answers LIST         answers to the first questions in order, e.g. yes,no; later questions\n"
           "                         take --yes or --no (--answers yes --no: confirm, then stop at a failure)\n"
           "  --broadcast ADDR       address of status, search and alarm datagrams (default: the variable\n"
           "                         KX410_BROADCAST, else 255.255.255.255; 127.0.0.1 for simulated panels)\n"
           "  --admin-password N     administrator password (or the variable KX410_ADMIN_PASSWORD)\n"
           "  --login NAME           account the password belongs to (default admin)\n"
           "  --lang tr|en|ar        language of the messages (default: the station's setting)\n"
           "  --help, -h             this text; after a command, that command's help\n"_s;
}

#include "store/DatabaseLocation.h"

#include <QUrl>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

bool DatabaseLocation::isServerUrl(const QString& text)
{
    const QString t = text.trimmed();
    return t.startsWith(u"postgresql://"_s, Qt::CaseInsensitive) || t.startsWith(u"postgres://"_s, Qt::CaseInsensitive);
}

DatabaseLocation DatabaseLocation::parse(const QString& text)
{
    DatabaseLocation loc;
    loc.m_text = text.trimmed();
    if (loc.m_text.isEmpty()) {
        loc.m_error = u"No database location given."_s;
        return loc;
    }
    if (!isServerUrl(loc.m_text)) {
        loc.m_kind = Kind::File;
        loc.m_filePath = loc.m_text;
        return loc;
    }

    const QUrl url(loc.m_text, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty()) {
        loc.m_error = u"Not a valid database address: "_s + loc.displayText();
        return loc;
    }
    QString name = url.path(QUrl::FullyDecoded);
    if (name.startsWith(u'/'))
        name.remove(0, 1);
    if (name.isEmpty() || name.contains(u'/')) {
        loc.m_error = u"The database address names no database: "_s + loc.displayText();
        return loc;
    }
    loc.m_kind = Kind::Server;
    loc.m_host = url.host();
    loc.m_port = url.port(5432);
    loc.m_userName = url.userName(QUrl::FullyDecoded);
    loc.m_password = url.password(QUrl::FullyDecoded);
    loc.m_databaseName = name;

    // An unreachable server must not hang the start for minutes.
    QStringList options;
    bool hasTimeout = false;
    const QUrlQuery query(url);
    for (const auto& item : query.queryItems(QUrl::FullyDecoded)) {
        if (item.first == u"connect_timeout"_s)
            hasTimeout = true;
        options << item.first + u'=' + item.second;
    }
    if (!hasTimeout)
        options.prepend(u"connect_timeout=5"_s);
    loc.m_connectOptions = options.join(u';');
    return loc;
}

DatabaseLocation DatabaseLocation::withDatabaseName(const QString& name) const
{
    DatabaseLocation copy = *this;
    copy.m_databaseName = name;
    if (m_kind == Kind::Server) {
        QUrl url(m_text);
        url.setPath(u'/' + name);
        copy.m_text = url.toString();
    }
    return copy;
}

QString DatabaseLocation::displayText() const
{
    if (!isServerUrl(m_text))
        return m_text;
    QUrl url(m_text);
    url.setPassword(QString());
    return url.toString();
}

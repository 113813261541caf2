#include "store/OperatorAccounts.h"

#include "store/Database.h"
#include "store/Transaction.h"

using namespace Qt::StringLiterals;

namespace {

QString nameColumn(int n)
{
    return u"User Name "_s + QString::number(n);
}
QString passwordColumn(int n)
{
    return u"Password "_s + QString::number(n);
}
QString typeColumn(int n)
{
    return u"User Type "_s + QString::number(n);
}

QStringList rowColumns()
{
    QStringList columns{ u"AdminPassword"_s };
    for (int n = 1; n <= OperatorAccounts::AccountCount; ++n)
        columns << nameColumn(n) << passwordColumn(n) << typeColumn(n);
    return columns;
}

OperatorAccounts::ChangeResult refused(const QString& text)
{
    return { false, Message(text) };
}

} // namespace

OperatorAccounts::OperatorAccounts()
    : m_accounts(AccountCount)
{ }

bool OperatorAccounts::load(const Database& db, QString* error)
{
    const QStringList columns = rowColumns();
    QString queryError;
    const QList<QVariantList> rows
        = db.rows(u"SELECT "_s + Database::quotedList(columns) + u" FROM \"ProgInit\""_s, {}, &queryError);
    if (!queryError.isEmpty()) {
        if (error)
            *error = queryError;
        return false;
    }
    m_adminPassword = QVariant();
    m_accounts = QList<Account>(AccountCount);
    if (rows.isEmpty())
        return true; // no row yet: no passwords at all
    const QVariantList& row = rows.first();
    if (!row.at(0).isNull())
        m_adminPassword = row.at(0).toLongLong();
    for (int n = 1; n <= AccountCount; ++n) {
        Account& a = m_accounts[n - 1];
        const int base = 1 + (n - 1) * 3;
        a.userName = row.at(base).toString();
        a.password = row.at(base + 1).isNull() ? QVariant() : QVariant(row.at(base + 1).toLongLong());
        a.userType = row.at(base + 2).toInt();
    }
    return true;
}

bool OperatorAccounts::save(Database& db, QString* error) const
{
    QVariantList values{ m_adminPassword };
    for (const Account& a : m_accounts)
        values << a.userName << a.password << a.userType;
    const QStringList columns = rowColumns();

    Transaction tx(db);
    if (!tx.isActive()) {
        if (error)
            *error = tx.error();
        return false;
    }
    if (db.scalar(u"SELECT count(*) FROM \"ProgInit\""_s).toInt() == 0) {
        if (!db.insert(u"ProgInit"_s, columns, values, error))
            return false;
    } else {
        QStringList assignments;
        for (const QString& c : columns)
            assignments << Database::quoted(c) + u" = ?"_s;
        if (!db.exec(u"UPDATE \"ProgInit\" SET "_s + assignments.join(u", "_s), values, error))
            return false;
    }
    return tx.commit(error);
}

OperatorAccounts::Account OperatorAccounts::account(int number) const
{
    if (number < 1 || number > AccountCount)
        return {};
    return m_accounts.at(number - 1);
}

void OperatorAccounts::setAccount(int number, const Account& account)
{
    if (number >= 1 && number <= AccountCount)
        m_accounts[number - 1] = account;
}

bool OperatorAccounts::isNumeric(const QString& text)
{
    const QString t = text.trimmed();
    if (t.isEmpty() || t.size() > 18)
        return false;
    for (const QChar c : t) {
        if (c < u'0' || c > u'9')
            return false;
    }
    return true;
}

qint64 OperatorAccounts::numericValue(const QString& text)
{
    return text.trimmed().toLongLong();
}

bool OperatorAccounts::passwordEquals(const QVariant& stored, const QString& typed) const
{
    // An account never set counts as having password 0, so that it can be given its first one.
    const qint64 current = stored.isNull() ? 0 : stored.toLongLong();
    return isNumeric(typed) && numericValue(typed) == current;
}

OperatorAccounts::LoginResult OperatorAccounts::login(const QString& userName, const QString& password) const
{
    LoginResult result;
    if (!isNumeric(password)) {
        result.message = Message(u"Geçersiz şifre."_s).newLine().add(u"Sadece sayısal ifade giriniz!"_s);
        return result;
    }
    const QString name = userName.trimmed();
    const qint64 value = numericValue(password);
    if ((name == u"admin"_s || name == u"Admin"_s || name == u"ADMIN"_s) && hasAdminPassword()
        && m_adminPassword.toLongLong() == value) {
        result.outcome = LoginOutcome::Administrator;
        result.userName = name;
        return result;
    }
    for (int n = 1; n <= AccountCount; ++n) {
        const Account& a = m_accounts.at(n - 1);
        // Accounts never set up cannot be logged into.
        if (a.password.isNull() || a.userName.trimmed().isEmpty())
            continue;
        if (a.userName.trimmed() == name && a.password.toLongLong() == value) {
            result.outcome = a.isAdministrator() ? LoginOutcome::Administrator : LoginOutcome::Operator;
            result.account = n;
            result.userName = name;
            return result;
        }
    }
    result.message = Message(u"Geçersiz şifre."_s);
    return result;
}

OperatorAccounts::ChangeResult OperatorAccounts::changeAdminPassword(Database& db, const QString& oldPassword,
                                                                     const QString& newPassword,
                                                                     const QString& repeated)
{
    if (!isNumeric(oldPassword) || !isNumeric(newPassword) || !isNumeric(repeated))
        return refused(u"Yönetici şifresi olarak sadece sayısal değer giriniz"_s);
    if (!hasAdminPassword() || numericValue(oldPassword) != m_adminPassword.toLongLong())
        return refused(u"Mevcut yönetici şifresini doğru olarak giriniz!"_s);
    if (numericValue(newPassword) != numericValue(repeated))
        return refused(u"Yeni Yönetici şifresini tekrar doğru olarak giriniz!"_s);

    const QVariant previous = m_adminPassword;
    m_adminPassword = numericValue(newPassword);
    QString error;
    if (!save(db, &error)) {
        m_adminPassword = previous;
        return { false, Message(u"Hata, İşlem tamamlanamadı!"_s).newLine().value(error) };
    }
    return { true, Message(u"Yönetici şifresi değiştirildi!"_s) };
}

OperatorAccounts::ChangeResult OperatorAccounts::changeAccount(Database& db, int number, const QString& userName,
                                                               const QString& oldPassword, const QString& newPassword,
                                                               const QString& repeated, int userType,
                                                               const QString& adminPassword)
{
    if (number < 1 || number > AccountCount)
        return refused(u"Lütfen geçerli bir kullanıcı adı giriniz"_s);
    if (!isNumeric(oldPassword) || !isNumeric(newPassword) || !isNumeric(repeated) || !isNumeric(adminPassword))
        return refused(u"Şifre olarak sadece sayısal değer giriniz"_s);
    const QString name = userName.trimmed();
    if (name.isEmpty())
        return refused(u"Lütfen geçerli bir kullanıcı adı giriniz"_s);
    // "Admin" itself is left out on purpose: only these spellings are refused as account names.
    if (name == u"admin"_s || name == u"ADMİN"_s || name == u"ADMIN"_s)
        return refused(u"Kullanıcı adı olarak 'Admin' girilemez"_s);
    const Account current = m_accounts.at(number - 1);
    if (!passwordEquals(current.password, oldPassword))
        return refused(u"Mevcut kullanıcı şifresini doğru olarak giriniz!"_s);
    if (numericValue(newPassword) != numericValue(repeated))
        return refused(u"Yeni kullanıcı şifresini tekrar doğru olarak giriniz!"_s);
    if (!hasAdminPassword() || numericValue(adminPassword) != m_adminPassword.toLongLong())
        return refused(u"Kullanıcı şifresini değiştirmek için Yönetici şifresinin de girilmesi gerekir!"_s);

    m_accounts[number - 1] = { name, numericValue(newPassword), userType == 1 ? 1 : 0 };
    QString error;
    if (!save(db, &error)) {
        m_accounts[number - 1] = current;
        return { false, Message(u"Hata, İşlem tamamlanamadı!"_s).newLine().value(error) };
    }
    Message done(u"Kullanıcı"_s);
    done.value(u" "_s).value(number).value(u" "_s).add(u"şifresi değiştirildi!"_s);
    return { true, done };
}

OperatorAccounts::ChangeResult OperatorAccounts::setFirstAdminPassword(Database& db, const QString& password,
                                                                       const QString& repeated)
{
    if (hasAdminPassword())
        return refused(u"Yönetici şifresi daha önce belirlenmiş!"_s);
    if (!isNumeric(password) || !isNumeric(repeated))
        return refused(u"Yönetici şifresi olarak sadece sayısal değer giriniz"_s);
    if (numericValue(password) != numericValue(repeated))
        return refused(u"Şifreler birbirini tutmuyor!"_s);
    m_adminPassword = numericValue(password);
    QString error;
    if (!save(db, &error)) {
        m_adminPassword = QVariant();
        return { false, Message(u"Hata, İşlem tamamlanamadı!"_s).newLine().value(error) };
    }
    return { true, Message(u"Yönetici şifresi belirlendi!"_s) };
}

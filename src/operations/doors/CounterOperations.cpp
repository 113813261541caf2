#include "operations/doors/CounterOperations.h"

#include "operations/panels/OperationContext.h"
#include "operations/panels/PanelVisit.h"
#include "operations/panels/PanelWalk.h"
#include "operations/records/RecordFetch.h"
#include "operations/users/UserRepository.h"
#include "protocol/ReaderCommands.h"
#include "protocol/UserCommands.h"
#include "protocol/ZoneDoorCommands.h"
#include "store/Database.h"
#include "store/Operator.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace {

using Outcome = PanelWalk::PanelOutcome;

const QString kOnlySelected = u"Bu işlem sadece seçilen panel için yapılacak, Devam etmek istiyor musunuz?"_s;

Outcome byResult(const CommandResult<>& result)
{
    return result.isAccepted() ? Outcome::Succeeded : Outcome::Failed;
}

struct Group
{
    qint32 number = 0;
    QString name;
    qint32 passageLimit = 0;
};

std::optional<Group> findGroup(const Database& db, qint32 groupNo)
{
    if (groupNo <= 0)
        return std::nullopt;
    QSqlQuery q = db.query(u"SELECT "_s + Database::quotedList({ u"Grup No"_s, u"Grup Adi"_s, u"Grup Gecis Sayisi"_s })
                               + u" FROM \"GroupsMaster\" WHERE "_s + Database::quoted(u"Grup No"_s) + u" = ?"_s,
                           { groupNo });
    if (!q.next())
        return std::nullopt;
    return Group{ q.value(0).toInt(), q.value(1).toString().trimmed(), q.value(2).toInt() };
}

// "'" + name + "' ", the way a group is named in front of a text.
Message quotedGroup(const Group& group)
{
    return Message().value(u"'"_s + group.name + u"' "_s);
}

WalkResult refused(Operator& op, const QString& text)
{
    op.tell(Message(text), Operator::Kind::Warning);
    WalkResult r;
    r.outcome = WalkResult::Outcome::Refused;
    return r;
}

WalkResult declinedUnless(Operator& op, const Message& question)
{
    WalkResult r;
    if (!op.ask(question))
        r.outcome = WalkResult::Outcome::Declined;
    return r;
}

} // namespace

CounterOperations::CounterOperations(OperationContext& context)
    : m_context(context)
{ }

WalkResult CounterOperations::resetAllAntiPassback(PanelTarget target)
{
    PanelWalk::Plan plan;
    plan.confirmation = Message(u"Tüm kullanıcıların Antipassback sayaçlarını silmek istediğinizden emin misiniz?"_s);
    plan.target = target;
    plan.failureQuestion = [](const PanelEntry& entry) {
        return Message()
            .value(entry.panelNumber)
            .add(
                u" nolu panelde tüm kullanıcıların Antipassback sayaç hafızası silinemedi! Devam etmek istiyor musunuz?"_s);
    };
    return PanelWalk(m_context, plan).run([](PanelVisit& v) {
        return byResult(ResetAllAntiPassback(v.link(), v.address()));
    });
}

WalkResult CounterOperations::resetUserAntiPassback(PanelTarget target, qint64 userRecordNo)
{
    const auto user = userRecordNo > 0 ? UserRepository(m_context.db).byRecordNo(userRecordNo) : std::nullopt;
    if (!user)
        return refused(m_context.op, u"Kullanıcı listesi boş!"_s);
    const qint32 id = user->id;
    PanelWalk::Plan plan;
    plan.confirmation = Message().value(id).add(
        u" nolu kullanıcının Antipassback sayaç hafızasını silmek istediğinizden emin misiniz?"_s);
    plan.target = target;
    return PanelWalk(m_context, plan).run([id](PanelVisit& v) {
        return byResult(ResetUserAntiPassback(v.link(), v.address(), id));
    });
}

WalkResult CounterOperations::eraseAllAccessCounters(PanelTarget target)
{
    PanelWalk::Plan plan;
    plan.confirmation = Message(u"Tüm geçiş sayaç hafızasını silmek istediğinizden emin misiniz?"_s)
                            .newLine()
                            .add(u"(Not: Bu işlem her bir panel için yaklaşık 5 saniye sürecektir!)"_s);
    plan.target = target;
    return PanelWalk(m_context, plan).run([](PanelVisit& v) {
        return byResult(EraseAllAccessCounters(v.link(), v.address()));
    });
}

WalkResult CounterOperations::eraseUserAccessCounter(PanelTarget target, qint64 userRecordNo)
{
    const auto user = userRecordNo > 0 ? UserRepository(m_context.db).byRecordNo(userRecordNo) : std::nullopt;
    if (!user)
        return refused(m_context.op, u"Kullanıcı listesi boş!"_s);
    const qint32 id = user->id;
    PanelWalk::Plan plan;
    plan.confirmation
        = Message().value(id).add(u" nolu kullanıcının geçiş sayaç hafızasını silmek istediğinizden emin misiniz?"_s);
    plan.target = target;
    plan.failureQuestion = [id](const PanelEntry& entry) {
        return Message()
            .value(id)
            .add(u" nolu kullanıcının "_s)
            .value(entry.panelNumber)
            .add(u" nolu paneldeki geçiş sayaç hafızası silinemedi!"_s)
            .newLine()
            .add(u"Devam etmek istiyor musunuz?"_s);
    };
    return PanelWalk(m_context, plan).run([id](PanelVisit& v) {
        return byResult(EraseAccessCounter(v.link(), v.address(), id));
    });
}

WalkResult CounterOperations::eraseRecordMemory(PanelTarget target)
{
    PanelWalk::Plan plan;
    plan.confirmation = target == PanelTarget::All
        ? Message(u"Tüm panellerde offline geçiş hafızasını silmek istediğinizden emin misiniz?"_s)
        : Message(u"Panelde offline geçiş hafızasını silmek istediğinizden emin misiniz?"_s);
    plan.target = target;
    return PanelWalk(m_context, plan).run([this](PanelVisit& v) {
        return byResult(RecordFetch::erase(v.link(), m_context.db, v.panelNumber(), v.address(), v.now()));
    });
}

WalkResult CounterOperations::clearAllInsideCounts()
{
    PanelWalk::Plan plan;
    plan.confirmation
        = Message(u"Tüm geçiş grupları için içerdeki kullanıcı sayısını silmek istediğinizden emin misiniz?"_s);
    return PanelWalk(m_context, plan).run([](PanelVisit& v) {
        return byResult(ClearAllInsideCounts(v.link(), v.address()));
    });
}

WalkResult CounterOperations::clearGroupInsideCount(qint32 groupNo)
{
    const auto group = findGroup(m_context.db, groupNo);
    if (!group)
        return refused(m_context.op, u"Geçiş grup listesi boş!"_s);
    PanelWalk::Plan plan;
    plan.confirmation = quotedGroup(*group).add(
        u"geçiş grubu için içerdeki kullanıcı sayısını silmek istediğinizden emin misiniz?"_s);
    const qint32 number = group->number;
    return PanelWalk(m_context, plan).run([number](PanelVisit& v) {
        return byResult(ClearGroupInsideCount(v.link(), v.address(), number));
    });
}

WalkResult CounterOperations::readGroupInsideCount(qint32 groupNo, QString* count)
{
    const auto group = findGroup(m_context.db, groupNo);
    if (!group)
        return refused(m_context.op, u"Geçiş grup listesi boş!"_s);
    PanelWalk::Plan plan;
    plan.checkRights = false;
    plan.selectedSucceeded = Message();
    return PanelWalk(m_context, plan).run([&](PanelVisit& v) {
        const CommandResult<QByteArray> read = ReadGroupInsideCount(v.link(), v.address(), group->number);
        if (!read.isAccepted())
            return Outcome::Failed;
        const QString answer = QString::fromLatin1(read.data());
        bool numeric = false;
        const int value = answer.toInt(&numeric);
        const QString shown = numeric ? QString::number(value) : answer;
        if (count)
            *count = shown;
        m_context.op.tell(
            quotedGroup(*group).add(u"grubuna ait içerdeki kullanıcı sayısı:"_s).value(u" "_s).value(shown));
        return Outcome::Succeeded;
    });
}

WalkResult CounterOperations::readRecordCount(qint32* count)
{
    WalkResult result = declinedUnless(m_context.op, Message(kOnlySelected));
    if (result.outcome == WalkResult::Outcome::Declined)
        return result;
    PanelWalk::Plan plan;
    plan.checkRights = false;
    plan.selectedSucceeded = Message();
    return PanelWalk(m_context, plan).run([&](PanelVisit& v) {
        const CommandResult<qint32> records = ReadRecordCount(v.link(), v.address());
        if (!records.isAccepted())
            return Outcome::Failed;
        if (count)
            *count = records.data();
        return Outcome::Succeeded;
    });
}

WalkResult CounterOperations::readUserAccessCounter(qint64 userRecordNo, QString* text)
{
    WalkResult result = declinedUnless(m_context.op, Message(kOnlySelected));
    if (result.outcome == WalkResult::Outcome::Declined)
        return result;
    const auto user = userRecordNo > 0 ? UserRepository(m_context.db).byRecordNo(userRecordNo) : std::nullopt;
    if (!user)
        return refused(m_context.op, u"Kullanıcı listesi boş!"_s);
    const auto group = findGroup(m_context.db, user->groupNo);
    PanelWalk::Plan plan;
    plan.checkRights = false;
    plan.selectedSucceeded = Message();
    return PanelWalk(m_context, plan).run([&](PanelVisit& v) {
        const CommandResult<QByteArray> read = ReadAccessCounter(v.link(), v.address(), user->id);
        const QString answer = QString::fromLatin1(read.data());
        bool numeric = false;
        answer.toLongLong(&numeric);
        if (!read.isAccepted() || answer.size() != 9 || !numeric)
            return Outcome::Failed;
        // Nine digits: what is left of the group's standard limit (3), then the passages used in
        // the three canteen windows (2 each).
        const auto part = [&](int from, int width) { return QString::number(answer.mid(from, width).toInt()); };
        Message m;
        m.value(user->id).add(u"nolu kullanıcı geçiş sayaç değerleri"_s).value(u"; "_s);
        m.add(u"Standart Geçiş Sınırlama Tipi"_s).value(u" >> "_s).add(u"Kalan"_s).value(u":"_s).value(part(0, 3));
        m.value(u" ,  "_s).add(u"Grup Gecis Sayisi"_s).value(u":"_s).value(group ? group->passageLimit : 0);
        m.value(u"; "_s).add(u"Yemekhane Geçiş Sınırlama Tipi"_s).value(u" >> "_s);
        for (int window = 1; window <= 3; ++window) {
            if (window > 1)
                m.value(u" ,  "_s);
            m.add(u"Saat"_s).value(u" "_s + QString::number(window) + u": "_s).value(part(3 + 2 * (window - 1), 2));
        }
        if (text)
            *text = m.turkish();
        m_context.op.tell(m);
        return Outcome::Succeeded;
    });
}

#include "operations/records/RecordFetch.h"

#include "operations/records/RecordErasures.h"
#include "operations/records/RecordLookup.h"
#include "operations/records/UnreadRecordStore.h"
#include "protocol/PanelLink.h"
#include "protocol/UserCommands.h"
#include "protocol/ZoneDoorCommands.h"
#include "store/Clock.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

bool RecordFetch::Result::mayErasePanel() const
{
    return stored && download.mayErasePanel();
}

Message RecordFetch::waitLine(const QString& stageText, qint32 panelNumber, const QString& panelLabel)
{
    return Message(stageText)
        .add(panelLabel.isEmpty() ? u" Panel:"_s : panelLabel)
        .value(panelNumber)
        .add(RecordDownload::waitSeparator())
        .add(RecordDownload::waitText());
}

RecordFetch::Result RecordFetch::run(PanelLink& link, Database& db, const Clock& clock, qint32 panelNumber,
                                     const PanelAddress& address, const Status& status)
{
    const auto tell = [&](const Message& line) {
        if (status)
            status(line);
    };
    Result result;
    RecordLookup lookup(db);
    if (!lookup.loadUserCards(&result.error))
        return result;

    result.download = DownloadRecords(
        link, address, [&lookup](qint32 userId) { return lookup.cardOfUser(userId); },
        [&](RecordDownload::Stage stage, int) {
            tell(waitLine(RecordDownload::stageText(stage), panelNumber, RecordDownload::panelLabel(stage)));
        });

    const QString adding = u"Offline Kayıtlar Veritabanına Ekleniyor..."_s;
    tell(waitLine(adding, panelNumber));
    RecordImport import(db);
    result.stored
        = import.store(panelNumber, result.download.records, &result.import, &result.error, [&](int done, int total) {
              tell(Message(adding)
                       .add(u" Panel:"_s)
                       .value(panelNumber)
                       .add(RecordDownload::waitSeparator())
                       .add(u"Kayıt:"_s)
                       .value(done)
                       .value(u" : "_s)
                       .value(total));
          });
    // What could not be read is kept, never dropped; when that fails the panel must keep it too.
    if (result.stored
        && UnreadRecordStore(db).keep(panelNumber, result.download.unread, clock.now(), &result.error) < 0)
        result.stored = false;
    return result;
}

CommandResult<> RecordFetch::erase(PanelLink& link, Database& db, qint32 panelNumber, const PanelAddress& address,
                                   const QDateTime& now, QString* error)
{
    // Read before the erase: rows stored after this one may hold passages the panel still has.
    const auto mark = RecordErasures(db).current(error);
    if (!mark)
        return CommandOutcome::NoAnswer;
    return eraseMarked(link, db, panelNumber, address, now, *mark, std::nullopt, error);
}

CommandResult<> RecordFetch::eraseAtOnce(PanelLink& link, Database& db, qint32 panelNumber, const PanelAddress& address,
                                         const QDateTime& now, const RecordErasures::Mark& mark, qint32 held,
                                         QString* error)
{
    link.sendNextWithoutPause();
    return eraseMarked(link, db, panelNumber, address, now, mark, held, error);
}

CommandResult<> RecordFetch::eraseMarked(PanelLink& link, Database& db, qint32 panelNumber, const PanelAddress& address,
                                         const QDateTime& now, const RecordErasures::Mark& mark,
                                         std::optional<qint32> held, QString* error)
{
    const CommandResult<> result = EraseRecordMemory(link, address);
    if (result.outcome() == CommandOutcome::NoAnswer && held && *held > 0) {
        // The answer was lost: the panel's count tells whether the erase happened. Still holding
        // at least what it held, it did not, and noting an erase would have its records stored a
        // second time by the next download.
        if (!link.isConnected())
            link.ConnectPanel(link.host(), link.port()); // a panel that hung up is asked again
        const CommandResult<qint32> after = ReadRecordCount(link, address);
        if (after.isAccepted() && after.data() >= *held)
            return result;
    }
    // A failed note is told through error; the erase itself stands. Without an answer (and no
    // count saying otherwise) the panel may have erased: noted, so nothing it holds from now on is
    // taken for a passage already stored.
    if (result.isAccepted() || result.outcome() == CommandOutcome::NoAnswer)
        RecordErasures(db).markErased(panelNumber, mark, now, error);
    return result;
}

Message RecordFetch::keptBackLine(const RecordDownload::Result& download)
{
    Message line;
    line.value(download.unreadCount).add(u" kayıt okunamadı; ayrı tutuldu."_s);
    // Why, by reason, as far as the pieces were kept with their text.
    QList<RecordDownloadCollector::UnreadReason> order;
    QHash<int, int> counts;
    for (const auto& piece : download.unread) {
        if (!counts.contains(int(piece.reason)))
            order.append(piece.reason);
        ++counts[int(piece.reason)];
    }
    for (const auto reason : order)
        line.newLine().add(UnreadRecordStore::reasonText(reason)).value(u": "_s).value(counts.value(int(reason)));
    return line;
}
